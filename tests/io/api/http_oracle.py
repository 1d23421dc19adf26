"""Reads HTTP answers with Python's own client: a length of four bytes and then the answer, as often as they come. Says for each, in
one line, the status and the body in hexadecimal digits, or "refused"."""

import http.client
import io
import sys


class Wire:
    """A connection on which all bytes have come already."""

    def __init__(self, content):
        self._content = content

    def makefile(self, _mode):
        """The bytes as a file."""
        return io.BytesIO(self._content)


def verdict(content):
    """What the client makes of the bytes."""
    response = http.client.HTTPResponse(Wire(content), method="GET")
    try:
        response.begin()
        return f"{response.status} {response.read().hex()}"
    except (http.client.HTTPException, ValueError, OSError):
        return "refused"


def main():
    while len(size := sys.stdin.buffer.read(4)) == 4:
        print(verdict(sys.stdin.buffer.read(int.from_bytes(size, "big"))), flush=True)


if __name__ == "__main__":
    main()
