"""Homebrew, Colima, Docker and the Pi-hole that runs in it, as far as this Mac can tell."""

from daemon import feed, secure_dns
from daemon.containers import commands  # noqa: F401 (it registers the control commands)
from daemon.containers.world import Containers


async def start(mac):
    """Gives the Mac its container world, and the feed that tells of new images."""
    mac.containers = Containers(mac)
    await feed.start(mac)
    await secure_dns.start(mac)
