"""The whole state of one simulated Mac."""

import asyncio
import inspect
import os
import shutil
import time

from daemon import farm
from daemon.applications import Applications
from daemon.faults import Faults
from daemon.journal import Journal
from daemon.network import Network
from daemon.ports import Ports
from daemon.prompt import Prompt
from daemon.states import PASSWORD, SET_UP, STATES, furnish
from daemon.system_facts import SystemFacts
from daemon.tools import PLACES, TOOLS

RUN = "/run/simmac"              # the private folder of this Mac, writable
ROOT = RUN + "/root"             # the same folders that stand under / (some of them read-only there)
HOME = "/Users/ada"
HOMEBREW_BIN = "/opt/homebrew/bin"
FAST_SCALE = 0.002


class Mac:
    """One Mac: its parts, its speed, and how it gets from one state to another."""

    def __init__(self, root=ROOT):
        self.root = root
        self.speed = "fast"
        self.state = None
        self.work = set()       # what tools are doing at this moment
        self.started = time.time()
        self.journal = Journal()
        self.faults = Faults(self)
        self.prompt = Prompt()
        self.applications = Applications(self)
        self.facts = SystemFacts(self)
        self.network = Network(self)
        self.ports = Ports()
        self.keyring = None       # set when a keyring runs
        self.desktop = None       # set when there is a display
        self.containers = None    # set by daemon.containers.start(mac)
        self.real_engine = False  # whether Docker comes from a real engine outside
        self._tasks = set()       # what goes on by itself
        self.end = lambda: None   # ends the program; set when it runs
        self.reset_hooks = []     # further functions that a reset calls, plain or async

    def scaled(self, seconds):
        """How long something really takes that takes this long on a Mac."""
        return at_speed(self.speed, seconds)

    def path(self, absolute):
        """Where the daemon writes a file that is at this path in the Mac."""
        return self.root + absolute

    def keep(self, task):
        """Lets a task go on by itself until it ends."""
        self._tasks.add(task)
        task.add_done_callback(self._tasks.discard)

    # -- the tools that come and go ---------------------------------------------------------------------------------

    def install_tool(self, name):
        """Makes a tool appear: where it always stands, or in Homebrew's folder."""
        self.show_tool(name)

    def remove_tool(self, name):
        """Makes a tool disappear."""
        self.hide_tool(name)

    def has_tool(self, name):
        """Whether the tool is at its path."""
        return os.path.lexists(self._tool_path(name))

    def show_tool(self, name):
        """Puts the tool at its path."""
        path = self._tool_path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        if not os.path.lexists(path):
            with farm.writable(os.path.dirname(path)):
                os.symlink(RUN + "/simmac-tool", path)

    def hide_tool(self, name):
        """Takes the tool away from its path."""
        path = self._tool_path(name)
        if os.path.lexists(path):
            with farm.writable(os.path.dirname(path)):
                os.unlink(path)

    def present_tools(self, name):
        """The tools of this name that are at their paths; "*" means all of them."""
        return [tool for tool in (TOOLS if name == "*" else [name]) if self.has_tool(tool)]

    def knows_tool(self, name):
        """Whether the Mac plays a tool of this name."""
        return name in TOOLS

    def _tool_path(self, name):
        return PLACES[name] if name in PLACES else self.path(f"{HOMEBREW_BIN}/{name}")

    # -- states -----------------------------------------------------------------------------------------------------

    async def reset(self, state=None):
        """Puts everything back as it is at the start of the state (the present one when none is named)."""
        state = state or self.state or "bare"
        if state not in STATES:
            raise ValueError(state)
        await self._stop_work()
        self.faults.clear()
        self.journal.clear()
        self.prompt.reset()
        self.facts.reset()
        self.network.reset()
        self.applications.reset()
        await self.ports.free_all()
        empty_home(self.path(HOME))
        for hook in self.reset_hooks:
            await maybe(hook())
        await asyncio.gather(self._enter_containers(state), self._fill_keyring(state))
        furnish(self, state)
        self.state = state

    async def _stop_work(self):
        """Tools that still run are killed, and what they had begun is given up."""
        work = list(self.work)
        for each in work:
            each.cancel()
        if work:
            await asyncio.wait(work)

    async def _enter_containers(self, state):
        if self.containers is not None:
            await maybe(self.containers.enter(state))

    async def _fill_keyring(self, state):
        if self.keyring is not None:
            self.keyring.silence(False)
            await self.keyring.clear()
            if state in SET_UP:
                await self.keyring.store(PASSWORD)


def at_speed(speed, seconds):
    """What this many seconds on a Mac become at that speed."""
    return seconds * FAST_SCALE if speed == "fast" else seconds


async def maybe(result):
    """The result of a function that may or may not be async."""
    return await result if inspect.isawaitable(result) else result


def empty_home(home):
    """Leaves of the home folder what a new user has."""
    os.makedirs(home, exist_ok=True)
    for entry in os.scandir(home):
        if entry.is_dir(follow_symlinks=False):
            shutil.rmtree(entry.path, ignore_errors=True)
        else:
            os.unlink(entry.path)
    for folder in ("Library/Application Support", "Library/Preferences", "Library/Caches", "Desktop", "Documents",
                   "Downloads", ".config", ".cache", ".local/share", ".local/state"):
        os.makedirs(f"{home}/{folder}", exist_ok=True)


async def run_quietly(*argv, env=None, input_text=None):
    """Runs a small program of the host to its end and answers with its status and output."""
    process = await asyncio.create_subprocess_exec(
        *argv, env=env, stdin=asyncio.subprocess.PIPE, stdout=asyncio.subprocess.PIPE,
        stderr=asyncio.subprocess.STDOUT)
    output, _ = await process.communicate((input_text or "").encode())
    return process.returncode, output.decode("utf-8", "replace")
