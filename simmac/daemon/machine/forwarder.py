"""Lima's port forwarding: what listens on the loopback of Colima's machine is reached on the Mac's."""

import asyncio
import json
import socket
import sys

from daemon.machine.machine import FILES

_LOOPBACK = ("127.0.0.1", "0.0.0.0")
_LOW_PORTS = 1024
_FIRST_PORT = 23   # the ssh server of the machine itself is left out


class Forwarder:
    """Holds the Mac's ports through processes of the names that a Mac shows: limactl, and ssh."""

    def __init__(self, machine):
        self._machine = machine
        self._relays = {}    # name to process and channel
        self._ways = {}      # (name, protocol, port) to its number, or none when the Mac's port is taken
        self._last = 0
        self._turn = asyncio.Lock()
        self._work = None    # the newest turn
        self.kind = "ssh"

    async def follow(self):
        """From now on exactly what listens in the machine is forwarded. It goes on when whoever waits for it is gone."""
        self._work = asyncio.create_task(self._follow())
        await asyncio.shield(self._work)

    async def _follow(self):
        async with self._turn:
            wanted = self._wanted()
            for way in [each for each in self._ways if each not in wanted]:
                await self._close(way)
            for way in sorted(wanted - set(self._ways)):
                await self._open(way)

    def _wanted(self):
        if self.kind == "none":
            return set()
        return {(self._holder(protocol, port), protocol, port) for protocol, address, port in self._machine.listening()
                if address in _LOOPBACK and port >= _FIRST_PORT and (protocol == "tcp" or self.kind == "grpc")}

    def _holder(self, protocol, port):
        """The low ports of the ssh forwarder are held by limactl, because ssh may not bind them on a Mac."""
        return "ssh" if self.kind == "ssh" and port >= _LOW_PORTS else "limactl"

    async def _open(self, way):
        name, protocol, port = way
        self._ways[way] = None   # Lima tries once, and says nothing when another program has the port
        with socket.socket(socket.AF_INET, socket.SOCK_STREAM if protocol == "tcp" else socket.SOCK_DGRAM) as handle:
            try:
                if protocol == "tcp":
                    handle.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
                handle.bind(("127.0.0.1", port))
                if protocol == "tcp":
                    handle.listen(128)
            except OSError:
                return
            self._last += 1
            await self._tell(name, {"number": self._last, "address": "127.0.0.1", "port": port}, [handle.fileno()])
            self._ways[way] = self._last

    async def _close(self, way):
        number = self._ways.pop(way)
        if number is not None:
            await self._tell(way[0], {"number": number}, [])

    async def _tell(self, name, order, descriptors):
        if name not in self._relays:
            self._relays[name] = await self._launch(name)
        channel = self._relays[name]
        socket.send_fds(channel, [json.dumps(order).encode()], descriptors)
        await asyncio.get_running_loop().sock_recv(channel, 64)

    async def _launch(self, name):
        here, there = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        with there:
            await asyncio.create_subprocess_exec(
                *self._machine.inside([sys.executable, "-S", "-m", "daemon.machine.relay", name]), stdin=there,
                env={"PYTHONPATH": FILES.rsplit("/", 1)[0], "PATH": "/run/host/usr/bin"})
        here.setblocking(False)
        return here
