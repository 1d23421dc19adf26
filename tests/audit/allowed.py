"""The list of what Corvane may do: the tables of docs/TRUST.md."""

import dataclasses
import re

ROW = re.compile(r"^\|(.*)\|$")
CODE = re.compile(r"`([^`]*)`")
PLACEHOLDER = re.compile(r"<[a-z ]+>")
SEEN = {"each time": True, "at times": False}


@dataclasses.dataclass
class Rule:
    """One row: who may do what, and whether every audit sees it."""

    table: str
    who: list
    what: str
    always: bool
    pattern: re.Pattern
    line: int
    count: int = 0

    def allows(self, who, what):
        """Whether the row allows this; keeps count."""
        if (who in self.who or "any" in self.who) and self.pattern.fullmatch(what):
            self.count += 1
            return True
        return False


def cells(row):
    """The cells of a row of a table; a bar within a cell has a backslash before it."""
    inner = ROW.match(row.strip())
    return [cell.strip().replace("\\|", "|") for cell in re.split(r"(?<!\\)\|", inner[1])] if inner else []


def tables(text):
    """Every row of every table, with its heading and its line number, without the tables' own headings."""
    heading, row_before = "", False
    for number, text_line in enumerate(text.splitlines(), 1):
        if text_line.startswith("#"):
            heading = text_line.lstrip("# ")
        row = cells(text_line)
        if row and row_before and not set("".join(row)) <= set("-:"):
            yield heading, number, row
        row_before = bool(row)


class Allowed:
    """The rules of the document."""

    def __init__(self, text):
        self._stands_for = {}
        self.rules = []
        for heading, number, row in tables(text):
            self._take(heading, number, row)

    def _take(self, heading, number, row):
        code = CODE.findall(row[0])
        if heading == "What stands for what":
            self._stands_for[code[0]] = CODE.findall(row[1])[0]
        elif len(row) == 4 and row[2] in SEEN:
            what = CODE.findall(row[1])[0]
            who = CODE.findall(row[0]) or [row[0]]
            self.rules.append(Rule(heading, who, what, SEEN[row[2]], self._pattern(what, number), number))

    def _pattern(self, what, number):
        pattern, end = "", 0
        for found in PLACEHOLDER.finditer(what):
            if found[0] not in self._stands_for:
                raise ValueError(f"docs/TRUST.md, line {number}: {found[0]} is not explained above")
            pattern += re.escape(what[end:found.start()]) + f"(?:{self._stands_for[found[0]]})"
            end = found.end()
        return re.compile(pattern + re.escape(what[end:]))

    def allows(self, table, who, what):
        """Whether a row of this table allows it."""
        return any([rule.allows(who, what) for rule in self.rules if rule.table == table])

    def not_seen(self):
        """The rows of what each audit should see and this one did not."""
        return [rule for rule in self.rules if rule.always and not rule.count]
