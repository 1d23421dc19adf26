"""One run of one tool, as the daemon sees it."""

import asyncio
import struct

# What the daemon tells the small program that is at the tool's path: one byte, then what belongs to it.
OUT, ERR, STATUS, SIGNAL, IGNORE_TERM, EXEC = b"o", b"e", b"s", b"k", b"i", b"x"


class RunReal(Exception):
    """Ends a tool's function: the caller becomes the real program at this path, with its own arguments."""

    def __init__(self, path):
        super().__init__(path)
        self.path = path


class DiesBy(Exception):
    """Ends a tool's function: the tool dies by this signal."""

    def __init__(self, signal):
        super().__init__(signal)
        self.signal = signal


class Call:
    """What a tool's function gets: who called with what, and where the answer goes."""

    def __init__(self, mac, tool, argv, env, cwd, pid, admin, writer):
        self.mac = mac
        self.tool = tool
        self.argv = argv      # without the tool's own name
        self.env = env
        self.cwd = cwd
        self.pid = pid
        self.admin = admin    # runs below an accepted administrator prompt
        self._writer = writer

    async def out(self, text):
        """Writes to the tool's standard output; waits while its reader is slow."""
        await self._send(OUT, text)

    async def err(self, text):
        """Writes to the tool's standard error."""
        await self._send(ERR, text)

    async def pause(self, seconds):
        """The time that the real tool takes here; almost none when the Mac is fast."""
        await asyncio.sleep(self.mac.scaled(seconds))

    async def ignore_term(self):
        """From now on the tool survives SIGTERM."""
        self._writer.write(IGNORE_TERM)
        await self._writer.drain()

    async def finish(self, outcome):
        """Tells how the tool ends: a status, or one of the two exceptions above."""
        if isinstance(outcome, RunReal):
            path = outcome.path.encode()
            self._writer.write(EXEC + struct.pack("<I", len(path)) + path)
        elif isinstance(outcome, DiesBy):
            self._writer.write(SIGNAL + struct.pack("<i", outcome.signal))
        else:
            self._writer.write(STATUS + struct.pack("<i", outcome))
        await self._writer.drain()

    async def _send(self, kind, text):
        data = text.encode("utf-8", "surrogateescape") if isinstance(text, str) else bytes(text)
        if not data:
            return
        if self._writer.is_closing():
            raise ConnectionResetError("the tool has gone away")
        self._writer.write(kind + struct.pack("<I", len(data)) + data)
        await self._writer.drain()
