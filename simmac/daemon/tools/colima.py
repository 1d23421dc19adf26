"""Colima: the virtual machine that holds Docker. Without a terminal it prints logfmt on standard error."""

import asyncio
import shlex
import time

from daemon.containers import options
from daemon.containers.colima import FORWARDERS
from daemon.tools import tool

_START_FLAGS = """\
  -a, --arch string               architecture (aarch64, x86_64) (default "aarch64")
  -c, --cpus int                  number of CPUs (default 2)
  -d, --disk int                  disk size in GiB (default 100)
  -e, --edit                      edit the configuration file before starting
  -f, --foreground                Keep colima in the foreground
  -h, --help                      help for start
  -m, --memory float              memory in GiB (default 2)
      --network-address           assign reachable IP address to the VM
"""
_FORWARDER_FLAG = '      --port-forwarder string     port forwarder to use (ssh, grpc, none) (default "ssh")\n'
_HELP = """\
Start Colima with the specified container runtime and optional kubernetes.

Usage:
  colima start [profile] [flags]

Examples:
  colima start
  colima start --edit
  colima start --cpu 4 --memory 8

Flags:
{flags}
Global Flags:
  -p, --profile string   profile name, for multiple instances (default "default")
  -v, --verbose          enable verbose log
"""


_IMAGE = ("https://github.com/abiosoft/colima-core/releases/download/v0.10.4/"
          "ubuntu-24.04-minimal-cloudimg-arm64-docker.raw.gz")


class Fatal(Exception):
    """Ends colima: its last line, and status 1."""


@tool("colima")
async def colima(call):
    argv = list(call.argv)
    command = argv[0] if argv else "help"
    try:
        if command not in _COMMANDS:
            raise Fatal(f'unknown command "{command}" for "colima"')
        return await _COMMANDS[command](call, argv[1:])
    except Fatal as fatal:
        await _say(call, str(fatal), "fatal")
        return 1


async def _say(call, text, level="info", context=None):
    quoted = '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'
    plain = text.replace("-", "").replace(".", "").isalnum()
    line = f'time="{time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime())}" level={level} msg={text if plain else quoted}'
    await call.err(line + (f" context={context}" if context else "") + "\n")


def _read(args, machine):
    forwarder = ("--port-forwarder",) if machine.knows_forwarder else ()
    try:
        given = options.read(args, switches=("-h|--help", "-f|--foreground", "-v|--verbose", "-e|--edit",
                                             "--network-address"),
                             values=("-c|--cpus|--cpu", "-m|--memory", "-d|--disk", "-a|--arch", *forwarder))
    except options.BadOption as bad:
        raise Fatal(str(bad)) from bad
    for name in ("--cpu", "--disk", "--memory"):
        text = given.value(name)
        if text is not None and not text.replace(".", "", name == "--memory").isdecimal():
            raise Fatal(f'invalid argument "{text}" for "{name}" flag: strconv.ParseInt: parsing "{text}": invalid '
                        "syntax")
    if given.value("--port-forwarder", "ssh") not in FORWARDERS:
        raise Fatal(f"error in config: invalid port forwarder: '{given.value('--port-forwarder')}'")
    return given


async def _start(call, args):
    machine = call.mac.containers.colima
    given = _read(args, machine)
    if "--help" in given.switches:
        await call.out(_HELP.format(flags=_START_FLAGS + (_FORWARDER_FLAG if machine.knows_forwarder else "")))
        return 0
    if machine.running:
        await _say(call, "already running, ignoring", "warning")
        return 0
    if not call.mac.has_tool("docker"):
        raise Fatal("dependency check failed for docker: docker not found, run 'brew install docker' to install")
    await _boot(call, machine, given)
    if "--foreground" in given.switches:
        await _wait_for_signal(call, machine)
    return 0


async def _wait_for_signal(call, machine):
    """Nothing but a signal ends it, also when somebody else stops the machine."""
    await _say(call, "keeping Colima in the foreground, press ctrl+c to exit...")
    try:
        await asyncio.Event().wait()
    finally:
        if machine.running:
            await machine.stop()


async def _boot(call, machine, given):
    await _say(call, "starting colima")
    await _say(call, "runtime: docker")
    await _prepare(call, machine)
    await call.pause(8)
    if machine.failure:
        raise Fatal(machine.failure)
    await _say(call, "provisioning ...", context="docker")
    await call.pause(3)
    await _say(call, "starting ...", context="docker")
    await call.pause(3)
    machine.cpu = int(given.value("--cpu", machine.cpu))
    machine.memory = float(given.value("--memory", machine.memory))
    machine.disk = int(given.value("--disk", machine.disk))
    machine.saved_forwarder = given.value("--port-forwarder", machine.saved_forwarder)
    await machine.start()
    await _say(call, "done")


