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
        await call.out(_tail(file, options.value("--tail", "all")))
        if "--follow" in options.switches:
            await _follow(call, engine, container, file)
    return 0


def _tail(file, count):
    data = file.read()
    if not count.isdecimal():   # "all", and whatever else is no number
        return data
    lines = data.splitlines(keepends=True)
    return b"".join(lines[len(lines) - int(count):] if int(count) < len(lines) else lines)


async def _follow(call, engine, container, file):
    """Until the container ends or is removed; a break of the engine ends it with an error."""
    while True:
        if data := file.read(_CHUNK):
            await call.out(data)
        elif container.running:
            await asyncio.sleep(_POLL_SECONDS)
        else:
            break
    engine.reach()
