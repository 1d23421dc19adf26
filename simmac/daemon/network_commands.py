"""The control commands for the network."""

import ipaddress

from daemon.control import Refused, command, on_off, one_of
from daemon.network import VPN, Service


@command("wifi", "wifi on|off")
def wifi(mac, args):
    """Switches Wi-Fi."""
    mac.network.wifi = on_off(args)
    mac.network.publish()


@command("vpn", "vpn on [ADDRESS] [split] | vpn off: a VPN whose resolver goes first (split: the route stays)")
def vpn(mac, args):
    """Brings a VPN up or down."""
    network = mac.network
    split = args[-1:] == ["split"]
    words = args[:-1] if split else args
    if words == ["off"]:
        network.vpn = None
    elif words[:1] == ["on"] and len(words) <= 2:
        network.vpn = _address(words[1]) if len(words) == 2 else VPN
        network.vpn_takes_route = not split
    else:
        raise Refused("Say vpn on [ADDRESS] [split], or vpn off.")
    network.publish()


@command("hidden-dns", "hidden-dns ADDRESS|none: takes every lookup without being listed, as encrypted DNS does")
def hidden_dns(mac, args):
    """What a profile with encrypted DNS or Private Relay does: scutil goes on listing the Mac's own servers."""
    if len(args) != 1:
        raise Refused("Say one address, or none.")
    mac.network.hidden_dns = None if args == ["none"] else _address(args[0])
    mac.network.publish()


@command("service", "service add NAME [DEVICE] [linked] | remove NAME | rename NAME NEW | disable NAME | enable NAME"
                    " | link NAME | unlink NAME | first NAME")
def service(mac, args):
    """Changes the list of services."""
    if len(args) < 2 or args[0] not in ACTIONS:
        raise Refused(f"Say one of: {', '.join(ACTIONS)}, then the service's name.")
    ACTIONS[args[0]](mac.network, args[1], args[2:])
    mac.network.publish()


def _known(network, name):
    found = network.find(name)
    if found is None:
        raise Refused(f"There is no service \"{name}\".")
    return found


def _add(network, name, rest):
    if network.find(name) is not None:
        raise Refused(f"There is a service \"{name}\" already.")
    linked = rest[-1:] == ["linked"]
    devices = rest[:-1] if linked else rest
    device = devices[0] if devices else f"en{len(network.services) + 3}"
    network.services.append(Service(name, device, linked=linked))


def _rename(network, name, rest):
    if len(rest) != 1 or network.find(rest[0]) is not None:
        raise Refused("Say one new name that no service has yet.")
    _known(network, name).name = rest[0]


def _first(network, name, _rest):
    found = _known(network, name)
    network.services.remove(found)
    network.services.insert(0, found)


def _set(field, value):
    return lambda network, name, _rest: setattr(_known(network, name), field, value)


ACTIONS = {
    "add": _add,
    "remove": lambda network, name, _rest: network.services.remove(_known(network, name)),
    "rename": _rename,
    "disable": _set("disabled", True), "enable": _set("disabled", False),
    "link": _set("linked", True), "unlink": _set("linked", False),
    "first": _first,
}


@command("servers", "servers NAME [ADDRESS...]: the DNS servers set by hand (none: automatic)")
def servers(mac, args):
    """Sets a service's servers as if by hand, without a prompt."""
    if not args:
        raise Refused("Say the service's name, then its servers.")
    _known(mac.network, args[0]).servers = [_address(text) for text in args[1:]]
    mac.network.publish()


@command("keeps", "keeps NAME yes|no|ADDRESS...: whether macOS keeps the servers that networksetup sets")
def keeps(mac, args):
    """Lets macOS silently keep other servers than it was given."""
    if len(args) < 2:
        raise Refused("Say the service's name, then yes, no or the servers that it keeps.")
    found = _known(mac.network, args[0])
    found.keeps = {"yes": True, "no": False}[args[1]] if args[1] in ("yes", "no") else \
        [_address(text) for text in args[1:]]


@command("dhcp", "dhcp ADDRESS...: the DNS servers that the router hands out")
def dhcp(mac, args):
    """What automatic means."""
    if not args:
        raise Refused("Say at least one address.")
    mac.network.dhcp = [_address(text) for text in args]
    mac.network.publish()


@command("router-ipv6", "router-ipv6 ADDRESS|none: a resolver that the router announces beside all others")
def router_ipv6(mac, args):
    """The router's own IPv6 resolver, which macOS lists even beside servers set by hand."""
    if len(args) != 1:
        raise Refused("Say one address, for example fe80::1%en0, or none.")
    mac.network.router_ipv6 = [] if args == ["none"] else [_address(args[0])]
    mac.network.publish()


@command("browser", "browser system | own-dns ADDRESS | leaves ADDRESS: whom it asks (leaves: from its second name)")
def browser(mac, args):
    """Lets browsers ask a resolver of their own, at once or after the first name."""
    if len(args) == 2 and args[0] in ("own-dns", "leaves"):
        mac.network.browser_dns = _address(args[1])
    else:
        one_of(args, "system")
        mac.network.browser_dns = None
    mac.network.browser_stays = 1 if args[0] == "leaves" else 0


@command("outside-questions", "outside-questions: the names that servers outside the Mac were asked for")
def outside_questions(mac, _args):
    """Who asked past Pi-hole."""
    return [{"server": server, "name": name} for server, name in mac.network.outside_dns.questions]


def _address(text):
    try:
        return str(ipaddress.ip_address(text))
    except ValueError:
        raise Refused(f"{text} is not an address.") from None