async def _prepare(call, machine):
    """The first start makes the machine, which needs the internet; later ones only start it."""
    if machine.created:
        await _say(call, "starting ...", context="vm")
        return
    await _say(call, "creating and starting ...", context="vm")
    await _say(call, "downloading disk image ...", context="vm")
    if not call.mac.network.reaches_internet():
        raise Fatal("error starting vm: error at 'creating and starting': error getting qcow image: error during image "
                    f"download: error resolving download URL '{_IMAGE}': resolve redirect failed for '{_IMAGE}': DNS lookup failed for host "
                    "'github.com'. Check your network connection or DNS settings")
    await call.pause(5)   # without a terminal nothing tells how far it is
    await _say(call, 'unable to enable rosetta: time="2026-11-21T09:00:00Z" level=fatal msg="exit status 1"', "warning")


async def _stop(call, args):
    machine = call.mac.containers.colima
    try:
        options.read(args, switches=("-f|--force",))
    except options.BadOption as bad:
        raise Fatal(str(bad)) from bad
    await _say(call, "stopping colima")
    if not machine.running:
        await _say(call, "not running", context="vm")
        await _say(call, "done")
        return 0
    await _say(call, "stopping ...", context="docker")
    await call.pause(3)
    await _say(call, "stopping ...", context="vm")
    await call.pause(3)
    await machine.stop()
    await _say(call, "done")
    return 0


async def _restart(call, args):
    return await _stop(call, args) or await _start(call, [])


async def _status(call, _):
    machine = call.mac.containers.colima
    if not machine.running:
        raise Fatal("colima is not running")
    await _say(call, "colima is running using macOS Virtualization.Framework")
    for line in ("arch: aarch64", "runtime: docker", "mountType: virtiofs",
                 "docker socket: unix:///Users/ada/.colima/default/docker.sock",
                 "containerd socket: unix:///Users/ada/.colima/default/containerd.sock"):
        await _say(call, line)
    return 0


async def _list(call, _):
    machine = call.mac.containers.colima
    await call.out("PROFILE    STATUS     ARCH       CPUS    MEMORY    DISK      RUNTIME    ADDRESS\n")
    if machine.created:
        await call.out(f"default    {'Running' if machine.running else 'Stopped'}    aarch64    {machine.cpu}       "
                       f"{machine.memory:g}GiB      {machine.disk}GiB     docker     \n")
    return 0


async def _version(call, _):
    await call.out(f"colima version {call.mac.containers.colima.version}\ngit commit: 0cbf719f5409ce04b9f0607b681c005d2ff7d94d\n")
    return 0


async def _delete(call, args):
    containers = call.mac.containers
    if not {"-f", "--force"} & set(args):
        raise Fatal("are you sure you want to delete colima and all settings? Say so with --force")
    await _say(call, "deleting colima")
    if "--data" in args:
        await containers.engine.clear()
    else:   # images, volumes and containers lie on a disk of their own
        await containers.engine.machine_stops()
    await containers.colima.forget()
    await _say(call, "done")
    return 0


async def _ssh(call, args):
    """Runs a command in the machine, in a login shell as Lima does; its failure becomes colima's own."""
    colima = call.mac.containers.colima
    words = args[1:] if args[:1] == ["--"] else args
    if not colima.running:
        raise Fatal("colima not running")
    process = await colima.machine.begin(["bash", "--login", "-c", shlex.join(words)], stdout=asyncio.subprocess.PIPE,
                                         stderr=asyncio.subprocess.PIPE)
    try:
        await asyncio.gather(_pass_on(process.stdout, call.out), _pass_on(process.stderr, call.err))
        status = await process.wait()
    finally:
        if process.returncode is None:
            process.kill()
        await colima.forwarder.follow()
    if status != 0:
        raise Fatal(f"exit status {status}")
    return 0


async def _pass_on(stream, write):
    while data := await stream.read(65536):
        await write(data)


async def _help(call, _):
    await call.out("Colima provides container runtimes on macOS with minimal setup.\n\nUsage:\n  colima [command]\n\n"
                   "Available Commands:\n" + "".join(f"  {name}\n" for name in sorted(_COMMANDS)))
    return 0


_COMMANDS = {"start": _start, "stop": _stop, "restart": _restart, "status": _status, "list": _list, "ls": _list,
             "version": _version, "--version": _version, "delete": _delete, "ssh": _ssh, "help": _help, "--help": _help}
