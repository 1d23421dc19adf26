"""The daemon's start: `python3 -m daemon.main`, started by the launcher as the first process of the Mac."""

import asyncio
import importlib
import json
import os
import signal
import sys

# Some of these only register themselves.
from daemon import commands, control, farm, keyring, network_commands, tool_server  # noqa: F401
from daemon.appearance import Appearance
from daemon.desktop import Desktop
from daemon.mac import HOME, RUN, Mac, maybe
from daemon.network import forget_closed_connections
from daemon.privileges import free_of_rights
from daemon.tools import PLACES, load_all

PROGRAM_PATH = "/usr/bin:/bin:/usr/sbin:/sbin"
GRACE = 5.0


async def start_mac(settings):
    """Makes the Mac, in the state and with the facts that the launcher was asked for."""
    mac = Mac()
    forget_closed_connections()
    mac.speed = settings["speed"]
    mac.facts.at_reset["port 53"] = settings["grant_port_53"]
    load_all()
    farm.plant(settings["command"])
    for name in PLACES:
        mac.hide_tool(name)   # a program of the host may be there
        mac.show_tool(name)
    await tool_server.serve(mac, f"{RUN}/tools.sock")
    if settings["desktop"]:
        mac.desktop = Desktop(settings["display"], Appearance(settings["dark"]))
        await mac.desktop.start()
    if settings["desktop"] or settings["keyring"]:
        mac.keyring = keyring.Keyring()
        await mac.keyring.start()
    mac.real_engine = settings["real_engine"]
    begin_containers = getattr(importlib.import_module("daemon.containers"), "start", None)
    if begin_containers is not None:
        await maybe(begin_containers(mac))
    await mac.reset(settings["state"])
    for pair in settings["set"]:
        await control.perform(mac, ["set", *pair.split("=", 1)])
    await control.serve(mac, f"{RUN}/control.sock")
    return mac


def program_environment(mac, settings):
    """The environment of a program that a user of this Mac starts, with the caller's own variables beside it."""
    env = {name: value for name, value in settings["env"].items() if not name.startswith(("XDG_", "DBUS_", "WAYLAND_"))}
    env.update({
        "HOME": HOME, "USER": "ada", "LOGNAME": "ada", "SHELL": "/bin/sh", "PATH": PROGRAM_PATH, "TMPDIR": "/tmp",
        "SIMMAC_DIR": RUN, "XDG_CONFIG_HOME": f"{HOME}/.config", "XDG_CACHE_HOME": f"{HOME}/.cache",
        "XDG_DATA_HOME": f"{HOME}/.local/share", "XDG_STATE_HOME": f"{HOME}/.local/state",
        "XDG_RUNTIME_DIR": "/run/user/0",
    })
    env.setdefault("LANG", "C.UTF-8")
    env.pop("DISPLAY", None)
    if settings["display"] is not None:
        env["XAUTHORITY"] = "/run/xauthority"
    if mac.desktop is not None:
        env["DISPLAY"] = mac.desktop.display
        env.update(mac.desktop.appearance.environment())
    if mac.keyring is not None:
        env["DBUS_SESSION_BUS_ADDRESS"] = mac.keyring.bus
    return env


async def run_program(mac, settings):
    """Runs the program to its end and answers with its exit status (128 and the signal, when it died by one)."""
    folder = settings["cwd"] if os.path.isdir(settings["cwd"]) else HOME
    loop = asyncio.get_running_loop()
    # Ctrl-C is for the program. What has a handler here is back at its default in the program; the rest ignores it.
    loop.add_signal_handler(signal.SIGINT, lambda: None)
    process = await asyncio.create_subprocess_exec(
        *free_of_rights(settings["program"]), cwd=folder, env=program_environment(mac, settings), stdin=0)
    mac.end = lambda: loop.create_task(end_program(process))
    loop.add_signal_handler(signal.SIGTERM, mac.end)
    status = await process.wait()
    return 128 - status if status < 0 else status


async def end_program(process):
    """Asks the program to end, and ends it when it does not listen."""
    if process.returncode is None:
        process.terminate()
        await asyncio.sleep(GRACE)
    if process.returncode is None:
        process.kill()


async def main():
    """Starts the Mac, runs the program in it, and takes the Mac down with it."""
    with open(f"{RUN}/settings.json", encoding="ascii") as file:
        settings = json.load(file)
    os.unlink(file.name)
    try:
        mac = await start_mac(settings)
    except control.Refused as refusal:
        print(f"simmac: {refusal}", file=sys.stderr)
        return 2
    except FileNotFoundError as missing:
        print(f"simmac: {missing.filename} is not there; scripts/packages-debian.txt lists what is needed.",
              file=sys.stderr)
        return 2
    return await run_program(mac, settings)


if __name__ == "__main__":
    # What still runs ends with the first process of the Mac, so nothing has to be waited for.
    code = asyncio.run(main())
    sys.stdout.flush()
    os._exit(code)
