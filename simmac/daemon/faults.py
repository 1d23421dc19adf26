"""Tools that go wrong when they are told to."""

import asyncio
import fnmatch
import random
import signal

from daemon.call import DiesBy

KINDS = ("fail", "hang", "late", "rubbish", "flood", "vanish", "die", "ignore-term")
MEBIBYTE = 2**20


class Fault:
    """One order to go wrong: which tool, how, and at which of its calls."""

    def __init__(self, tool, kind, value=None, text="", when=None, at=None):
        self.tool = tool
        self.kind = kind
        self.value = value   # exit status, seconds, MiB or signal, as the kind needs it
        self.text = text     # what a failing tool says on standard error
        self.when = when     # pattern for the arguments joined by blanks; none: every call
        self.at = at         # only the n-th such call; none: every one
        self.calls = 0

    def matches(self, tool, argv):
        """Whether a call with these arguments is one of those that this order counts."""
        return self.tool in (tool, "*") and (self.when is None or fnmatch.fnmatchcase(" ".join(argv), self.when))

    def strikes(self):
        """Counts one call and tells whether the order holds for it."""
        self.calls += 1
        return self.at is None or self.calls == self.at

    def describe(self):
        """The order as plain data."""
        return {"tool": self.tool, "kind": self.kind, "value": self.value, "text": self.text,
                "when": self.when, "at": self.at, "calls": self.calls}


class Faults:
    """All orders that stand, and what they do to a call."""

    def __init__(self, mac):
        self._mac = mac
        self._faults = []
        self._vanished = set()

    def add(self, fault):
        """Gives an order; a tool that is to vanish at its first call vanishes now."""
        self._faults.append(fault)
        if fault.kind == "vanish" and fault.at in (None, 1):
            self._vanish(fault.tool)

    def clear(self):
        """Takes back every order; what vanished is there again."""
        self._faults = []
        for tool in sorted(self._vanished):
            self._mac.show_tool(tool)
        self._vanished = set()

    def describe(self):
        """All orders as plain data."""
        return [fault.describe() for fault in self._faults]

    async def strike(self, call):
        """Does to this call what the orders say; answers with an exit status, or nothing when the tool goes on."""
        for fault in [each for each in self._faults if each.matches(call.tool, call.argv)]:
            struck = fault.strikes()
            if fault.kind == "vanish":
                if fault.at is not None and fault.calls == fault.at - 1:
                    self._vanish(call.tool)
            elif struck:
                status = await ACTIONS[fault.kind](fault, call)
                if status is not None:
                    return status
        return None

    def _vanish(self, tool):
        for each in self._mac.present_tools(tool):
            self._mac.hide_tool(each)
            self._vanished.add(each)


async def _fail(fault, call):
    if fault.text:
        await call.err(fault.text + "\n")
    return fault.value


async def _hang(_fault, _call):
    await asyncio.Event().wait()


async def _late(fault, _call):
    await asyncio.sleep(fault.value)


async def _rubbish(_fault, call):
    noise = random.Random(4711)
    await call.out(noise.randbytes(4096) + b"\x00\xff\xfe\r\r\n\x1b[31m{[<|\n")
    await call.err(noise.randbytes(512))
    return 0


async def _flood(fault, call):
    line = b"The same line again and again, as a tool prints it that has lost its way.\n"
    block = (line * (MEBIBYTE // len(line) + 1))[:MEBIBYTE]
    for _ in range(fault.value):
        await call.out(block)
        await call.err(block)
    return 0


async def _die(fault, _call):
    raise DiesBy(fault.value)


async def _ignore_term(_fault, call):
    await call.ignore_term()
    await asyncio.Event().wait()


ACTIONS = {"fail": _fail, "hang": _hang, "late": _late, "rubbish": _rubbish, "flood": _flood, "die": _die,
           "ignore-term": _ignore_term}


def signal_number(text):
    """A signal by its name (SEGV, SIGSEGV) or number; none when there is no such signal."""
    try:
        name = text.upper() if text.upper().startswith("SIG") else "SIG" + text.upper()
        return signal.Signals(int(text)).value if text.isdecimal() else signal.Signals[name].value
    except (KeyError, ValueError):
        return None
