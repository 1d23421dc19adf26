"""A stand-in Pi-hole on free loopback ports, for tests that need no simulated Mac."""

import json
import os
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

SIMMAC = Path(__file__).resolve().parents[2] / "simmac"


def free_port():
    """A port that is free over TCP and UDP."""
    while True:
        with socket.socket() as tcp, socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as udp:
            tcp.bind(("127.0.0.1", 0))
            try:
                udp.bind(tcp.getsockname())
                return tcp.getsockname()[1]
            except OSError:
                continue


class StandIn:
    """Starts, directs and ends one stand-in; its settings folder outlives a restart."""

    def __init__(self, password="test-password", client=None, **knobs):
        self.client = client   # the address that everybody seems to have
        self.dns_port, self.web_port = free_port(), free_port()
        self._folder = tempfile.TemporaryDirectory(prefix="pihole-")
        self.folder = Path(self._folder.name)
        self.knobs = {"login_seconds": 0, "login_limit": 1000, "own_questions": -1, **knobs}
        self.start(password)

    def start(self, password):
        """A password of None leaves the environment without one."""
        variables = {} if password is None else {"FTLCONF_webserver_api_password": password}
        control = self.folder / "control"
        control.unlink(missing_ok=True)
        self.log = open(self.folder / "log", "ab")
        self.process = subprocess.Popen(
            [sys.executable, "-S", "-m", "pihole", "--dns", f"127.0.0.1:{self.dns_port}", "--web",
             f"127.0.0.1:{self.web_port}", "--data", str(self.folder / "data"), "--control", str(control), "--knobs",
             json.dumps(self.knobs), "--settled", *(["--client", self.client] if self.client else [])],
            env={"PYTHONPATH": str(SIMMAC), "PATH": os.environ["PATH"], **variables}, stdout=self.log,
            stderr=subprocess.STDOUT)
        self._channel = self._connect(control)
        self._lines = self._channel.makefile("rb")

    def _connect(self, control):
        deadline = time.monotonic() + 10
        while self.process.poll() is None and time.monotonic() < deadline:
            channel = socket.socket(socket.AF_UNIX)
            try:
                channel.connect(str(control))
                return channel
            except OSError:
                channel.close()
                time.sleep(0.005)
        raise RuntimeError(self.printed())

    def end(self, by_force=False):
        self.process.send_signal(signal.SIGKILL if by_force else signal.SIGTERM)
        self.process.wait(10)
        self._lines.close()
        self._channel.close()
        self.log.close()

    def restart(self, password="test-password", by_force=False):
        self.end(by_force)
        self.start(password)

    def freeze(self, seconds):
        """Lets the process stand still for that long."""
        self.process.send_signal(signal.SIGSTOP)
        time.sleep(seconds)
        self.process.send_signal(signal.SIGCONT)

    def close(self):
        self.end()
        self._folder.cleanup()

    def ask(self, **request):
        """Directs the play; the answer must be good."""
        self._channel.sendall(json.dumps(request).encode() + b"\n")
        answer = json.loads(self._lines.readline())
        if not answer["ok"]:
            raise AssertionError(answer["error"])
        return answer

    def set(self, name, value):
        self.ask(do="set", name=name, value=value)

    def dig(self, name, kind="A", *options):
        """dig's output with its comments and answers."""
        return subprocess.run(["dig", "@127.0.0.1", "-p", str(self.dns_port), "+time=1", "+tries=1", "+noall",
                               "+comments", "+answer", *options, name, kind], capture_output=True, text=True).stdout

    def short(self, name, kind="A", *options):
        """Only the answers' data, one a line."""
        return subprocess.run(["dig", "@127.0.0.1", "-p", str(self.dns_port), "+time=1", "+tries=1", "+short", *options,
                               name, kind], capture_output=True, text=True).stdout.strip()

    def printed(self):
        return (self.folder / "log").read_bytes().decode()
