"""The control commands for the Mac itself."""

import base64
import shlex

from daemon.control import COMMANDS, HELP, Refused, command, on_off, one_of, perform, seconds, whole_number
from daemon.faults import KINDS, Fault, signal_number
from daemon.prompt import ANSWERS
from daemon.states import STATES


@command("help", "help: every command, one a line")
def show_help(_mac, _args):
    """All lines of help."""
    return "\n".join(HELP[name] for name in sorted(COMMANDS) if HELP[name])


@command("status", "status: the whole state as JSON")
def status(mac, _args):
    """What a person wants to know at a glance."""
    network = mac.network
    result = {
        "state": mac.state, "speed": mac.speed, "arm64": mac.facts.arm64, "macos": mac.facts.macos,
        "wifi": network.wifi, "vpn": network.vpn, "internet": network.internet,
        "resolvers": network.default_servers(), "services": list_services(mac, []),
        "prompt": mac.prompt.answer, "prompts": mac.prompt.count, "faults": mac.faults.describe(),
        "ports": mac.ports.describe(), "applications": sorted(mac.applications.installed),
    }
    describe = getattr(mac.containers, "describe", None)
    if describe is not None:
        result["containers"] = describe()
    return result


@command("state", "state: the state that the Mac was last put into")
def state(mac, _args):
    """The name of the last state."""
    return mac.state


@command("reset", f"reset [{'|'.join(STATES)}]: everything as at the start")
async def reset(mac, args):
    """Back to the beginning of a state."""
    if len(args) > 1 or (args and args[0] not in STATES):
        raise Refused(f"There is no such state. The states are: {', '.join(STATES)}.")
    await mac.reset(args[0] if args else None)


@command("set", "set KEY VALUE...: the same as the command KEY with these values")
async def set_value(mac, args):
    """One way to say any of the simple commands, as the launcher's --set does."""
    if len(args) < 2 or args[0] in ("set", "reset"):
        raise Refused("Say what to set and to what, for example: set arm64 no.")
    words = args[1:] if len(args) > 2 else shlex.split(args[1])
    return await perform(mac, [args[0], *words])


@command("speed", "speed fast|real: whether tools take the time that they take on a Mac")
async def speed(mac, args):
    """How long tools take."""
    mac.speed = one_of(args, "fast", "real")
    if mac.containers is not None:
        await mac.containers.follow_speed()


@command("arm64", "arm64 yes|no: Apple silicon or Intel")
def arm64(mac, args):
    """The processor."""
    mac.facts.set_arm64(on_off(args))


@command("macos", "macos VERSION: for example 14.5")
def macos(mac, args):
    """The version of macOS."""
    if len(args) != 1 or not all(part.isdecimal() for part in args[0].split(".")):
        raise Refused("A version looks like 14.5.")
    mac.facts.set_macos(args[0])


@command("end", "end: asks the program to end (SIGTERM), and the Mac with it")
def end(mac, _args):
    """The gentle way out."""
    mac.end()


# -- the prompt and the desk ------------------------------------------------------------------------------------------

@command("prompt", f"prompt {'|'.join(ANSWERS)} [once]: how the user answers the administrator prompt")
def prompt(mac, args):
    """The user's answer to the prompt."""
    once = args[1:] == ["once"]
    mac.prompt.say(one_of(args[:1] if once else args, *ANSWERS), once)


@command("prompts", "prompts: how many administrator prompts were shown")
def prompts(mac, _args):
    """The count of prompts."""
    return mac.prompt.count


@command("language", "language en|de|fr|es: the language in which macOS words a cancelled prompt")
def language(mac, args):
    """The user's language."""
    mac.prompt.language = one_of(args, "en", "de", "fr", "es")


@command("app", "app add BUNDLE_ID [NAME] | app remove BUNDLE_ID")
def app(mac, args):
    """Installs or removes an application."""
    if len(args) in (2, 3) and args[0] == "add" and "/" not in "".join(args[1:]):
        mac.applications.add(*args[1:])
    elif len(args) == 2 and args[0] == "remove":
        if not mac.applications.remove(args[1]):
            raise Refused(f"{args[1]} is not installed.")
    else:
        raise Refused("Say app add BUNDLE_ID [NAME], or app remove BUNDLE_ID.")


@command("opened", "opened: what `open` was asked for, oldest first")
def opened(mac, _args):
    """Everything that was opened."""
    return mac.facts.opened


@command("screenshot", "screenshot FILE: a picture (PNG) of the whole display")
async def screenshot(mac, args):
    """The picture, in a form that a line of JSON can hold; the control command writes it to the file."""
    if mac.desktop is None:
        raise Refused("This Mac has no display. Start it with --desktop.")
    if len(args) > 1:
        raise Refused("Say screenshot FILE.")
    return {"png": base64.b64encode(await mac.desktop.picture()).decode()}


# -- what goes wrong --------------------------------------------------------------------------------------------------

