"""What becomes of a question: answered locally, blocked, from the cache, or by the upstream."""

import math
from dataclasses import dataclass, field

from . import names, wire

_NULL = {"A": "0.0.0.0", "AAAA": "::"}
_LOOPBACK = {"A": ["127.0.0.1"], "AAAA": ["::1"]}
_REPLIES = {"A": "IP", "AAAA": "IP", "PTR": "DOMAIN"}
_BLOCKED_TTL = 2
_STALE_SECONDS = 3600   # how long an expired answer is still given
_LONGEST_CHAIN = 8
_REASONS = {"GRAVITY": "gravity", "DENYLIST": "denylist", "REGEX": "regex"}
_UPSTREAM_REASONS = {"EXTERNAL_BLOCKED_IP": "upstream IP", "EXTERNAL_BLOCKED_NULL": "upstream NULL",
                     "EXTERNAL_BLOCKED_NXRA": "upstream NXRA", "EXTERNAL_BLOCKED_EDE15": "upstream EDE 15"}


@dataclass
class Verdict:
    """What is sent and what is written into the log about it."""

    status: str
    reply: str
    rcode: int = wire.NOERROR
    values: list = field(default_factory=list)
    ttl: int = names.TTL_SECONDS
    chain: list = field(default_factory=list)   # names that lead to each other, the asked one first
    authority: str = ""
    upstream: str | None = None
    own: bool = False                           # Pi-hole's own answer
    error: tuple | None = None                  # an extended error: code and text
    list_id: int | None = None                  # what blocked or allowed it, as the log numbers it
    cname: str | None = None                    # the name that blocked, when another one was asked
    counted: bool = True
    unanswered: bool = False                    # nothing is sent


