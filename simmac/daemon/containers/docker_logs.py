"""docker logs: what a container printed, and what it goes on printing."""

import asyncio

from daemon.containers.docker_parts import engine_of, need_words, options_of

_POLL_SECONDS = 0.02
_CHUNK = 1 << 16


async def logs(call, args):
    options = options_of("logs", args, switches=("-f|--follow", "-t|--timestamps", "--details"),
                         values=("-n|--tail", "--since", "--until"))
    need_words("logs", options)
    engine = engine_of(call)
    container = engine.find(options.words[0])
    with open(container.log_path, "rb") as file:
        await _print(call, _tail(file, options.value("--tail", "all")))
        if "--follow" in options.switches:
            await _follow(call, engine, container, file)
    return 0


def _tail(file, count):
    data = file.read()
    if not count.isdecimal():   # "all", and whatever else is no number
        return data
    lines = _lines(data)
    return b"".join(lines[len(lines) - int(count):] if int(count) < len(lines) else lines)


def _lines(data):
    """Ended by a line feed only; a carriage return is part of a line."""
    return [line + b"\n" for line in data.split(b"\n")[:-1]] + [line for line in data.split(b"\n")[-1:] if line]


async def _print(call, data):
    """Lines that are marked with a NUL were written to standard error."""
    for line in _lines(data):
        if line.startswith(b"\0"):
            await call.err(line[1:])
        else:
            await call.out(line)


async def _follow(call, engine, container, file):
    """Until the container ends or is removed; a break of the engine ends it with an error."""
    while True:
        if data := file.readlines(_CHUNK):
            await _print(call, b"".join(data))
        elif container.running:
            await asyncio.sleep(_POLL_SECONDS)
        else:
            break
    engine.reach()
