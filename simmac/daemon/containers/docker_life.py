"""The docker commands that start, stop and remove."""

from daemon.containers import errors
from daemon.containers.docker_parts import engine_of, need_words, options_of, worded

_START_SECONDS = 0.5
_REMOVE_SECONDS = 0.3


async def _each(call, words, action, closing=None):
    """Does something with each named container, prints the names that worked and then what did not."""
    trouble = []
    for word in words:
        try:
            await action(engine_of(call), word)
            await call.out(word + "\n")
        except errors.DockerError as error:
            trouble.append((word, error.text))
    if not trouble:
        return 0
    text = "\n".join(text for _, text in trouble)
    if closing:
        text += f"\n{closing}: {', '.join(word for word, _ in trouble)}"
    raise errors.DockerError(text)


async def start(call, args):
    options = options_of("start", args, switches=("-a|--attach", "-i|--interactive"))
    need_words("start", options)

    async def action(engine, name):
        container = engine.find(name)
        await call.pause(_START_SECONDS)
        await engine.start(container)
    return await _each(call, options.words, action, "Error: failed to start containers")


async def stop(call, args):
    options = options_of("stop", args, values=("-t|--time", "--timeout", "-s|--signal"))
    need_words("stop", options)

    async def action(engine, name):
        await engine.find(name).stop(seconds=engine.times.of("stop"))
    return await _each(call, options.words, action)


async def restart(call, args):
    options = options_of("restart", args, values=("-t|--time", "--timeout", "-s|--signal"))
    need_words("restart", options)

    async def action(engine, name):
        container = engine.find(name)
        await container.stop(seconds=engine.times.of("stop"))
        await call.pause(_START_SECONDS)
        await engine.start(container)
    return await _each(call, options.words, action)


async def kill(call, args):
    options = options_of("kill", args, values=("-s|--signal",))
    need_words("kill", options)

    async def action(engine, name):
        container = engine.find(name)
        if not container.running:
            raise errors.from_daemon(f"cannot kill container: {name}: container {container.id} is not running")
        await container.stop(by_force=True)
    return await _each(call, options.words, action)


async def remove(call, args):
    options = options_of("rm", args, switches=("-f|--force", "-v|--volumes", "-l|--link"))
    need_words("rm", options)
    force = "--force" in options.switches
    wanted = []
    for word in options.words:
        try:
            engine_of(call).find(word)
            wanted.append(word)
        except errors.DockerError as error:
            # By force, a container that is not there is mentioned but is no failure.
            if not force or "No such container" not in error.text:
                raise
            await call.err(worded(call, error.text) + "\n")

    async def action(engine, name):
        container = engine.find(name)
        if container.running and not force:
            raise errors.from_daemon(f'cannot remove container "{name}": container is running: stop the container '
                                     "before removing or force remove")
        await call.pause(_REMOVE_SECONDS)
        await engine.remove(container)
    return await _each(call, wanted, action)


async def volume(call, args):
    if args[:1] == ["ls"]:
        names = sorted(engine_of(call).volumes)
        await call.out("DRIVER    VOLUME NAME\n" + "".join(f"local     {name}\n" for name in names))
        return 0
    if args[:1] not in (["rm"], ["remove"]):
        raise errors.DockerError(f"unknown command: docker volume {' '.join(args[:1])}\n\nUsage:  docker volume "
                                 "COMMAND\n\nRun 'docker volume --help' for more information")
    options = options_of("volume rm", args[1:], switches=("-f|--force",))
    need_words("volume rm", options)

    async def action(engine, name):
        try:
            engine.remove_volume(name)
        except errors.DockerError as error:
            if not ("--force" in options.switches and error.text.endswith("no such volume")):
                raise
    return await _each(call, options.words, action)
