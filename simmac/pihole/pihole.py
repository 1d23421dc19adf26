"""One Pi-hole: its parts put together, its start, restart and end."""

import asyncio
import secrets
from dataclasses import dataclass, field
from pathlib import Path

from . import names
from . import store as stores
from .blocking import Blocking
from .clock import Clock
from .container_log import ContainerLog
from .dns_server import DnsServer, Presence
from .gravity import Gravity
from .gravity_run import GravityRuns, first_run_text
from .http import HttpServer
from .knobs import Knobs
from .list_server import ListServer
from .login import Login
from .messages import Messages
from .query_log import QueryLog
from .resolver import Resolver
from .sessions import Sessions
from .verdicts import Verdicts
from .web import WebApi

_ANSWER_SECONDS = 0.05   # in which an answer gets out before a restart
_WRITE_SECONDS = 60      # between two times at which the questions are written down
_UNREAD_SECONDS = 2      # until a Pi-hole without lists has noticed it
_QUEUED_SHARE = 0.14     # of a start; an earlier question is lost


@dataclass
class Settings:
    """Where a Pi-hole listens and what its environment says."""

    dns: tuple[str, int]
    web: tuple[str, int]
    data: Path
    boot: float = 0.0       # seconds until DNS answers
    web_boot: float = 0.0   # seconds until the web API answers
    settled: bool = False   # the block list is there from the first moment
    client: str | None = None
    address: str = "172.17.0.2"
    password: str | None = None
    upstream: str = "1.1.1.1"
    marked_log: bool = False
    knobs: dict = field(default_factory=dict)


