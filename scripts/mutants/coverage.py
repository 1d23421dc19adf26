"""Which test programs run which line of the code."""

import collections
import json
import pathlib
import subprocess
import threading

from mutants.mistakes import FOLDERS
from mutants.tree import BUILD, ROOT


class Coverage:
    """Lines by file, and for each the programs that run it."""

    def __init__(self):
        self._lock = threading.Lock()
        self._programs = collections.defaultdict(lambda: collections.defaultdict(set))

    def add(self, program, counts):
        """Takes in what a program has left in the folder of its counts."""
        left = pathlib.Path(f"{counts}{BUILD}")
        found = [each for name in FOLDERS for each in (left / name.split("/", maxsplit=1)[0]).rglob("*.gcda")]
        for each in found:
            notes = (BUILD / each.relative_to(left)).with_suffix(".gcno")
            link = each.with_suffix(".gcno")
            if not link.exists():
                link.symlink_to(notes)
        told = subprocess.run(["gcov", "--json-format", "--stdout", *map(str, found)], cwd=BUILD, check=True,
                              capture_output=True, text=True).stdout
        with self._lock:
            for line in told.splitlines():
                for file in json.loads(line)["files"]:
                    self._take(program, BUILD / file["file"], file["lines"])

    def _take(self, program, path, lines):
        path = path.resolve()
        if not path.is_relative_to(ROOT) or path.suffix != ".cpp":
            return
        for line in lines:
            known = self._programs[str(path.relative_to(ROOT))][line["line_number"]]
            if line["count"]:
                known.add(program)

    def of(self, path, line):
        """The programs that run a line; for one without code of its own, those of the line with code before it."""
        lines = self._programs[path]
        if line in lines:
            return lines[line]
        # A constant, or a word in the middle of a statement.
        before = [number for number in lines if number < line]
        after = [number for number in lines if number > line]
        inside = bool(before) and bool(after) and lines[max(before)]
        return lines[max(before)] if inside else set().union(*lines.values())
