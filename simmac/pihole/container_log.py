"""What the container prints: a start-up banner, and a line for whatever happens."""

import os
import sys
import time

_BANNER = """\
  [i] Setting up user & group for the pihole user
  [i] PIHOLE_UID not set in environment, using default (1000)
  [i] Setting capabilities on pihole-FTL
  [i] Starting FTL configuration
  {password}
  [i] Starting crond for scheduled scripts
  [i] Gravity migration checks
  {gravity}
  [i] pihole-FTL pre-start checks
  [i] Starting pihole-FTL (no-daemon) as pihole
"""


class ContainerLog:
    """Writes lines to standard output, as the container's processes do."""

    def __init__(self, out=None):
        self._out = out or sys.stdout

    def banner(self, password_line: str, fresh: bool) -> None:
        gravity = "[i] No gravity database found, building it" if fresh else "[i] Existing gravity database found"
        self._write(_BANNER.format(password=password_line, gravity=gravity))

    def info(self, text: str) -> None:
        self._ftl("INFO", text)

    def warning(self, text: str) -> None:
        self._ftl("WARNING", text)

    def dns(self, text: str) -> None:
        self._write(f"{time.strftime('%b %e %H:%M:%S')} dnsmasq[{os.getpid()}]: {text}\n")

    def _ftl(self, level: str, text: str) -> None:
        now = time.time()
        stamp = time.strftime("%Y-%m-%d %H:%M:%S", time.gmtime(now)) + f".{int(now * 1000) % 1000:03d}"
        self._write(f"{stamp} UTC [{os.getpid()}M] {level}: {text}\n")

    def _write(self, text: str) -> None:
        try:
            self._out.write(text)
            self._out.flush()
        except OSError:
            pass
