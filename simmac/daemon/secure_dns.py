"""DNS over HTTPS at the names and addresses of the public providers, with certificates that this Mac trusts."""

import asyncio
import base64
import contextlib
import socket
import ssl
from urllib.parse import parse_qs, urlsplit

from daemon import certificates
from daemon import dns_message as dns
from daemon.control import command

from pihole.names import SECURE_DNS

_IP_FREEBIND = 15
_MOST_BYTES = 65535


class SecureDns:
    """Answers RFC 8484 for every provider, and remembers which provider was asked for which name."""

    def __init__(self, mac):
        self._mac = mac
        self._servers = []
        self.questions = []   # (provider, name), newest last

    def reset(self):
        self.questions.clear()

    async def start(self):
        folder = await asyncio.to_thread(certificates.ensure)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(f"{folder}/good.pem", f"{folder}/good.key")
        context.set_alpn_protocols(["http/1.1"])
        for provider, addresses in SECURE_DNS.items():
            for address in addresses:
                await self._listen(provider, address, context)

    async def _listen(self, provider, address, context):
        listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
        listener.setsockopt(socket.SOL_IP, _IP_FREEBIND, 1)
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        listener.bind((address, 443))

        async def serve(reader, writer):
            await self._serve(provider, reader, writer)

        self._servers.append(await asyncio.start_server(serve, sock=listener, ssl=context))
        self._mac.network.hosts.append(address)

    async def _serve(self, provider, reader, writer):
        """Answers the requests of one connection, one after another."""
        with contextlib.suppress(OSError, ValueError, asyncio.IncompleteReadError, asyncio.LimitOverrunError):
            while self._mac.network.internet:
                packet = await _read_request(reader)
                reply = self._reply(provider, packet) if packet else None
                writer.write(_response(reply))
                await writer.drain()
        with contextlib.suppress(OSError):
            writer.close()

    def _reply(self, provider, packet):
        try:
            name = dns.read_question(packet)[2]
        except dns.BadQuestion:
            return None
        self.questions.append((provider, name))
        return self._mac.network.outside_dns.answer(packet)


async def _read_request(reader):
    """The DNS message of one request, sent by GET or by POST; none when it holds none."""
    head = (await reader.readuntil(b"\r\n\r\n")).decode("latin-1").split("\r\n")
    method, target, _ = head[0].split(" ", 2)
    headers = dict(line.lower().split(": ", 1) for line in head[1:] if ": " in line)
    body = await reader.readexactly(min(int(headers.get("content-length", "0")), _MOST_BYTES))
    if method == "POST":
        return body
    sent = parse_qs(urlsplit(target).query).get("dns", [""])[0]
    return base64.urlsafe_b64decode(sent + "=" * (-len(sent) % 4))


def _response(reply):
    if reply is None:
        return b"HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n"
    return (b"HTTP/1.1 200 OK\r\nContent-Type: application/dns-message\r\nCache-Control: max-age=60\r\n"
            b"Content-Length: %d\r\n\r\n" % len(reply)) + reply


async def start(mac):
    """Opens the providers of this Mac's internet."""
    mac.secure_dns = SecureDns(mac)
    mac.reset_hooks.append(mac.secure_dns.reset)
    await mac.secure_dns.start()


@command("secure-questions", "secure-questions: which DNS-over-HTTPS provider was asked for which name")
def secure_questions(mac, _args):
    return mac.secure_dns.questions
