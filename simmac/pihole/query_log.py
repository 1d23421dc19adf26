"""What was asked in the last day: the newest questions, and what the counters are made of."""

import random
from dataclasses import asdict, dataclass

STATUS_NAMES = ("UNKNOWN GRAVITY FORWARDED CACHE REGEX DENYLIST EXTERNAL_BLOCKED_IP EXTERNAL_BLOCKED_NULL "
                "EXTERNAL_BLOCKED_NXRA GRAVITY_CNAME REGEX_CNAME DENYLIST_CNAME RETRIED RETRIED_DNSSEC IN_PROGRESS "
                "DBBUSY SPECIAL_DOMAIN CACHE_STALE EXTERNAL_BLOCKED_EDE15").split()
BLOCKED = {name for name in STATUS_NAMES if name.startswith(("GRAVITY", "REGEX", "DENYLIST", "EXTERNAL", "SPECIAL"))}
CACHED = {"CACHE", "CACHE_STALE"}
REPLY_NAMES = ("UNKNOWN NODATA NXDOMAIN CNAME IP DOMAIN RRNAME SERVFAIL REFUSED NOTIMP OTHER DNSSEC NONE "
               "BLOB").split()
TYPE_ORDER = ("A AAAA ANY SRV SOA PTR TXT NAPTR MX DS RRSIG DNSKEY NS SVCB HTTPS OTHER").split()
DAY = 86400
HIDDEN, NOBODY = "hidden", "0.0.0.0"

_FLUSH_SECONDS = 0.9
_SHORTEST_DELAY = 0.1
_BUSY_MINUTES = 5


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
    list_id: int | None
    cname: str | None
    visible_at: float

    @property
    def blocked(self) -> bool:
        return self.status in BLOCKED

    def as_json(self) -> dict:
        name = "localhost" if self.client == "127.0.0.1" else None
        return {"id": self.id, "time": round(self.time, 7), "type": self.type, "status": self.status,
                "dnssec": "UNKNOWN", "domain": self.domain, "upstream": self.upstream,
                "reply": {"type": self.reply, "time": self.reply_seconds},
                "client": {"ip": self.client, "name": name}, "list_id": self.list_id,
                "ede": {"code": -1, "text": None}, "cname": self.cname}


class QueryLog:
    """Keeps every question of a day; a question is counted at once and listed a little later."""

    def __init__(self, clock, knobs):
        self._clock = clock
        self._knobs = knobs
        self._phase = random.random()
        self._next_id = 0
        self._entries: list[Entry] = []

    def add(self, kind: str, verdict, domain: str, seconds: float, client: str) -> None:
        """Writes down what was decided, as far as the privacy level allows."""
        level = self._knobs.privacy
        entry = Entry(self._next_id, self._clock.now(), kind if kind in TYPE_ORDER else "OTHER", verdict.status,
                      HIDDEN if level >= 1 else domain, verdict.upstream, verdict.reply, seconds,
                      NOBODY if level >= 2 else client, verdict.list_id, None if level >= 1 else verdict.cname,
                      self._visible_at())
        self._next_id += 1
        self._entries.append(entry)

    def _visible_at(self) -> float:
        now = self._clock.elapsed()
        if self._knobs.log_delay >= 0:
            return now + self._knobs.log_delay
        ready = now + _SHORTEST_DELAY
        return ready + (self._phase - ready) % _FLUSH_SECONDS

    def all(self) -> list[Entry]:
        """The entries of the last day, oldest first."""
        since = self._clock.now() - DAY
        while self._entries and self._entries[0].time < since:
            self._entries.pop(0)
        return self._entries

    def listed(self) -> list[Entry]:
        """The entries that show by now, newest first."""
        now = self._clock.elapsed()
        return [entry for entry in reversed(self.all()) if entry.visible_at <= now]

    def clients(self) -> set[str]:
        return {entry.client for entry in self.all()}

    def clear(self) -> None:
        self._entries.clear()
        self._next_id = 0

    def fill(self, questions: int, names: int) -> None:
        """Instead of what was asked: a whole day of questions, a quarter of them blocked, and at its end so many blocked
        names in a few minutes, each once."""
        self.clear()
        now = self._clock.now()
        quiet, busy = now - DAY + 60, now - _BUSY_MINUTES * 60
        asked = questions - names
        for number in range(asked):
            name = f"ad{number % 50}.example.net" if number % 4 == 0 else f"www{number % 900}.example.com"
            self._append(quiet + (busy - quiet) * number / asked, name, number % 4 == 0)
        for number in range(names):
            self._append(busy + (now - busy) * number / names, f"recent{number}.example.net", True)

    def _append(self, time: float, domain: str, blocked: bool) -> None:
        entry = Entry(self._next_id, time, "A", "GRAVITY" if blocked else "FORWARDED", domain,
                      None if blocked else "1.1.1.1#53", "IP", 0.001, "172.17.0.1", 1 if blocked else None, None, 0.0)
        self._next_id += 1
        self._entries.append(entry)

    def dump(self) -> list[dict]:
        """What the long-term database holds."""
        return [asdict(entry) for entry in self.all()]

    def load(self, stored: list[dict]) -> None:
        self._entries = [Entry(**{**each, "visible_at": 0.0}) for each in stored]
        self._next_id = self._entries[-1].id + 1 if self._entries else 0
