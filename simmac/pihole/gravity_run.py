"""Fetching all lists again: what it prints, what it changes, and what it takes from others."""

import asyncio
import time

from .container_log import OVER
from .gravity import BlockList, Database, DEFAULT_LIST, FAILED
from .list_server import PAGE, WORDS

_SECONDS = 0.6          # of a run besides what servers take
_DNS_SECONDS = 38       # dots until it gives up
_PAGE_LINES = "      Sample of non-domain entries:\n" + "".join(f"        - {line}\n" for line in PAGE)
GOOD, BAD = "[✓]", "[✗]"


def over(text: str, sign: str = GOOD) -> str:
    """A line in the place of the last one."""
    return f"{OVER}  {sign} {text}\n"


def step(text: str) -> str:
    return f"  [i] {text}...{over(text)}"


class Run:
    """One run: prints into a queue that is read or not, and ends by itself."""

    def __init__(self, parts, disturbed: bool):
        self._parts = parts
        self.disturbed = disturbed   # another run is under way, or was
        self.good = False
        self.lines: asyncio.Queue = asyncio.Queue()
        self.task = asyncio.get_running_loop().create_task(self._run())

    async def printed(self):
        """Everything that it prints, piece by piece."""
        while (text := await self.lines.get()) is not None:
            yield text

    async def _run(self) -> None:
        try:
            self.good = await self._carry_out()
        finally:
            self.lines.put_nowait(None)

    def _say(self, text: str) -> None:
        self.lines.put_nowait(text)

    async def _pause(self, seconds: float) -> None:
        await asyncio.sleep(seconds * self._parts.knobs.pace)

    async def _carry_out(self) -> bool:
        if not self._parts.knobs.internet:
            return await self._fail_without_dns()
        self._say(over("DNS resolution is available") + "\n")
        database = self._open()
        self._say("  [i] Neutrino emissions detected...\n\n" + step("Preparing new gravity database")
                  + step("Creating new gravity databases") + over("Pulling blocklist source list into range")
                  + "  [i] Using libz compression\n\n")
        for each in database.lists:
            if each.enabled:
                await self._fetch(each)
        await self._pause(_SECONDS)
        self._say(_summary(database))
        self._parts.finish(self, database)
        for text in (step("Optimizing database"), step("Swapping databases"),
                     f"  {GOOD} The old database remains available\n", step("Cleaning up stray matter"),
                     f"\n  {GOOD} Done.\n"):
            self._say(text)
        return True

    def _open(self) -> Database:
        """A copy of the database, as it is now; a missing or damaged one is made again or restored."""
        gravity = self._parts.gravity
        if gravity.database:
            return gravity.database.copy()
        if gravity.kept:
            self._parts.messages.restored(time.strftime("%Y-%m-%d %H:%M:%S %Z"))
            self._say("Error: in prepare, no such table: info\n")
            return gravity.kept.copy()
        self._say(f"  [i] Migrating the list's cache directory to new location...{OVER}  {BAD} Migrating the list's cache "
                  "directory to new location\n  [i] Creating new gravity database\n"
                  "  [i] Migrating content of /etc/pihole/adlists.list into new database\n")
        moment = self._parts.now()
        return Database([BlockList(1, self._parts.first_list(), "Migrated from /etc/pihole/adlists.list", True, moment,
                                   moment)])

    async def _fail_without_dns(self) -> bool:
        self._say(f"  {BAD} DNS resolution is currently unavailable\n")
        self._say("  [i] Waiting up to 120 seconds for DNS resolution...")
        for _ in range(_DNS_SECONDS):
            self._say(".")
            await self._pause(1)
        self._say(f"   {BAD} No DNS resolution available. Please contact support.\n")
        return False

    async def _fetch(self, entry: BlockList) -> None:
        local = entry.address.startswith("file://")
        self._say(f"  [i] Target: {entry.address}\n")
        self._say("  [i] Status: Pending...")
        source = self._parts.server.fetch(entry.address, self._parts.knobs.list_server)
        await self._pause(source.seconds)
        if local:
            self._say(f"{OVER}  [i] Using local file {entry.address.removeprefix('file://')}\n")
        self._say(_take_in(entry, source, self._parts.now()) + "\n")


