"""The settings archive: made, looked at, taken in."""

import io
import json
import re
import time
import zipfile

_SETTINGS = "etc/pihole/pihole.toml"
_DATABASE = "etc/pihole/gravity.db"
_DATABASE_HEAD = b"SQLite format 3\0"
_SHORTEST_BOUNDARY, _LONGEST_BOUNDARY = 4, 70
_TABLES = ("group adlist adlist_by_group domainlist domainlist_by_group client client_by_group").split()


class Refused(Exception):
    """An upload that is not taken: message and hint."""

    def __init__(self, message: str, hint: str | None):
        super().__init__(message)
        self.message = message
        self.hint = hint


def file_name() -> str:
    return time.strftime("pi-hole_pihole_teleporter_%Y-%m-%d_%H-%M-%S_UTC.zip", time.gmtime())


def make(settings: str, database: dict) -> bytes:
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr(_SETTINGS, settings)
        archive.writestr("etc/hosts", "127.0.0.1\tlocalhost\n::1\tlocalhost\n")
        archive.writestr("etc/pihole/dhcp.leases", "")
        archive.writestr(_DATABASE, _DATABASE_HEAD + json.dumps(database).encode())
    return out.getvalue()


def uploaded_file(content_type: str | None, body: bytes) -> tuple[str, bytes]:
    """The name and the bytes of the form field "file"."""
    form = re.match(r'multipart/form-data\s*;\s*boundary="?([^";]+)', content_type or "")
    if not form or not _SHORTEST_BOUNDARY <= len(form[1]) <= _LONGEST_BOUNDARY:
        raise Refused("Invalid form request", None)
    for part in body.split(b"--" + form[1].encode("latin-1")):
        head, _, content = part.partition(b"\r\n\r\n")
        disposition = re.search(rb'form-data;\s*name="file";\s*filename="([^"]*)"', head, re.IGNORECASE)
        if disposition and content[:-2]:
            return disposition[1].decode(errors="replace"), content[:-2]
    raise Refused("No ZIP archive received", None)


def read(name: str, data: bytes) -> tuple[list[str], str | None, dict | None]:
    """What an archive brings: the names of its parts, the settings file's text, lists and rules; none if missing."""
    if not name.endswith(".zip") or not data.startswith(b"PK"):
        raise Refused("Invalid file", "The uploaded file does not appear to be a valid Pi-hole Teleporter archive")
    try:
        archive = zipfile.ZipFile(io.BytesIO(data))
        found = archive.namelist()
        settings = archive.read(_SETTINGS).decode() if _SETTINGS in found else None
        database = _database(archive.read(_DATABASE)) if _DATABASE in found else None
    except (zipfile.BadZipFile, UnicodeDecodeError, NotImplementedError, RuntimeError) as error:
        hint = "Failed to parse received ZIP archive: failed finding central directory"
        raise Refused("Invalid request", hint) from error
    files = [_SETTINGS] if settings is not None else []
    if _DATABASE in found:
        files += [f"{_DATABASE}->{table}" for table in _TABLES]
    return files, settings, database


def _database(data: bytes) -> dict | None:
    """None when it was made by somebody else."""
    try:
        return json.loads(data.removeprefix(_DATABASE_HEAD))
    except ValueError:
        return None
