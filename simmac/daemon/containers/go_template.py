"""The small part of Go's templates that --format uses: fields, if, else, end, json."""

import json
import re


class BadTemplate(Exception):
    """A template that cannot be read or filled; the text says where."""


_TOKEN = re.compile(r"\{\{-?\s*(.*?)\s*-?\}\}", re.DOTALL)


def render(template, data):
    """Fills a template with plain data."""
    pieces = _TOKEN.split(template.replace("\\n", "\n").replace("\\t", "\t"))
    if "{{" in "".join(pieces[::2]):
        raise BadTemplate("template parsing error: template: :1: unclosed action")
    text, rest, ended_by = _block(pieces, data, True)
    if ended_by:
        raise BadTemplate(f"template parsing error: template: :1: unexpected {{{{{ended_by}}}}}")
    del rest
    return text


def _block(pieces, data, live):
    """Renders up to the next else or end; answers with text, the pieces after it, and what ended it."""
    out = ""
    while True:
        out += pieces[0] if live else ""
        if len(pieces) == 1:
            return out, [], ""
        action, pieces = pieces[1], pieces[2:]
        if action in ("else", "end"):
            return out, pieces, action
        if action.startswith("if "):
            text, pieces = _choice(pieces, action[3:], data, live)
            out += text
        elif live:
            out += _value(action, data)


def _choice(pieces, condition, data, live):
    holds = live and bool(_look_up(condition.strip(), data, missing_ok=True))
    text, pieces, ended_by = _block(pieces, data, live and holds)
    if ended_by == "else":
        other, pieces, ended_by = _block(pieces, data, live and not holds)
        text += other
    if ended_by != "end":
        raise BadTemplate("template parsing error: template: :1: unexpected EOF")
    return text, pieces


def _value(action, data):
    if action.startswith("json "):
        return json.dumps(_look_up(action[5:].strip(), data), separators=(",", ":"))
    value = _look_up(action, data)
    if isinstance(value, bool):
        return str(value).lower()
    return "<no value>" if value is None else str(value)


def _look_up(path, data, missing_ok=False):
    if not path.startswith("."):
        name = path.split()[0] if path.split() else ""
        raise BadTemplate(f'template parsing error: template: :1: function "{name}" not defined')
    for name in filter(None, path.split(".")):
        if not isinstance(data, dict) or name not in data:
            if missing_ok:
                return None
            raise BadTemplate(f'template: :1:2: executing "" at <{path}>: map has no entry for key "{name}"')
        data = data[name]
    return data
