"""What was asked: the newest questions and the day's counters."""

import random
from collections import Counter
from dataclasses import dataclass

STATUS_NAMES = ("UNKNOWN GRAVITY FORWARDED CACHE REGEX DENYLIST EXTERNAL_BLOCKED_IP EXTERNAL_BLOCKED_NULL "
                "EXTERNAL_BLOCKED_NXRA GRAVITY_CNAME REGEX_CNAME DENYLIST_CNAME RETRIED RETRIED_DNSSEC IN_PROGRESS "
                "DBBUSY SPECIAL_DOMAIN CACHE_STALE EXTERNAL_BLOCKED_EDE15").split()
REPLY_NAMES = ("UNKNOWN NODATA NXDOMAIN CNAME IP DOMAIN RRNAME SERVFAIL REFUSED NOTIMP OTHER DNSSEC NONE "
               "BLOB").split()
TYPE_ORDER = ("A AAAA ANY SRV SOA PTR TXT NAPTR MX DS RRSIG DNSKEY NS SVCB HTTPS OTHER").split()

_FLUSH_SECONDS = 0.9
_SHORTEST_DELAY = 0.1


@dataclass(frozen=True)
class Entry:
    """One question and what became of it."""

    id: int
    time: float
    type: str
    status: str
    domain: str
    upstream: str | None
    reply: str
    reply_seconds: float
    client: str
    visible_at: float

    def as_json(self) -> dict:
        name = "localhost" if self.client == "127.0.0.1" else None
        return {"id": self.id, "time": round(self.time, 7), "type": self.type, "status": self.status,
                "dnssec": "UNKNOWN", "domain": self.domain, "upstream": self.upstream,
                "reply": {"type": self.reply, "time": self.reply_seconds},
                "client": {"ip": self.client, "name": name},
                "list_id": -3 if self.status == "GRAVITY" else None,
                "ede": {"code": -1, "text": None}, "cname": None}


class QueryLog:
    """Keeps every question since the start; a question is counted at once and listed a little later."""

    def __init__(self, clock, knobs):
        self._clock = clock
        self._knobs = knobs
        self._phase = random.random()
        self._entries: list[Entry] = []

    def add(self, kind, status, domain, upstream, reply, seconds, client) -> None:
        kind = kind if kind in TYPE_ORDER else "OTHER"
        entry = Entry(len(self._entries), self._clock.now(), kind, status, domain, upstream, reply, seconds, client,
                      self._visible_at())
        self._entries.append(entry)

    def _visible_at(self) -> float:
        now = self._clock.elapsed()
        if self._knobs.log_delay >= 0:
            return now + self._knobs.log_delay
        ready = now + _SHORTEST_DELAY
        return ready + (self._phase - ready) % _FLUSH_SECONDS

    def listed(self) -> list[Entry]:
        """The entries that show by now, newest first."""
        now = self._clock.elapsed()
        return [entry for entry in reversed(self._entries) if entry.visible_at <= now]

    def clear(self) -> None:
        self._entries.clear()

    def counters(self) -> dict:
        entries = self._entries
        total = len(entries)
        statuses = Counter(entry.status for entry in entries)
        blocked = statuses["GRAVITY"] + statuses["SPECIAL_DOMAIN"]
        replies = Counter(entry.reply for entry in entries)
        types = Counter(entry.type for entry in entries)
        return {"total": total, "blocked": blocked,
                "percent_blocked": 100.0 * blocked / total if total else 0,
                "unique_domains": len({entry.domain for entry in entries}),
                "forwarded": statuses["FORWARDED"],
                "cached": statuses["CACHE"] + statuses["CACHE_STALE"],
                "frequency": round(self._last_minute() / 60, 1),
                "types": {name: types[name] for name in TYPE_ORDER},
                "status": {name: statuses[name] for name in STATUS_NAMES},
                "replies": {name: replies[name] for name in REPLY_NAMES}}

    def _last_minute(self) -> int:
        since = self._clock.now() - 60
        return sum(entry.time > since for entry in self._entries)

    def clients(self) -> int:
        return len({entry.client for entry in self._entries})
