"""The folders of programs: links to what the host has, and places for the tools of a Mac."""

import contextlib
import os

HOST = "/run/host/usr"
FOLDERS = ("bin", "sbin")
# What a developer's machine may have there, and a Mac must not seem to have.
NOT_ON_A_MAC = {"brew", "colima", "docker", "docker-compose", "dockerd", "limactl", "podman", "simmac"}


def plant(command):
    """Fills /usr/bin and /usr/sbin; a bound folder of the host would take no further files. `simmac` is there too."""
    os.symlink(command, "/usr/bin/simmac")
    for folder in FOLDERS:
        for name in os.listdir(f"{HOST}/{folder}"):
            if name not in NOT_ON_A_MAC:
                os.symlink(f"{HOST}/{folder}/{name}", f"/usr/{folder}/{name}")
        os.chmod(f"/usr/{folder}", 0o555)


@contextlib.contextmanager
def writable(folder):
    """Lets the daemon, and only it, change a folder of programs."""
    mode = os.stat(folder).st_mode
    os.chmod(folder, 0o755)
    try:
        yield
    finally:
        os.chmod(folder, mode)
