"""networksetup: errors come on standard output, as the real one writes them."""

import ipaddress

from daemon.tools import tool

STAR = "An asterisk (*) denotes that a network service is disabled.\n"
NOT_VALID = "** Error: The parameters were not valid.\n"
USAGE = {
    "-getdnsservers": "<networkservice>\n\n\tDisplays DNS info for <networkservice>.\n",
    "-setdnsservers": "<networkservice> <dns1> [dns2] [...] \n\n\tSet the <networkservice> DNS servers to <dns1> [dns2]"
                      " [...]. Any number of dns servers can be specified. Specify \"Empty\" for <dns1> to clear all"
                      " dns entries.\n",
}
INVALID, NEEDS_ADMIN = 4, 14


@tool("networksetup", at="/usr/sbin/networksetup")
async def networksetup(call):
    """Lists the services, and shows and sets their DNS servers."""
    name, rest = (call.argv[0], call.argv[1:]) if call.argv else ("-help", [])
    if name not in ACTIONS:
        await call.out(f"Error: Unknown command \"{name}\".\n" if call.argv else "networksetup Help Information\n")
        return INVALID if call.argv else 0
    return await ACTIONS[name](call, rest)


async def _list(call, _rest):
    names = [("*" if each.disabled else "") + each.name for each in call.mac.network.services]
    await call.out(STAR + "".join(name + "\n" for name in names))
    return 0


async def _order(call, _rest):
    text = STAR
    for number, each in enumerate(call.mac.network.services, 1):
        mark = "*" if each.disabled else number
        text += f"({mark}) {each.name}\n(Hardware Port: {each.port}, Device: {each.device})\n\n"
    await call.out(text)
    return 0


async def _get(call, rest):
    if len(rest) != 1:
        return await _wrong_usage(call, "-getdnsservers")
    service = call.mac.network.find(rest[0])
    if service is None:
        return await _unknown(call, rest[0])
    if not service.servers:
        await call.out(f"There aren't any DNS Servers set on {service.name}.\n")
    else:
        await call.out("".join(server + "\n" for server in service.servers))
    return 0


async def _set(call, rest):
    if len(rest) < 2:
        return await _wrong_usage(call, "-setdnsservers")
    if not call.admin:
        await call.out("** Error: Command requires admin privileges.\n")
        return NEEDS_ADMIN
    service = call.mac.network.find(rest[0])
    if service is None:
        return await _unknown(call, rest[0])
    servers = [] if rest[1:] in (["Empty"], ["empty"]) else rest[1:]
    for server in servers:
        if not _is_address(server):
            await call.out(f"{server} is not a valid IP address.  No changes were saved.\n{NOT_VALID}")
            return INVALID
    call.mac.network.set_servers(service, servers)
    return 0


async def _wrong_usage(call, name):
    await call.out(f"** Error: The amount of parameters was not correct.\nUsage: networksetup {name} {USAGE[name]}")
    return INVALID


async def _unknown(call, name):
    await call.out(f"{name} is not a recognized network service.\n{NOT_VALID}")
    return INVALID


def _is_address(text):
    try:
        ipaddress.ip_address(text)
        return True
    except ValueError:
        return False


ACTIONS = {"-listallnetworkservices": _list, "-listnetworkserviceorder": _order, "-getdnsservers": _get,
           "-setdnsservers": _set}