class Pihole:
    """Listens from its start on, as a published port does, and answers once it is ready."""

    def __init__(self, settings: Settings):
        self._settings = settings
        self._ended = False
        self._web_ready = False
        self._began = 0.0
        self._later = set()
        self._forced_password = settings.password
        self.written_at = 0.0    # up to when questions are in the long-term database
        self.clock = Clock()
        self.knobs = Knobs(**settings.knobs)
        self.store = stores.Store(settings.data)
        self.log = QueryLog(self.clock, self.knobs)
        self.print_log = ContainerLog(settings.marked_log)
        self.blocking = Blocking(self.clock, self._blocking_changed)
        self.gravity = Gravity()
        self.list_server = ListServer()
        self.messages = Messages(self.clock)
        self.runs = GravityRuns(self.clock, self.knobs, self.gravity, self.messages, self.list_server, self.save_rules)
        self.sessions = Sessions(self.clock, self.knobs)
        self.login = Login(self.clock, self.knobs, self.sessions)
        verdicts = Verdicts(self.clock, self.knobs, self.blocking, self.gravity, f"{settings.upstream}#53",
                            settings.address)
        self.resolver = Resolver(self.clock, self.knobs, verdicts, self.log, self.print_log, self._own_question)
        self.dns = DnsServer(settings.dns, self.knobs, self.resolver, settings.client)
        self.api = WebApi(self)
        self.web = HttpServer(settings.web, self.api.handle, self.knobs, lambda: self._web_ready)

    # -- start and end ----------------------------------------------------------------------------------------------

    async def start(self) -> None:
        """OSError when an address is taken."""
        await self.dns.open()
        await self.web.open()
        await self.dns.follow_knobs()
        password_line, first_run = self._choose_password(), self._take_rules()
        self.print_log.start(password_line, first_run, self.knobs.internet)
        self.sessions.load(self.store.take("sessions") or {})
        self.log.load(self.store.kept("queries") or [])
        self._come_up(self._settings.boot, self._settings.web_boot, self._settings.settled)
        self._write_down()

    def stop(self) -> None:
        """A clean end: sessions and questions are kept for the next start."""
        if self._ended:
            return
        self._ended = True
        self._go_down()
        self.web.drop_connections()
        self.store.keep("sessions", self.sessions.dump())
        self.store.keep("queries", self.log.dump())
        self.print_log.stopping()

    async def over(self) -> None:
        """Waits for what has to be done before the process may end."""
        await self.runs.over()
        self.print_log.ended(self.uptime())

    def restart_soon(self) -> None:
        """Restarts once the answer is out."""
        self._call_later(_ANSWER_SECONDS, lambda: self._keep(self.restart()))

    async def restart(self) -> None:
        """The resolver ends and starts again, after a list run if one is under way; the process and its ports stay."""
        self._go_down()
        self.web.drop_connections()
        await self.runs.over()
        self.print_log.ended(self.uptime())
        self._come_up(self.knobs.restart, self.knobs.restart)
        await asyncio.sleep(self.knobs.restart)
        self._choose_password()
        self.gravity.open()

    def uptime(self) -> float:
        return self.clock.elapsed() - self._began

    def _go_down(self) -> None:
        self._web_ready = False
        self.dns.presence = Presence.AWAY

    def _come_up(self, dns: float, web: float, settled: bool = False) -> None:
        """Answers after that many seconds; what is asked shortly before DNS does waits in its queue."""
        self._call_later(dns * (1 - _QUEUED_SHARE), self._queue)
        self._call_later(dns, lambda: self._serve(settled))
        self._call_later(web, self._serve_web)

    @staticmethod
    def _call_later(seconds: float, function) -> None:
        asyncio.get_running_loop().call_later(seconds, function)

    def _keep(self, coroutine) -> None:
        task = asyncio.get_running_loop().create_task(coroutine)
        self._later.add(task)
        task.add_done_callback(self._later.discard)

    def _queue(self) -> None:
        if not self._ended:
            self.dns.presence = Presence.QUEUING

    def _serve_web(self) -> None:
        self._web_ready = not self._ended

    def _serve(self, settled: bool = False) -> None:
        if self._ended:
            return
        self._began = self.clock.elapsed()
        self.messages.started()
        self.resolver.started(settled)
        self.dns.serve()
        self.print_log.running(len(self.log.all()), self.blocking.enabled)
        self._own_question("1.0.0.127.in-addr.arpa")

    def _own_question(self, name: str) -> None:
        """Pi-hole asks itself for the name of somebody, a moment later."""
        if self.knobs.own_questions >= 0:
            self._call_later(self.knobs.own_questions, lambda: self.resolver.ask_itself(name, "PTR"))

    def _write_down(self) -> None:
        """Every minute; what came later is lost when the process is killed."""
        if self._ended:
            return
        self.store.keep("queries", self.log.dump())
        self.written_at = self.clock.now()
        self._call_later(_WRITE_SECONDS, self._write_down)

    async def reset(self, password: str | None, knobs: dict) -> None:
        """As freshly installed, without a new process."""
        self.clock.reset()
        self._forced_password = password
        for name, value in {**Knobs().as_dict(), **knobs}.items():
            self.knobs.set(name, value)
        for name in ("gravity", "queries"):
            self.store.forget(name)
        self.sessions.clear()
        self.messages.clear()
        self.list_server.reset()
        self.log.clear()
        self.api.requests = 0
        self.store.write("", True)
        password_line = self._choose_password()
        self.print_log.start(password_line, self._take_rules(), self.knobs.internet)
        self._serve(True)
        self._serve_web()
        self.web.drop_connections()
        await self.dns.follow_knobs()

    # -- what is kept -----------------------------------------------------------------------------------------------

    def _take_rules(self) -> str:
        """Lists and rules as they were, or those of a first start; answers with what that prints."""
        if stored := self.store.kept("gravity"):
            self.gravity.load(stored)
            return ""
        self.gravity.forget()
        if self.knobs.internet:
            self.gravity.furnish(self.clock.now(), names.BLOCKED if self.knobs.list_server == "good" else ())
        else:
            self.gravity.size = 0
            self._call_later(_UNREAD_SECONDS * self.knobs.pace, self._notice_no_lists)
        self.save_rules()
        return first_run_text(self.gravity.database)

    def _notice_no_lists(self) -> None:
        if not self.gravity.database:
            self.gravity.forget()

    def save_rules(self) -> None:
        self.store.keep("gravity", self.gravity.dump())

    def rules_changed(self) -> None:
        """Keeps what is there now; DNS goes by it in a moment."""
        self.save_rules()
        self._call_later(self.knobs.effect, self.gravity.open)

    def take_in(self, settings: str | None, database: dict | None) -> None:
        """Imports a settings file, lists and rules (None: none came) and restarts once the answer is out."""
        if settings is not None:
            password_hash, blocking = stores.parse_settings(settings)
            self.store.write(password_hash or "", blocking)
        if database is not None:
            self.gravity.load(database)
            self.save_rules()
        self.restart_soon()

    def set_password(self, password: str) -> None:
        """Somebody changed the password in the web interface: everybody is logged out."""
        self._forced_password = None
        self.login.password_hash = stores.hash_password(password) if password else ""
        self.sessions.clear()
        self._save(self.blocking.enabled)

    def _choose_password(self) -> str:
        """Takes the environment's password, the stored one, or a new one; says which."""
        stored, blocking = self.store.read()
        line = "  [i] Password already set in config file"
        if self._forced_password is not None:
            stored = stores.hash_password(self._forced_password) if self._forced_password else ""
            line = "  [i] Assigning password defined by Environment Variable"
        elif stored is None:
            password = secrets.token_urlsafe(6)
            stored = stores.hash_password(password)
            line = f"  [i] No password set in environment or config file, assigning random password: {password}"
        self.login.password_hash = stored
        self.blocking.load(blocking)
        self._save(blocking)
        return line

    def _save(self, blocking: bool) -> None:
        self.store.write(self.login.password_hash, blocking)

    def _blocking_changed(self, enabled: bool) -> None:
        self.print_log.blocking(enabled)
        self._save(enabled)
