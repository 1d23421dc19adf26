"""route -n get default: through which device the Mac reaches the internet."""

from daemon.network import ROUTER
from daemon.tools import tool


@tool("route", at="/usr/sbin/route")
async def route(call):
    """Describes the default route; without a network there is none."""
    if [word for word in call.argv if word != "-n"] != ["get", "default"]:
        await call.err("usage: route [-dnqtv] command [[modifiers] args]\n")
        return 64
    device = call.mac.network.default_device()
    if device is None:
        await call.err("route: writing to routing socket: not in table\n")
        return 1
    await call.out(description(device))
    return 0


def description(device):
    """The text for one device; a tunnel has no gateway."""
    tunnel = device.startswith("utun")
    gateway = "" if tunnel else f"    gateway: {ROUTER}\n"
    flags = "<UP,DONE,CLONING,STATIC>" if tunnel else "<UP,GATEWAY,DONE,STATIC,PRCLONING,GLOBAL>"
    return ("   route to: default\ndestination: default\n       mask: default\n"
            f"{gateway}  interface: {device}\n      flags: {flags}\n"
            " recvpipe  sendpipe  ssthresh  rtt,msec    rttvar  hopcount      mtu     expire\n"
            "       0         0         0         0         0         0      1500         0 \n")
