"""scutil --dns: the resolvers that macOS uses, in its layout."""

from daemon.tools import tool

MULTICAST = (("local", 300000), ("254.169.in-addr.arpa", 300200), ("8.e.f.ip6.arpa", 300400),
             ("9.e.f.ip6.arpa", 300600), ("a.e.f.ip6.arpa", 300800), ("b.e.f.ip6.arpa", 301000))
REACHABLE = "0x00000002 (Reachable)"
NEXT_DOOR = "0x00020002 (Reachable,Directly Reachable Address)"
LOCAL = "0x00030002 (Reachable,Local Address,Directly Reachable Address)"
TUNNEL = "0x00000003 (Reachable,Transient Connection)"
NOT_REACHABLE = "0x00000000 (Not Reachable)"


@tool("scutil", at="/usr/sbin/scutil")
async def scutil(call):
    """Prints the resolver configuration; other uses are refused."""
    if call.argv != ["--dns"]:
        await call.err("usage: scutil --dns\n\tshow DNS configuration.\n")
        return 64
    await call.out(report(call.mac.network))
    return 0


def report(network):
    """The whole text of `scutil --dns`."""
    default = _default_resolvers(network)
    parts = ["DNS configuration", *default, *_multicast_resolvers(len(default) + 1)]
    scoped = [_scoped(number, network, service)
              for number, service in enumerate(filter(network.is_up, network.services), 1)]
    if scoped:
        parts += ["DNS configuration (for scoped queries)", *scoped]
    if network.vpn and network.primary():
        parts += ["DNS configuration (for service-specific queries)", _service_specific(network)]
    return "\n\n".join(parts) + "\n"


def reach(network, servers):
    """What scutil says about the way to the first server."""
    if not servers:
        return NOT_REACHABLE
    if servers[0].startswith("127.") or servers[0] == "::1":
        return LOCAL
    return NEXT_DOOR if servers[0] in network.dhcp or servers[0].startswith("fe80:") else REACHABLE


def _block(number, *rows):
    return "\n".join([f"resolver #{number}", *(f"  {name:<9}: {value}" if len(name) < 9 else f"  {name} : {value}"
                                               for name, value in rows)])


def _servers(servers):
    return [(f"nameserver[{index}]", server) for index, server in enumerate(servers)]


def _interface(network, device):
    return "if_index", f"{network.index_of(device)} ({device})"


def _records(servers):
    only_ipv6 = servers and all(":" in server for server in servers)
    return "Request AAAA records" if only_ipv6 else "Request A records"


def _default_resolvers(network):
    primary = network.primary()
    if primary is None:
        return [_block(1, ("flags", ""), ("reach", NOT_REACHABLE))]
    if network.vpn and not network.vpn_takes_route:
        return [_supplemental(network), _default(2, network, network.servers_of(primary), ("order", 200000))]
    return [_default(1, network, network.default_servers())]


def _default(number, network, servers, *more):
    in_vpn = servers == [network.vpn]
    device = "utun4" if in_vpn else network.primary().device
    return _block(number, ("search domain[0]", "corp.example" if in_vpn else network.search), *_servers(servers),
                  _interface(network, device), ("flags", _records(servers)), ("reach", reach(network, servers)), *more)


def _supplemental(network):
    """The resolver of a VPN that leaves the route alone and takes every name all the same."""
    return _block(1, *_servers([network.vpn]), _interface(network, "utun4"),
                  ("flags", "Supplemental, Request A records"), ("reach", TUNNEL), ("order", 101400))


def _multicast_resolvers(first):
    return [_block(number, ("domain", domain), ("options", "mdns"), ("timeout", "5"), ("flags", "Request A records"),
                   ("reach", NOT_REACHABLE), ("order", order))
            for number, (domain, order) in enumerate(MULTICAST, first)]


def _scoped(number, network, service):
    servers = network.servers_of(service)
    return _block(number, ("search domain[0]", network.search), *_servers(servers), _interface(network, service.device),
                  ("flags", "Scoped, " + _records(servers)), ("reach", reach(network, servers)))


def _service_specific(network):
    return _block(1, ("search domain[0]", "corp.example"), *_servers([network.vpn]), _interface(network, "utun4"),
                  ("flags", "Service-specific, Request A records"), ("reach", REACHABLE))
