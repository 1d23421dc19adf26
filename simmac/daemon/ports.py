"""Ports that some other program holds."""

import asyncio
import sys


class Ports:
    """Starts real processes that hold ports, so that a bind fails and lsof names a holder."""

    def __init__(self):
        self._holders = {}   # (port, protocol) to process

    async def take(self, port, protocol, name, address="127.0.0.1"):
        """Holds a port until it is freed; answers with an empty text, or with what went wrong."""
        if (port, protocol) in self._holders:
            return f"{protocol} port {port} is already taken."
        process = await asyncio.create_subprocess_exec(
            sys.executable, "-m", "daemon.port_holder", str(port), protocol, name, address,
            stdout=asyncio.subprocess.PIPE)
        line = (await process.stdout.readline()).decode().strip()
        if line != "holding":
            await process.wait()
            return line or "The port could not be taken."
        self._holders[(port, protocol)] = process
        return ""

    async def free(self, port, protocol):
        """Frees a port that was taken; answers whether it was."""
        process = self._holders.pop((port, protocol), None)
        if process is None:
            return False
        process.kill()
        await process.wait()
        return True

    async def free_all(self):
        """Frees every port that was taken."""
        for port, protocol in list(self._holders):
            await self.free(port, protocol)

    def describe(self):
        """Which ports are taken, as plain data."""
        return [{"port": port, "protocol": protocol, "pid": process.pid}
                for (port, protocol), process in self._holders.items()]
