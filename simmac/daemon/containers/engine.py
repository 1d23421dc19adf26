"""The Docker engine inside Colima's machine: images, containers, volumes."""

import os
import shutil
import time

from daemon.containers import errors
from daemon.containers.container import Container
from daemon.containers.registry import Registry, REPOSITORY
from daemon.containers.times import Times
from daemon.machine import listeners

SERVER_VERSION = "28.4.0"


class Volume:
    """A named volume: who made it, and when."""

    def __init__(self, by_compose):
        self.by_compose = by_compose
        self.created = time.time()


class Engine:
    """Answers only once Colima has started it; what it holds outlives a stop."""

    client = None                    # the program that docker is, when it is not played

    def __init__(self, mac, colima):
        self.mac = mac
        self._colima = colima
        self.folder = mac.path("/var/lib/simmac")
        self.registry = Registry()
        self.images = set()          # tags of the Pi-hole image that are here
        self.containers = {}         # name to container
        self.volumes = {}
        self.networks = set()
        self.disk_full = False
        self.refuses_user = False
        self.context = errors.CONTEXT    # the one that docker uses
        self.times = Times(mac)
        self.knobs = {}              # settings of the stand-in Pi-hole

    # -- whether it can be reached -----------------------------------------------------------------------------------

    def reach(self):
        """DockerError when the client gets no connection."""
        if self.context != errors.CONTEXT:
            raise errors.engine_down(errors.OTHER_SOCKET)
        if not self._colima.docker_answers:
            raise errors.engine_down(errors.SOCKET if self._colima.created else errors.DEFAULT_SOCKET)
        if self.refuses_user:
            raise errors.no_permission(errors.SOCKET)

    @property
    def machine(self):
        """The machine in which the containers run and their ports are published."""
        return self._colima.machine

    async def ports_changed(self):
        """Lets the Mac follow what containers now publish."""
        await self._colima.forwarder.follow()

    # -- images ------------------------------------------------------------------------------------------------------

    async def check_image(self, repository, tag):
        """DockerError when the image cannot be pulled."""
        if not self.mac.network.reaches_internet() or not await self.machine.resolves(errors.REGISTRY):
            raise errors.no_internet()
        if repository != REPOSITORY:
            raise errors.no_repository(repository)
        if tag not in self.registry.tags:
            raise errors.no_manifest(repository, tag)

    def has_image(self, spec):
        return spec.repository == REPOSITORY and spec.tag in self.images

    # -- volumes -----------------------------------------------------------------------------------------------------

    def ensure_volume(self, name, by_compose=False):
        """Makes a volume unless it is there; answers whether it is new."""
        if name.startswith("/") or name in self.volumes:
            return False
        self.volumes[name] = Volume(by_compose)
        os.makedirs(self.volume_folder(name), exist_ok=True)
        return True

    def volume_folder(self, name):
        return f"{self.folder}/volumes/{name.strip('/').replace('/', '-')}/_data"

    def remove_volume(self, name):
        if name not in self.volumes:
            raise errors.from_daemon(f"get {name}: no such volume")
        users = [each.id for each in self.containers.values() if name in each.spec.volumes]
        if users:
            raise errors.from_daemon(f"remove {name}: volume is in use - [{', '.join(users)}]")
        del self.volumes[name]
        shutil.rmtree(os.path.dirname(self.volume_folder(name)), ignore_errors=True)

    # -- containers --------------------------------------------------------------------------------------------------

    def find(self, name):
        """The container of this name or of an id that begins so."""
        for container in self.containers.values():
            if container.name == name or (len(name) > 3 and container.id.startswith(name)):
                return container
        raise errors.no_container(name)

    def create(self, spec):
        if spec.name in self.containers:
            raise errors.name_taken(spec.name, self.containers[spec.name].id)
        for volume in spec.volumes:
            self.ensure_volume(volume)
        container = Container(self, spec)
        self.containers[spec.name] = container
        return container

    async def start(self, container, at_once=False):
        """Starts it; DockerError, and the container as it was, when a port is taken."""
        async with container.lock:
            if container.running:
                return
            for port in container.spec.ports:
                self._check_port(container, port)
            container.told_health = None
            try:
                await container.start(at_once)
            finally:
                await self.ports_changed()

    def _check_port(self, container, port):
        for other in self.containers.values():
            if other.running and any((each.host, each.protocol) == (port.host, port.protocol)
                                     for each in other.spec.ports):
                raise errors.port_allocated(container, port.address, port.host)
        if listeners.holds(self.machine.listening(), port.protocol, port.address, port.host):
            raise errors.port_in_use(container, port.address, port.host, port.protocol)

    async def remove(self, container):
        await container.stop(by_force=True)
        self.containers.pop(container.name, None)
        shutil.rmtree(container.folder, ignore_errors=True)

    # -- with the machine --------------------------------------------------------------------------------------------

    def check_state(self, state):
        """Refused when a Mac with this engine cannot begin in that state."""

    async def machine_is_there(self, running):
        """A state begins with a machine that was made earlier."""

    async def machine_starts(self, at_once=False):
        """Containers that were running come back, as their restart policy says."""
        for container in list(self.containers.values()):
            if container.comes_back and container.spec.restart in ("always", "unless-stopped"):
                try:
                    await self.start(container, at_once)
                except errors.DockerError as error:
                    container.error = error.text

    async def machine_stops(self):
        """What comes back is not forgotten when the machine stops once more before it has."""
        for container in list(self.containers.values()):
            container.comes_back = container.comes_back or container.running
            await container.stop()

    async def clear(self, kept=None):
        """As a new engine, empty but for one container; the settings of the play are forgotten too."""
        for container in list(self.containers.values()):
            if container is not kept:
                await self.remove(container)
        if not kept:
            shutil.rmtree(self.folder, ignore_errors=True)
        self.__init__(self.mac, self._colima)
