"""One container: its state, its log, and the process that it runs."""

import asyncio
import contextlib
import json
import os
import secrets
import time

from daemon.containers.errors import DockerError
from daemon.containers.health import Health
from daemon.containers.pihole_process import PiholeProcess

_RESTART_SECONDS = 0.1
_PROXY = "docker-proxy"    # what holds a published port in the machine
_NETWORK, _PROJECT_NETWORK = "172.17.0", "172.18.0"   # in which a container is, alone or as part of a project


class Container:
    """Created, running or exited; while it runs it holds its ports through one process."""

    def __init__(self, engine, spec):
        self._engine = engine
        self.spec = spec
        self.id = secrets.token_hex(32)
        self.created = time.time()
        self.started = None
        self.ended = None
        self.state = "created"
        self.exit_code = 0
        self.error = ""
        self.comes_back = False      # was running when the engine stopped
        self.told_health = None      # a health that it was told to have
        self.lock = asyncio.Lock()   # one start or stop at a time
        self._health = None
        self._frozen = False
        self._process = None
        self._watcher = None
        self.folder = f"{engine.folder}/containers/{self.id[:12]}"
        os.makedirs(self.folder, exist_ok=True)
        self.log_path = f"{self.folder}/log"
        with open(self.log_path, "ab"):
            pass

    @property
    def name(self):
        return self.spec.name

    @property
    def running(self):
        return self.state == "running"

    @property
    def pid(self):
        return self._process.pid if self.running else None

    @property
    def health(self):
        """Docker's word for its health; none before its first start or when it was told to have no check."""
        if not self.running:
            return "unhealthy" if self.started else None
        if self.told_health:
            return None if self.told_health == "none" else self.told_health
        return self._health.word

    async def start(self, at_once=False):
        """Runs its process (the engine holds the lock); at_once: healthy and answering from the first moment."""
        times = self._engine.times
        self._process = PiholeProcess(self.folder, self._engine.machine)
        fresh = not os.listdir(self._data_folder())
        boot = 0 if at_once else times.of(self._boot_kind() if fresh else "boot")
        try:
            trouble = await self._process.start(self._arguments(boot, at_once), self._environment(), self.log_path)
        except asyncio.CancelledError:
            await self._process.end(by_force=True)
            raise
        if trouble:
            self.state, self.exit_code = "exited", 1
            await self._process.end(by_force=True)
            return
        self.state, self.error, self.exit_code, self.comes_back = "running", "", 0, False
        self.started = time.time()
        self._health, self._frozen = Health(times.of("health"), boot), False
        if at_once:
            self._health.found_healthy()
        self._watcher = asyncio.create_task(self._watch(self._process))

    def _boot_kind(self):
        """Which of the times a first start takes."""
        return "first-boot" if self._engine.mac.network.reaches_internet() else "lonely-boot"

    async def begin_anew(self, password):
        """The same process as if it had just been started; answers whether that worked."""
        os.truncate(self.log_path, 0)
        reply = await self._process.ask({"do": "reset", "password": password, "knobs": self._engine.times.knobs()})
        self.told_health = None
        self._health = Health(self._engine.times.of("health"), 0)
        self._health.found_healthy()
        self.created = self.started = time.time()
        return reply["ok"]

    def _environment(self):
        return {name: value for name, value in self.spec.environment.items() if value is not None}

    def _arguments(self, boot, settled):
        published = {(port.container, port.protocol): port for port in self.spec.ports}
        dns = published.get((53, "tcp")) or published.get((53, "udp"))
        web = published.get((80, "tcp"))
        knobs = {**self._engine.knobs, **self._engine.times.knobs()}
        if (53, "udp") not in published:
            knobs["udp"] = "closed"
        if (53, "tcp") not in published:
            knobs["tcp"] = "closed"
        web_boot = boot and boot + self._engine.times.of("web")
        network = _PROJECT_NETWORK if self.spec.project else _NETWORK
        arguments = ["--data", self._data_folder(), "--name", _PROXY, "--boot", str(boot), "--web-boot",
                     str(web_boot), "--client", f"{network}.1", "--address", f"{network}.2", "--knobs",
                     json.dumps(knobs), "--give-up-rights", "--marked-log"]
        arguments += ["--settled"] if settled else []
        arguments += ["--dns", f"{dns.address}:{dns.host}" if dns else "127.0.0.254:53"]
        return arguments + ["--web", f"{web.address}:{web.host}" if web else "127.0.0.254:80"]

    def _data_folder(self):
        name = next((name for name, folder in self.spec.volumes.items() if folder == "/etc/pihole"), None)
        folder = self._engine.volume_folder(name) if name else f"{self.folder}/etc-pihole"
        os.makedirs(folder, exist_ok=True)
        return folder

    async def _watch(self, process):
        """Waits for an end that nobody asked for, and does what the restart policy says."""
        status = await process.wait()
        self.state, self.ended = "exited", time.time()
        self.exit_code = 128 - status if status < 0 else status
        await self._engine.ports_changed()
        if self.spec.restart in ("always", "unless-stopped") or self.spec.restart.startswith("on-failure"):
            await asyncio.sleep(_RESTART_SECONDS)
            try:
                await self._engine.start(self)
            except DockerError as error:
                self.error = error.text

    async def stop(self, by_force=False, seconds=0.0):
        """Ends its process as `docker stop` or `docker kill` does; it stays ended. DNS and web end at once, the rest
        takes its seconds."""
        async with self.lock:
            if self._watcher:
                self._watcher.cancel()
                with contextlib.suppress(asyncio.CancelledError):
                    await self._watcher
                self._watcher = None
            if not self.running:
                return
            try:
                if seconds:
                    await self.ask({"do": "end"})
                    await asyncio.sleep(seconds)
            finally:
                await self._end(by_force or self._frozen)

    async def _end(self, by_force):
        """Ends its process; by force when nobody waits for a clean end any more."""
        try:
            by_force = await self._process.end(by_force, self._engine.times.of("patience"))
        except asyncio.CancelledError:
            by_force = await self._process.end(by_force=True)
            raise
        finally:
            self.state, self.ended = "exited", time.time()
            self.exit_code = 137 if by_force else 0
            await self._engine.ports_changed()

    async def crash(self):
        """Its process dies by kill -9, without anybody having asked Docker."""
        if self.running:
            await self._process.end(by_force=True)

    def freeze(self, on):
        """Its process stands still, or goes on; what was sent to it meanwhile lies in its queues until then."""
        if self.running and on != self._frozen:
            self._frozen = on
            self._process.freeze(on)
            (self._health.freeze if on else self._health.thaw)()

    async def ask(self, request):
        """Directs the stand-in Pi-hole in it."""
        if not self.running:
            return {"ok": False, "error": "The container is not running."}
        if self._frozen:
            return {"ok": False, "error": "Pi-hole is frozen."}
        return await self._process.ask(request)
