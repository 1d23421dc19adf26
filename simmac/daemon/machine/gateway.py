"""The DNS server that Lima gives its machine at the gateway's address: it asks whom the Mac asks."""

import asyncio
import socket
import struct

from daemon import dns_message as dns

_PATIENCE = 1.0   # seconds for each of the Mac's servers


class Gateway:
    """Passes questions from the machine on to the Mac's resolvers, in their order."""

    def __init__(self, network, address):
        self._network = network
        self._address = address
        self._server = None
        self._socket = None
        self._tasks = set()

    async def open(self):
        """Answers from now on, over both transports."""
        self._server = await asyncio.start_server(self._stream, self._address, 53)
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.setblocking(False)
        self._socket.bind((self._address, 53))
        asyncio.get_running_loop().add_reader(self._socket, self._receive)

    def _receive(self):
        packet, sender = self._socket.recvfrom(65535)
        task = asyncio.ensure_future(self._datagram(packet, sender))
        self._tasks.add(task)
        task.add_done_callback(self._tasks.discard)

    async def _datagram(self, packet, sender):
        reply = await self._answer(packet)
        if reply:
            self._socket.sendto(reply, sender)

    async def _stream(self, reader, writer):
        try:
            while True:
                length = struct.unpack(">H", await reader.readexactly(2))[0]
                reply = await self._answer(await reader.readexactly(length)) or b""
                writer.write(struct.pack(">H", len(reply)) + reply)
                await writer.drain()
        except (asyncio.IncompleteReadError, ConnectionError):
            pass
        finally:
            writer.close()

    async def _answer(self, packet):
        for server in self._network.default_servers():
            if reply := await _ask(server, packet):
                return reply
        return _no_answer(packet)


async def _ask(server, packet):
    loop = asyncio.get_running_loop()
    family = socket.AF_INET6 if ":" in server else socket.AF_INET
    with socket.socket(family, socket.SOCK_DGRAM) as handle:
        handle.setblocking(False)
        try:
            handle.connect((server, 53))
            await loop.sock_sendall(handle, packet)
            return await asyncio.wait_for(loop.sock_recv(handle, 65535), _PATIENCE)
        except (OSError, asyncio.TimeoutError):
            return None


def _no_answer(packet):
    try:
        identifier, flags, _, _, question = dns.read_question(packet)
    except dns.BadQuestion:
        return None
    return dns.write_answer(identifier, flags, question, dns.SERVFAIL, ())
