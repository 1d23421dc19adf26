"""A Docker engine of our own, with a registry beside it, in the network of a simulated Mac's machine.

It lives in a folder with two sockets: docker.sock is the engine's own; over control.sock a simulated Mac starts, stops
and empties it; with the start comes the network, as an open file. All its processes end with this one.
"""

import contextlib
import glob
import json
import os
import shutil
import signal
import socket
import socketserver
import subprocess
import sys
import tempfile
import threading
import time

from image import SIMMAC, Registry

sys.path.append(SIMMAC)

from launcher.folders import lock  # noqa: E402

TAGS = ("2026.09.0", "2026.10.0")
REGISTRY = "127.0.0.1:5000"
NAME_SERVER = "192.168.5.1"   # the dnsmasq of a simulated Mac's machine
CONTROL_GROUPS = "/sys/fs/cgroup"
SEARCHED = "/usr/sbin:/usr/bin:/sbin:/bin"
PREFIX = "corvane-engine-"
START_SECONDS = 30
LONGEST_REQUEST = 4096
IN_ITS_NAMESPACE = """\
mount --bind "$1/resolv.conf" /etc/resolv.conf &&
if [ -n "$2" ]; then mkdir -p "$1/data" && mount -t tmpfs -o size="$2" none "$1/data"; fi &&
exec dockerd --config-file "$1/engine.json"
"""
STOP_SECONDS = 30


