"""Homebrew, Colima, Docker and the Pi-hole that runs in it, as far as this Mac can tell."""

from daemon.containers import commands  # noqa: F401 (it registers the control commands)
from daemon.containers.world import Containers


def start(mac):
    """Gives the Mac its container world."""
    mac.containers = Containers(mac)
