"""The Mac's network: its services, the resolvers that follow from them, and /etc/resolv.conf."""

import os

from daemon.addresses import Addresses
from daemon.outside_dns import PUBLIC, OutsideDns

ROUTER = "192.168.1.1"
VPN = "10.8.0.1"
INDEXES = {"lo0": 1, "en0": 15, "bridge0": 18, "utun4": 24}


class Service:
    """One network service: what System Settings lists, in its order."""

    def __init__(self, name, device, port=None, linked=False):
        self.name = name
        self.device = device
        self.port = port or name   # the hardware port
        self.linked = linked       # a cable is in, or Wi-Fi is joined
        self.disabled = False
        self.servers = []          # DNS servers set by hand; empty means automatic
        self.keeps = True          # True, False, or the servers that macOS keeps instead


class Network:
    """All services in order, and what the Mac uses of them."""

    def __init__(self, mac):
        self._mac = mac
        self._addresses = Addresses()
        self.hosts = []             # addresses of the internet at which something other than DNS answers
        self.outside_dns = OutsideDns(self)
        self.watchers = []          # functions that are called after every change
        self._restore()

    def _restore(self):
        self.services = [Service("Wi-Fi", "en0", linked=True), Service("Thunderbolt Bridge", "bridge0")]
        self.wifi = True
        self.internet = True
        self.dhcp = [ROUTER]
        self.search = "home.arpa"
        self.router_ipv6 = []       # resolvers that the router announces over IPv6
        self.vpn = None             # the resolver that a VPN brought
        self.vpn_takes_route = True
        self.hidden_dns = None      # a server that takes every lookup without being listed, as encrypted DNS does
        self.browser_dns = None     # a resolver that the browser asks instead of the system's
        self.browser_stays = 0      # for how many names it still asks the system's before
        self.flushes = 0

    def reset(self):
        """Wi-Fi on, automatic servers, internet there, no VPN."""
        self._restore()
        self.grant_port_53(self._mac.facts.port_53_granted)
        self.publish()

    # -- what follows from the state ----------------------------------------------------------------------------------

    def find(self, name):
        """The service of this name, or none."""
        return next((service for service in self.services if service.name == name), None)

    def is_up(self, service):
        """Whether the service carries traffic now."""
        wireless = service.port == "Wi-Fi"
        return service.linked and not service.disabled and (self.wifi or not wireless)

    def primary(self):
        """The service that carries the default route, or none."""
        return next((service for service in self.services if self.is_up(service)), None)

    def servers_of(self, service):
        """The DNS servers that a service brings: those set by hand, else those of the router."""
        return (service.servers or self.dhcp) + self.router_ipv6

    def default_servers(self):
        """The servers of the Mac's first resolver."""
        primary = self.primary()
        if primary is None:
            return []
        return [self.vpn] if self.vpn else self.servers_of(primary)

    def next_browser_dns(self):
        """The resolver that the browser asks for its next name; none is the system's."""
        if self.browser_stays > 0:
            self.browser_stays -= 1
            return None
        return self.browser_dns

    def reaches_internet(self):
        """Whether anything outside can be reached."""
        return self.internet and self.primary() is not None

    def default_device(self):
        """The device of the default route, or none."""
        primary = self.primary()
        if primary is None:
            return None
        return "utun4" if self.vpn and self.vpn_takes_route else primary.device

    def index_of(self, device):
        """The interface number that macOS prints for a device."""
        return INDEXES.get(device, 30 + sum(map(ord, device)) % 60)

    # -- changes ------------------------------------------------------------------------------------------------------

    def set_servers(self, service, servers):
        """What networksetup does; some services do not keep what they are given."""
        if service.keeps is True:
            service.servers = list(servers)
        elif service.keeps is not False:
            service.servers = list(service.keeps)
        self.publish()

    def publish(self):
        """Makes addresses and /etc/resolv.conf say what the state says."""
        connected = self.primary() is not None
        local = [PUBLIC] if connected else []
        hosts = self.hosts if connected else []
        if connected:
            local += [server for server in self.dhcp if server not in (PUBLIC, "127.0.0.1") and ":" not in server]
        if connected and self.vpn:
            local.append(self.vpn)
        self._addresses.show(local + hosts)
        self.outside_dns.follow(local)
        write_whole(self._mac.path("/etc/resolv.conf"), self.resolv_conf())
        for watcher in self.watchers:
            watcher()

    def resolv_conf(self):
        """The text of /etc/resolv.conf; without a network no server answers (an empty file would mean 127.0.0.1)."""
        servers = [self.hidden_dns] if self.hidden_dns and self.primary() else self.default_servers()
        lines = [f"nameserver {server}" for server in servers] or ["nameserver 192.0.2.1"]
        return "\n".join(["# Written by the simulated Mac.", *lines, "options timeout:1 attempts:1", ""])

    def grant_port_53(self, granted):
        """Lets every program bind port 53, or only those that macOS would let."""
        with open("/proc/sys/net/ipv4/ip_unprivileged_port_start", "w", encoding="ascii") as file:
            file.write("53" if granted else "1024")


def forget_closed_connections():
    """A port is free as soon as its holder is gone: no closed connection holds it for another minute."""
    with open("/proc/sys/net/ipv4/tcp_max_tw_buckets", "w", encoding="ascii") as file:
        file.write("0")


def write_whole(path, text, mode=0o644):
    """Replaces a file in one step."""
    with open(path + ".new", "w", encoding="utf-8") as file:
        file.write(text)
    os.chmod(path + ".new", mode)
    os.replace(path + ".new", path)