@command("fault", "fault TOOL fail [STATUS [TEXT]] | hang | late SECONDS | rubbish | flood MIB | vanish | die SIGNAL |"
                  " ignore-term  [--at N] [--when PATTERN]; fault clear; fault list")
def fault(mac, args):
    """Gives an order to a tool to go wrong."""
    if args == ["clear"]:
        mac.faults.clear()
        return None
    if args in (["list"], []):
        return mac.faults.describe()
    words, options = _split_options(args)
    if len(words) < 2 or words[1] not in KINDS:
        raise Refused(f"Say fault TOOL KIND; the kinds are: {', '.join(KINDS)}.")
    if words[0] != "*" and not mac.knows_tool(words[0]):
        raise Refused(f"There is no tool \"{words[0]}\" on this Mac.")
    mac.faults.add(_fault(words[0], words[1], words[2:], options))
    return None


def _split_options(args):
    words, options, rest = [], {}, iter(args)
    for word in rest:
        if word in ("--at", "--when"):
            options[word] = next(rest, None)
            if options[word] is None:
                raise Refused(f"{word} needs a value.")
        else:
            words.append(word)
    return words, options


def _fault(tool, kind, values, options):
    limit = {"fail": 2, "late": 1, "flood": 1, "die": 1}.get(kind, 0)
    if len(values) > limit or (kind in ("late", "flood", "die") and not values):
        raise Refused(f"fault TOOL {kind} takes {limit or 'no'} value{'' if limit == 1 else 's'}.")
    first = values[0] if values else "1"
    value = None
    if kind == "fail":
        value = whole_number(first, 0, 255)
    elif kind == "late":
        value = seconds(first)
    elif kind == "flood":
        value = whole_number(first, 1, 4096)
    elif kind == "die":
        value = signal_number(first)
        if value is None:
            raise Refused(f"{first} is not a signal.")
    at = options.get("--at")
    return Fault(tool, kind, value, values[1] if len(values) > 1 else "", options.get("--when"),
                 whole_number(at, 1) if at else None)


@command("take-port", "take-port PORT tcp|udp [--as NAME] [--on ADDRESS] [--in-machine]: another program holds "
                      "the port of the Mac, or of Colima's machine")
async def take_port(mac, args):
    """Lets a real process of that name hold the port."""
    name, address, (words, machine) = "mDNSResponder", "127.0.0.1", _where(mac, args)
    for option in ("--as", "--on"):
        if option in words[:-1]:
            place = words.index(option)
            value = words[place + 1]
            del words[place:place + 2]
            name, address = (value, address) if option == "--as" else (name, value)
    port, protocol = _port(words)
    problem = await mac.ports.take(port, protocol, name, address, machine)
    if problem:
        raise Refused(problem)
    if machine:
        await mac.containers.colima.forwarder.follow()


@command("free-port", "free-port PORT tcp|udp [--in-machine]")
async def free_port(mac, args):
    """Frees what take-port took."""
    words, machine = _where(mac, args)
    port, protocol = _port(words)
    if not await mac.ports.free(port, protocol, machine is not None):
        raise Refused(f"{protocol} port {port} was not taken.")
    if machine:
        await mac.containers.colima.forwarder.follow()


def _where(mac, args):
    """The words without the place, and Colima's machine when that is the place."""
    if "--in-machine" not in args:
        return list(args), None
    if not mac.containers.colima.running:
        raise Refused("Colima's machine is off.")
    return [word for word in args if word != "--in-machine"], mac.containers.colima.machine


def _port(words):
    if len(words) != 2 or words[1] not in ("tcp", "udp"):
        raise Refused("Say the port and tcp or udp, for example: 53 udp.")
    return whole_number(words[0], 1, 65535), words[1]


@command("port53", "port53 grant|deny: whether any program may bind port 53 (on a Mac none may)")
def port53(mac, args):
    """The right to bind low ports."""
    mac.facts.port_53_granted = one_of(args, "grant", "deny") == "grant"
    mac.network.grant_port_53(mac.facts.port_53_granted)


@command("journal", "journal [TOOL]: every call of a tool since the start, one JSON object a line")
def journal(mac, args):
    """What was run."""
    return mac.journal.entries(*args[:1])


# -- the network ------------------------------------------------------------------------------------------------------

@command("services", "services: the network services in order")
def list_services(mac, _args):
    """All services as plain data."""
    network = mac.network
    return [{"name": each.name, "device": each.device, "servers": each.servers, "disabled": each.disabled,
             "up": network.is_up(each), "primary": each is network.primary()} for each in network.services]


@command("keychain-silent", "keychain-silent on|off: the keychain waits for its user and answers nobody")
def keychain_silent(mac, args):
    """As when macOS asks for the keychain's password in a window that nobody sees."""
    silent = on_off(args)
    if mac.keyring is None:
        raise Refused("This Mac has no keychain. Start it with --keyring or --desktop.")
    mac.keyring.silence(silent)
