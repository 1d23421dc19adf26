"""A simulated Mac for a test: started once for each class, put back before each test."""

import base64
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SIMMAC = f"{REPOSITORY}/simmac/simmac"
SERVANT = f"{REPOSITORY}/tests/simmac/servant.py"

sys.path.insert(0, f"{REPOSITORY}/simmac")

from launcher import ctl  # noqa: E402
from launcher.problem import Problem  # noqa: E402


def eventually(check, limit=20.0):
    """The check's first true answer, or its last one at the limit."""
    deadline = time.monotonic() + limit
    while not (answer := check()) and time.monotonic() < deadline:
        time.sleep(0.02)
    return answer


def simmac(*words, **more):
    """Runs the command to its end."""
    return subprocess.run([SIMMAC, *words], capture_output=True, text=True, timeout=60, check=False, **more)


def run(script, *options, **more):
    """Runs a shell script in a fresh Mac."""
    return simmac("run", *options, "--", "/bin/sh", "-c", script, **more)


class Result:
    """How a program inside the Mac ended, and what it wrote."""

    def __init__(self, answer):
        self.status = answer["status"]      # negative: the signal that ended it
        self.raw_out = base64.b64decode(answer["out"])
        self.raw_err = base64.b64decode(answer["err"])
        self.seconds = answer["seconds"]

    @property
    def out(self):
        """Standard output as text."""
        return self.raw_out.decode("utf-8", "replace")

    @property
    def err(self):
        """Standard error as text."""
        return self.raw_err.decode("utf-8", "replace")


class RunningMac:
    """One Mac, with a servant inside that runs programs for the test."""

    def __init__(self, *options, state="bare"):
        self._base = tempfile.mkdtemp(prefix="mac-")
        self.folder = f"{self._base}/mac"
        self._process = subprocess.Popen(
            [SIMMAC, "run", "--state", state, "--at", self.folder, *options, "--", "/usr/bin/python3", SERVANT],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        if not self._process.stdout.readline():
            status = self.end()
            raise RuntimeError(f"The Mac ended with {status} before it was ready.")

    @property
    def pid(self):
        """The launcher's process."""
        return self._process.pid

    def run(self, *argv, env=None, cwd=None, limit=10.0):
        """Runs a program to its end; SIGTERM comes at the limit."""
        request = {"argv": argv, "env": env or {}, "cwd": cwd, "limit": limit}
        self._process.stdin.write(json.dumps(request).encode() + b"\n")
        self._process.stdin.flush()
        return Result(json.loads(self._process.stdout.readline()))

    def shell(self, script, **more):
        """Runs a shell script."""
        return self.run("/bin/sh", "-c", script, **more)

    def ctl(self, *words):
        """Gives a control command from outside."""
        return ctl.ask(self.folder, list(words))

    def journal(self, tool=None):
        """The calls of one tool, or of all."""
        return self.ctl("journal", *([tool] if tool else []))

    def ended(self, tool):
        """The first call of a tool, when it has ended."""
        return eventually(lambda: [each for each in self.journal(tool)[:1] if each["end"]])[0]

    def end(self):
        """Ends the Mac and clears up; answers with the launcher's exit status."""
        self._process.stdin.close()
        status = self._process.wait(20)
        self._process.stdout.close()
        shutil.rmtree(self._base, ignore_errors=True)
        return status


class MacCase(unittest.TestCase):
    """Tests that share one Mac; each begins in the class's state."""

    state = "bare"
    options = ()

    @classmethod
    def setUpClass(cls):
        cls.mac = RunningMac(*cls.options, state=cls.state)
        cls.addClassCleanup(cls.mac.end)

    def setUp(self):
        self.mac.ctl("reset", self.state)

    def assertRefused(self, *words):
        """The control command is refused with a sentence; answers with it."""
        with self.assertRaises(Problem) as caught:
            self.mac.ctl(*words)
        self.assertRegex(str(caught.exception), r"^\S.*\.$")
        return str(caught.exception)
