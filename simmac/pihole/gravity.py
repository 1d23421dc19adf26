"""What Pi-hole blocks and what it lets through: lists, the rules of the user, and what both say about a name."""

import copy
import re
from dataclasses import asdict, dataclass, field

DEFAULT_LIST = "https://raw.githubusercontent.com/StevenBlack/hosts/master/hosts"
FAILED = 4        # the status of a list that never came
NEVER_READ = -2   # the number of blocked names when there is no database


@dataclass
class Rule:
    """One entry of the user: a name or an expression that is allowed or denied."""

    id: int
    type: str     # allow | deny
    kind: str     # exact | regex
    domain: str
    comment: str | None = None
    enabled: bool = True
    groups: list = field(default_factory=lambda: [0])
    date_added: int = 0
    date_modified: int = 0

    @property
    def expression(self) -> str:
        return self.domain.partition(";")[0]

    @property
    def reply(self) -> str | None:
        """How a denying expression wants its names answered; none: as the blocking mode says."""
        found = re.search(r";reply=(\w+)", self.domain)
        return found[1].upper() if found else None

    def matches(self, name: str) -> bool:
        if not self.enabled:
            return False
        return bool(re.search(self.expression, name)) if self.kind == "regex" else self.domain == name


@dataclass
class BlockList:
    """One subscribed list with the names of its last good copy."""

    id: int
    address: str
    comment: str | None = None
    enabled: bool = True
    date_added: int = 0
    date_modified: int = 0
    date_updated: int = 0    # when its content last changed
    status: int = 0          # 0 new, 1 fetched, 2 unchanged, 3 failed and the old copy is used, 4 failed
    invalid_domains: int = 0
    names: list = field(default_factory=list)
    abp: list = field(default_factory=list)   # names that stand for all below them

    @property
    def number(self) -> int:
        return len(self.names) + len(self.abp)

    def covers(self, name: str) -> str | None:
        """The entry that blocks the name, as the list's own kind writes it."""
        if name in self.names:
            return name
        labels = name.split(".")
        above = (".".join(labels[at:]) for at in range(len(labels)))
        return next((f"||{each}^" for each in above if each in self.abp), None)


@dataclass
class Database:
    """Everything that a list run rewrites: lists and rules."""

    lists: list = field(default_factory=list)
    rules: list = field(default_factory=list)

    def copy(self) -> "Database":
        return copy.deepcopy(self)

    def allowing(self, name: str) -> Rule | None:
        exact = self._rule("allow", "exact", name)
        return exact or self._rule("allow", "regex", name)

    def _rule(self, type_: str, kind: str, name: str) -> Rule | None:
        wanted = (each for each in self.rules if (each.type, each.kind) == (type_, kind))
        return next((each for each in wanted if each.matches(name)), None)

    def denying(self, name: str) -> tuple[str, int, Rule | None] | None:
        """Why a name that nobody allows is blocked: status, the log's number of what blocks it, and the rule."""
        if rule := self._rule("deny", "exact", name):
            return "DENYLIST", rule.id, rule
        for each in self.lists:
            if each.enabled and each.covers(name):
                return "GRAVITY", -each.id - 2, None
        if rule := self._rule("deny", "regex", name):
            return "REGEX", rule.id, rule
        return None

    def size(self) -> int:
        """How many different names the lists block."""
        return len({name for each in self.lists if each.enabled for name in (*each.names, *each.abp)})

    def next_id(self, entries: list) -> int:
        return max((each.id for each in entries), default=0) + 1


class Gravity:
    """The database as it is, as DNS uses it a moment later, and whether it can be read at all."""

    def __init__(self):
        self.database: Database | None = None   # none: there is none, or it is damaged
        self.opened = False                     # a database that appears while Pi-hole runs is not opened at once
        self.used = Database()                  # what DNS goes by
        self.size = 0                           # as the summary tells it
        self.last_update = 0
        self.kept: Database | None = None       # a backup of the last good one

    def furnish(self, now: float, blocked) -> None:
        """As after a first start: the one list that Pi-hole brings, which came when it has names."""
        moment = int(now)
        updated, status = (moment, 1) if blocked else (0, FAILED)
        self.database = Database([BlockList(1, DEFAULT_LIST, "Migrated from /etc/pihole/adlists.list", True, moment,
                                            moment, updated, status, 0, sorted(blocked))])
        self.last_update = moment
        self.open()

    def forget(self) -> None:
        """As after a first start that could not fetch anything."""
        self.__init__()
        self.size = NEVER_READ

    def damage(self) -> None:
        """Two runs at once have left nothing that can be read; what was counted stays as it was."""
        self.database, self.used = None, Database()

    @property
    def readable(self) -> Database | None:
        """The database, when the API can read it."""
        return self.database if self.opened else None

    def open(self) -> None:
        """Opens the database when there is one; DNS goes by it as it is now."""
        if self.database:
            self.opened = True
            self.used = self.database.copy()
            self.size = self.database.size()

    def replace(self, database: Database) -> None:
        """The result of a run; it counts at once unless there was none to be replaced."""
        known = self.database is not None or self.kept is not None
        self.kept = database.copy()
        self.database = database
        if known:
            self.open()

    def dump(self) -> dict:
        """What outlives a restart."""
        return {"database": asdict(self.database) if self.database else None, "last_update": self.last_update,
                "kept": asdict(self.kept) if self.kept else None}

    def load(self, stored: dict) -> None:
        self.database = _database(stored["database"])
        self.kept = _database(stored["kept"])
        self.last_update = stored["last_update"]
        self.opened, self.used, self.size = False, Database(), NEVER_READ
        self.open()


def _database(stored: dict | None) -> Database | None:
    if stored is None:
        return None
    return Database([BlockList(**each) for each in stored["lists"]], [Rule(**each) for each in stored["rules"]])
