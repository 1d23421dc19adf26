"""The DNS servers outside the Mac: the router's, the public one, and the one that a VPN brings."""

import asyncio
import socket
import struct

from daemon import dns_message as dns
from daemon.internet import addresses

PUBLIC = "1.1.1.1"


class OutsideDns:
    """Answers DNS over UDP and TCP at every address but 127.0.0.1, as the internet would."""

    def __init__(self, network):
        self._network = network
        self._servers = {}
        self.questions = []   # (server, name), newest last

    def follow(self, wanted):
        """Answers at exactly these addresses."""
        for address in [each for each in self._servers if each not in wanted]:
            self._servers.pop(address).close()
        for address in wanted:
            if address not in self._servers:
                self._servers[address] = _Sockets(self, address)

    async def stream(self, address, reader, writer):
        """Answers one TCP client."""
        try:
            while True:
                length = struct.unpack(">H", await reader.readexactly(2))[0]
                reply = self.reply(address, await reader.readexactly(length))
                if reply is None:
                    break
                writer.write(struct.pack(">H", len(reply)) + reply)
                await writer.drain()
        except (asyncio.IncompleteReadError, ConnectionError):
            pass
        finally:
            writer.close()

    def reply(self, server, packet):
        """The answer to one packet; none when it gets no answer."""
        try:
            name = dns.read_question(packet)[2]
        except dns.BadQuestion:
            return None
        if not self._network.internet and server == PUBLIC:
            return None
        self.questions.append((server, name))
        return self.answer(packet)

    def answer(self, packet):
        """What the internet answers to a question, whoever was asked."""
        identifier, flags, name, kind, question = dns.read_question(packet)
        return dns.write_answer(identifier, flags, question, *self._found(name, kind))

    def _found(self, name, kind):
        if not self._network.internet:
            return dns.SERVFAIL, ()
        found = addresses(name)
        if not found:
            return dns.NXDOMAIN, ()
        return dns.NOERROR, found if kind in (dns.A, dns.ANY) else ()


class _Sockets:
    """The sockets at one address. They are bound at once, so that the address answers as soon as it is published."""

    def __init__(self, outside, address):
        self._outside, self._address = outside, address
        self._loop = asyncio.get_running_loop()
        self._datagrams = _bound(socket.SOCK_DGRAM, address)
        self._loop.add_reader(self._datagrams, self._receive)
        self._streams = _bound(socket.SOCK_STREAM, address)
        self._serving = self._loop.create_task(asyncio.start_server(self._accept, sock=self._streams))

    def close(self):
        """Stops answering."""
        self._loop.remove_reader(self._datagrams)
        self._datagrams.close()
        if self._serving.done():
            self._serving.result().close()
        self._serving.cancel()
        self._streams.close()

    async def _accept(self, reader, writer):
        await self._outside.stream(self._address, reader, writer)

    def _receive(self):
        try:
            packet, sender = self._datagrams.recvfrom(65535)
            reply = self._outside.reply(self._address, packet)
            if reply is not None:
                self._datagrams.sendto(reply, sender)
        except OSError:
            pass   # a client that is gone is no matter of ours


def _bound(kind, address):
    handle = socket.socket(socket.AF_INET, kind)
    handle.setblocking(False)
    if kind == socket.SOCK_STREAM:
        handle.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    handle.bind((address, 53))
    if kind == socket.SOCK_STREAM:
        handle.listen(64)
    return handle
