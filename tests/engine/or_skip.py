"""Whether a Docker engine can run on this machine."""

import os
import shutil
import subprocess
import sys
import tarfile

from real_engine import CONTROL_GROUPS, SEARCHED, RealEngine

PROGRAMS = {"dockerd": "docker.io", "docker": "docker.io", "docker-proxy": "docker.io", "docker-registry": "docker-registry",
            "nsenter": "util-linux", "setpriv": "util-linux", "unshare": "util-linux", "mount": "mount"}
NOT_FOUND = 127
SKIPPED = 77


class Unable(Exception):
    """No engine can run here; the text is the reason."""


def or_skip():
    """Ends the program with ctest's word for "skipped", and a reason, where no engine can run."""
    try:
        _check_host()
        _probe()
    except Unable as reason:
        print(f"Skipped: {reason}.")
        sys.exit(SKIPPED)


def _check_host():
    """Unable when this machine is not one on which an engine can be tried."""
    if os.geteuid() != 0:
        raise Unable("only root may start a Docker engine")
    missing = {package for program, package in PROGRAMS.items() if not shutil.which(program, path=SEARCHED)}
    if missing:
        raise Unable(f"{' and '.join(sorted(missing))} not installed (see scripts/packages-engine.txt)")
    if not os.path.ismount(CONTROL_GROUPS):
        raise Unable(f"no control groups at {CONTROL_GROUPS}")


def _probe():
    """Starts an engine in a network of its own and ends it again; Unable when it cannot hold a container."""
    with RealEngine() as engine:
        with subprocess.Popen(["unshare", "--net", "sh", "-c", "echo; exec sleep 60"],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as place:
            try:
                if not place.stdout.readline():
                    raise Unable("this system does not allow a network namespace")
                with open(f"/proc/{place.pid}/ns/net", "rb") as network:
                    engine.start(network.fileno())
                _try_container(engine)
            except RuntimeError as error:
                raise Unable(str(error)) from error
            finally:
                place.kill()


def _try_container(engine):
    """Unable when not even the program is reached that an empty container lacks."""
    empty = f"{engine.folder}/empty.tar"
    with tarfile.open(empty, "w"):
        pass
    engine.docker("import", empty, "empty")
    tried = engine.docker("run", "--network", "none", "empty", "nothing")
    if tried.returncode != NOT_FOUND:
        raise Unable(f"no container can run: {tried.stderr.splitlines()[0]}")
