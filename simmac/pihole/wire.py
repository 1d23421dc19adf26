"""DNS messages as bytes: reading questions, writing answers."""

import ipaddress
import struct
from dataclasses import dataclass

TYPES = {"A": 1, "NS": 2, "CNAME": 5, "SOA": 6, "PTR": 12, "MX": 15, "TXT": 16, "AAAA": 28, "SRV": 33,
         "NAPTR": 35, "DS": 43, "RRSIG": 46, "DNSKEY": 48, "SVCB": 64, "HTTPS": 65, "ANY": 255}
TYPE_NAMES = {number: name for name, number in TYPES.items()}
NOERROR, FORMERR, SERVFAIL, NXDOMAIN, NOTIMP, REFUSED = range(6)
_OPT = 41
_CLIENT_SUBNET, _EXTENDED_ERROR = 8, 15
BLOCKED, STALE_ANSWER = 15, 3   # codes of extended errors


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
    subnet: str | None = None   # the client that the asker names, when it names exactly one

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


def _read_edns(data: bytes, at: int, counts: tuple) -> tuple[bool, int, bytes]:
    """Whether there is an OPT record, the size that it allows, and its options."""
    answers, authorities, additional = counts
    if answers or authorities or not additional or len(data) < at + 11 or data[at] != 0:
        return False, 512, b""
    kind, size, _, length = struct.unpack("!HHIH", data[at + 1:at + 11])
    return (True, max(size, 512), data[at + 11:at + 11 + length]) if kind == _OPT else (False, 512, b"")


def _single_client(options: bytes) -> str | None:
    """The address of a client subnet option that stands for one client alone, and not for this machine."""
    while len(options) >= 4:
        code, length = struct.unpack("!HH", options[:4])
        value, options = options[4:4 + length], options[4 + length:]
        if code == _CLIENT_SUBNET and len(value) == length and value[:3] in (b"\0\1\x20", b"\0\2\x80"):
            try:
                address = ipaddress.ip_address(value[4:])
            except ValueError:
                return None
            return None if address.is_loopback else str(address)
    return None


def read_question(data: bytes) -> Question:
    """Reads a query; Malformed when it is none."""
    message_id, flags, questions, *counts = struct.unpack("!6H", data[:12])
    if questions != 1:
        raise Malformed("not exactly one question")
    name, at = _read_name(data, 12)
    if at + 4 > len(data):
        raise Malformed("question cut short")
    type_number, _ = struct.unpack("!HH", data[at:at + 4])
    edns, size, options = _read_edns(data, at + 4, tuple(counts))
    return Question(message_id, flags, data[12:at + 4], name, type_number, edns, size, _single_client(options))


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


def answer_record(kind: str, value: str, ttl: int, owner: str = "") -> bytes:
    """A record of that owner, or of the name that was asked for."""
    return _record(pack_name(owner) if owner else b"\xc0\x0c", TYPES[kind], ttl, _pack_value(kind, value))


def soa_record(zone: str) -> bytes:
    value = pack_name("a.gtld-servers.net") + pack_name("nstld.verisign-grs.com")
    value += struct.pack("!5I", 2026112100, 1800, 900, 604800, 900)
    return _record(pack_name(zone), TYPES["SOA"], 900, value)


_AUTHORITATIVE, _TRUNCATED = 0x0400, 0x0200


def _header(message_id: int, query_flags: int, rcode: int, flags: int, counts: tuple) -> bytes:
    return struct.pack("!6H", message_id, 0x8080 | (query_flags & 0x7900) | flags | rcode, *counts)


def opt_record(error: tuple[int, str] | None = None) -> bytes:
    """The record of an answer to a question with EDNS: with an extended error, its code and text, when there is one."""
    told = struct.pack("!H", error[0]) + error[1].encode() if error else b""
    option = struct.pack("!HH", _EXTENDED_ERROR, len(told)) + told if error else b""
    return b"\0" + struct.pack("!HHIH", _OPT, 1232, 0, len(option)) + option


def reply(question: Question, rcode: int, answers: list, authority: list = (), opt: bytes = b"",
          own: bool = False, limit: int = 65535) -> bytes:
    """The answer to a question, an own one or not, cut to its header with the TC bit when it exceeds the limit."""
    flags = _AUTHORITATIVE if own else 0
    counts = (1, len(answers), len(authority), 1 if opt else 0)
    body = question.raw + b"".join(answers) + b"".join(authority) + opt
    message = _header(question.message_id, question.flags, rcode, flags, counts) + body
    if len(message) <= limit:
        return message
    counts = (1, 0, 0, 1 if opt else 0)
    return _header(question.message_id, question.flags, rcode, flags | _TRUNCATED, counts) + question.raw + opt


def error_reply(data: bytes, rcode: int) -> bytes:
    """The answer to a message whose question could not be read."""
    message_id, flags = struct.unpack("!HH", data[:4])
    return _header(message_id, flags, rcode, 0, (0, 0, 0, 0))
