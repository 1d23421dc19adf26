"""The exchanges recorded with a real Pi-hole: how to send them again, and how to compare what comes back."""

import json
import re
import shlex
from dataclasses import dataclass
from pathlib import Path

from plain_http import Answer, exchange

FOLDER = Path(__file__).resolve().parents[1] / "data" / "pihole-api"
_MOVING_HEADERS = {"Date", "Content-Length"}
_MOVING_MEMBERS = {"took", "csrf", "sid", "time", "login_at", "last_active", "valid_until", "last_update",
                   "date_added", "date_modified", "date_updated", "timestamp"}
_BOUNDARY = re.compile(r"boundary=(\S+)")


@dataclass
class Recording:
    """One recorded exchange."""

    name: str
    method: str
    target: str
    headers: list
    options: dict
    answer: Answer | None

    def send(self, port, sids=None, files=None, csrf=None):
        """Sends it again, with live session ids in place of the recorded ones."""
        def live(text):
            for old, new in (sids or {}).items():
                text = text.replace(old, new)
                text = text.replace(_quoted(old), _quoted(new))
            return text
        headers = [(name, csrf if csrf and name in ("X-CSRF-TOKEN", "X-FTL-CSRF") else live(value))
                   for name, value in self.headers if name not in ("Content-Length", "Host")]
        host = dict(self.headers)["Host"]
        headers.insert(0, ("Host", host))
        body = self._body(files or {}, live)
        if dict(self.headers).get("Transfer-Encoding") == "chunked":
            body = f"{len(body):x}\r\n".encode() + body + b"\r\n0\r\n\r\n"
        return exchange(port, self.method, live(self.target), headers, body)

    def _body(self, files, live):
        if "-d" in self.options:
            return live(self.options["-d"]).encode()
        if "--data-binary" in self.options:
            return files["zip"]
        if "-F" not in self.options:
            return b""
        boundary = _BOUNDARY.search(dict(self.headers)["Content-Type"])[1]
        return _form(self.options["-F"], boundary, files)


def _form(text, boundary, files):
    field, _, rest = text.partition("=")
    source, *attributes = rest.split(";")
    given = dict(attribute.split("=", 1) for attribute in attributes)
    disposition = f'form-data; name="{field}"'
    if source.startswith("@"):
        disposition += f'; filename="{given.get("filename", Path(source[1:]).name)}"'
    content = files.get(Path(source[1:]).name, files["zip"])
    head = f"--{boundary}\r\nContent-Disposition: {disposition}\r\nContent-Type: {given['type']}\r\n\r\n"
    return head.encode() + content + f"\r\n--{boundary}--\r\n".encode()


def _quoted(sid):
    return sid.replace("+", "%2b").replace("/", "%2f").replace("=", "%3d")


def names():
    return sorted(path.stem for path in FOLDER.glob("*.txt"))


def load(name):
    """Reads a recording; its answer is missing where only a status was kept."""
    text = (FOLDER / f"{name}.txt").read_bytes().decode()   # line ends as they are
    command = next(line for line in text.splitlines() if line.startswith("$ curl"))
    request, _, reply = text.partition("--- request as sent\n")[2].partition("--- answer\n")
    lines = [line for line in request.splitlines() if line]
    method, target, _ = lines[0].split(" ")
    headers = [(line.partition(":")[0], line.partition(":")[2].strip()) for line in lines[1:]]
    words = shlex.split(command[2:])
    options = {word: words[at + 1] for at, word in enumerate(words) if word in ("-d", "-F", "--data-binary")}
    return Recording(name, method, target, headers, options, _answer(reply))


def _answer(text):
    head, _, body = text.partition("\n\n")
    if not head.startswith("HTTP/"):
        return None
    lines = head.split("\n")
    headers = [(line.partition(":")[0], line.partition(":")[2].strip()) for line in lines[1:]]
    return Answer(lines[0], headers, body.partition("[[status")[0].strip().encode())


def still(answer, sids=()):
    """An answer without what differs from one time to the next, ready to be compared."""
    headers = [(name, _still_text(value)) for name, value in answer.headers if name not in _MOVING_HEADERS]
    if (answer.header("Content-Type") or "").startswith("application/json") and answer.body:
        body = _still_value(json.loads(answer.body))
    else:
        body = None
    return {"status": answer.status_line, "headers": headers, "body": body}


def _still_text(value):
    value = re.sub(r"sid=([A-Za-z0-9+/=]{23}|<sid>);", "sid=SID;", value)
    return re.sub(r'filename="[^"]*"', 'filename="NAME"', value)


def _still_value(value, key=""):
    if isinstance(value, dict):
        return [(name, _still_value(item, name)) for name, item in value.items()]
    if isinstance(value, list):
        return [_still_value(item) for item in value]
    if key in _MOVING_MEMBERS and value is not None:
        return type(value).__name__.replace("int", "number").replace("float", "number")
    return value


def shape(value):
    """Member names in their order and kinds of values; a list is as its first element is."""
    if isinstance(value, dict):
        return [(name, shape(item)) for name, item in value.items()]
    if isinstance(value, list):
        return [shape(value[0])] if value else []
    if isinstance(value, bool) or value is None:
        return type(value).__name__
    return "number" if isinstance(value, (int, float)) else "text"
