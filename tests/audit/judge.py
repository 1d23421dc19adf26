"""Compares what a watched program did with what docs/TRUST.md allows; prints every difference, ends with 1 when there is one."""

import json
import pathlib
import re
import sys

from acts import Watch, short
from allowed import Allowed

DOCUMENT = pathlib.Path(__file__).resolve().parent.parent.parent / "docs" / "TRUST.md"
SESSION = re.compile(rb"X-FTL-SID: ([^\r\n]+)\r\n")
FEWEST = {"Programs": 40, "Files": 10, "Sockets": 20, "Names": 5, "Environment": 20}


def secrets_of(watch, evidence):
    """The secrets of this run, each with its name: the password, and each session that Pi-hole gave."""
    sessions = {found.decode() for _, _, text in watch.handed_out for found in SESSION.findall(text)}
    if not sessions or len(evidence["password"]) < 8:
        raise ValueError("The audit is void: it knows no password or no session to look for.")
    return [("password", evidence["password"])] + [("session", each) for each in sorted(sessions)]


def leaks(watch, evidence, secrets, allowed):
    """Where a secret was and may not be."""
    record = {
        "within a text on the screen": "\n".join(text for text in evidence["said"] if text not in dict(secrets).values()),
        "in what was printed": evidence["printed"],
        "in what a tool was given": json.dumps(evidence["journal"], ensure_ascii=False),
        "in an argument or environment": "\n".join(
            "\n".join([*program.arguments, *map("=".join, program.environment.items())]) for program in watch.programs)}
    for name, secret in secrets:
        if secret in evidence["said"] and not allowed.allows("Secrets", "Corvane", f"{name} to the screen"):
            yield f"the {name} is on the screen"
        yield from (f"the {name} is {place}" for place, text in record.items() if secret in text)
        for who, place in sorted({(who, place) for who, place, text in watch.handed_out if secret.encode() in text}):
            if not allowed.allows("Secrets", who, f"{name} to {place}"):
                yield f"the {name} was written by {who} to {place}"
    for path, name in evidence["holding"]:
        if not allowed.allows("Secrets", "Corvane", f"{name} to {short(path)}"):
            yield f"the {name} is in the file {short(path)}"


def left_behind(watch, evidence, allowed, folder):
    """Files that the program made and that are still there without a reason."""
    made = " ".join(act.what for act in watch.acts if act.table == "Files")
    for path, mode in evidence["new"].items():
        own = not path.startswith(f"{folder}/") and (short(path) in made or "corvane" in path.lower())
        if own and not allowed.allows("What stays", "Corvane", f"{short(path)} {mode[2:].zfill(4)}"):
            yield f"{short(path)} with mode {mode[2:]} was left behind"


def judge(folder):
    """Every difference, as sentences."""
    watch = Watch(folder / "trace")
    evidence = json.loads((folder / "evidence.json").read_text(encoding="ascii"))
    allowed = Allowed(DOCUMENT.read_text(encoding="utf-8"))
    for table, fewest in FEWEST.items():
        count = sum(number for act, number in watch.acts.items() if act.table == table)
        print(f"  {table}: {count} seen, {sum(act.table == table for act in watch.acts)} different ones")
        if count < fewest:
            yield f"the audit is void: only {count} entries under {table}"
    yield from (f"{act.who}: {act.what} ({act.table}) is not in docs/TRUST.md"
                for act in watch.acts if not allowed.allows(act.table, act.who, act.what))
    yield from leaks(watch, evidence, secrets_of(watch, evidence), allowed)
    yield from left_behind(watch, evidence, allowed, folder)
    yield from (f"docs/TRUST.md, line {rule.line}: {rule.what} was never seen" for rule in allowed.not_seen())


def main():
    differences = list(judge(pathlib.Path(sys.argv[1])))
    print("\n".join(f"  ✗ {each}" for each in differences) if differences else
          "  ✓ docs/TRUST.md lists all of it, and nothing that was not seen")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
