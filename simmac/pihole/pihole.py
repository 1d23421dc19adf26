"""One Pi-hole: its parts put together, its start, restart and end."""

import asyncio
import secrets
import time
from dataclasses import dataclass, field
from pathlib import Path

from . import store as stores
from .blocking import Blocking
from .clock import Clock
from .container_log import ContainerLog
from .dns_server import DnsServer, Presence
from .http import HttpServer
from .knobs import Knobs
from .login import Login
from .query_log import QueryLog
from .resolver import Resolver
from .sessions import Sessions
from .web import WebApi

_IMPORT_ANSWER_SECONDS = 0.05
_QUEUED_SHARE = 0.14   # of a start; an earlier question is lost


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
    password: str | None = None
    upstream: str = "1.1.1.1"
    knobs: dict = field(default_factory=dict)


class Pihole:
    """Listens from its start on, as a published port does, and answers once it is ready."""

    def __init__(self, settings: Settings):
        self._settings = settings
        self._ended = False
        self._web_ready = False
        self._forced_password = settings.password
        self.clock = Clock()
        self.knobs = Knobs(**settings.knobs)
        self.store = stores.Store(settings.data)
        self.log = QueryLog(self.clock, self.knobs)
        self.print_log = ContainerLog()
        self.blocking = Blocking(self.clock, self._blocking_changed)
        self.sessions = Sessions(self.clock, self.knobs)
        self.login = Login(self.clock, self.knobs, self.sessions)
        self.gravity_at = time.time()
        self.resolver = Resolver(self.clock, self.knobs, self.blocking, self.log, self.print_log,
                                 f"{settings.upstream}#53")
        self.dns = DnsServer(settings.dns, self.knobs, self.resolver, settings.client)
        self.web = HttpServer(settings.web, WebApi(self).handle, self.knobs, lambda: self._web_ready)

    async def start(self) -> None:
        """OSError when an address is taken."""
        await self.dns.open()
        await self.web.open()
        await self.dns.follow_knobs()
        fresh = not self.store.settings_text()
        self.print_log.banner(self._choose_password(), fresh)
        self.sessions.load(self.store.take_sessions())
        self._come_up(self._settings.boot, self._settings.web_boot, self._settings.settled)

    def stop(self) -> None:
        """A clean end: sessions are kept for the next start."""
        if self._ended:
            return
        self._ended = True
        self._go_down()
        self.store.keep_sessions(self.sessions.dump())
        self.print_log.info("Shutting down...")

    async def restart(self) -> None:
        """The resolver ends and starts again; the process and its ports stay."""
        self.print_log.info("Restarting FTL")
        self._go_down()
        self.web.drop_connections()
        self._come_up(self.knobs.restart, self.knobs.restart)
        await asyncio.sleep(self.knobs.restart)
        self._choose_password()
        self.log.clear()

    def _go_down(self) -> None:
        self._web_ready = False
        self.dns.presence = Presence.AWAY

    def _come_up(self, dns: float, web: float, settled: bool = False) -> None:
        """Answers after that many seconds; what is asked shortly before DNS does waits in its queue."""
        loop = asyncio.get_running_loop()
        loop.call_later(dns * (1 - _QUEUED_SHARE), self._queue)
        loop.call_later(dns, self._serve, settled)
        loop.call_later(web, self._serve_web)

    def _queue(self) -> None:
        if not self._ended:
            self.dns.presence = Presence.QUEUING

    def _serve_web(self) -> None:
        self._web_ready = not self._ended

    def _serve(self, settled: bool = False) -> None:
        if self._ended:
            return
        self.resolver.started(settled)
        self.dns.serve()
        self.print_log.info("FTL is running on 0.0.0.0 port 53, web server on port 80")

    def take_in(self, settings: str | None) -> None:
        """Imports a settings file (None: none came) and restarts once the answer is out."""
        if settings is not None:
            password_hash, blocking = stores.parse_settings(settings)
            self.store.write(password_hash or "", blocking)
        loop = asyncio.get_running_loop()
        self._restarting = loop.call_later(_IMPORT_ANSWER_SECONDS, lambda: loop.create_task(self.restart()))

    def set_password(self, password: str) -> None:
        """Somebody changed the password in the web interface: everybody is logged out."""
        self._forced_password = None
        self.login.password_hash = stores.hash_password(password) if password else ""
        self.sessions.clear()
        self._save(self.blocking.enabled)

    async def reset(self, password: str | None, knobs: dict) -> None:
        """As freshly installed, without a new process."""
        self._forced_password = password
        for name, value in {**Knobs().as_dict(), **knobs}.items():
            self.knobs.set(name, value)
        self.sessions.clear()
        self.store.write("", True)
        self.print_log.banner(self._choose_password(), True)
        self.log.clear()
        self._serve(True)
        self._serve_web()
        self.web.drop_connections()
        await self.dns.follow_knobs()

    def _choose_password(self) -> str:
        """Takes the environment's password, the stored one, or a new one; says which."""
        stored, blocking = self.store.read()
        line = "[i] Using the password that was set before"
        if self._forced_password is not None:
            stored = stores.hash_password(self._forced_password) if self._forced_password else ""
            line = "[i] Assigning the password from the environment"
        elif stored is None:
            password = secrets.token_urlsafe(6)
            stored = stores.hash_password(password)
            line = f"[i] No password was set, assigning a random one: {password}"
        self.login.password_hash = stored
        self.blocking.load(blocking)
        self._save(blocking)
        return line

    def _save(self, blocking: bool) -> None:
        self.store.write(self.login.password_hash, blocking)

    def _blocking_changed(self, enabled: bool) -> None:
        self.print_log.info(f"Blocking status changed to {'enabled' if enabled else 'disabled'}")
        self._save(enabled)
