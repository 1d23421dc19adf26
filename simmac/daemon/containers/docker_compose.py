"""The compose plug-in: pull, up, version."""

import os
import time

from daemon.containers import compose_file, errors, options
from daemon.containers.docker_parts import engine_of
from daemon.containers.docker_pull import fetch_for_compose

VERSION = "2.40.0"
_CREATE_SECONDS = 0.2
_START_SECONDS = 0.5


async def compose(call, argv):
    try:
        return await _compose(call, argv)
    except compose_file.Refused as refused:
        raise errors.DockerError(str(refused)) from refused


async def _compose(call, argv):
    given = _options(argv, values=("-f|--file", "-p|--project-name", "--env-file", "--ansi", "--progress"),
                     switches=("--version",), stop_at_word=True)
    command, rest = (given.words[0], given.words[1:]) if given.words else ("version", [])
    if command == "version":
        await call.out(f"{VERSION}\n" if "--short" in rest else f"Docker Compose version v{VERSION}\n")
        return 0
    if command not in _COMMANDS:
        raise errors.DockerError(f'unknown docker command: "compose {command}"')
    project = compose_file.load(_file(call, given), call.env)
    return await _COMMANDS[command](call, project, rest)


def _options(argv, **known):
    try:
        return options.read(argv, **known)
    except options.BadOption as bad:
        raise errors.DockerError(f"{bad}\n\nUsage:  docker compose [OPTIONS] COMMAND\n\nRun 'docker compose --help' "
                                 "for more information", 1) from bad


def _file(call, given):
    if given.value("--file"):
        return os.path.join(call.cwd, given.value("--file"))
    for name in ("compose.yaml", "compose.yml", "docker-compose.yml", "docker-compose.yaml"):
        if os.path.exists(os.path.join(call.cwd, name)):
            return os.path.join(call.cwd, name)
    raise errors.DockerError("no configuration file provided: not found", 14)


async def _pull(call, project, args):
    _options(args, switches=("-q|--quiet", "--ignore-pull-failures"))
    engine_of(call)
    for service, spec in project.services.items():
        await fetch_for_compose(call, service, spec.repository, spec.tag)
    return 0


async def _up(call, project, args):
    given = _options(args, switches=("-d|--detach", "--force-recreate", "--remove-orphans", "--wait"),
                     values=("--pull", "-t|--timeout"))
    engine = engine_of(call)
    for service, spec in project.services.items():
        if not engine.has_image(spec):
            await fetch_for_compose(call, service, spec.repository, spec.tag)
    await _network(call, engine, project)
    await _volumes(call, engine, project)
    for spec in project.services.values():
        await _bring_up(call, engine, spec, "--force-recreate" in given.switches)
    return 0


async def _network(call, engine, project):
    name = f"{project.name}_default"
    if name not in engine.networks:
        await call.err(f" Network {name}  Creating\n")
        await call.pause(_CREATE_SECONDS)
        engine.networks.add(name)
        await call.err(f" Network {name}  Created\n")


async def _volumes(call, engine, project):
    for name in project.volumes:
        if name not in engine.volumes:
            await call.err(f' Volume "{name}"  Creating\n')
            engine.ensure_volume(name, by_compose=True)
            await call.err(f' Volume "{name}"  Created\n')
        elif not engine.volumes[name].by_compose:
            await call.err(f'time="{time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime())}" level=warning '
                           f'msg="volume \\"{name}\\" already exists but was not created by Docker Compose. Use '
                           '`external: true` to use an existing volume"\n')


async def _bring_up(call, engine, spec, anew):
    old = engine.containers.get(spec.name)
    if old and old.spec.project != spec.project:
        raise errors.name_taken(spec.name, old.id)
    if old and old.spec == spec and not anew:
        if old.running:
            await call.err(f" Container {spec.name}  Running\n")
            return
        container = old
    else:
        container = await _make(call, engine, spec, old)
    await call.err(f" Container {spec.name}  Starting\n")
    await call.pause(_START_SECONDS)
    await engine.start(container)
    await call.err(f" Container {spec.name}  Started\n")


async def _make(call, engine, spec, old):
    word, done = ("Recreate", "Recreated") if old else ("Creating", "Created")
    await call.err(f" Container {spec.name}  {word}\n")
    if old:
        await old.stop(seconds=engine.times.of("stop"))
        await engine.remove(old)
    await call.pause(_CREATE_SECONDS)
    container = engine.create(spec)
    await call.err(f" Container {spec.name}  {done}\n")
    return container


async def _config(call, project, _):
    await call.out(f"name: {project.name}\nservices:\n" + "".join(f"  {name}:\n    image: {spec.image}\n"
                                                                 for name, spec in project.services.items()))
    return 0


_COMMANDS = {"pull": _pull, "up": _up, "config": _config}
