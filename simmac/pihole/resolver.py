"""Takes a DNS message and gives back its answer."""

import ipaddress
import struct
import time

from . import wire
from .verdicts import Verdict, Verdicts


class Resolver:
    """Reads questions, limits each client, and writes what was decided into answer and log."""

    def __init__(self, clock, knobs, verdicts: Verdicts, log, print_log, ask_name):
        self._clock = clock
        self._knobs = knobs
        self._verdicts = verdicts
        self._log = log
        self._print = print_log
        self._ask_name = ask_name   # a function: looks an address's name up
        self._windows: dict[str, list] = {}
        self._known = set()         # clients whose names were looked up

    def started(self, settled: bool) -> None:
        """Starts over."""
        self._windows.clear()
        self._known.clear()
        self._verdicts.started(settled)

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
            return wire.reply(question, wire.REFUSED, [], opt=wire.opt_record() if question.edns else b"", limit=limit)
        return self._send(question, question.subnet or client, over_udp, limit)

    def ask_itself(self, name: str, kind: str) -> None:
        """A question of Pi-hole's own, which is in the log like any other."""
        self._note(self._verdicts.decide(name, kind), name, kind, 0.0001, "127.0.0.1")

    def _send(self, question: wire.Question, client: str, over_udp: bool, limit: int) -> bytes | None:
        began = time.perf_counter()
        name = question.name.lower()
        verdict = self._verdicts.decide(name, question.type, past_cache=question.subnet is not None)
        answers, last = [], ""
        for owner, target in zip(verdict.chain, verdict.chain[1:]):
            answers.append(wire.answer_record("CNAME", target, verdict.ttl, last and owner))
            last = target
        answers += [wire.answer_record(question.type, value, verdict.ttl, last) for value in verdict.values]
        authority = [wire.soa_record(verdict.authority)] if verdict.authority else []
        self._note(verdict, name, question.type, time.perf_counter() - began, client)
        if verdict.unanswered:
            return None
        return wire.reply(question, verdict.rcode, answers, authority, _opt(question, verdict, over_udp), verdict.own,
                          limit)

    def _note(self, verdict: Verdict, name: str, kind: str, seconds: float, client: str) -> None:
        if not verdict.counted:
            return
        self._log.add(kind, verdict, name, seconds, client)
        if client not in self._known and client != "127.0.0.1":
            self._known.add(client)
            self._ask_name(ipaddress.ip_address(client).reverse_pointer)

    def _too_many(self, client: str) -> bool:
        now = self._clock.elapsed()
        window = self._windows.setdefault(client, [now, 0])
        if now - window[0] >= 60:
            window[:] = [now, 0]
        window[1] += 1
        if window[1] == self._knobs.question_limit + 1:
            left = round(60 - (now - window[0]))
            self._print.info(f"Rate-limiting {client} for at least {left} second" + "s" * (left != 1))
        return window[1] > self._knobs.question_limit


def _opt(question: wire.Question, verdict: Verdict, over_udp: bool) -> bytes:
    """None in what the upstream says about names that are not there; extended errors of blocked names only over TCP."""
    negative = verdict.status == "FORWARDED" and not verdict.values
    if not question.edns or negative:
        return b""
    hidden = over_udp and verdict.error is not None and verdict.error[0] == wire.BLOCKED
    return wire.opt_record(None if hidden else verdict.error)
