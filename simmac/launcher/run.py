"""Making a Mac, running a program in it, and clearing up."""

import json
import os
import signal
import subprocess
import threading

from launcher import ctl, sandbox, tool
from launcher.folders import PrivateFolder
from launcher.problem import Problem

GRACE = 7.0


def run(options):
    """Runs the program in a fresh Mac; answers with its exit status."""
    for pair in options.set:
        if "=" not in pair:
            raise Problem(f"--set takes KEY=VALUE, not {pair}.")
    for share in options.share:
        if not os.path.isdir(share):
            raise Problem(f"{share} is not a folder.")
    if options.engine and not os.path.exists(f"{options.engine}/control.sock"):
        raise Problem(f"{options.engine} is not the folder of a real engine: it has no control.sock.")
    program = find_program(options.program)
    probe = sandbox.begin_probe()
    folder = PrivateFolder(options.at)
    try:
        folder.furnish()
        return _run_in(folder, program, options, probe)
    finally:
        if not options.keep:
            folder.remove()


def find_program(words):
    """The program's command line; a path is made absolute, because the program starts in a folder of its own."""
    if "/" not in words[0]:
        return words
    path = os.path.abspath(words[0])
    if not os.access(path, os.X_OK) or os.path.isdir(path):
        raise Problem(f"{words[0]} is not a program.")
    return [path, *words[1:]]


def _run_in(folder, program, options, probe):
    cache = tool.cache_folder()
    tool.place(tool.find(cache), f"{folder.path}/simmac-tool")
    display = host_display() if options.desktop else None
    _write_settings(folder.path, program, options, display)
    sandbox.end_probe(probe)
    words = sandbox.arguments(folder.path, program[0], options.share, display, cache)
    if options.engine:
        words = ["--bind", os.path.abspath(options.engine), "/run/engine", *words]
    env = {"PATH": "/usr/bin:/bin:/usr/sbin:/sbin", "HOME": "/Users/ada", "LANG": "C.UTF-8",
           "PYTHONPATH": sandbox.SIMMAC, "PYTHONPYCACHEPREFIX": "/run/simmac-cache/python"}
    if display is not None:
        env["XAUTHORITY"] = "/run/xauthority"
    signal.signal(signal.SIGINT, signal.SIG_IGN)   # Ctrl-C is for the program, which sits at the same terminal
    command = ["bwrap", *words, "/run/host/usr/bin/python3", "-P", "-m", "daemon.main"]
    with subprocess.Popen(command, env=env) as mac:
        for number in (signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, lambda *_: _end(folder.path, mac))
        status = mac.wait()
    return 128 - status if status < 0 else status


def host_display():
    """The caller's display, when a socket of this machine leads to it."""
    display = os.environ.get("DISPLAY", "")
    number = display.lstrip(":").split(".")[0]
    return display if display.startswith(":") and os.path.exists(f"/tmp/.X11-unix/X{number}") else None


def _write_settings(folder, program, options, display):
    settings = {
        "state": options.state, "speed": options.speed, "set": options.set, "desktop": options.desktop,
        "dark": options.dark, "keyring": options.keyring, "grant_port_53": options.grant_port_53, "display": display,
        "real_engine": options.engine is not None, "command": f"{sandbox.SIMMAC}/simmac", "program": program, "cwd": os.getcwd(), "env": dict(os.environ),
    }
    handle = os.open(f"{folder}/settings.json", os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)
    with os.fdopen(handle, "w", encoding="ascii") as file:
        json.dump(settings, file)


def _end(folder, mac):
    """Ends the program gently, and the Mac with it; what does not listen is killed."""
    try:
        ctl.ask(folder, ["end"])
    except Problem:
        mac.kill()
    killer = threading.Timer(GRACE, mac.kill)
    killer.daemon = True   # nobody waits for it when the Mac has ended in time
    killer.start()
