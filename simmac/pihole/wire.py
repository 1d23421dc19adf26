"""DNS messages as bytes: reading questions, writing answers."""

import ipaddress
import struct
from dataclasses import dataclass

TYPES = {"A": 1, "NS": 2, "CNAME": 5, "SOA": 6, "PTR": 12, "MX": 15, "TXT": 16, "AAAA": 28, "SRV": 33,
         "NAPTR": 35, "DS": 43, "RRSIG": 46, "DNSKEY": 48, "SVCB": 64, "HTTPS": 65, "ANY": 255}
TYPE_NAMES = {number: name for name, number in TYPES.items()}
NOERROR, FORMERR, SERVFAIL, NXDOMAIN, NOTIMP, REFUSED = range(6)
_OPT = 41


class Malformed(Exception):
    """A message that cannot be read; rcode says how to answer it."""


@dataclass(frozen=True)
class Question:
    """One question: the name as it was asked, and what its answer needs to echo."""

    message_id: int
    flags: int
    raw: bytes
    name: str
    type_number: int
    edns: bool
    udp_size: int

    @property
    def type(self) -> str:
        return TYPE_NAMES.get(self.type_number, "OTHER")


def _read_name(data: bytes, at: int) -> tuple[str, int]:
    labels = []
    while True:
        if at >= len(data):
            raise Malformed("name runs past the end")
        length = data[at]
        at += 1
        if length == 0:
            break
        if length > 63 or at + length > len(data):
            raise Malformed("bad label")
        labels.append(data[at:at + length].decode("latin-1"))
        at += length
    name = ".".join(labels)
    if len(name) > 253:
        raise Malformed("name too long")
    return name, at


def _edns_size(data: bytes, at: int, counts: tuple) -> tuple[bool, int]:
    answers, authorities, additional = counts
    if answers or authorities or not additional or len(data) < at + 11 or data[at] != 0:
        return False, 512
    kind, size = struct.unpack("!HH", data[at + 1:at + 5])
    return (True, max(size, 512)) if kind == _OPT else (False, 512)


def read_question(data: bytes) -> Question:
    """Reads a query; Malformed when it is none."""
    message_id, flags, questions, *counts = struct.unpack("!6H", data[:12])
    if questions != 1:
        raise Malformed("not exactly one question")
    name, at = _read_name(data, 12)
    if at + 4 > len(data):
        raise Malformed("question cut short")
    type_number, _ = struct.unpack("!HH", data[at:at + 4])
    edns, size = _edns_size(data, at + 4, tuple(counts))
    return Question(message_id, flags, data[12:at + 4], name, type_number, edns, size)


def pack_name(name: str) -> bytes:
    labels = [label.encode("latin-1") for label in name.split(".") if label]
    return b"".join(bytes([len(label)]) + label for label in labels) + b"\0"


def _pack_value(kind: str, value: str) -> bytes:
    if kind in ("A", "AAAA"):
        return ipaddress.ip_address(value).packed
    if kind == "TXT":
        return bytes([len(value)]) + value.encode("latin-1")
    return pack_name(value)


def _record(owner: bytes, kind: int, ttl: int, value: bytes) -> bytes:
    return owner + struct.pack("!HHIH", kind, 1, ttl, len(value)) + value


def answer_record(kind: str, value: str, ttl: int) -> bytes:
    """A record of the name that was asked for."""
    return _record(b"\xc0\x0c", TYPES[kind], ttl, _pack_value(kind, value))


def soa_record(zone: str) -> bytes:
    value = pack_name("a.gtld-servers.net") + pack_name("nstld.verisign-grs.com")
    value += struct.pack("!5I", 2026112100, 1800, 900, 604800, 900)
    return _record(pack_name(zone), TYPES["SOA"], 900, value)


def _header(message_id: int, query_flags: int, rcode: int, truncated: bool, counts: tuple) -> bytes:
    flags = 0x8080 | (query_flags & 0x7900) | (0x0200 if truncated else 0) | rcode
    return struct.pack("!6H", message_id, flags, *counts)


def _opt(question: Question) -> bytes:
    return b"\0" + struct.pack("!HHIH", _OPT, 1232, 0, 0) if question.edns else b""


def reply(question: Question, rcode: int, answers: list, authority: list = (), limit: int = 65535) -> bytes:
    """The answer to a question, cut to its header with the TC bit when it is longer than the limit."""
    opt = _opt(question)
    counts = (1, len(answers), len(authority), 1 if opt else 0)
    body = question.raw + b"".join(answers) + b"".join(authority) + opt
    message = _header(question.message_id, question.flags, rcode, False, counts) + body
    if len(message) <= limit:
        return message
    counts = (1, 0, 0, 1 if opt else 0)
    return _header(question.message_id, question.flags, rcode, True, counts) + question.raw + opt


def error_reply(data: bytes, rcode: int) -> bytes:
    """The answer to a message whose question could not be read."""
    message_id, flags = struct.unpack("!HH", data[:4])
    return _header(message_id, flags, rcode, False, (0, 0, 0, 0))
