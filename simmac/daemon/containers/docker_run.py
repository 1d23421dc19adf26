"""docker run: a container from a command line."""

import os

from daemon.containers import errors, spec
from daemon.containers.docker_parts import engine_of, options_of
from daemon.containers.docker_pull import fetch

_HINT = "\n\nRun 'docker run --help' for more information"
_SWITCHES = ("-d|--detach", "-i|--interactive", "-t|--tty", "--rm", "--init", "-P|--publish-all", "--privileged")
_VALUES = ("--name", "--restart", "-p|--publish", "-e|--env", "--env-file", "-v|--volume", "--cap-add", "-h|--hostname",
           "--network", "--dns", "-l|--label", "-m|--memory", "--cpus", "--pull", "--shm-size")
_START_SECONDS = 0.6


async def run(call, args):
    try:
        return await _run(call, args)
    except errors.DockerError as error:
        if error.status == 125 and not error.text.startswith(("docker: ", "unknown ", "flag ")):
            error.text = f"docker: {error.text}{_HINT}"
        raise


async def _run(call, args):
    options = options_of("run", args, switches=_SWITCHES, values=_VALUES, stop_at_word=True)
    if not options.words:
        raise errors.DockerError("docker: 'docker run' requires at least 1 argument\n\nUsage:  docker run [OPTIONS] "
                                 "IMAGE [COMMAND] [ARG...]\n\nSee 'docker run --help' for more information")
    wanted = _spec(call, options)
    try:
        engine = engine_of(call)
        if not engine.has_image(wanted):
            await call.err(f"Unable to find image '{wanted.image}' locally\n")
            await fetch(call, wanted.repository, wanted.tag, call.err)
        container = engine.create(wanted)
        await call.out(container.id + "\n")
        await call.pause(_START_SECONDS)
        await engine.start(container)
    except errors.DockerError as error:
        raise errors.DockerError(error.text, 125) from error
    return 0


def _spec(call, options):
    try:
        repository, tag = spec.parse_image(options.words[0])
        environment = {}
        for path in options.all("--env-file"):
            environment.update(spec.parse_env_file(_read(call, path), path))
        environment.update(spec.parse_variable(text, call.env) for text in options.all("--env"))
        ports = [spec.parse_port(text) for text in options.all("--publish")]
        volumes = dict(spec.parse_volume(text) for text in options.all("--volume"))
        restart = spec.parse_restart(options.value("--restart", "no"))
    except spec.Invalid as bad:
        raise errors.DockerError(str(bad), 125) from bad
    name = options.value("--name") or f"quiet_{os.urandom(3).hex()}"
    return spec.Spec(name, repository, tag, restart, ports, environment, volumes)


def _read(call, path):
    try:
        with open(os.path.join(call.cwd, path), encoding="utf-8", errors="strict") as file:
            return file.read()
    except OSError as error:
        raise errors.DockerError(f"open {path}: {error.strerror.lower()}", 125) from error
    except UnicodeDecodeError as error:
        raise errors.DockerError(f"env file {path} contains invalid utf8 bytes", 125) from error
