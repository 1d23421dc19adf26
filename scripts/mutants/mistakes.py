"""Which small mistakes could be made in the code, and which of them are chosen by chance."""

import dataclasses
import pathlib
import random
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ("api", "app", "dns", "exec", "runtime", "ui/decisions")

# The kinds of mistakes: what is found, and what is there instead.
SWAPS = [
    ("comparison", r"(?<= )==(?= )", "!="), ("comparison", r"(?<= )!=(?= )", "=="), ("comparison", r"(?<= )<(?= )", "<="),
    ("comparison", r"(?<= )>(?= )", ">="), ("comparison", r"(?<= )<=(?= )", "<"), ("comparison", r"(?<= )>=(?= )", ">"),
    ("logic", r"(?<= )&&(?= )", "||"), ("logic", r"(?<= )\|\|(?= )", "&&"), ("logic", r"(?<=[( ])!(?=[\w(*])", ""),
    ("arithmetic", r"(?<= )\+(?= )", "-"), ("arithmetic", r"(?<= )-(?= )", "+"), ("constant", r"\btrue\b", "false"),
    ("constant", r"\bfalse\b", "true"), ("condition", r"\bif \((?=[^;{}]*\)(?: |$))(?!co_await|const |auto )", "if (!"),
    ("flow", r"^(\s+)continue;", r"\1break;"), ("flow", r"^(\s+)break;$", r"\1;"), ("flow", r"^(\s+)return;", r"\1;"),
]
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")
TEXT = re.compile(r'(?<=")([A-Za-z][A-Za-z .]{2,})(?=")')
STATEMENT = re.compile(r"^\s+(?!return|const |auto |using |case |default|break|continue|else|for|if|while|co_return)"
                       r"(?:co_await )?[\w.>:\-\[\]*]+(?:\(.*\)|\s*[+|]?=\s.*|\+\+);$")


@dataclasses.dataclass
class Mistake:
    """One line that is changed."""

    path: str
    line: int
    kind: str
    before: str
    after: str
    folder: str = ""
    outcome: str = ""


def negated(line):
    """The line with its condition turned round; nothing when the condition goes on in the next line."""
    found = re.search(r"\bif \(", line)
    depth = 0
    for place in range(found.end() - 1, len(line)):
        depth += {"(": 1, ")": -1}.get(line[place], 0)
        if depth == 0:
            inner = line[found.end():place]
            if re.match(r"\s*(const |auto |QString |int )|.*;", inner) or "co_await" in inner:
                return None
            return f"{line[:found.end()]}!({inner}){line[place:]}"
    return None


def mistakes_in(path, folder):
    """Every mistake that could be made in a file."""
    for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1):
        code = line.split("//")[0]
        if code.lstrip().startswith(("#", "*", "using ", "static_assert")) or not code.strip():
            continue
        found = []
        for kind, pattern, instead in SWAPS:
            if kind == "condition":
                if re.search(r"\bif \(", code) and (turned := negated(code)):
                    found.append((kind, turned))
                continue
            if kind == "arithmetic" and '"' in code:
                continue   # texts cannot be subtracted
            found += [(kind, code[:each.start()] + each.expand(instead) + code[each.end():])
                      for each in re.finditer(pattern, code)]
        found += [("constant", code[:each.start()] + str(int(each[1]) + 1) + code[each.end():]) for each in NUMBER.finditer(code)]
        found += [("text", code[:each.start()] + each[1][:-1] + code[each.end():]) for each in TEXT.finditer(code)]
        if STATEMENT.match(code) and code.count("(") == code.count(")"):
            found.append(("left out", ""))
        for kind, after in found:
            yield Mistake(path, number, kind, line, after, folder)


def choose(folders, count, seed):
    """Mistakes by chance, as many from each folder as its size asks for."""
    every = []
    for folder in folders:
        for path in sorted((ROOT / folder).glob("*.cpp")):
            if not path.name.endswith("_mac.cpp"):
                every += mistakes_in(str(path.relative_to(ROOT)), folder)
    return random.Random(seed).sample(every, min(count, len(every)))
