"""Talking to a running Mac over its control socket."""

import base64
import json
import os
import socket
import sys
import time

from launcher.problem import Problem


def connect(folder, wait=0.0):
    """A connection to the Mac whose private folder this is."""
    deadline = time.monotonic() + wait
    while True:
        handle = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        try:
            # The way through the open folder keeps the path short: a socket's path may have 107 bytes only.
            place = os.open(folder, os.O_PATH | os.O_DIRECTORY)
            try:
                handle.connect(f"/proc/self/fd/{place}/control.sock")
                return handle
            finally:
                os.close(place)
        except OSError:
            handle.close()
            if time.monotonic() >= deadline:
                raise Problem(f"No simulated Mac runs at {folder}.") from None
            time.sleep(0.01)


def ask(folder, words, wait=0.0, limit=60.0):
    """Gives one command and answers with its result, which must come within the limit in seconds."""
    with connect(folder, wait) as handle:
        handle.settimeout(limit)
        try:
            handle.sendall(json.dumps({"command": words}).encode() + b"\n")
            with handle.makefile("rb") as answers:
                line = answers.readline()
        except TimeoutError:
            raise Problem(f"The simulated Mac did not answer within {limit:g} seconds.") from None
    if not line:
        raise Problem("The simulated Mac went away before it answered.")
    answer = json.loads(line)
    if not answer["ok"]:
        raise Problem(answer["error"])
    return answer["result"]


def control(folder, words, wait):
    """Gives the command and prints its result; a picture goes into the file that was named."""
    if words[:1] == ["screenshot"] and len(words) != 2:
        raise Problem("Say screenshot FILE.")
    result = ask(folder, words or ["help"], wait)
    if isinstance(result, dict) and "png" in result:
        with open(words[1], "wb") as file:
            file.write(base64.b64decode(result["png"]))
    elif result is not None:
        sys.stdout.write(_as_text(result))
    return 0


def _as_text(result):
    if isinstance(result, str):
        return result + "\n"
    if isinstance(result, list):
        return "".join(json.dumps(each) + "\n" for each in result)
    return json.dumps(result, indent=2) + "\n"
