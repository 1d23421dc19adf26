"""The process behind a running container: one stand-in Pi-hole in the network of Colima's machine."""

import asyncio
import json
import os
import signal
import sys
from pathlib import Path

_SIMMAC = str(Path(__file__).resolve().parents[2])
_START_SECONDS = 10
_SHORTEST_PATIENCE = 2.0   # however fast the Mac is, a clean end takes its time


class PiholeProcess:
    """Starts a stand-in Pi-hole, directs it over its control socket, and ends it."""

    def __init__(self, folder, machine):
        self._folder = Path(folder)
        self._machine = machine
        self._control = self._folder / "control.sock"
        self._process = None
        self._channel = None
        self._turn = asyncio.Lock()  # one question at a time

    @property
    def pid(self):
        return self._process.pid if self._process else None

    async def start(self, arguments, environment, log_path):
        """Answers with an empty text once it listens, or with what it said when it could not."""
        self._control.unlink(missing_ok=True)
        with open(log_path, "ab") as log:
            self._process = await asyncio.create_subprocess_exec(
                *self._machine.inside([sys.executable, "-S", "-m", "pihole", "--control", str(self._control),
                                       *arguments]),
                cwd=_SIMMAC, env={"PYTHONPATH": _SIMMAC, "PATH": os.environ.get("PATH", ""), **environment},
                stdin=asyncio.subprocess.DEVNULL, stdout=log, stderr=asyncio.subprocess.STDOUT)
        return await self._listening()

    async def _listening(self):
        for _ in range(int(_START_SECONDS / 0.005)):
            if self._control.exists():
                try:
                    self._channel = await asyncio.open_unix_connection(str(self._control))
                    return ""
                except OSError:
                    pass
            if self._process.returncode is not None:
                return "it ended at once"
            await asyncio.sleep(0.005)
        return "it did not start in time"

    async def ask(self, request):
        """Sends one request; answers with the reply."""
        async with self._turn:
            reader, writer = self._channel
            writer.write((json.dumps(request) + "\n").encode())
            await writer.drain()
            line = await reader.readline()
        return json.loads(line) if line else {"ok": False, "error": "Pi-hole has gone."}

    async def wait(self):
        """Waits for its end; answers with its status, negative for a signal."""
        return await self._process.wait()

    def freeze(self, on):
        """Stops the process where it is, or lets it go on."""
        self._process.send_signal(signal.SIGSTOP if on else signal.SIGCONT)

    async def end(self, by_force=False, patience=10.0):
        """Ends it: cleanly, or as with kill -9, also when it does not end in time; answers whether it was by force."""
        if self._process is None or self._process.returncode is not None:
            return by_force
        (self._process.kill if by_force else self._process.terminate)()
        try:
            await asyncio.wait_for(self._process.wait(), None if by_force else max(patience, _SHORTEST_PATIENCE))
        except asyncio.TimeoutError:
            self._process.kill()
            by_force = True
            await self._process.wait()
        if self._channel:
            self._channel[1].close()
        return by_force
