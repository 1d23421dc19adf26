"""HTTP as bytes, so that a test sees the order of headers and when a connection ends."""

import json
import socket
from dataclasses import dataclass


@dataclass
class Answer:
    """One answer as it came."""

    status_line: str
    headers: list
    body: bytes

    @property
    def status(self):
        return int(self.status_line.split(" ")[1])

    @property
    def json(self):
        return json.loads(self.body)

    def header(self, name):
        return next((value for key, value in self.headers if key.lower() == name.lower()), None)


class Connection:
    """One connection to 127.0.0.1, kept alive."""

    def __init__(self, port, timeout=5):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout)
        self._file = self.socket.makefile("rb")

    def close(self):
        self._file.close()
        self.socket.close()

    def send(self, method, target, headers=(), body=b""):
        lines = [f"{method} {target} HTTP/1.1", *(f"{name}: {value}" for name, value in headers), "", ""]
        self.socket.sendall("\r\n".join(lines).encode("latin-1") + body)

    def receive(self, method="GET"):
        """The next answer; ConnectionError when none comes."""
        line = self._file.readline().decode("latin-1").rstrip("\r\n")
        if not line:
            raise ConnectionError("closed without an answer")
        headers = []
        while (text := self._file.readline().decode("latin-1").rstrip("\r\n")):
            name, _, value = text.partition(":")
            headers.append((name, value.strip()))
        length = next((int(value) for name, value in headers if name == "Content-Length"), None)
        if method == "HEAD":
            body = b""
        elif ("Transfer-Encoding", "chunked") in headers:
            body = self._chunks()
        else:
            body = self._file.read() if length is None else self._file.read(length)
        return Answer(line, headers, body)

    def _chunks(self):
        body = b""
        while size := int(self._file.readline(), 16):
            body += self._file.read(size)
            self._file.readline()
        self._file.readline()
        return body

    def stray(self, end=b"}"):
        """What follows an answer without a head, up to its end."""
        text = b""
        while not text.endswith(end):
            text += self._file.read(1)
        return text


def exchange(port, method, target, headers=(), body=b"", timeout=5):
    """One request on a connection of its own; a length is told when there is a body."""
    headers = list(headers)
    names = {name.lower() for name, _ in headers}
    if "host" not in names:
        headers.insert(0, ("Host", f"127.0.0.1:{port}"))
    if body and not names & {"content-length", "transfer-encoding"}:
        headers.append(("Content-Length", str(len(body))))
    connection = Connection(port, timeout)
    try:
        connection.send(method, target, headers, body)
        return connection.receive(method)
    finally:
        connection.close()


def log_in(port, password="test-password"):
    """A new session: its id and its CSRF token."""
    body = json.dumps({"password": password}).encode()
    answer = exchange(port, "POST", "/api/auth", [("User-Agent", "a test")], body)
    session = answer.json["session"]
    return session["sid"], session["csrf"]


def get(port, target, sid):
    return exchange(port, "GET", target, [("X-FTL-SID", sid)])


def post(port, target, sid, value):
    return exchange(port, "POST", target, [("X-FTL-SID", sid), ("Content-Type", "application/json")],
                    json.dumps(value).encode())
