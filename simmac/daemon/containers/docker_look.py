"""The docker commands that only look: info, version, ps, inspect, images."""

import json
import time

from daemon.containers import errors, go_template, old_words
from daemon.containers.docker_parts import engine_of, options_of
from daemon.containers.engine import SERVER_VERSION

CLIENT_VERSION = "28.5.1"
BUILD = "e180ab8ab8"


def _render(template, data):
    if template == "json":
        return json.dumps(data, separators=(",", ":"))
    try:
        return go_template.render(template, data)
    except go_template.BadTemplate as bad:
        raise errors.DockerError(str(bad)) from bad


async def info(call, args):
    options = options_of("info", args, values=("-f|--format",))
    template = options.value("--format")
    try:
        engine = engine_of(call)
    except errors.DockerError:
        await call.out("\n" if template else _client_info(call))
        raise
    containers = list(engine.containers.values())
    running = sum(each.running for each in containers)
    version_text = old_words.SERVER_VERSION if call.mac.containers.old_docker else SERVER_VERSION
    data = {"ServerVersion": version_text, "Containers": len(containers), "ContainersRunning": running,
            "Images": len(engine.images), "Driver": "overlay2", "OSType": "linux", "Architecture": "aarch64",
            "NCPU": call.mac.containers.colima.cpu, "Name": "colima", "OperatingSystem": "Ubuntu 24.04.2 LTS"}
    if template:
        await call.out(_render(template, data) + "\n")
        return 0
    await call.out(_client_info(call) + f"\nServer:\n Containers: {len(containers)}\n  Running: {running}\n"
                   f" Images: {len(engine.images)}\n Server Version: {version_text}\n Storage Driver: overlay2\n"
                   " Operating System: Ubuntu 24.04.2 LTS\n OSType: linux\n Architecture: aarch64\n"
                   f" CPUs: {data['NCPU']}\n Name: colima\n")
    return 0


def _client_info(call):
    plugin = ("  compose: Docker Compose (Docker Inc.)\n    Version:  2.40.0\n"
              if call.mac.containers.compose else "")
    return (f"Client: Docker Engine - Community\n Version:    {CLIENT_VERSION}\n Context:    colima\n"
            " Debug Mode: false\n" + (f" Plugins:\n{plugin}" if plugin else ""))


async def version(call, args):
    template = options_of("version", args, values=("-f|--format",)).value("--format")
    client = {"Client": {"Version": CLIENT_VERSION, "Os": "darwin", "Arch": "arm64"}}
    text = (f"Client: Docker Engine - Community\n Version:           {CLIENT_VERSION}\n API version:       1.51\n"
            f" Git commit:        {BUILD}\n OS/Arch:           darwin/arm64\n Context:           colima\n")
    try:
        engine_of(call)
    except errors.DockerError:
        await call.out("\n" if template else text)
        raise
    if template:
        await call.out(_render(template, {**client, "Server": {"Version": SERVER_VERSION, "Os": "linux"}}) + "\n")
    else:
        await call.out(text + "\nServer: Docker Engine - Community\n Engine:\n"
                       f"  Version:          {SERVER_VERSION}\n  OS/Arch:          linux/arm64\n")
    return 0


async def inspect(call, args):
    options = options_of("inspect", args, values=("-f|--format", "--type"))
    template = options.value("--format")
    if not options.words:
        raise errors.DockerError("docker: 'docker inspect' requires at least 1 argument\n\nUsage:  docker inspect "
                                 "[OPTIONS] NAME|ID [NAME|ID...]\n\nSee 'docker inspect --help' for more information")
    found, trouble = [], []
    for name in options.words:
        try:
            found.append(describe(engine_of(call).find(name)))
        except errors.DockerError as error:
            missing = "No such container" in error.text
            trouble.append(f"Error: No such object: {name}" if missing else error.text)
    if template:
        lines = [_render(template, each) for each in found]
        await call.out("\n".join(lines) + "\n")
    else:
        await call.out(json.dumps(found, indent=4) + "\n")
    if trouble:
        raise errors.DockerError("\n".join(dict.fromkeys(trouble)))
    return 0


