"""Colima: its settings, and the virtual machine that it starts."""

from daemon.containers.errors import CONTEXT
from daemon.machine.forwarder import Forwarder
from daemon.machine.machine import Machine

NEWEST = "0.10"
FIRST_FORWARDER = "ssh"     # carries TCP only
VERSIONS = {"0.10": "0.10.3", "0.8": "0.8.4"}
FORWARDERS = ("ssh", "grpc", "none")


class Colima:
    """Runs or not, with its sizes and its port forwarder; a stop keeps them."""

    def __init__(self, mac):
        self.machine = Machine(mac)
        self.forwarder = Forwarder(self.machine)
        self.engine = None
        self.release = NEWEST
        self._restore()

    def _restore(self):
        self.created = False
        self.running = False
        self.docker_answers = False        # a while after the machine runs
        self.cpu, self.memory, self.disk = 2, 2, 100
        self.saved_forwarder = FIRST_FORWARDER
        self.knows_forwarder = True        # has the option --port-forwarder
        self.failure = None                # what the next starts fail with

    @property
    def version(self):
        return VERSIONS[self.release]

    async def start(self, at_once=False):
        """Boots the machine, sets up its DNS, and lets Docker bring back its containers."""
        await self.boot()
        self.docker_answers = True
        self.engine.context = CONTEXT
        await self.engine.machine_starts(at_once)
        await self.forwarder.follow()

    async def boot(self):
        """The machine with its DNS, before Docker; colima counts it as running already."""
        self.machine.has_dnsmasq = self.release != "0.8"
        await self.machine.start()
        self.forwarder.kind = self.saved_forwarder
        self.created = self.running = True

    async def stop(self):
        """Ends Docker's containers, and the machine."""
        await self.engine.machine_stops()
        await self.machine.stop()
        self.running = self.docker_answers = False
        await self.forwarder.follow()

    async def forget(self):
        """As if it had never been started."""
        await self.machine.forget()
        self._restore()
        await self.forwarder.follow()

    async def enter(self, created, running, set_up):
        """As it is at the start of a state: new, or as an earlier set-up of Pi-hole left it."""
        self._restore()
        self.release = NEWEST
        self.created = created
        self.running = self.docker_answers = running
        self.saved_forwarder = self.forwarder.kind = "grpc" if set_up else FIRST_FORWARDER
        await self.machine.enter(running, set_up, self.release != "0.8")

    async def become(self, release):
        """As if that release of Colima had made the machine."""
        await self.engine.machine_stops()
        await self.machine.forget()
        self.release = release
        if self.running:
            await self.start(at_once=True)

    async def use_forwarder(self, kind):
        """As if it had been started with this forwarder."""
        self.saved_forwarder = self.forwarder.kind = kind
        await self.forwarder.follow()
