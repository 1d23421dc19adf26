"""The docker client."""

from daemon.call import RunReal
from daemon.containers import docker_life, docker_logs, docker_look, docker_pull, docker_run
from daemon.containers.docker_look import BUILD, CLIENT_VERSION
from daemon.containers.docker_parts import worded
from daemon.containers.errors import DockerError
from daemon.tools import tool

_COMMANDS = {
    "info": docker_look.info, "version": docker_look.version, "inspect": docker_look.inspect, "ps": docker_look.ps,
    "images": docker_look.images, "pull": docker_pull.pull, "run": docker_run.run, "start": docker_life.start,
    "stop": docker_life.stop, "restart": docker_life.restart, "kill": docker_life.kill, "rm": docker_life.remove,
    "volume": docker_life.volume, "logs": docker_logs.logs,
}

_USAGE = "Usage:  docker [OPTIONS] COMMAND [ARG...]\n\nRun 'docker --help' for more information"


@tool("docker")
async def docker(call):
    if call.mac.containers.engine.client:
        raise RunReal(call.mac.containers.engine.client)
    try:
        return await _dispatch(call, list(call.argv))
    except DockerError as error:
        await call.err(worded(call, error.text) + "\n")
        return error.status


async def _dispatch(call, argv):
    if not argv or argv[0] in ("help", "--help", "-h"):
        await call.out("Usage:  docker [OPTIONS] COMMAND\n\nA self-sufficient runtime for containers\n\nCommands:\n"
                       + "".join(f"  {name}\n" for name in sorted(_COMMANDS)))
        return 0
    if argv[0] in ("--version", "-v"):
        await call.out(f"Docker version {CLIENT_VERSION}, build {BUILD}\n")
        return 0
    if argv[0] == "container" and len(argv) > 1:
        argv = argv[1:]
    if argv[0] == "compose":
        return await _compose(call, argv[1:])
    if argv[0].startswith("-"):
        raise DockerError(f"unknown flag: {argv[0]}\n\n{_USAGE}", 125)
    if argv[0] not in _COMMANDS:
        raise DockerError(f"docker: unknown command: docker {argv[0]}\n\nRun 'docker --help' for more information")
    return await _COMMANDS[argv[0]](call, argv[1:])


async def _compose(call, argv):
    if call.mac.containers.compose:
        from daemon.containers import docker_compose  # with it comes the YAML library, which is slow to load
        return await docker_compose.compose(call, argv)
    # Without the plug-in the client looks for its own options first, and stumbles over those of compose.
    if argv and argv[0].startswith("-"):
        option = argv[0]
        named = f"unknown flag: {option}" if option.startswith("--") else \
            f"unknown shorthand flag: '{option[1:2]}' in {option}"
        raise DockerError(f"{named}\n\n{_USAGE}", 125)
    raise DockerError("docker: unknown command: docker compose\n\nRun 'docker --help' for more information")