def describe(container):
    """A container as `docker inspect` shows it."""
    state = {"Status": container.state, "Running": container.running, "Paused": False, "Restarting": False,
             "OOMKilled": False, "Dead": False, "Pid": container.pid or 0, "ExitCode": container.exit_code,
             "Error": container.error, "StartedAt": _stamp(container.started), "FinishedAt": _stamp(container.ended)}
    if container.health:
        state["Health"] = {"Status": container.health, "FailingStreak": 0, "Log": []}
    ports = {f"{port.container}/{port.protocol}": [{"HostIp": port.address, "HostPort": str(port.host)}]
             for port in container.spec.ports}
    return {"Id": container.id, "Created": _stamp(container.created), "Path": "start.sh", "Args": [], "State": state,
            "Image": f"sha256:{container.id}", "Name": f"/{container.name}", "RestartCount": 0,
            "HostConfig": {"RestartPolicy": {"Name": container.spec.restart, "MaximumRetryCount": 0},
                           "PortBindings": ports,
                           "Binds": [f"{volume}:{folder}" for volume, folder in container.spec.volumes.items()]},
            "Config": {"Image": container.spec.image, "Hostname": container.id[:12],
                       "Env": [f"{key}={text}" for key, text in container.spec.environment.items()],
                       "Labels": _labels(container)}}


def _labels(container):
    project = container.spec.project
    return {"com.docker.compose.project": project, "com.docker.compose.service": container.name} if project else {}


def _stamp(seconds):
    if seconds is None:
        return "0001-01-01T00:00:00Z"
    return time.strftime("%Y-%m-%dT%H:%M:%S", time.gmtime(seconds)) + f".{int(seconds % 1 * 1e9):09d}Z"


async def ps(call, args):
    options = options_of("ps", args, switches=("-a|--all", "-q|--quiet", "--no-trunc"),
                         values=("-f|--filter", "--format"))
    shown = [each for each in engine_of(call).containers.values()
             if (each.running or "--all" in options.switches) and _passes(each, options.all("--filter"))]
    if "--quiet" in options.switches:
        await call.out("".join(f"{each.id[:12]}\n" for each in shown))
        return 0
    if options.value("--format"):
        for each in shown:
            data = {"ID": each.id[:12], "Names": each.name, "Image": each.spec.image, "State": each.state,
                    "Status": _status(each), "Ports": _ports(each)}
            await call.out(_render(options.value("--format"), data) + "\n")
        return 0
    rows = [("CONTAINER ID", "IMAGE", "COMMAND", "CREATED", "STATUS", "PORTS", "NAMES")]
    rows += [(each.id[:12], each.spec.image, '"start.sh"', _ago(each.created), _status(each), _ports(each), each.name)
             for each in shown]
    await call.out(_table(rows))
    return 0


def _passes(container, filters):
    """Filters of one kind are alternatives, as in `docker ps`; only those by name and by published port are played."""
    names = [text.removeprefix("name=") for text in filters if text.startswith("name=")]
    places = [text.removeprefix("publish=") for text in filters if text.startswith("publish=")]
    published = {f"{port.host}/{port.protocol}" for port in container.spec.ports}
    return (not names or any(name in container.name for name in names)) and \
        (not places or any((place if "/" in place else f"{place}/tcp") in published for place in places))


async def images(call, args):
    options_of("images", args, switches=("-a|--all",))
    engine = engine_of(call)
    rows = [("REPOSITORY", "TAG", "IMAGE ID", "CREATED", "SIZE")]
    rows += [("pihole/pihole", tag, engine.registry.digest(tag)[7:19], "3 weeks ago", "121MB")
             for tag in sorted(engine.images)]
    await call.out(_table(rows))
    return 0


def _table(rows):
    widths = [max(len(row[column]) for row in rows) + 3 for column in range(len(rows[0]) - 1)]
    return "".join("".join(cell.ljust(width) for cell, width in zip(row, widths)) + row[-1] + "\n" for row in rows)


def _ago(then):
    seconds = int(time.time() - then)
    if seconds < 1:
        return "Less than a second ago"
    if seconds < 60:
        return f"{seconds} seconds ago"
    return "About a minute ago" if seconds < 120 else f"{seconds // 60} minutes ago"


def _status(container):
    if container.state == "created":
        return "Created"
    if not container.running:
        return f"Exited ({container.exit_code}) {_ago(container.ended or container.created)}"
    health = {"starting": " (health: starting)", None: ""}.get(container.health, f" ({container.health})")
    return f"Up {_ago(container.started).removesuffix(' ago')}{health}"


def _ports(container):
    if not container.running:
        return ""
    return ", ".join(f"{port.address}:{port.host}->{port.container}/{port.protocol}" for port in container.spec.ports)
