"""Decides what a DNS question is answered with."""

import struct
import time
from dataclasses import dataclass, field

from . import names, wire

_LOCAL = {"localhost": {"A": ["127.0.0.1"], "AAAA": ["::1"]}, "pi.hole": {"A": ["0.0.0.0"]},
          "1.0.0.127.in-addr.arpa": {"PTR": ["localhost"]}}
_NULL_ANSWERS = {"A": "0.0.0.0", "AAAA": "::"}
_REPLY_NAMES = {"A": "IP", "AAAA": "IP", "PTR": "DOMAIN"}


@dataclass
class Verdict:
    """What is sent and what is written into the log about it."""

    status: str
    reply: str
    rcode: int = wire.NOERROR
    values: list = field(default_factory=list)
    ttl: int = names.TTL_SECONDS
    authority: str = ""
    upstream: str | None = None


class Resolver:
    """Answers from the block list, the local names, a cache, and the played internet."""

    def __init__(self, clock, knobs, blocking, log, print_log, upstream: str):
        self._clock = clock
        self._knobs = knobs
        self._blocking = blocking
        self._log = log
        self._print = print_log
        self._upstream = upstream
        self._cached_until: dict[tuple, float] = {}
        self._windows: dict[str, list] = {}
        self._settled_at = 0.0

    def started(self, settled: bool) -> None:
        """Begins anew, with an empty cache; unless it is settled, the block list takes a moment to be there."""
        self._cached_until.clear()
        self._windows.clear()
        self._settled_at = 0.0 if settled else self._clock.elapsed() + self._knobs.settle

    def answer(self, data: bytes, client: str, over_udp: bool) -> bytes | None:
        """The reply to a message; None when it deserves none."""
        if len(data) < 12 or data[2] & 0x80:
            return None
        if data[2] & 0x78:
            return wire.error_reply(data, wire.NOTIMP)
        try:
            question = wire.read_question(data)
        except (wire.Malformed, struct.error):
            return wire.error_reply(data, wire.FORMERR)
        limit = question.udp_size if over_udp else 65535
        if self._too_many(client):
            return wire.reply(question, wire.REFUSED, [], limit=limit)
        return self._send(question, client, limit)

    def _send(self, question: wire.Question, client: str, limit: int) -> bytes:
        began = time.perf_counter()
        name = question.name.lower()
        verdict = self._decide(name, question.type)
        answers = [wire.answer_record(question.type, value, verdict.ttl) for value in verdict.values]
        authority = [wire.soa_record(verdict.authority)] if verdict.authority else []
        message = wire.reply(question, verdict.rcode, answers, authority, limit)
        self._log.add(question.type, verdict.status, name, verdict.upstream, verdict.reply,
                      time.perf_counter() - began, client)
        self._tell(name, question.type, client, verdict)
        return message

    def _decide(self, name: str, kind: str) -> Verdict:
        if name in names.SPECIAL:
            return Verdict("SPECIAL_DOMAIN", "NXDOMAIN", wire.NXDOMAIN)
        if name in _LOCAL:
            return self._from_records("CACHE", _LOCAL[name], kind, name)
        settled = self._clock.elapsed() >= self._settled_at
        if settled and self._blocking.enabled and names.is_blocked(name):
            return self._blocked(kind)
        return self._from_internet(name, kind)

    def _blocked(self, kind: str) -> Verdict:
        if self._knobs.block_mode == "nxdomain":
            return Verdict("GRAVITY", "NXDOMAIN", wire.NXDOMAIN, ttl=2)
        if kind in _NULL_ANSWERS:
            return Verdict("GRAVITY", "IP", values=[_NULL_ANSWERS[kind]], ttl=2)
        return Verdict("GRAVITY", "NODATA")

    def _from_internet(self, name: str, kind: str) -> Verdict:
        now = self._clock.elapsed()
        if self._cached_until.get((name, kind), 0) > now:
            return self._from_records("CACHE", names.records(name), kind, name)
        if not self._knobs.internet:
            return Verdict("FORWARDED", "SERVFAIL", wire.SERVFAIL, upstream=self._upstream)
        self._cached_until[name, kind] = now + names.TTL_SECONDS
        return self._from_records("FORWARDED", names.records(name), kind, name)

    def _from_records(self, status: str, records: dict | None, kind: str, name: str) -> Verdict:
        upstream = self._upstream if status == "FORWARDED" else None
        if records is None:
            return Verdict(status, "NXDOMAIN", wire.NXDOMAIN, authority=name.rpartition(".")[2], upstream=upstream)
        values = records.get(kind, [])
        if not values:
            zone = ".".join(name.split(".")[-2:])
            return Verdict(status, "NODATA", authority=zone, upstream=upstream)
        return Verdict(status, _REPLY_NAMES.get(kind, "OTHER"), values=values, upstream=upstream)

    def _too_many(self, client: str) -> bool:
        now = self._clock.elapsed()
        window = self._windows.setdefault(client, [now, 0])
        if now - window[0] >= 60:
            window[:] = [now, 0]
        window[1] += 1
        if window[1] == self._knobs.question_limit + 1:
            left = round(60 - (now - window[0]))
            self._print.warning(f"RATE_LIMIT: Client {client} has been rate-limited for at least {left} seconds")
        return window[1] > self._knobs.question_limit

    def _tell(self, name: str, kind: str, client: str, verdict: Verdict) -> None:
        shown = verdict.values[0] if verdict.values else verdict.reply
        outcome = {"GRAVITY": f"gravity blocked {name} is {shown}",
                   "SPECIAL_DOMAIN": f"special domain {name} is {shown}",
                   "CACHE": f"cached {name} is {shown}"}.get(verdict.status, f"reply {name} is {shown}")
        line = f"query[{kind}] {name} from {client}: {outcome}"
        self._print.dns("".join(letter if letter.isprintable() else "?" for letter in line))
