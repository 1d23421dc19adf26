"""What all docker commands share."""

from daemon.containers import options
from daemon.containers.errors import DockerError
from daemon.containers.old_words import in_old_words


def engine_of(call):
    """The engine; DockerError when the client cannot reach it."""
    engine = call.mac.containers.engine
    engine.reach()
    return engine


def worded(call, text):
    """A text for standard error in the words of this Mac's release of Docker."""
    return in_old_words(call.argv[0], text) if call.mac.containers.old_docker and call.argv else text


def options_of(name, args, status=125, **known):
    """A command's options; DockerError for one that it does not have."""
    try:
        return options.read(args, **known)
    except options.BadOption as bad:
        raise DockerError(f"{bad}\n\nUsage:  docker {name} [OPTIONS]\n\nRun 'docker {name} --help' for more "
                          "information", status) from bad


def need_words(name, found, at_least=1):
    """DockerError when a command is given too few names."""
    if len(found.words) < at_least:
        plural = "s" if at_least > 1 else ""
        raise DockerError(f"docker: 'docker {name}' requires at least {at_least} argument{plural}\n\n"
                          f"See 'docker {name} --help' for more information")