class RealEngine:
    """One engine: off at first, and empty. `disk` is the size of a disk that is lost when it stops, such as "48m"."""

    def __init__(self, disk=None):
        _remove_dead_ones()
        self.folder, self._lock = _fresh_folder()
        self._group = os.path.basename(self.folder)
        self._disk = disk or ""
        self._network = None     # an open file: the network in which everything runs
        self._engine = None
        self._registry = None
        self._server = None
        try:
            self._furnish()
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends all and clears up."""
        self._end()
        if self._registry:
            self._registry.kill()
            self._registry.wait()
        if self._server:
            self._server.shutdown()
            self._server.server_close()
        if self._network is not None:
            os.close(self._network)
        _remove(self.folder)
        os.close(self._lock)

    # -- what a Mac asks for ----------------------------------------------------------------------------------------

    def serve(self):
        """Listens at control.sock from now on."""
        self._server = socketserver.UnixStreamServer(f"{self.folder}/control.sock", _Handler)
        self._server.engine = self
        threading.Thread(target=self._server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True).start()

    def start(self, network):
        """Starts the engine in this network, an open file; RuntimeError with its last words when it does not come."""
        if self._engine:
            return
        if self._network is None:
            self._network = os.dup(network)
            self._registry = self._launch("registry", ["docker-registry", "serve", f"{self.folder}/registry.json"])
        self._engine = self._launch("engine", [
            "unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "sh", "-c",
            IN_ITS_NAMESPACE, "dockerd", self.folder, self._disk])
        self._await_answer()

    def stop(self):
        """Ends the engine, and its containers first, as at the end of a machine."""
        if not self._engine:
            return
        self._signal(signal.SIGTERM)
        with contextlib.suppress(subprocess.TimeoutExpired):
            self._engine.wait(STOP_SECONDS)
        self._end()

    def clear(self):
        """Takes the engine down at once; it forgets images, containers and volumes."""
        self._end()
        shutil.rmtree(f"{self.folder}/data", ignore_errors=True)

    def docker(self, *words):
        """Runs the real client against it; answers with the finished process."""
        return subprocess.run(["docker", "--host", f"unix://{self.folder}/docker.sock", *words], check=False,
                              capture_output=True, text=True, env=self._environment(), timeout=60)

    def _end(self):
        """Kills what still runs: with the first process of its namespace, everything in it."""
        if self._engine:
            self._signal(signal.SIGKILL)
            self._engine.wait()
            self._engine = None
        for name in ("docker.sock", "pid"):
            with contextlib.suppress(FileNotFoundError):
                os.unlink(f"{self.folder}/{name}")
        shutil.rmtree(f"{self.folder}/run", ignore_errors=True)

    # -- how it is done ---------------------------------------------------------------------------------------------

    def _furnish(self):
        registry = Registry(f"{self.folder}/registry")
        for tag in TAGS:
            registry.add(tag)
        self._write("registry.json", json.dumps({
            "version": 0.1, "log": {"level": "warn"}, "http": {"addr": REGISTRY},
            "storage": {"filesystem": {"rootdirectory": f"{self.folder}/registry"}}}))
        # Published ports go through the proxy alone, so that neither packet filter nor kernel modules are needed.
        self._write("engine.json", json.dumps({
            "data-root": f"{self.folder}/data", "exec-root": f"{self.folder}/run", "pidfile": f"{self.folder}/pid",
            "hosts": [f"unix://{self.folder}/docker.sock"], "registry-mirrors": [f"http://{REGISTRY}"],
            "iptables": False, "ip-masq": False, "cgroup-parent": f"/{self._group}", "log-level": "warn"}))
        self._write("resolv.conf", f"nameserver {NAME_SERVER}\n")
        os.chmod(self.folder, 0o755)

    def _write(self, name, text):
        with open(f"{self.folder}/{name}", "w", encoding="ascii") as file:
            file.write(text)

    def _environment(self):
        return {"PATH": SEARCHED, "HOME": self.folder, "DOCKER_CONFIG": self.folder}

    def _launch(self, name, words):
        with open(f"{self.folder}/{name}.log", "ab") as log:
            return subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", "nsenter", f"--net=/proc/self/fd/{self._network}", *words],
                stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=[self._network], env=self._environment(),
                start_new_session=True)

    def _signal(self, number):
        for child in _children(self._engine.pid):
            with contextlib.suppress(ProcessLookupError):
                os.kill(child, number)

    def _await_answer(self):
        deadline = time.monotonic() + START_SECONDS
        while self.docker("info").returncode != 0:
            if self._engine.poll() is not None or time.monotonic() > deadline:
                self.stop()
                raise RuntimeError(f"The engine does not start: {self._last_words()}")
            time.sleep(0.05)

    def _last_words(self):
        with open(f"{self.folder}/engine.log", encoding="utf-8", errors="replace") as file:
            return (file.read().splitlines() or ["it said nothing"])[-1]


class _Handler(socketserver.StreamRequestHandler):
    """Carries out one line of JSON, {"do": "start" | "stop" | "clear"}, and answers with one."""

    def handle(self):
        line, descriptors, _, _ = socket.recv_fds(self.request, LONGEST_REQUEST, 1)
        engine = self.server.engine
        actions = {"start": lambda: engine.start(*descriptors), "stop": engine.stop, "clear": engine.clear}
        try:
            actions[json.loads(line)["do"]]()
            answer = {"ok": True}
        except Exception as error:   # whatever it is, whoever asked must hear of it
            answer = {"ok": False, "error": str(error)}
        finally:
            for descriptor in descriptors:
                os.close(descriptor)
        self.wfile.write(json.dumps(answer).encode() + b"\n")


def _children(process):
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as file:
            return [int(word) for word in file.read().split()]
    except FileNotFoundError:
        return []


def _fresh_folder():
    """A new folder and its lock. It gets its name when it is locked, so that nobody clears it away as a dead one."""
    unlocked = tempfile.mkdtemp(prefix=f"new-{PREFIX}")
    held = lock(unlocked)
    folder = f"{os.path.dirname(unlocked)}/{os.path.basename(unlocked).removeprefix('new-')}"
    os.rename(unlocked, folder)
    return folder, held


def _remove_dead_ones():
    """Clears away what engines left behind that were killed."""
    for folder in glob.glob(f"{tempfile.gettempdir()}/{PREFIX}*"):
        with contextlib.suppress(FileNotFoundError):   # it has just gone by itself
            held = lock(folder)
            if held is not None:
                _remove(folder)
                os.close(held)


def _remove(folder):
    shutil.rmtree(folder, ignore_errors=True)
    _remove_groups(os.path.basename(folder))


def _remove_groups(name):
    """The control groups of its containers are empty by now, but stay."""
    places = [CONTROL_GROUPS, *(f"{CONTROL_GROUPS}/{kind}" for kind in os.listdir(CONTROL_GROUPS))]
    for place in places:
        for folder, _, _ in os.walk(f"{place}/{name}", topdown=False):
            with contextlib.suppress(OSError):
                os.rmdir(folder)
