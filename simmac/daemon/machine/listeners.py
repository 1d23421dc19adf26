"""What listens in a network, read from the kernel's tables."""

import ipaddress

_LISTENING = {"tcp": "0A", "udp": "07"}


def read(process):
    """All (protocol, address, port) of that process's network; a wildcard of IPv6 counts as one of IPv4."""
    found = set()
    for protocol, state in _LISTENING.items():
        for version in ("", "6"):
            with open(f"/proc/{process}/net/{protocol}{version}", encoding="ascii") as table:
                rows = [line.split() for line in table][1:]
            found.update((protocol, *_place(row[1])) for row in rows if row[3] == state)
    return found


def holds(listeners, protocol, address, port):
    """Whether one of them is in the way of a bind there."""
    return any((protocol, where, port) in listeners for where in (address, "0.0.0.0")) or \
        (address == "0.0.0.0" and any(each[0] == protocol and each[2] == port for each in listeners))


def _place(text):
    address, port = text.split(":")
    words = [int(address[start:start + 8], 16).to_bytes(4, "little") for start in range(0, len(address), 8)]
    found = str(ipaddress.ip_address(b"".join(words)))
    return ("0.0.0.0" if found == "::" else found), int(port, 16)
