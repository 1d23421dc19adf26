"""What the container prints: its start script, Pi-hole's own log, and what goes wrong on standard error."""

import os
import socket
import sys
import time

OVER = "\r\x1b[K"   # starts the line over, also where no terminal reads

_BEFORE = """\
  [i] Setting up user & group for the pihole user
  [i] PIHOLE_UID not set in environment, using default (1000)
  [i] PIHOLE_GID not set in environment, using default (1000)

  [i] Starting FTL configuration
{password}
  [i] Starting crond for scheduled scripts. Randomizing times for gravity and update checker

  [i] Gravity migration checks
"""
_GRAVITY_THERE = "  [i] Existing gravity database found - schema will be upgraded if necessary\n     \n"
_GRAVITY_MISSING = """\
  [i] No adlist file found, creating one with a default blocklist
  [i] /etc/pihole/gravity.db does not exist (Likely due to a fresh volume). This is a required file for Pi-hole to operate.
  [i] Gravity will now be run to create the database
"""
_CHECKS = "\n  [i] pihole-FTL pre-start checks\n"
_NO_ROTATION = "chown: cannot access '/etc/pihole/logrotate': No such file or directory\n"
_CAPABILITIES = """\
  [i] Setting capabilities on pihole-FTL where possible
  [i] Applying the following caps to pihole-FTL:
        * CAP_CHOWN
        * CAP_NET_BIND_SERVICE
        * CAP_NET_RAW

  [i] Starting pihole-FTL (no-daemon) as pihole

"""
_NO_GITHUB = ("fatal: unable to access 'https://github.com/pi-hole/pi-hole.git/': Could not resolve host: github.com\n")
_VERSIONS = """\
  [i] Version info:
      Core version is v6.2.2 (Latest: {core})
      Web version is v6.5 (Latest: {web})
      FTL version is v6.4.1 (Latest: {ftl})

"""
_STOPPING = """
  [i] Container stop requested...
  [i] pihole-FTL is running - Attempting to shut it down cleanly

"""


class ContainerLog:
    """Writes to both streams; where one file takes both, each line of standard error is marked with a NUL."""

    def __init__(self, marked: bool = False):
        self._marked = marked

    def start(self, password_line: str, gravity_text: str, internet: bool) -> None:
        """Everything up to the first line of Pi-hole's own log; the text is that of a first list run."""
        self.script(_BEFORE.format(password=password_line))
        self.script(_GRAVITY_MISSING + gravity_text if gravity_text else _GRAVITY_THERE)
        self.script(_CHECKS)
        self._error(_NO_ROTATION)
        self.script(_CAPABILITIES)
        if not internet:
            self._error(_NO_GITHUB)
        latest = ("v6.2.2", "v6.5", "v6.4.1") if internet else ("N/A",) * 3
        self.script(_VERSIONS.format(core=latest[0], web=latest[1], ftl=latest[2]))
        self.info(f"########## FTL started on {socket.gethostname()}! ##########")
        for line in ("FTL branch: master", "FTL version: v6.4.1", "FTL commit: 8d1add8d", "FTL user: pihole",
                     "Parsed config file /etc/pihole/pihole.toml successfully", "No other running FTL process found.",
                     "Database version is 21", "Database successfully initialized"):
            self.info(line)

    def running(self, imported: int, blocking: bool) -> None:
        """DNS answers from now on."""
        self.info(f"Imported {imported} queries from the long-term database")
        self.info("FTL is running as user pihole (UID 1000)")
        self.blocking(blocking)

    def blocking(self, enabled: bool) -> None:
        self.info(f"Blocking status is {'enabled' if enabled else 'disabled'}")

    def stopping(self) -> None:
        """The container was asked to stop."""
        self.script(_STOPPING)

    def ended(self, seconds: float) -> None:
        """Pi-hole itself has ended."""
        self.info("Finished final database update")
        self.info(f"########## FTL terminated after {seconds:.0f}s  (code 0)! ##########")

    def info(self, text: str) -> None:
        """A line of Pi-hole's own log."""
        now = time.time()
        stamp = time.strftime("%Y-%m-%d %H:%M:%S", time.localtime(now)) + f".{int(now * 1000) % 1000:03d}"
        self.script(f"{stamp} {time.strftime('%Z')} [{os.getpid()}M] INFO: {text}\n")

    def script(self, text: str) -> None:
        """A text of the start script, as it is."""
        self._write(sys.stdout, text)

    def _error(self, line: str) -> None:
        if self._marked:
            self._write(sys.stdout, "\0" + line)
        else:
            self._write(sys.stderr, line)

    @staticmethod
    def _write(stream, text: str) -> None:
        try:
            stream.write(text)
            stream.flush()
        except OSError:
            pass
