"""Colima's virtual machine."""

VERSION = "0.9.1"
FORWARDERS = ("ssh", "grpc", "none")


class Colima:
    """Runs or not, with its sizes and its port forwarder; a stop keeps them."""

    def __init__(self):
        self.created = False
        self.running = False
        self.by_service = False            # started by Homebrew's login service
        self.cpu, self.memory, self.disk = 2, 2, 100
        self.forwarder = "ssh"
        self.knows_forwarder = True        # has the option --port-forwarder
        self.failure = None                # what the next starts fail with
        self.engine = None

    async def start(self, at_once=False):
        self.created = self.running = True
        await self.engine.machine_starts(at_once)

    async def stop(self):
        await self.engine.machine_stops()
        self.running = self.by_service = False

    def forget(self):
        """As if it had never been started."""
        self.__init__()
