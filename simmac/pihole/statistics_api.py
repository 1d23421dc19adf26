"""The web API's counters, top lists and the history of a day."""

from collections import Counter

from .query_log import CACHED, HIDDEN, REPLY_NAMES, STATUS_NAMES, TYPE_ORDER

_SLOT = 600
_SLOTS = 145
_NEXT_SLOT_EARLY = 60   # seconds before it begins, the next slot is there


class StatisticsApi:
    """Counts what the query log holds."""

    def __init__(self, pihole):
        self._pihole = pihole
        self._log = pihole.log

    def routes(self):
        return [("GET", "/api/stats/summary", self._summary), ("GET", "/api/stats/recent_blocked", self._recent),
                ("GET", "/api/stats/top_domains", self._top_domains), ("GET", "/api/stats/top_clients", self._top_clients),
                ("GET", "/api/history", self._history), ("GET", "/api/history/clients", self._by_client),
                ("GET", "/api/history/database", self._from_database)]

    def counters(self) -> dict:
        entries = self._log.all()
        total = len(entries)
        blocked = sum(entry.blocked for entry in entries)
        statuses = Counter(entry.status for entry in entries)
        replies = Counter(entry.reply for entry in entries)
        types = Counter(entry.type for entry in entries)
        since = self._pihole.clock.now() - 60
        return {"total": total, "blocked": blocked, "percent_blocked": 100.0 * blocked / total if total else 0,
                "unique_domains": len({entry.domain for entry in entries}), "forwarded": statuses["FORWARDED"],
                "cached": sum(statuses[name] for name in CACHED),
                "frequency": round(sum(entry.time > since for entry in entries) / 60, 1),
                "types": {name: types[name] for name in TYPE_ORDER},
                "status": {name: statuses[name] for name in STATUS_NAMES},
                "replies": {name: replies[name] for name in REPLY_NAMES}}

    def _summary(self, turn):
        clients = len(self._log.clients())
        gravity = self._pihole.gravity
        return turn.good({"queries": self.counters(), "clients": {"active": clients, "total": clients},
                          "gravity": {"domains_being_blocked": gravity.size, "last_update": gravity.last_update}})

    def _level(self) -> int:
        return self._pihole.knobs.privacy

    def recent(self, count: int) -> list[str]:
        names = [entry.domain for entry in reversed(self._log.all()) if entry.blocked]
        return [] if self._level() >= 1 else names[:count]

    def _recent(self, turn):
        return turn.good({"blocked": self.recent(int(turn.number("count", 1)))})

    def top_domains(self, blocked: bool) -> list[tuple[str, int]]:
        """Names that a blocked one led to count too."""
        counts = Counter()
        for entry in self._log.all():
            if entry.blocked == blocked:
                counts[entry.domain] += 1
                counts.update([entry.cname] if entry.cname else [])
        del counts[HIDDEN]
        return counts.most_common()

    def _top_domains(self, turn):
        blocked, count = turn.switch("blocked"), int(turn.number("count", 10))
        if self._level() >= 1:
            return turn.good({"domains": [], "total_queries": -1, "blocked_queries": -1})
        shown = [{"domain": name, "count": number} for name, number in self.top_domains(blocked)[:count]]
        return turn.good({"domains": shown, **self._totals()})

    def _top_clients(self, turn):
        blocked, count = turn.switch("blocked"), int(turn.number("count", 10))
        if self._level() >= 2:
            return turn.good({"clients": [], "total_queries": -1, "blocked_queries": -1})
        shown = [{"name": "localhost" if client == "127.0.0.1" else "", "ip": client, "count": number}
                 for client, number in self.top_clients(blocked)[:count]]
        return turn.good({"clients": shown, **self._totals()})

    def top_clients(self, blocked: bool) -> list[tuple[str, int]]:
        entries = (entry for entry in self._log.all() if entry.blocked or not blocked)
        return Counter(entry.client for entry in entries).most_common()

    def _totals(self) -> dict:
        entries = self._log.all()
        return {"total_queries": len(entries), "blocked_queries": sum(entry.blocked for entry in entries)}

    # -- the history ------------------------------------------------------------------------------------------------

    def _middles(self) -> list[int]:
        """The middle of each slot, oldest first; the last is the running one or just the next."""
        last = int((self._pihole.clock.now() + _NEXT_SLOT_EARLY) // _SLOT)
        return [slot * _SLOT + _SLOT // 2 for slot in range(last - _SLOTS + 1, last + 1)]

    def _slots(self) -> dict[int, Counter]:
        """What was asked in each slot, by its beginning."""
        slots = {}
        for entry in self._log.all():
            slot = slots.setdefault(int(entry.time // _SLOT) * _SLOT, Counter())
            slot.update(["total", "blocked" if entry.blocked else "cached" if entry.status in CACHED else
                         entry.status.lower()])
        return slots

    def _history(self, turn):
        slots = self._slots()
        return turn.good({"history": [
            {"timestamp": middle, **_parts(slots.get(middle - _SLOT // 2, Counter()), "forwarded")}
            for middle in self._middles()]})

    def _from_database(self, turn):
        since, until = turn.number("from"), turn.number("until")
        if since is None or until is None:
            return turn.refuse('You need to specify both "from" and "until" in the request.')
        slots = self._slots()
        first = since // _SLOT * _SLOT
        return turn.good({"history": [{"timestamp": start, **_parts(slots[start])} for start in sorted(slots)
                                      if first <= start < until]})

    def _by_client(self, turn):
        shown = self.top_clients(False) if self._level() < 2 else []
        if limit := int(turn.number("N", 20)):
            shown = shown[:limit]
        named = {client for client, _ in shown}
        rows = {middle: Counter() for middle in self._middles()} if self._level() < 2 else {}
        for entry in self._log.all():
            middle = int(entry.time // _SLOT) * _SLOT + _SLOT // 2
            if middle in rows:
                rows[middle][entry.client if entry.client in named else "others"] += 1
        data = [{"timestamp": middle, "data": {**{client: row[client] for client in sorted(named)},
                                               "others": row["others"]}} for middle, row in rows.items()]
        clients = {client: {"name": "localhost" if client == "127.0.0.1" else None, "total": number}
                   for client, number in shown}
        return turn.good({"history": data, "clients": clients})


def _parts(slot: Counter, *more: str) -> dict:
    return {name: slot[name] for name in ("total", "cached", "blocked", *more)}
