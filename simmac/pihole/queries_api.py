"""The web API's list of questions, with its filters."""

import re

from .query_log import BLOCKED, CACHED, REPLY_NAMES, STATUS_NAMES, TYPE_ORDER

_PLAIN = {"client_ip": "client", "type": "type", "reply": "reply"}   # filters that want a member's very value
_DNSSEC = ["UNKNOWN", "SECURE", "INSECURE", "BOGUS", "ABANDONED", "TRUNCATED"]
_TYPES = [name for name in TYPE_ORDER if name not in ("SVCB", "HTTPS", "OTHER")] + ["OTHER", "SVCB", "HTTPS"]


class QueriesApi:
    """Shows entries of the query log."""

    def __init__(self, pihole):
        self._log = pihole.log
        self._knobs = pihole.knobs
        self._pihole = pihole

    def routes(self):
        return [("GET", "/api/queries", self._queries), ("GET", "/api/queries/suggestions", self._suggestions)]

    def _queries(self, turn):
        if self._knobs.privacy >= 3:
            return turn.good({"queries": [], "cursor": None})
        query = turn.request.query
        listed = self._log.listed()
        newest = listed[0].id if listed else 0
        if "status" in query and query["status"] not in STATUS_NAMES:
            return turn.refuse("Requested status is invalid", query["status"])
        cursor = turn.number("cursor", newest)
        if cursor > newest:
            return turn.refuse("Requested cursor is invalid", "Cursor larger than largest database index")
        if turn.switch("disk"):
            listed = [entry for entry in listed if entry.time <= self._pihole.written_at]
        wanted = [entry for entry in listed if entry.id <= cursor and _fits(entry, turn)]
        if query.get("order[0][dir]") == "asc":
            wanted.reverse()
        start, length = int(turn.number("start", 0)), int(turn.number("length", 100))
        shown = wanted[start:] if length < 0 else wanted[start:start + length]
        filtered = len(listed) if "cursor" in query and len(query.keys() - {"cursor", "length", "start"}) == 0 \
            else len(wanted)
        return turn.good({"queries": [entry.as_json() for entry in shown],
                          "cursor": cursor if listed or newest else None, "recordsTotal": len(listed),
                          "recordsFiltered": filtered, "draw": 0})

    def _suggestions(self, turn):
        entries = self._log.all()
        upstreams = list(dict.fromkeys(entry.upstream for entry in entries if entry.upstream))
        return turn.good({"suggestions": {
            "domain": list(dict.fromkeys(name for entry in entries for name in (entry.domain, entry.cname) if name)),
            "client_ip": list(dict.fromkeys(entry.client for entry in entries)), "client_name": ["localhost"],
            "upstream": ["blocklist", "cache", *upstreams, "permitted"], "type": _TYPES, "status": STATUS_NAMES,
            "reply": REPLY_NAMES, "dnssec": _DNSSEC}})


def _fits(entry, turn) -> bool:
    query = turn.request.query
    since, until = turn.number("from", 0), turn.number("until", float("inf"))
    return (since <= entry.time < until and entry.status == query.get("status", entry.status)
            and all(query.get(name, getattr(entry, member)) == getattr(entry, member) for name, member in _PLAIN.items())
            and _matches(query.get("domain"), entry.domain) and _came_from(query.get("upstream"), entry))


def _matches(pattern: str | None, name: str) -> bool:
    """A star stands for any text."""
    parts = map(re.escape, (pattern or "*").split("*"))
    return re.fullmatch(".*".join(parts), name) is not None


def _came_from(upstream: str | None, entry) -> bool:
    groups = {"blocklist": BLOCKED, "cache": CACHED, "permitted": set(STATUS_NAMES) - BLOCKED}
    if upstream is None:
        return True
    return entry.status in groups[upstream] if upstream in groups else entry.upstream == upstream
