"""How Docker 20.10, which Debian 12 has, says what the Docker of Homebrew says today."""

import re

SERVER_VERSION = "20.10.24"

# For which commands, what is said today, and how it was said.
_TABLE = (
    ("logs|rm", r"^Error response from daemon: (?=No such container)", "Error: "),
    ("volume", r"^Error response from daemon: get (\S+): no such volume$", r"Error: No such volume: \1"),
    ("info", r"^Cannot connect to the Docker daemon.*", 'template: :1:2: executing "" at <.ServerVersion>: reflect: '
     "indirection through nil pointer to embedded struct field Info"),
    ("run|start|restart", "failed to set up container networking: ", ""),
    ("run|start|restart", r"failed to bind host port (\S+)/(tcp|udp): (?=address)",
     r"Error starting userland proxy: listen \g<2>4 \1: bind: "),
    ("pull|run", r"^(failed to register layer: )(?=write )", r"\1Error processing tar file(exit status 1): "),
    ("run", r"( external connectivity .*)\n\nRun 'docker run --help' for more information$", r"\1."),
    ("run", r"\.?\n\nRun 'docker run --help' for more information$", r".\nSee 'docker run --help'."),
    (".*", r"^docker: unknown command: docker (\S+)\n\nRun 'docker --help' for more information$",
     r"docker: '\1' is not a docker command.\nSee 'docker --help'"),
    (".*", r"^(unknown (?:shorthand )?flag: .*)\n\nUsage:  docker \[OPTIONS\] COMMAND (?:.|\n)*",
     r"\1\nSee 'docker --help'.\n\nUsage:  docker [OPTIONS] COMMAND\n\nA self-sufficient runtime for containers\n"),
)


def in_old_words(command, text):
    """A text of Docker's client as that release has it."""
    for commands, today, then in _TABLE:
        if re.fullmatch(commands, command):
            text = re.sub(today, then, text, flags=re.MULTILINE)
    return text
