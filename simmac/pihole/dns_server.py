"""DNS over UDP and TCP."""

import asyncio
import enum
import socket
import struct

_TCP_IDLE_SECONDS = 10


class Presence(enum.Enum):
    """Whether somebody is behind the listening sockets."""

    AWAY = enum.auto()      # what comes is lost
    QUEUING = enum.auto()   # what comes waits
    THERE = enum.auto()


class _Datagrams(asyncio.DatagramProtocol):
    """Hands datagrams to the server and its answers back."""

    def __init__(self, server):
        self._server = server
        self._transport = None

    def connection_made(self, transport):
        self._transport = transport

    def datagram_received(self, data, address):
        if self._server.presence is Presence.QUEUING:
            self._server.waiting.append(lambda: self.datagram_received(data, address))
            return
        if self._server.deaf("udp"):
            return
        reply = self._server.answer(data, address[0], True)
        if reply:
            self._transport.sendto(reply, address)

    def error_received(self, error):
        pass


class DnsServer:
    """Listens on one address over both transports; each can be shut or made deaf by itself."""

    def __init__(self, address: tuple[str, int], knobs, resolver, client: str | None):
        self._address = address
        self._knobs = knobs
        self._resolver = resolver
        self._client = client
        self.presence = Presence.AWAY
        self.waiting = []   # questions that came a little early
        self._udp = None
        self._tcp = None

    async def open(self) -> None:
        """Binds both transports, or neither."""
        await self._open_udp()
        try:
            await self._open_tcp()
        except OSError:
            self._udp.close()
            raise

    async def _open_udp(self) -> None:
        loop = asyncio.get_running_loop()
        self._udp, _ = await loop.create_datagram_endpoint(lambda: _Datagrams(self), local_addr=self._address)
        self._udp.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 1 << 20)

    async def _open_tcp(self) -> None:
        self._tcp = await asyncio.start_server(self._serve, *self._address)

    async def follow_knobs(self) -> None:
        """Shuts or opens the sockets as the settings now say; OSError when one cannot be opened any more."""
        if (self._knobs.udp == "closed") != (self._udp is None):
            if self._udp:
                self._udp.close()
                self._udp = None
            else:
                await self._open_udp()
        if (self._knobs.tcp == "closed") != (self._tcp is None):
            if self._tcp:
                self._tcp.close()
                self._tcp = None
            else:
                await self._open_tcp()

    def serve(self) -> None:
        """Answers from now on, and first what waits."""
        self.presence = Presence.THERE
        waiting, self.waiting = self.waiting, []
        for answer in waiting:
            answer()

    def deaf(self, transport: str) -> bool:
        away = self.presence is Presence.AWAY
        return away or self._knobs.silent or getattr(self._knobs, transport) == "drop"

    def answer(self, data: bytes, client: str, over_udp: bool) -> bytes | None:
        return self._resolver.answer(data, self._client or client, over_udp)

    async def _serve(self, reader, writer) -> None:
        client = writer.get_extra_info("peername")[0]
        try:
            while True:
                data = await asyncio.wait_for(self._message(reader), _TCP_IDLE_SECONDS)
                if self.presence is not Presence.THERE:
                    break
                if self.deaf("tcp"):
                    continue
                reply = self.answer(data, client, False)
                if reply is None:
                    break
                writer.write(struct.pack("!H", len(reply)) + reply)
                await writer.drain()
        except (asyncio.IncompleteReadError, asyncio.TimeoutError, OSError):
            pass
        finally:
            writer.close()

    @staticmethod
    async def _message(reader) -> bytes:
        length = struct.unpack("!H", await reader.readexactly(2))[0]
        return await reader.readexactly(length)
