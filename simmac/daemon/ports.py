"""Ports that some other program holds."""

import asyncio
import sys


class Ports:
    """Starts real processes that hold ports, so that a bind fails and lsof names a holder."""

    def __init__(self):
        self._holders = {}   # (port, protocol, whether in the machine) to process

    async def take(self, port, protocol, name, address="127.0.0.1", machine=None):
        """Holds a port, of the Mac or of Colima's machine; answers with an empty text, or with what went wrong."""
        key = (port, protocol, machine is not None)
        if key in self._holders:
            return f"{protocol} port {port} is already taken."
        words = [sys.executable, "-m", "daemon.port_holder", str(port), protocol, name, address]
        process = await asyncio.create_subprocess_exec(
            *(machine.inside(words) if machine else words), stdout=asyncio.subprocess.PIPE)
        line = (await process.stdout.readline()).decode().strip()
        if line != "holding":
            await process.wait()
            return line or "The port could not be taken."
        self._holders[key] = process
        return ""

    async def free(self, port, protocol, in_machine=False):
        """Frees a port that was taken; answers whether it was."""
        process = self._holders.pop((port, protocol, in_machine), None)
        if process is None:
            return False
        process.kill()
        await process.wait()
        return True

    async def free_all(self):
        """Frees every port that was taken."""
        for key in list(self._holders):
            await self.free(*key)

    def describe(self):
        """Which ports are taken, as plain data."""
        return [{"port": port, "protocol": protocol, "pid": process.pid, "in machine": inside}
                for (port, protocol, inside), process in self._holders.items()]
