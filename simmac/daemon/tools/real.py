"""The tools that are the real programs of the host; a fault can still strike them."""

from daemon.call import RunReal
from daemon.tools import tool


@tool("dig", at="/usr/bin/dig")
async def dig(_call):
    """The real dig."""
    raise RunReal("/run/host/usr/bin/dig")


@tool("lsof", at="/usr/sbin/lsof")
async def lsof(_call):
    """The real lsof."""
    raise RunReal("/run/host/usr/bin/lsof")
