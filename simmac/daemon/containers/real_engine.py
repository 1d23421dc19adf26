"""A real Docker engine outside that stands for the one in Colima's machine."""

import asyncio
import hashlib
import json
import os

from daemon.containers.engine import Engine
from daemon.control import Refused
from daemon.states import SET_UP

_FOLDER = "/run/engine"
_CLIENT = "/run/host/usr/bin/docker"
_HOME = "/Users/ada"
_SOCKET = f"{_HOME}/.colima/default/docker.sock"


class RealEngine(Engine):
    """Runs while Colima runs. What it holds is not known here; Docker's client asks it directly."""

    client = _CLIENT

    def check_state(self, state):
        if state in SET_UP:
            raise Refused(f"With a real engine a Mac cannot begin as {state}: Pi-hole has to be set up in it.")

    async def machine_is_there(self, running):
        self._tell_client()
        if running:
            await self.machine_starts()

    async def machine_starts(self, at_once=False):
        self._tell_client()
        await self._tell("start")
        self._show_socket()

    async def machine_stops(self):
        self._hide_socket()
        await self._tell("stop")

    async def clear(self, kept=None):
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
    async def _tell(what):
        """Asks whoever looks after the engine to do something, and waits until it is done."""
        reader, writer = await asyncio.open_unix_connection(f"{_FOLDER}/control.sock")
        writer.write(json.dumps({"do": what}).encode() + b"\n")
        answer = json.loads(await reader.readline() or b'{"error": "the engine has gone"}')
        writer.close()
        if not answer.get("ok"):
            raise Refused(f"The real engine could not {what}: {answer['error']}.")
