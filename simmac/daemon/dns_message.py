"""Reading DNS questions and writing answers to them, as far as a small server needs it."""

import socket
import struct

A, SOA, ANY = 1, 6, 255
NOERROR, FORMERR, SERVFAIL, NXDOMAIN, NOTIMP, REFUSED = range(6)


class BadQuestion(Exception):
    """A packet that holds no question one could answer."""


def read_question(packet):
    """Identifier, flags, name, type and the question's own bytes."""
    if len(packet) < 12:
        raise BadQuestion
    identifier, flags, count = struct.unpack(">HHH", packet[:6])
    if flags & 0x8000 or count != 1:
        raise BadQuestion
    labels, position = [], 12
    while position < len(packet) and (length := packet[position]):
        if length > 63 or position + 1 + length > len(packet):
            raise BadQuestion
        labels.append(packet[position + 1:position + 1 + length].decode("latin-1"))
        position += 1 + length
    if position + 5 > len(packet):
        raise BadQuestion
    kind = struct.unpack(">H", packet[position + 1:position + 3])[0]
    return identifier, flags, ".".join(labels), kind, packet[12:position + 5]


def write_answer(identifier, flags, question, status, addresses=()):
    """An answer with A records, or with the SOA record that says "nothing here"."""
    reply_flags = 0x8080 | (flags & 0x7900) | status
    records = [struct.pack(">HHHIH", 0xC00C, A, 1, 60, 4) + socket.inet_aton(address) for address in addresses]
    authority = b"" if records or status not in (NOERROR, NXDOMAIN) else _soa()
    header = struct.pack(">HHHHHH", identifier, reply_flags, 1, len(records), 1 if authority else 0, 0)
    return header + question + b"".join(records) + authority


def _soa():
    data = b"\0\0" + struct.pack(">IIIII", 2026110100, 1800, 900, 604800, 60)
    return b"\0" + struct.pack(">HHIH", SOA, 1, 60, len(data)) + data


def write_question(name, kind=A):
    """A question as a client sends it."""
    labels = b"".join(bytes([len(label)]) + label.encode() for label in name.split("."))
    return struct.pack(">HHHHHH", 4711, 0x0100, 1, 0, 0, 0) + labels + b"\0" + struct.pack(">HH", kind, 1)