def _take_in(entry: BlockList, source, now: int) -> str:
    """Puts what came into the list; answers with what is said about it."""
    if source.trouble in WORDS:
        return over(f"Status: {WORDS[source.trouble]}", BAD) + _use_copy(entry)
    if source.trouble == "empty":
        return over("Status: Retrieval successful") + "  [i] Received empty file\n" + _use_copy(entry)
    page = source.trouble == "page"
    invalid = len(PAGE) if page else 0
    new = not entry.date_updated
    same = not new and (entry.names, entry.abp, entry.invalid_domains) == (source.names, source.abp, invalid)
    entry.names, entry.abp, entry.invalid_domains = list(source.names), list(source.abp), invalid
    entry.status = 2 if same else 1
    if same and source.dated:
        return over("Status: No changes detected") + _parsed(entry)
    text = over("Status: Retrieval successful")
    if not new:
        text += "  [i] List stayed unchanged\n" if same else "  [i] List has been updated\n"
    if not same:
        entry.date_updated = now
    return text + _parsed(entry) + (_PAGE_LINES if page else "")


def _use_copy(entry: BlockList) -> str:
    if not entry.date_updated:
        entry.status = FAILED
        return f"  {BAD} List download failed: no cached list available\n"
    entry.status = 3
    return f"  {BAD} List download failed: using previously cached list\n" + _parsed(entry)


def _parsed(entry: BlockList) -> str:
    return (f"\r  {GOOD} Parsed {len(entry.names)} exact domains and {len(entry.abp)} ABP-style domains (blocking, ignored "
            f"{entry.invalid_domains} non-domain entries)\n")


def _summary(database: Database) -> str:
    def count(type_, kind):
        return sum(each.enabled for each in database.rules if (each.type, each.kind) == (type_, kind))
    total = sum(each.number for each in database.lists if each.enabled)
    return (step("Building tree") + f"  [i] Number of gravity domains: {total} ({database.size()} unique domains)\n"
            f"  [i] Number of exact denied domains: {count('deny', 'exact')}\n"
            f"  [i] Number of regex denied filters: {count('deny', 'regex')}\n"
            f"  [i] Number of exact allowed domains: {count('allow', 'exact')}\n"
            f"  [i] Number of regex allowed filters: {count('allow', 'regex')}\n")


def first_run_text(database: Database | None) -> str:
    """What a first start prints about the run in which its lists come."""
    if not database:
        return (f"  {BAD} DNS resolution is currently unavailable\n  [i] Waiting up to 120 seconds for DNS resolution..."
                + "." * _DNS_SECONDS + f"   {BAD} No DNS resolution available. Please contact support.\n")
    text = over("DNS resolution is available") + "\n  [i] Neutrino emissions detected...\n\n"
    for each in database.lists:
        text += f"  [i] Target: {each.address}\n  [i] Status: Pending..."
        text += (over("Status: Connection Refused", BAD) + _use_copy(each) if each.status == FAILED
                 else over("Status: Retrieval successful") + _parsed(each)) + "\n"
    return text + _summary(database) + f"\n  {GOOD} Done.\n"


class GravityRuns:
    """Starts runs, and puts into force what they bring."""

    def __init__(self, clock, knobs, gravity, messages, server, save):
        self._clock = clock
        self.knobs = knobs
        self.gravity = gravity
        self.messages = messages
        self.server = server
        self._save = save
        self._under_way = set()

    def begin(self) -> Run:
        """Nothing keeps a second run from being started; the two then spoil each other's work."""
        for other in self._under_way:
            other.disturbed = True
        run = Run(self, bool(self._under_way))
        self._under_way.add(run)
        run.task.add_done_callback(lambda _: self._under_way.discard(run))
        return run

    async def over(self) -> None:
        """Waits until no run is under way; Pi-hole cannot end before."""
        while self._under_way:
            await asyncio.wait([run.task for run in self._under_way])

    def now(self) -> int:
        return int(self._clock.now())

    def first_list(self) -> str:
        """The list that a Pi-hole without any begins with."""
        return next(iter(self.server.sources), DEFAULT_LIST)

    def finish(self, run: Run, database: Database) -> None:
        """The new database takes the place of the old one, whatever was changed in that meanwhile."""
        alone = len(self._under_way) == 1
        self.gravity.last_update = self.now()
        self.messages.lists_failed([each for each in database.lists if each.enabled and each.status in (3, 4)])
        if run.disturbed and alone:
            self.gravity.damage()
        else:
            self.gravity.replace(database)
        self._save()
