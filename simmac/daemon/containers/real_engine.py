"""A real Docker engine outside that stands for the one in Colima's machine."""

import asyncio
import hashlib
import json
import os
import socket

from daemon.containers.engine import Engine
from daemon.control import Refused
from daemon.states import SET_UP

_FOLDER = "/run/engine"
_CLIENT = "/run/host/usr/bin/docker"
_HOME = "/Users/ada"
_LOOKS = 0.05       # seconds between two looks at what it publishes
_LONGEST = 2**16
_SOCKET = f"{_HOME}/.colima/default/docker.sock"


class RealEngine(Engine):
    """Runs in the machine's network while Colima runs. What it holds is not known here; the client asks it directly."""

    client = _CLIENT
    _following = None    # the task that lets the Mac follow its ports

    def check_state(self, state):
        if state in SET_UP:
            raise Refused(f"With a real engine a Mac cannot begin as {state}: Pi-hole has to be set up in it.")

    async def machine_is_there(self, running):
        self._tell_client()
        if running:
            await self.machine_starts()

    async def machine_starts(self, at_once=False):
        self._tell_client()
        network = os.open(self.machine.network_file(), os.O_RDONLY)
        try:
            await self._tell("start", network)
        finally:
            os.close(network)
        self._show_socket()
        self._following = asyncio.create_task(self._follow_ports())

    async def _follow_ports(self):
        while True:
            await self.ports_changed()
            await asyncio.sleep(_LOOKS)

    def _stop_following(self):
        if self._following:
            self._following.cancel()
            self._following = None

    async def machine_stops(self):
        self._stop_following()
        self._hide_socket()
        await self._tell("stop")

    async def clear(self, kept=None):
        self._stop_following()
        await self._tell("clear")
        await super().clear(kept)

    def _tell_client(self):
        """Says to Docker's client, as Colima does, where the engine is."""
        context = f"{_HOME}/.docker/contexts/meta/{hashlib.sha256(b'colima').hexdigest()}"
        os.makedirs(self.mac.path(context), exist_ok=True)
        self._write(f"{context}/meta.json", {
            "Name": "colima", "Metadata": {"Description": "colima"},
            "Endpoints": {"docker": {"Host": f"unix://{_SOCKET}", "SkipTLSVerify": False}}})
        self._write(f"{_HOME}/.docker/config.json", {"auths": {}, "currentContext": "colima"})

    def _write(self, path, data):
        with open(self.mac.path(path), "w", encoding="ascii") as file:
            json.dump(data, file)

    def _show_socket(self):
        path = self.mac.path(_SOCKET)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        if not os.path.lexists(path):
            os.symlink(f"{_FOLDER}/docker.sock", path)

    def _hide_socket(self):
        path = self.mac.path(_SOCKET)
        if os.path.lexists(path):
            os.unlink(path)

    @staticmethod
    async def _tell(what, *descriptors):
        """Asks whoever looks after the engine to do something, and waits until it is done."""
        loop = asyncio.get_running_loop()
        with socket.socket(socket.AF_UNIX) as channel:
            channel.setblocking(False)
            await loop.sock_connect(channel, f"{_FOLDER}/control.sock")
            socket.send_fds(channel, [json.dumps({"do": what}).encode() + b"\n"], descriptors)
            answer = json.loads(await loop.sock_recv(channel, _LONGEST) or b'{"error": "the engine has gone"}')
        if not answer.get("ok"):
            raise Refused(f"The real engine could not {what}: {answer['error']}.")
