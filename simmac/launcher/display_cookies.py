"""The keys to the caller's display. They are written down for the caller's host name, and this Mac has another."""

import os
import struct

_ANY_HOST = 0xFFFF
_TEXTS = 4   # address, display number, name of the protocol, key


def copy_for_any_host(folder):
    """Copies the caller's keys into the folder, good for every host name; the copy's path, or None where there are none."""
    source = os.environ.get("XAUTHORITY", os.path.expanduser("~/.Xauthority"))
    if not os.path.isfile(source):
        return None
    with open(source, "rb") as file:
        keys = file.read()
    copy = os.open(f"{folder}/xauthority", os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)
    with os.fdopen(copy, "wb") as file:
        for entry in _entries(keys):
            file.write(struct.pack(">H", _ANY_HOST) + entry)
    return f"{folder}/xauthority"


def _entries(keys):
    """Each entry without its kind of address; what is cut short at the end is left out."""
    place = 0
    while place + 2 <= len(keys):
        start = place = place + 2
        for _ in range(_TEXTS):
            if place + 2 > len(keys):
                return
            place += 2 + struct.unpack_from(">H", keys, place)[0]
        if place > len(keys):
            return
        yield keys[start:place]
