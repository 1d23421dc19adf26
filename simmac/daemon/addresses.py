"""The IPv4 addresses that exist in the private network beside 127.0.0.1."""

import fcntl
import socket
import struct

SIOCGIFFLAGS, SIOCSIFFLAGS, SIOCSIFADDR, SIOCSIFNETMASK = 0x8913, 0x8914, 0x8916, 0x891C
IFF_UP = 1


class Addresses:
    """Gives the loopback device further addresses and takes them away again."""

    def __init__(self):
        self._labels = {}   # address to label

    def show(self, addresses):
        """From now on exactly these addresses exist."""
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as handle:
            for address in [each for each in self._labels if each not in addresses]:
                _switch_off(handle, self._labels.pop(address))
            for address in addresses:
                if address not in self._labels:
                    self._labels[address] = self._free_label()
                    _switch_on(handle, self._labels[address], address)

    def _free_label(self):
        number = 1
        while f"lo:{number}" in self._labels.values():
            number += 1
        return f"lo:{number}"


def _switch_on(handle, label, address):
    for request, value in ((SIOCSIFADDR, address), (SIOCSIFNETMASK, "255.255.255.255")):
        fcntl.ioctl(handle, request, struct.pack("16sHH4s8s", label.encode(), socket.AF_INET, 0,
                                                 socket.inet_aton(value), b""))


def _switch_off(handle, label):
    answer = fcntl.ioctl(handle, SIOCGIFFLAGS, struct.pack("16sH14s", label.encode(), 0, b""))
    flags = struct.unpack("16sH14s", answer)[1]
    fcntl.ioctl(handle, SIOCSIFFLAGS, struct.pack("16sH14s", label.encode(), flags & ~IFF_UP, b""))
