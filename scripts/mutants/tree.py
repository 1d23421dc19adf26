"""A tree that is built without mistakes: how its files are compiled, its programs linked, and its tests run."""

import dataclasses
import json
import os
import pathlib
import re
import shlex
import signal
import subprocess
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "mutants"
NICE = ["nice", "-n", "19"]
SLOW = "-*undred_thousand*:*million*"   # tests that show no more of a small mistake than the others do
FAILED = re.compile(r"^\[  FAILED  \] ([\w./]+?)(?:, where| \(|$)", re.MULTILINE)
SETTINGS = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 --coverage"]

# Programs that wait for much else than what they test, or that run little of the code that mistakes are made in.
NOT_ASKED = re.compile(r"^(?:ui|application|second|keychain|http|mac|wake|remote|simmac)_\w*test$|_load_test$|_sentences_test$|^login_item_test$")
ASKED = ("ui_decisions_test", "ui_history_test", "keychain_flows_test", "keychain_less_flows_test", "remote_flows_test")


@dataclasses.dataclass
class Program:
    """A test program, and how to run it."""

    name: str
    command: list
    folder: str
    environment: dict
    path: str = ""
    seconds: float = 0


class Tree:
    """Knows all commands of the build."""

    def __init__(self):
        self._compile = {entry["file"]: entry for entry in json.loads((BUILD / "compile_commands.json").read_text())}
        self.programs = {each.name: each for each in self._programs()}
        self._links = {}

    @staticmethod
    def build():
        """Builds every test program that may be asked; ends the script when that fails."""
        subprocess.run(["cmake", "-G", "Ninja", "-S", str(ROOT), "-B", str(BUILD), *SETTINGS], check=True,
                       stdout=subprocess.DEVNULL)
        subprocess.run([*NICE, "cmake", "--build", str(BUILD), "--target", *(each["name"] for each in Tree._tests()), "simmac-tool",
                        "--", "--quiet"], check=True)

    @staticmethod
    def _tests():
        """The tests of the programs that may be asked, as ctest knows them."""
        told = subprocess.run(["ctest", "--show-only=json-v1"], cwd=BUILD, check=True, capture_output=True, text=True).stdout
        return [each for each in json.loads(told)["tests"]
                if each["name"] in ASKED or (each["name"].endswith("_test") and not NOT_ASKED.search(each["name"]))]

    def _programs(self):
        for each in self._tests():
            path = next(word for word in each["command"] if word.endswith("/" + each["name"]))
            properties = {item["name"]: item["value"] for item in each["properties"]}
            environment = dict(item.split("=", 1) for item in properties.get("ENVIRONMENT", []))
            yield Program(each["name"], each["command"], properties["WORKING_DIRECTORY"], environment, path)

    def compile(self, path, text, target):
        """Compiles the file with this text into the folder; the object, or nothing when the compiler refuses."""
        entry = self._compile[str(ROOT / path)]
        source, made = target / pathlib.Path(path).name, target / "mistake.o"
        source.write_text(text, encoding="utf-8")
        words = shlex.split(entry["command"])
        words = words[next(i for i, word in enumerate(words) if word.endswith("c++")):]
        words[words.index("-o") + 1], words[words.index("-c") + 1] = str(made), str(source)
        words = [word for word in words if word != "--coverage"]
        run = subprocess.run([*NICE, *words], cwd=entry["directory"], capture_output=True, check=False)
        return made if run.returncode == 0 else None

    def link(self, program, made, target):
        """Links the program with the object in front of the libraries, which then leave theirs out; its path."""
        if program.name not in self._links:
            told = subprocess.run(["ninja", "-t", "commands", program.name], cwd=BUILD, check=True, capture_output=True,
                                  text=True).stdout
            self._links[program.name] = told.strip().splitlines()[-1]
        linked = target / program.name
        command = re.sub(r" -o \S+ ", f" {made} -fuse-ld=lld -o {linked} ", self._links[program.name], count=1)
        subprocess.run([*NICE, "sh", "-c", command], cwd=BUILD, check=True, capture_output=True)
        return linked

    @staticmethod
    def run(program, linked, target, limit, only=SLOW):
        """Runs a program as ctest does; the name of the test that failed, or nothing when none did."""
        words = [str(linked) if word == program.path else word for word in program.command]
        if "--" in words:
            words[words.index("--"):0] = ["--share", str(target)]
        words += [] if only == SLOW else [f"--gtest_filter={only}"]
        environment = os.environ | program.environment | {"GTEST_FAIL_FAST": "1", "GCOV_PREFIX": str(target / "counts"),
                                                          "GTEST_BRIEF": "1", "GTEST_FILTER": only}
        start = time.monotonic()
        with subprocess.Popen([*NICE, *words], cwd=program.folder, env=environment, stdout=subprocess.PIPE, text=True,
                              stderr=subprocess.STDOUT, errors="replace", start_new_session=True) as child:
            try:
                told, _ = child.communicate(timeout=limit)
            except subprocess.TimeoutExpired:
                os.killpg(child.pid, signal.SIGTERM)
                child.communicate()
                return "no end"
        program.seconds = program.seconds or time.monotonic() - start
        if child.returncode == 0:
            return None
        found = FAILED.search(told)
        return found[1] if found else f"its end, {child.returncode}"
