#!/usr/bin/env python3
"""./run and ./test as a Mac would run them: among stand-ins for its tools, which write down how they were called.

A Mac's own bash is 3.2. CORVANE_BASH names the bash to use, for whoever has one that old; what a newer one would forgive is
looked for in the text.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BASH = os.environ.get("CORVANE_BASH", "/bin/bash")
# What a Mac runs of ours.
SCRIPTS = ["run", "test", "scripts/setup", "scripts/setup-mac", "packaging/release"]

LOG = '#!/bin/sh\necho "${0##*/} $*" >>"$TOOL_LOG"\n'
TOOLS = {
    "uname": "#!/bin/sh\necho Darwin\n",
    "sw_vers": "#!/bin/sh\necho 26.1.2\n",
    "getconf": "#!/bin/sh\necho 8\n",
    "brew": LOG,
    "cmake": LOG + 'echo "cmake said this"\nexit "${CMAKE_STATUS:-0}"\n',
    "ctest": LOG,
    "codesign": LOG,
    "open": LOG,
}

# What came after bash 3.2, each with a line that uses it.
NEWER = {
    r"\b(?:mapfile|readarray)\b": "mapfile -t lines <file",
    r"\b(?:declare|local|typeset)\s+-\w*[Angu]": "declare -A map",
    r"\$\{[#!]?\w+(?:\[[^]]*\])?(?:\^|,|@[A-Za-z]\})": "echo ${name^^}",
    r"&>>|\|&": "tool &>>log",
    r";;?&": "  a) one ;;&",
    r"\bcoproc\b": "coproc tool",
    r"\[\[?\s+(?:!\s+)?-[vR]\s": "[[ -v name ]]",
    r"\bwait\s+-[nfp]\b": "wait -n",
    r"\bprintf\s+-v\s+\w+\[": "printf -v list[0] x",
    r"\bshopt\s.*\b(?:globstar|lastpipe|inherit_errexit)\b": "shopt -s globstar",
    r"\bexec\s+\{\w+\}": "exec {log}>file",
    r"\$\{\w+(?::\s*-?\d+)?:\s*-\d+\}": "echo ${name:0:-1}",
    r"\bBASHPID\b|\bEPOCH(?:SECONDS|REALTIME)\b": "echo $EPOCHSECONDS",
    r"\{\d+\.\.\d+\.\.\d+\}": "echo {1..9..2}",
}


def too_new(script):
    """The lines of a script that bash 3.2 would stumble over."""
    for line in re.sub(r"(?m)^\s*#.*$", "", script).splitlines():
        if any(re.search(pattern, line) for pattern in NEWER):
            yield line
    # An empty array counts as unset there.
    for name in re.findall(r"\b(\w+)=\(\)", script):
        yield from re.findall(r'[^+]"\$\{' + name + r"\[@\]\}\"", script)


class OldBash(unittest.TestCase):
    def test_no_script_that_a_mac_runs_needs_a_newer_one(self):
        for name in SCRIPTS:
            self.assertEqual(list(too_new((ROOT / name).read_text(encoding="utf-8"))), [], name)

    def test_whatever_is_newer_is_found(self):
        for pattern, line in NEWER.items():
            self.assertEqual(list(too_new(line)), [line], pattern)
        self.assertTrue(list(too_new('words=()\ntool "${words[@]}"\n')))
        self.assertFalse(list(too_new('words=()\ntool ${words[@]+"${words[@]}"}\n')))


class OnAMac(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        for name in SCRIPTS:
            (self.root / name).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / name, self.root / name)
        self.tools = self.root / "tools"
        self.tools.mkdir()
        for name, text in TOOLS.items():
            (self.tools / name).write_text(text, encoding="utf-8")
            (self.tools / name).chmod(0o755)
        (self.tools / "bash").symlink_to(shutil.which(BASH))
        self.log = self.root / "log"
        self.log.touch()

    def script(self, *words, **settings):
        environment = {"PATH": f"{self.tools}:/usr/bin:/bin", "TOOL_LOG": str(self.log), **settings}
        done = subprocess.run(
            [self.root / words[0], *words[1:]],
            env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False, timeout=60,
        )
        self.calls = self.log.read_text(encoding="utf-8").splitlines()
        return done

    def test_run_builds_the_application_for_this_mac_and_opens_it(self):
        done = self.script("run")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stderr, "")
        app = "build/app/ui/Corvane.app"
        self.assertEqual(
            self.calls,
            [
                "brew bundle --quiet --file packaging/Brewfile",
                "cmake --preset app -DCMAKE_OSX_DEPLOYMENT_TARGET=26.0",
                "cmake --build --preset app --target corvane -- --quiet",
                f"codesign --force --sign - --entitlements packaging/Corvane.entitlements {app}",
                f"open {app}",
            ],
        )

    def test_run_shows_why_it_could_not_be_built(self):
        done = self.script("run", CMAKE_STATUS="1")
        self.assertEqual(done.returncode, 1)
        self.assertIn("cmake said this", done.stdout)
        self.assertNotIn("open", "".join(self.calls))

    def test_run_asks_for_homebrew_where_it_is_missing(self):
        (self.tools / "brew").unlink()
        done = self.script("run")
        self.assertEqual(done.returncode, 1)
        self.assertIn("Homebrew is missing. Install it first: https://brew.sh", done.stderr)
        self.assertEqual(self.calls, [])

    def test_run_refuses_what_it_does_not_know(self):
        self.assertIn("usage: ./run", self.script("run", "--fast").stderr)

    def test_test_runs_what_a_mac_can_run_and_says_what_it_leaves_out(self):
        for words in (["test"], ["test", "--all"]):
            self.log.write_text("", encoding="utf-8")
            done = self.script(*words)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertEqual(done.stderr, "")
            self.assertEqual(
                self.calls,
                [
                    "brew bundle --quiet --file packaging/Brewfile",
                    "brew bundle --quiet --file packaging/Brewfile.tests",
                    "cmake --preset mac",
                    "cmake --build --preset mac -- -j8 --quiet",
                    "ctest --preset mac -j24 --output-on-failure --no-tests=error -L ^(unit|io|ui)$",
                ],
            )
            self.assertRegex(done.stdout, r"Left out on a Mac: the flows [^.]*own folders[^.]*fuzzers, the leak checker[^.]*lints\.")


class ForAUser(unittest.TestCase):
    def test_the_application_alone_needs_no_test_library(self):
        presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))["configurePresets"]
        app = next(preset for preset in presets if preset["name"] == "app")["cacheVariables"]
        self.assertEqual(app, {"CMAKE_BUILD_TYPE": "Release", "CORVANE_TESTS": "OFF"})
        first = (ROOT / "packaging/Brewfile").read_text(encoding="utf-8")
        for name in ("googletest", "google-benchmark", "yaml-cpp", "ccache", "qt"):
            self.assertNotIn(f'"{name}"', first)


class Walls(unittest.TestCase):
    def test_the_screens_can_reach_nothing_of_the_mac_that_they_are_tested_on(self):
        with tempfile.TemporaryDirectory() as folder:
            played = pathlib.Path(folder, "sandbox-exec")
            played.write_text('#!/bin/sh\nprintf "%s\\0" "$@"\nexit 7\n', encoding="utf-8")
            played.chmod(0o755)
            program = pathlib.Path(folder).resolve() / "program"
            done = subprocess.run(
                [ROOT / "tests/support/mac_walls", program, "--list"],
                env={"PATH": f"{folder}:/usr/bin:/bin"}, capture_output=True, text=True, check=False,
            )
        self.assertEqual(done.returncode, 7, done.stderr)
        define, value, option, profile, *command, end = done.stdout.split("\0")
        self.assertEqual((define, value, option, end), ("-D", f"PROGRAM={program}", "-p", ""))
        self.assertEqual(command, [str(program), "--list"])
        self.assertEqual(profile.count("("), profile.count(")"))
        rules = profile.split("\n")
        deny, allow = rules.index("(deny process-exec)"), rules.index('(allow process-exec (literal (param "PROGRAM")))')
        self.assertLess(deny, allow, "the last rule that fits decides")


if __name__ == "__main__":
    unittest.main()
