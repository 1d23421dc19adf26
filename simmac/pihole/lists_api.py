"""The web API's lists: what is subscribed, which list blocks a name, and the run that fetches them again."""

import time
from urllib.parse import unquote

from .gravity import BlockList
from .http import ALLOW, Response, dump
from .rules_api import in_punycode

_MOST_RESULTS = 10000


class _Again(str):
    """A member name that may be in an object a second time."""

    __hash__ = object.__hash__
    __eq__ = object.__eq__


_TYPE_AGAIN = _Again("type")


class ListsApi:
    """Answers from the database; nothing when there is none."""

    def __init__(self, pihole):
        self._pihole = pihole
        self._gravity = pihole.gravity

    def routes(self):
        return [("GET", "/api/lists", self._lists), ("GET", "/api/search(?:/(.+))?", self._search),
                ("POST", "/api/action/gravity", self._run)]

    def _lists(self, turn):
        if not self._gravity.readable:
            return turn.no_database()
        return turn.with_status(200, {"lists": [
            {"address": each.address, "comment": each.comment, "groups": [0], "enabled": each.enabled, "id": each.id,
             "date_added": each.date_added, "date_modified": each.date_modified, "type": "block", **_content(each)}
            for each in self._gravity.database.lists]})

    # -- search -----------------------------------------------------------------------------------------------------

    def _search(self, turn, name=None):
        if not name:
            return turn.refuse("Invalid request: No search term provided", turn.request.path)
        if not self._gravity.readable:
            return turn.no_database()
        most, partial, debug = int(turn.number("N", 20)), turn.switch("partial"), turn.switch("debug")
        if most > _MOST_RESULTS:
            return turn.refuse("Invalid request: Requested too many results",
                               f"Requested {most} number of results but hard upper limit is {_MOST_RESULTS}")
        name = unquote(name)
        wanted = in_punycode(name)
        rules = [rule for rule in self._gravity.database.rules if _speaks_of(rule, wanted, partial)]
        rows = [_list_row(each, entry) for each in self._gravity.database.lists
                for entry in _entries(each, wanted, partial)]
        exact = sum(rule.kind == "exact" for rule in rules)
        results = {"domains": {"exact": exact, "regex": len(rules) - exact}, "gravity": {"allow": 0, "block": len(rows)},
                   "total": len(rules) + len(rows)}
        found = {"domains": [_rule_row(rule) for rule in rules][:most], "gravity": rows[:most], "results": results,
                 "parameters": {"N": most, "partial": partial, "domain": name, "debug": debug}}
        if debug:
            found["debug"] = self._how(name, wanted, rules)
        return turn.good({"search": found})

    @staticmethod
    def _how(name: str, wanted: str, rules: list) -> dict:
        labels = wanted.split(".")
        patterns = [f"@@||{'.'.join(labels[at:])}^" for at in range(len(labels) - 1, -1, -1)]
        ids = {kind: [rule.id for rule in rules if (rule.type, rule.kind) == (kind, "regex")] for kind in ("deny", "allow")}
        return {"domain": name, "punycode": wanted, "abp_pattern": {"gravity": patterns, "antigravity": patterns},
                "regex_ids": ids}

    # -- the run ----------------------------------------------------------------------------------------------------

    def _run(self, turn):
        run, began = self._pihole.runs.begin(), time.perf_counter()
        colored = turn.switch("color")

        async def pieces():
            async for text in run.printed():
                yield _in_color(text) if colored else text

        def result():
            took = {"took": time.perf_counter() - began}
            trouble = {"error": {"key": "server_error", "message": "Gravity failed", "hint": None}}
            return dump({**({"status": "success"} if run.good else trouble), **took}).encode()
        return Response(200, content_type="text/plain", headers=turn.cookie + ALLOW, pieces=pieces(), stray=result)


def _content(each: BlockList) -> dict:
    return {"date_updated": each.date_updated, "number": each.number, "invalid_domains": each.invalid_domains,
            "abp_entries": len(each.abp), "status": each.status}


def _list_row(each: BlockList, entry: str) -> dict:
    return {"domain": entry, "type": "block", "address": each.address, "comment": each.comment, "enabled": each.enabled,
            "id": each.id, "date_added": each.date_added, "date_modified": each.date_modified, _TYPE_AGAIN: "block",
            **_content(each), "groups": [0]}


def _entries(each: BlockList, name: str, partial: bool) -> list[str]:
    if not partial:
        found = each.covers(name)
        return [found] if found else []
    return [entry for entry in each.names if name in entry] + [f"||{entry}^" for entry in each.abp if name in entry]


def _rule_row(rule) -> dict:
    return {"domain": rule.domain, "type": rule.type, "kind": rule.kind, "comment": rule.comment,
            "enabled": rule.enabled, "id": rule.id, "date_added": rule.date_added, "date_modified": rule.date_modified,
            "groups": rule.groups}


def _speaks_of(rule, name: str, partial: bool) -> bool:
    """A part of a name is looked for in the text of a rule; a whole one as the rule means it."""
    return name in rule.domain if partial else rule.matches(name)


def _in_color(text: str) -> str:
    """Green and red signs, and what stands out in bold."""
    text = text.replace("\r  [✓] Parsed", "\r\x1b[K  [✓] Parsed")
    text = text.replace("[✓]", "[\x1b[32m✓\x1b[0m]").replace("[✗]", "[\x1b[31m✗\x1b[0m]")
    text = text.replace("Neutrino emissions detected", "\x1b[1mNeutrino emissions detected\x1b[0m")
    before, found, after = text.partition(" unique domains)")
    head, bracket, number = before.rpartition("(")
    return f"{head}{bracket}\x1b[1m{number} unique domains\x1b[0m){after}" if found else text
