"""The web API's rules of the user: what is allowed and denied."""

import re
from urllib.parse import unquote

from .gravity import Rule
from .http import Response
from .login import json_body

_TAKEN = "UNIQUE constraint failed: domainlist.domain, domainlist.type"
_ALLOWED_LETTERS = re.compile(r"[a-z0-9_.-]+")


class Refused(Exception):
    """A name that is not taken: message, hint and key."""

    def __init__(self, message: str, hint: str | None, key: str = "bad_request"):
        super().__init__(message)
        self.message, self.hint, self.key = message, hint, key


class RulesApi:
    """Reads and changes the rules; DNS follows a moment later."""

    def __init__(self, pihole):
        self._pihole = pihole
        self._gravity = pihole.gravity

    def routes(self):
        one = r"/api/domains/(allow|deny)/(exact|regex)/(.+)"
        return [("GET", r"/api/domains(?:/(allow|deny)(?:/(exact|regex)(?:/(.+))?)?)?", self._get),
                ("POST", r"/api/domains/(allow|deny)/(exact|regex)", self._post), ("PUT", one, self._put),
                ("DELETE", one, self._delete), ("POST", "/api/domains:batchDelete", self._delete_all)]

    def _get(self, turn, type_=None, kind=None, name=None):
        if not self._gravity.readable:
            return turn.no_database()
        return turn.with_status(200, {"domains": self._rows(type_, kind, name and unquote(name))})

    def _rows(self, type_, kind, name) -> list[dict]:
        return [_row(rule) for rule in self._gravity.database.rules
                if type_ in (None, rule.type) and kind in (None, rule.kind) and name in (None, rule.domain)]

    def _find(self, type_: str, kind: str, name: str) -> Rule | None:
        rules = self._gravity.database.rules
        return next((rule for rule in rules if (rule.type, rule.kind, rule.domain) == (type_, kind, name)), None)

    def _post(self, turn, type_, kind):
        body = json_body(turn.request)
        items = body.get("domain")
        if not items or not isinstance(items, (str, list)):
            return turn.refuse('Invalid request: No valid "domain" in payload (must be either string or array)')
        try:
            names = [_checked(item, kind) for item in ([items] if isinstance(items, str) else items)]
        except Refused as refused:
            return turn.refuse(refused.message, refused.hint, refused.key)
        headers = [("Location", f"/api/domains/{type_}/{kind}/{names[-1]}")]
        if not self._gravity.readable:
            self._pihole.rules_changed()   # which opens a database that is there by now
            return turn.no_database(headers)
        errors, added = [], []
        for name in names:
            if self._find(type_, kind, name):
                errors.append({"item": name, "error": _TAKEN})
            else:
                self._add(type_, kind, name, body)
                added.append({"item": name})
        self._pihole.rules_changed()
        done = {"domains": self._rows(type_, kind, names[-1]), "processed": {"errors": errors, "success": added}}
        return turn.with_status(201, done, headers)

    def _add(self, type_: str, kind: str, name: str, body: dict) -> None:
        rules, moment = self._gravity.database.rules, int(self._pihole.clock.now())
        rules.append(Rule(self._gravity.database.next_id(rules), type_, kind, name, body.get("comment"),
                          body.get("enabled", True), body.get("groups", [0]), moment, moment))

    def _put(self, turn, type_, kind, name):
        name, body = unquote(name), json_body(turn.request)
        headers = [("Location", f"/api/domains/{type_}/{kind}/{name}")]
        if not self._gravity.readable:
            return turn.no_database(headers)
        if rule := self._find(type_, kind, name):
            rule.comment, rule.enabled = body.get("comment"), body.get("enabled", True)
            rule.date_modified = int(self._pihole.clock.now())
        else:
            self._add(type_, kind, name, body)
        self._pihole.rules_changed()
        done = {"domains": self._rows(type_, kind, name), "processed": {"errors": [], "success": [{"item": name}]}}
        return turn.with_status(200, done, headers)

    def _delete(self, turn, type_, kind, name):
        return self._remove(turn, [(type_, kind, unquote(name))])

    def _delete_all(self, turn):
        items = json_body(turn.request, list)
        return self._remove(turn, [(item["type"], item["kind"], item["item"]) for item in items])

    def _remove(self, turn, wanted: list):
        if not self._gravity.readable:
            return turn.no_database()
        found = [rule for rule in (self._find(*each) for each in wanted) if rule]
        if not found:
            return turn.with_status(404, {})
        rules = self._gravity.database.rules
        rules[:] = [rule for rule in rules if rule not in found]
        self._pihole.rules_changed()
        return Response(204, content_type="text/html", headers=turn.cookie)


def _row(rule: Rule) -> dict:
    return {"domain": rule.domain, "unicode": _readable(rule.domain), "type": rule.type, "kind": rule.kind,
            "comment": rule.comment, "groups": rule.groups, "enabled": rule.enabled, "id": rule.id,
            "date_added": rule.date_added, "date_modified": rule.date_modified}


def _readable(name: str) -> str:
    try:
        return name.encode("ascii").decode("idna") if "xn--" in name else name
    except UnicodeError:
        return name


def _checked(item, kind: str) -> str:
    """The name as it is stored; Refused when it cannot be."""
    if not isinstance(item, str) or not item:
        raise Refused('Invalid request: No valid "domain" in payload (must be either string or array)', None)
    if kind == "regex":
        return _checked_expression(item)
    if re.search(r"\s", item):
        raise Refused("Spaces, newlines and tabs are not allowed in domains and URLs", item)
    if len(item) > 255:
        raise Refused("Invalid request: Invalid domain name", "domain name longer than 255 characters")
    if any(len(label) > 63 for label in item.split(".")):
        raise Refused("Invalid request: Invalid domain name", "domain label longer than 63 characters")
    name = in_punycode(item)
    if not _ALLOWED_LETTERS.fullmatch(name):
        raise Refused("Invalid domain", item)
    return name


def in_punycode(name: str) -> str:
    """Small letters; a name with others than ASCII letters as DNS carries it."""
    try:
        return name.lower() if name.isascii() else name.lower().encode("idna").decode()
    except UnicodeError:
        return name.lower()


def _checked_expression(item: str) -> str:
    try:
        re.compile(item.partition(";")[0])
    except re.error as error:
        hint = "Missing ')'" if "unterminated subpattern" in error.msg or "parenthesis" in error.msg else error.msg
        raise Refused("Regex validation failed", hint, "regex_error") from error
    return item
