"""Reads what strace wrote: the system calls of a program and of all that it started."""

import dataclasses
import pathlib
import re

FINISHED = re.compile(r"(\d+) +(\w+)\((.*)\) += (.*)$")
UNFINISHED = re.compile(r"(\d+) +(\w+)\((.*) <unfinished \.\.\.>$")
RESUMED = re.compile(r"(\d+) +<\.\.\. (\w+) resumed>(.*)\) += (.*)$")
TEXT = re.compile(r'"((?:\\x[0-9a-f]{2})*)"')
LIST = re.compile(r"\[((?:\"(?:\\x[0-9a-f]{2})*\"(?:\.\.\.)?(?:, )?)*)\]")
NEW_TASK = ("clone", "clone3", "fork", "vfork")
CALLS = ("execve", "execveat", "clone", "clone3", "fork", "vfork", "open", "openat", "openat2", "creat", "mkdir", "mkdirat",
         "rename", "renameat", "renameat2", "unlink", "unlinkat", "rmdir", "link", "linkat", "symlink", "symlinkat", "mknod",
         "mknodat", "truncate", "chmod", "fchmod", "fchmodat", "socket", "connect", "bind", "listen", "sendto", "sendmsg",
         "sendmmsg", "write", "writev", "pwrite64", "pwritev")


def command(trace_file, program):
    """The command that runs a program under watch. The watcher is its child, so the program keeps its own number."""
    # The leak checker of a sanitized program needs to trace itself, which only one can do at a time.
    return ["strace", "-D", "-f", "-qq", "-v", "-y", "-xx", "-s", "4096", "--seccomp-bpf", "-E",
            "ASAN_OPTIONS=detect_leaks=0", "-e", f"trace={','.join(CALLS)}", "-o", trace_file, program]


@dataclasses.dataclass
class Call:
    """One system call of one process."""

    process: int
    name: str
    words: str      # the arguments as strace prints them
    result: str

    def failed(self, *errors):
        """Whether the system refused it, for one of these reasons if any are named."""
        return self.result.startswith("-1") and (not errors or any(error in self.result for error in errors))

    def texts(self):
        """The texts among the arguments."""
        return [plain(found) for found in TEXT.findall(self.words)]


def plain(text):
    """A text of the trace, in which every byte is written as a number."""
    return bytes.fromhex(text.replace("\\x", "")).decode("utf-8", "replace")


def readable(words):
    """Arguments with their texts made readable."""
    return re.sub(r"(?:\\x[0-9a-f]{2})+", lambda found: plain(found[0]), words)


def calls(path):
    """Every call in the order in which the calls ended."""
    begun = {}
    for line in pathlib.Path(path).read_text(encoding="ascii", errors="replace").splitlines():
        if found := RESUMED.match(line):
            process, name, rest, result = found.groups()
            yield Call(int(process), name, begun.pop(process, "") + rest, result)
        elif found := UNFINISHED.match(line):
            begun[found[1]] = found[3]
        elif found := FINISHED.match(line):
            yield Call(int(found[1]), found[2], found[3], found[4])


@dataclasses.dataclass
class Program:
    """A program that was started."""

    path: str
    arguments: list
    environment: dict
    parent: "Program"

    @property
    def name(self):
        """Its name without folders."""
        return pathlib.PurePath(self.path).name


class Tree:
    """Who runs in which process. Threads and copies of a process run what it runs, until they start something else."""

    def __init__(self):
        self.root = None
        self._programs = {}

    def follow(self, call):
        """Takes note of a call; answers with a program when the call started one."""
        first = call.result.split(" ")[0]
        if call.name in NEW_TASK and first.isdigit():
            self._programs.setdefault(int(first), self.of(call.process))
        if call.name != "execve" or call.failed():
            return None
        arguments, variables = ([plain(text) for text in TEXT.findall(each)] for each in LIST.findall(call.words)[:2])
        environment = dict(each.split("=", 1) for each in variables if "=" in each)
        program = Program(call.texts()[0], arguments, environment, self.of(call.process))
        self._programs[call.process] = program
        self.root = self.root or program
        return program

    def of(self, process):
        """The program in this process. A child may be heard of before its parent's call has ended; it runs what the first
        program runs, because the others start no copies of themselves."""
        return self._programs.get(process, self.root)
