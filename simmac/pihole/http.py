"""As much of HTTP/1.1 as the web API's clients use."""

import asyncio
import email.utils
import json
from dataclasses import dataclass, field
from urllib.parse import parse_qs, urlsplit

IDLE_SECONDS = 5
_MOST_BODY = 64 << 20
_MOST_HEADERS = 64

REASONS = {200: "OK", 201: "Created", 204: "No Content", 302: "Found", 308: "Permanent Redirect", 400: "Bad Request",
           401: "Unauthorized", 403: "Forbidden", 404: "Not Found", 413: "Payload Too Large",
           429: "Too Many Requests", 500: "Internal Server Error"}

_NO_CACHE = [("Cache-Control", "no-cache, no-store, must-revalidate, private, max-age=0"), ("Expires", "0"),
             ("Pragma", "no-cache")]
_SECURITY = [("X-DNS-Prefetch-Control", "off"),
             ("Content-Security-Policy", "default-src 'self'; style-src 'self' 'unsafe-inline'; img-src 'self' data:;"),
             ("X-Frame-Options", "DENY"), ("X-XSS-Protection", "0"), ("X-Content-Type-Options", "nosniff"),
             ("Referrer-Policy", "strict-origin-when-cross-origin")]
ALLOW = [("Access-Control-Allow-Headers", "*"), ("Access-Control-Allow-Methods", "*")]
JSON_TYPE = "application/json; charset=utf-8"


class BadRequest(Exception):
    """A request that cannot be read; the connection ends with it."""


@dataclass
class Request:
    """One request, read to its end."""

    method: str
    target: str
    headers: list[tuple[str, str]]
    body: bytes
    remote: str

    def __post_init__(self):
        parts = urlsplit(self.target)
        self.path = parts.path
        self.query = {name: values[-1] for name, values in parse_qs(parts.query, keep_blank_values=True).items()}

    def header(self, name: str) -> str | None:
        return next((value for key, value in self.headers if key.lower() == name.lower()), None)


@dataclass
class Response:
    """One answer; headers are between the common ones and the content's."""

    status: int
    body: bytes = b""
    content_type: str | None = None
    headers: list = field(default_factory=list)
    first: list = field(default_factory=list)
    cached: bool = False
    close: bool = False
    pieces: object = None    # an asynchronous generator of texts: the body comes in chunks
    stray: object = None     # a function: what it gives follows the last chunk, outside of HTTP

    def head(self) -> bytes:
        lines = [*self.first, *([("Cache-Control", "max-age=3600")] if self.cached else _NO_CACHE), *_SECURITY,
                 *self.headers]
        if self.content_type:
            lines.append(("Content-Type", self.content_type))
        if self.pieces:
            lines.append(("Transfer-Encoding", "chunked"))
        elif not self.close:
            lines.append(("Content-Length", str(len(self.body))))
        lines.append(("Date", email.utils.formatdate(usegmt=True)))
        lines.append(("Connection", "close" if self.close else "keep-alive"))
        text = f"HTTP/1.1 {self.status} {REASONS[self.status]}\r\n"
        return (text + "".join(f"{name}: {value}\r\n" for name, value in lines) + "\r\n").encode("latin-1")


def number_text(value: float) -> str:
    """A number with 15 digits where these suffice, else with 17."""
    if isinstance(value, int):
        return str(value)
    short = f"{value:.15g}"
    return short if float(short) == value else f"{value:.17g}"


def dump(value) -> str:
    """Compact JSON whose numbers are written as the real service writes them."""
    if isinstance(value, dict):
        return "{" + ",".join(f"{json.dumps(key)}:{dump(item)}" for key, item in value.items()) + "}"
    if isinstance(value, (list, tuple)):
        return "[" + ",".join(map(dump, value)) + "]"
    if isinstance(value, (int, float)) and not isinstance(value, bool):
        return number_text(value)
    return json.dumps(value, ensure_ascii=False)


async def _read_head(reader) -> tuple[str, list]:
    try:
        line = (await reader.readline()).decode("latin-1").strip()
        headers = []
        while True:
            text = (await reader.readline()).decode("latin-1")
            if text in ("\r\n", "\n", ""):
                return line, headers
            name, colon, value = text.partition(":")
            if not colon or len(headers) >= _MOST_HEADERS:
                raise BadRequest
            headers.append((name.strip(), value.strip()))
    except ValueError as error:
        raise BadRequest from error


async def _read_chunks(reader) -> bytes:
    body = b""
    while True:
        size = int((await reader.readline()).split(b";")[0], 16)
        if size == 0:
            while (await reader.readline()).strip():
                pass
            return body
        if len(body) + size > _MOST_BODY:
            raise BadRequest
        body += await reader.readexactly(size)
        await reader.readline()


async def _read_body(reader, headers) -> bytes:
    lower = {name.lower(): value for name, value in headers}
    try:
        if lower.get("transfer-encoding", "").lower() == "chunked":
            return await _read_chunks(reader)
        length = int(lower.get("content-length", "0"))
    except ValueError as error:
        raise BadRequest from error
    if not 0 <= length <= _MOST_BODY:
        raise BadRequest
    return await reader.readexactly(length)


async def read_request(reader, remote: str) -> Request | None:
    """The next request of a connection; None when the client has gone."""
    line, headers = await _read_head(reader)
    if not line:
        return None
    pieces = line.split(" ")
    if len(pieces) != 3 or not pieces[2].startswith("HTTP/1."):
        raise BadRequest
    body = await _read_body(reader, headers)
    return Request(pieces[0], pieces[1], headers, body, remote)


class HttpServer:
    """Serves one handler; a connection that stays idle is closed."""

    def __init__(self, address: tuple[str, int], handler, knobs, ready):
        self._address = address
        self._handler = handler
        self._knobs = knobs
        self._ready = ready
        self._writers = set()

    async def open(self) -> None:
        self._server = await asyncio.start_server(self._serve, *self._address)

    def drop_connections(self) -> None:
        for writer in self._writers:
            writer.close()

    async def _serve(self, reader, writer) -> None:
        self._writers.add(writer)
        try:
            while self._ready() and self._knobs.web != "drop" and await self._exchange(reader, writer):
                pass
        except (asyncio.IncompleteReadError, asyncio.TimeoutError, OSError):
            pass
        except BadRequest:
            writer.write(Response(400, close=True).head())
        finally:
            self._writers.discard(writer)
            writer.close()

    @staticmethod
    async def _send_pieces(response: Response, writer) -> None:
        async for piece in response.pieces:
            data = piece.encode()
            writer.write(f"{len(data):X}\r\n".encode() + data + b"\r\n")
            await writer.drain()
        writer.write(b"0\r\n\r\n" + (response.stray() if response.stray else b""))

    async def _exchange(self, reader, writer) -> bool:
        remote = writer.get_extra_info("peername")[0]
        request = await asyncio.wait_for(read_request(reader, remote), IDLE_SECONDS)
        if request is None:
            return False
        while self._knobs.web == "hang" or self._knobs.silent:
            await asyncio.sleep(0.05)
        if not self._ready() or self._knobs.web == "drop":
            return False
        response = await self._handler(request)
        writer.write(response.head() + (b"" if request.method == "HEAD" else response.body))
        if response.pieces:
            await self._send_pieces(response, writer)
        await writer.drain()
        return not response.close and (request.header("Connection") or "").lower() != "close"