class Verdicts:
    """Decides about one question after the other, with a cache between them and the upstream."""

    def __init__(self, clock, knobs, blocking, gravity, upstream: str, address: str):
        self._clock = clock
        self._knobs = knobs
        self._blocking = blocking
        self._gravity = gravity
        self._upstream = upstream
        self._addresses = {"A": address, "AAAA": "fe80::42:acff:fe11:2"}
        self._expires: dict[tuple, float] = {}
        self._settled_at = 0.0

    def started(self, settled: bool) -> None:
        """Starts over, with an empty cache; unless it is settled, the block list takes a moment to be there."""
        self._expires.clear()
        self._settled_at = 0.0 if settled else self._clock.elapsed() + self._knobs.settle

    def decide(self, name: str, kind: str, past_cache: bool = False) -> Verdict:
        """About a name in small letters; some questions go to the upstream in any case."""
        if local := self._local(name, kind):
            return local
        allowed = self._gravity.used.allowing(name) if self._blocks() else None
        if self._blocks() and not allowed:
            if name in names.SPECIAL:
                return Verdict("SPECIAL_DOMAIN", "NXDOMAIN", wire.NXDOMAIN, own=True, error=(wire.BLOCKED, "special"))
            if denied := self._gravity.used.denying(name):
                return self._blocked(denied, kind)
        verdict = self._from_upstream(name, kind, past_cache)
        if allowed:
            verdict.list_id = allowed.id
            return verdict
        return self._through_chain(verdict, kind) if self._blocks() else verdict

    def _blocks(self) -> bool:
        return self._clock.elapsed() >= self._settled_at and self._blocking.enabled

    def _local(self, name: str, kind: str) -> Verdict | None:
        if name == "pi.hole":
            values = [self._addresses[kind]] if kind in self._addresses else []
            return Verdict("CACHE", "IP" if values else "NODATA", values=values, ttl=0, own=True, counted=False)
        if name == "localhost" or name.endswith(".localhost"):
            return _from_records("CACHE", _LOOPBACK, kind, ttl=0)
        if name == "1.0.0.127.in-addr.arpa":
            return _from_records("CACHE", {"PTR": ["localhost"]}, kind, ttl=0)
        if name.endswith(".bind"):
            return Verdict("CACHE", "NODATA", ttl=0, own=True)
        if name.rpartition(".")[2] in ("invalid", "test"):
            return Verdict("CACHE", "NXDOMAIN", wire.NXDOMAIN, own=True)
        return None

    # -- what is blocked --------------------------------------------------------------------------------------------

    def _blocked(self, denied: tuple, kind: str, through: str = "") -> Verdict:
        status, number, rule = denied
        verdict = self._as_blocking_mode_says(kind)
        if rule and rule.reply == "NXDOMAIN":
            verdict = Verdict("", "NXDOMAIN", wire.NXDOMAIN)
        verdict.ttl, verdict.own, verdict.list_id = _BLOCKED_TTL, True, number
        verdict.status = f"{status}_CNAME" if through else status
        verdict.error = (wire.BLOCKED, _REASONS[status] + (" (CNAME)" if through else ""))
        if through:
            verdict.reply, verdict.cname, verdict.upstream = "CNAME", through, self._upstream
        return verdict

    def _as_blocking_mode_says(self, kind: str) -> Verdict:
        mode = self._knobs.block_mode
        if mode == "nxdomain":
            return Verdict("", "NXDOMAIN", wire.NXDOMAIN)
        values = self._addresses if mode in ("ip", "ip-nodata-aaaa") else _NULL
        if kind not in values or mode == "nodata" or (mode == "ip-nodata-aaaa" and kind == "AAAA"):
            return Verdict("", "NODATA")
        return Verdict("", "IP", values=[values[kind]])

    def _through_chain(self, verdict: Verdict, kind: str) -> Verdict:
        """The verdict, unless a name on the way is blocked before one is allowed."""
        for name in verdict.chain[1:]:
            if self._gravity.used.allowing(name):
                break
            if denied := self._gravity.used.denying(name):
                return self._blocked(denied, kind, name)
        return verdict

    # -- what the upstream knows ------------------------------------------------------------------------------------

    def _from_upstream(self, name: str, kind: str, past_cache: bool) -> Verdict:
        now = self._clock.elapsed()
        left = self._expires.get((name, kind), -math.inf) - now
        if left > 0 and not past_cache:
            return self._known("CACHE", name, kind, math.ceil(left))
        reached = self._knobs.internet and self._knobs.upstream == "on"
        if reached:
            self._expires[name, kind] = now + names.TTL_SECONDS
        if left > -_STALE_SECONDS and not past_cache:
            verdict = self._known("CACHE_STALE", name, kind, 0)
            verdict.error = (wire.STALE_ANSWER, "")
            return verdict
        if not reached:
            silent = self._knobs.internet and self._knobs.upstream == "silent"
            return Verdict("FORWARDED", "NONE" if silent else "SERVFAIL", wire.SERVFAIL, upstream=self._upstream,
                           unanswered=silent)
        verdict = self._known("FORWARDED", name, kind, names.TTL_SECONDS)
        verdict.upstream = self._upstream
        return verdict

    def _known(self, status: str, name: str, kind: str, ttl: int) -> Verdict:
        if name in names.BLOCKED_UPSTREAM:
            return self._blocked_upstream(name, kind)
        chain = _chain(name)
        verdict = _from_records(status, names.records(chain[-1]), kind, ttl, chain[-1])
        verdict.chain = chain
        return verdict

    def _blocked_upstream(self, name: str, kind: str) -> Verdict:
        status = names.BLOCKED_UPSTREAM[name]
        verdict = Verdict(status, "NXDOMAIN", wire.NXDOMAIN)
        if (names.records(name) or {}).get(kind) or status == "EXTERNAL_BLOCKED_EDE15":
            verdict = self._as_blocking_mode_says(kind)
        if status == "EXTERNAL_BLOCKED_EDE15":
            verdict.reply = "NXDOMAIN"
        verdict.status, verdict.ttl, verdict.own, verdict.upstream = status, _BLOCKED_TTL, True, self._upstream
        verdict.error = (wire.BLOCKED, _UPSTREAM_REASONS[status])
        return verdict


def _chain(name: str) -> list[str]:
    found = [name]
    while len(found) < _LONGEST_CHAIN and (target := (names.records(found[-1]) or {}).get("CNAME")):
        found.append(target[0])
    return found


def _from_records(status: str, records: dict | None, kind: str, ttl: int, name: str = "") -> Verdict:
    """What some records say about a kind; without a name they are Pi-hole's own."""
    own = not name
    if records is None:
        return Verdict(status, "NXDOMAIN", wire.NXDOMAIN, ttl=ttl, authority=name.rpartition(".")[2], own=own)
    values = records.get(kind, [])
    if not values:
        return Verdict(status, "NODATA", ttl=ttl, authority=".".join(name.split(".")[-2:]), own=own)
    return Verdict(status, _REPLIES.get(kind, "OTHER"), values=values, ttl=ttl, own=own)
