"""A stand-in of the public release feed: HTTPS at its usual name, with a certificate that this Mac trusts."""

import asyncio
import contextlib
import json
import socket
import ssl

from daemon import certificates
from daemon.control import Refused, command, on_off, one_of, whole_number

from pihole.names import FEED_ADDRESS, FEED_HOST

PATH = "/repos/pi-hole/docker-pi-hole/releases/latest"
_TAG = "2026.10.0"
_IP_FREEBIND = 15
_DRIP_SECONDS = 0.5
_REASONS = {200: "OK", 302: "Found", 403: "Forbidden", 404: "Not Found", 429: "Too Many Requests",
            500: "Internal Server Error", 503: "Service Unavailable"}


class ReleaseFeed:
    """Answers the question for the newest release, well or badly, as it is told to."""

    def __init__(self, mac):
        self._mac = mac
        self.reset()

    def reset(self):
        self.tag = _TAG
        self.body = None           # sent instead of the release
        self.redirect = None       # an address to be sent to
        self.status = 200
        self.manner = "normal"     # normal | slow | endless | hang | cut
        self.wrong_certificate = False
        self.requests = []

    async def start(self):
        folder = await asyncio.to_thread(certificates.ensure)
        certificates.trust(self._mac, folder)
        good, self._wrong = (_context(folder, name) for name in ("good", "wrong"))
        good.sni_callback = self._choose_certificate
        listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
        listener.setsockopt(socket.SOL_IP, _IP_FREEBIND, 1)
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        listener.bind((FEED_ADDRESS, 443))
        self._server = await asyncio.start_server(self._serve, sock=listener, ssl=good)
        self._mac.network.hosts.append(FEED_ADDRESS)

    def _choose_certificate(self, connection, _name, _context):
        if self.wrong_certificate:
            connection.context = self._wrong

    async def _serve(self, reader, writer):
        with contextlib.suppress(OSError, asyncio.IncompleteReadError, asyncio.LimitOverrunError):
            head = (await reader.readuntil(b"\r\n\r\n")).decode("latin-1").split("\r\n")
            self.requests.append({"line": head[0], "headers": [line for line in head[1:] if line]})
            if self.manner == "hang" or not self._mac.network.internet:
                await reader.read()   # until the client has gone
            else:
                await self._answer(head[0].split(" ")[1], writer)
        with contextlib.suppress(OSError):
            writer.close()

    async def _answer(self, path, writer):
        body, status, extra = self._content(path)
        length = f"Content-Length: {len(body)}\r\n" if self.manner != "endless" else ""
        head = (f"HTTP/1.1 {status} {_REASONS.get(status, 'Unknown')}\r\nServer: {FEED_HOST}\r\n"
                f"Content-Type: application/json; charset=utf-8\r\n{length}{extra}Connection: close\r\n\r\n")
        writer.write(head.encode("latin-1"))
        if self.manner == "cut":
            body = body[:len(body) // 2]
        if self.manner == "slow":
            await _drip(writer, body)
        else:
            writer.write(body)
            await writer.drain()
        while self.manner == "endless" and not writer.is_closing():
            writer.write(b" " * 65536)
            await writer.drain()
            await asyncio.sleep(0)   # drain alone may go on for ever without noticing that the client has gone

    def _content(self, path):
        if self.redirect:
            return b"", 302, f"Location: {self.redirect}\r\n"
        if self.body is not None:
            return self.body.encode("utf-8", "surrogateescape"), self.status, ""
        if path != PATH:
            return b'{"message":"Not Found","status":"404"}', 404, ""
        return json.dumps(_release(self.tag)).encode(), self.status, ""


async def _drip(writer, body):
    for at in range(len(body)):
        if writer.is_closing():
            return
        writer.write(body[at:at + 1])
        await writer.drain()
        await asyncio.sleep(_DRIP_SECONDS)


def _release(tag):
    return {"url": f"https://{FEED_HOST}/repos/pi-hole/docker-pi-hole/releases/1", "id": 1, "tag_name": tag,
            "target_commitish": "master", "name": tag, "draft": False, "prerelease": False,
            "created_at": "2026-11-01T10:00:00Z", "published_at": "2026-11-01T10:00:00Z", "assets": [],
            "body": "What changed in this release."}


def _context(folder, name):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(f"{folder}/{name}.pem", f"{folder}/{name}.key")
    return context


async def start(mac):
    """Opens the feed of this Mac."""
    mac.feed = ReleaseFeed(mac)
    mac.reset_hooks.append(mac.feed.reset)
    await mac.feed.start()


@command("feed", "feed tag TAG | body TEXT | redirect ADDRESS | status N | slow|endless|hang|cut|normal | "
                 "wrong-cert on|off | requests")
def feed(mac, args):
    verb, rest = (args[0] if args else ""), args[1:]
    if verb == "requests" and not rest:
        return mac.feed.requests
    if verb in ("slow", "endless", "hang", "cut") and not rest:
        mac.feed.manner = verb
    elif verb == "normal" and not rest:
        mac.feed.reset()
    elif verb == "wrong-cert":
        mac.feed.wrong_certificate = on_off(rest)
    elif verb == "status" and len(rest) == 1:
        mac.feed.status = whole_number(rest[0], 200, 599)
    elif verb in ("tag", "body", "redirect") and len(rest) == 1:
        setattr(mac.feed, verb, rest[0])
    else:
        one_of([verb], "tag", "body", "redirect", "status", "slow", "endless", "hang", "cut", "normal", "wrong-cert",
               "requests")
        raise Refused(f"feed {verb} does not take that.")
