"""What a container is to be: its image, ports, variables and volumes, and how Docker reads them."""

import ipaddress
import re
from dataclasses import dataclass, field


class Invalid(Exception):
    """A piece of a container's description that Docker refuses; the text is Docker's."""


@dataclass(frozen=True)
class Port:
    """A port of this Mac that leads to a port of the container."""

    address: str
    host: int
    container: int
    protocol: str


@dataclass
class Spec:
    """The description from which a container is made."""

    name: str
    repository: str
    tag: str
    restart: str = "no"
    ports: list = field(default_factory=list)
    environment: dict = field(default_factory=dict)
    volumes: dict = field(default_factory=dict)   # volume name to folder in the container
    project: str | None = None                    # the compose project that it belongs to

    @property
    def image(self):
        return f"{self.repository}:{self.tag}"


RESTART_POLICIES = ("no", "always", "on-failure", "unless-stopped")
_REFERENCE = re.compile(r"([a-z0-9]+(?:[._/-][a-z0-9]+)*)(?::([A-Za-z0-9_][A-Za-z0-9._-]{0,127}))?")


def parse_image(text):
    """Repository and tag of an image's name."""
    match = _REFERENCE.fullmatch(text)
    if not match:
        raise Invalid("invalid reference format")
    return match[1], match[2] or "latest"


def parse_restart(text):
    if text.split(":")[0] not in RESTART_POLICIES:
        raise Invalid(f"invalid restart policy: unknown policy '{text}'; use one of 'no', 'always', 'on-failure', "
                      "or 'unless-stopped'")
    return text


def parse_port(text):
    """A published port as ADDRESS:HOST:CONTAINER/PROTOCOL, HOST:CONTAINER or CONTAINER."""
    rest, _, protocol = text.partition("/")
    protocol = protocol or "tcp"
    if protocol not in ("tcp", "udp", "sctp"):
        raise Invalid(f"invalid proto: {protocol}")
    pieces = rest.rsplit(":", 2)
    address = pieces[0].strip("[]") if len(pieces) == 3 else "0.0.0.0"
    try:
        ipaddress.ip_address(address)
    except ValueError as error:
        raise Invalid(f"invalid IP address: {address}") from error
    container = _port_number(pieces[-1], "containerPort")
    host = _port_number(pieces[-2], "hostPort") if len(pieces) > 1 else container
    return Port(address, host, container, protocol)


def _port_number(text, what):
    if not (text.isascii() and text.isdigit() and 0 < int(text) < 65536):
        raise Invalid(f"invalid {what}: {text}")
    return int(text)


def parse_volume(text):
    """A volume mount as NAME:FOLDER."""
    pieces = text.split(":")
    if len(pieces) not in (2, 3) or not pieces[1].startswith("/"):
        raise Invalid(f"invalid volume specification: '{text}'")
    if not re.fullmatch(r"[a-zA-Z0-9][a-zA-Z0-9_.-]+", pieces[0]) and not pieces[0].startswith("/"):
        raise Invalid(f'create {pieces[0]}: "{pieces[0]}" includes invalid characters for a local volume name, only '
                      '"[a-zA-Z0-9][a-zA-Z0-9_.-]" are allowed. If you intended to pass a host directory, use '
                      "absolute path")
    return pieces[0], pieces[1]


def parse_variable(text, outside=None):
    """NAME=VALUE; a bare NAME takes its value from outside."""
    name, equals, value = text.partition("=")
    if not name:
        raise Invalid(f"invalid environment variable: {text}")
    return name, value if equals else (outside or {}).get(name)


def parse_env_file(text, path):
    """The variables of a file for `docker run --env-file`, taken as they stand."""
    variables = {}
    for line in text.split("\n"):
        line = line.lstrip().rstrip("\r")
        if not line or line.startswith("#"):
            continue
        name, equals, value = line.partition("=")
        if not name.strip() or any(c.isspace() for c in name.rstrip()):
            raise Invalid(f"poorly formatted environment: variable '{name}' contains whitespaces")
        if equals:
            variables[name] = value
    return variables
