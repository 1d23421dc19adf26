"""The control commands for Homebrew, Colima, Docker and Pi-hole."""

from daemon.control import Refused, command, on_off, one_of, seconds
from daemon.containers.colima import FORWARDERS, VERSIONS
from daemon.containers.errors import CONTEXT, DockerError
from daemon.containers.times import Times

_HEALTHS = ("starting", "healthy", "unhealthy", "none", "auto")


def _played(mac):
    """The engine, unless it is a real one, which cannot be told how to behave."""
    if mac.real_engine:
        raise Refused("The engine of this Mac is real: it cannot be told that.")
    return mac.containers.engine


def _container(mac):
    _played(mac)
    container = mac.containers.pihole
    if container is None:
        raise Refused("There is no container named pihole.")
    return container


@command("engine", "engine start|boot|stop: Colima's machine with the Docker engine, at once; boot: the machine alone, "
                   "as while it starts")
async def engine(mac, args):
    colima = mac.containers.colima
    verb = one_of(args, "start", "boot", "stop")
    if verb == "start":
        await colima.start(at_once=True)
    elif verb == "boot":
        await colima.boot()
    elif colima.running:
        await colima.stop()


@command("container", "container start|stop|rm|kill|crash|freeze|thaw | "
                      "container health starting|healthy|unhealthy|none|auto")
async def container(mac, args):
    found = _container(mac)
    if args and args[0] == "health":
        word = one_of(args[1:], *_HEALTHS)
        found.told_health = None if word == "auto" else word
        return
    verb = one_of(args, "start", "stop", "rm", "kill", "crash", "freeze", "thaw")
    if verb == "start":
        try:
            await mac.containers.engine.start(found, at_once=True)
        except DockerError as error:
            raise Refused(error.text) from error
    elif verb == "rm":
        await mac.containers.engine.remove(found)
    elif verb == "crash":
        await found.crash()
    elif verb in ("freeze", "thaw"):
        found.freeze(verb == "freeze")
    else:
        await found.stop(by_force=verb == "kill")


@command("colima", "colima fail TEXT|off: its next starts end with this error")
def colima(mac, args):
    if len(args) < 2 or args[0] != "fail":
        raise Refused("Say: colima fail TEXT, or colima fail off.")
    text = " ".join(args[1:])
    mac.containers.colima.failure = None if text == "off" else text


@command("colima-release", f"colima-release {'|'.join(VERSIONS)}: before 0.9 its machine had no dnsmasq")
async def colima_release(mac, args):
    await mac.containers.colima.become(one_of(args, *VERSIONS))


@command("machine", "machine room|no-room: whether its dnsmasq leaves the loopback alone | machine COMMAND...: "
                    "runs it in there")
async def machine(mac, args):
    colima = mac.containers.colima
    if args in (["room"], ["no-room"]):
        await colima.machine.make_room(args == ["room"])
        await colima.forwarder.follow()
        return None
    if not colima.running or not args:
        raise Refused("Colima's machine is off, or there is nothing to do.")
    status, output = await colima.machine.run(args)
    await colima.forwarder.follow()
    return {"status": status, "output": output}


@command("compose", "compose on|off: whether docker has the compose plug-in")
def compose(mac, args):
    mac.containers.compose = on_off(args)


@command("docker-release", "docker-release new|old: whether docker speaks as Homebrew's or as that of Debian 12")
def docker_release(mac, args):
    mac.containers.old_docker = one_of(args, "new", "old") == "old"


@command("forwarder", f"forwarder {'|'.join(FORWARDERS)}: as if Colima had been started with it; ssh carries TCP only")
async def forwarder(mac, args):
    await mac.containers.colima.use_forwarder(one_of(args, *FORWARDERS))


@command("port-forwarder-option", "port-forwarder-option on|off: whether colima knows --port-forwarder")
def port_forwarder_option(mac, args):
    mac.containers.colima.knows_forwarder = on_off(args)


@command("internet", "internet on|off: whether anything outside can be reached")
async def internet(mac, args):
    mac.network.internet = on_off(args)
    await mac.containers.follow_network()


@command("registry", "registry add|remove TAG | registry list: the tags of the Pi-hole image that exist")
def registry(mac, args):
    tags = _played(mac).registry.tags
    if args == ["list"]:
        return sorted(tags)
    if len(args) != 2 or args[0] not in ("add", "remove"):
        raise Refused("Say: registry add TAG, registry remove TAG, or registry list.")
    (tags.add if args[0] == "add" else tags.discard)(args[1])
    return None


@command("disk-full", "disk-full on|off: whether Colima's disk has no room for an image")
def disk_full(mac, args):
    _played(mac).disk_full = on_off(args)


@command("docker-context", f"docker-context {CONTEXT}|desktop-linux: the one that docker uses; a start of Colima takes its own")
def docker_context(mac, args):
    _played(mac).context = one_of(args, CONTEXT, "desktop-linux")


@command("docker-permission", "docker-permission on|off: whether the user may use Docker's socket")
def docker_permission(mac, args):
    _played(mac).refuses_user = not on_off(args)


async def _ask(mac, **request):
    reply = await _container(mac).ask(request)
    if not reply["ok"]:
        raise Refused(reply["error"])
    return {name: value for name, value in reply.items() if name != "ok"} or None


@command("pihole-day", "pihole-day QUESTIONS NAMES: a day of so many questions, with so many blocked names in its last minutes")
async def pihole_day(mac, args):
    if len(args) != 2 or not all(word.isdecimal() for word in args) or int(args[1]) > int(args[0]):
        raise Refused("Say how many questions, and how many names at the end of them: pihole-day 100000 3000.")
    return await _ask(mac, do="day", questions=int(args[0]), names=int(args[1]))


@command("pihole", "pihole block-mode zero|nxdomain|nodata|ip|ip-nodata-aaaa | silent on|off | udp|tcp on|drop | web on|hang|drop | "
                   "log-delay SECONDS|real | times real|fast|auto | login-seconds SECONDS | "
                   "boot|web|health|stop|restart|settle|effect|own-questions|pace|patience-seconds SECONDS | "
                   "upstream on|silent | privacy 0|1|2|3 | gravity good|empty|missing|damaged | "
                   "list-server good|not-found|refused|error|empty|page | archive good|page|empty | totp N | "
                   "question-limit|login-limit|seats|session-seconds N | advance SECONDS | password TEXT | restart | "
                   "state")
async def pihole(mac, args):
    if args in (["restart"], ["state"]):
        return await _ask(mac, do=args[0])
    if len(args) != 2:
        raise Refused("Say what to set about Pi-hole and to what, for example: pihole silent on.")
    name, value = args
    if name == "times":
        return await mac.containers.set_pace(one_of([value], *Times.PACES))
    time = name.removesuffix("-seconds")
    if time in Times.OWN and (time != name or time == "settle"):
        return await mac.containers.set_time(time, seconds(value))
    if name == "advance":
        return await _ask(mac, do="advance", seconds=seconds(value))
    if name == "gravity":
        return await _ask(mac, do="gravity", word=value)
    if name == "password":
        return await _ask(mac, do="password", value=value)
    value = "-1" if (name, value) == ("log-delay", "real") else value
    if name == "udp" and value == "closed":
        raise Refused("Say forwarder ssh.")
    try:
        await mac.containers.set_knob(name.replace("-", "_"), value)
    except ValueError as error:
        raise Refused(str(error)) from error
    return None
