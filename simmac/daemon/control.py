"""The control socket: JSON lines, one request `{"command": ["wifi", "off"]}` gives one answer."""

import asyncio
import inspect
import json

COMMANDS = {}
HELP = {}


class Refused(Exception):
    """A control command that cannot be done; its text is the sentence for whoever asked."""


def command(name, usage=""):
    """Registers `function(mac, args) -> result` (plain or async) as a control command; `usage` is its line of help."""
    def register(function):
        COMMANDS[name] = function
        HELP[name] = usage
        return function
    return register


def one_of(args, *words):
    """The only argument, which must be one of the words."""
    if len(args) != 1 or args[0] not in words:
        raise Refused(f"Say one of: {', '.join(words)}.")
    return args[0]


def on_off(args):
    """The only argument as a truth value: on/off or yes/no."""
    return one_of(args, "on", "off", "yes", "no") in ("on", "yes")


def seconds(text):
    """A number of seconds, zero or more."""
    try:
        value = float(text)
    except ValueError:
        value = -1.0
    if not 0 <= value < 1e9:
        raise Refused(f"{text} is not a number of seconds.")
    return value


def whole_number(text, low=0, high=2**31 - 1):
    """A whole number within bounds."""
    if not text.lstrip("-").isdecimal() or not low <= int(text) <= high:
        raise Refused(f"{text} is not a whole number from {low} to {high}.")
    return int(text)


async def perform(mac, words):
    """Runs one control command and answers with its result."""
    if not words or words[0] not in COMMANDS:
        name = words[0] if words else ""
        raise Refused(f"There is no command \"{name}\". The commands are: {', '.join(sorted(COMMANDS))}.")
    result = COMMANDS[words[0]](mac, list(words[1:]))
    return await result if inspect.isawaitable(result) else result


async def answer(mac, line):
    """The answer to one line of a client, whatever the line holds."""
    try:
        request = json.loads(line)
        words = request["command"]
        if not isinstance(words, list) or not all(isinstance(word, str) for word in words):
            raise TypeError
    except (ValueError, KeyError, TypeError, RecursionError):
        return {"ok": False, "error": "A request is one line of JSON: {\"command\": [\"word\", ...]}."}
    try:
        return {"ok": True, "result": await perform(mac, words)}
    except Refused as refusal:
        return {"ok": False, "error": str(refusal)}
    except Exception as error:  # a mistake of ours must reach whoever asked, and must not end the Mac
        return {"ok": False, "error": f"{words[0]} failed inside the simulated Mac: {error!r}"}


async def serve_client(mac, reader, writer):
    """Answers one client until it goes away."""
    try:
        while line := await reader.readline():
            writer.write(json.dumps(await answer(mac, line)).encode("ascii") + b"\n")
            await writer.drain()
    except (ConnectionError, ValueError):
        pass
    finally:
        writer.close()


async def serve(mac, path):
    """Opens the control socket."""
    return await asyncio.start_unix_server(lambda r, w: serve_client(mac, r, w), path, limit=2**22)
