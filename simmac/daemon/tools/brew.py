"""Homebrew: installing, and services that start at login."""

import asyncio

from daemon.containers.homebrew import FORMULAE, VERSION
from daemon.tools import tool

_BOTTLES = "https://bottles.example"
_SERVICE_LABEL = "homebrew.mxcl.colima"
_LAUNCHD_PAUSE = 10
_DEPENDENCIES = {"colima": ("lima",)}


@tool("brew")
async def brew(call):
    argv = [word for word in call.argv if word not in ("-q", "--quiet", "-v", "--verbose")]
    if argv[:1] in (["--version"], ["-v"]):
        await call.out(f"Homebrew {VERSION}\n")
        return 0
    if argv[:1] == ["--prefix"]:
        await call.out("/opt/homebrew\n")
        return 0
    if argv[:1] == ["services"]:
        return await _services(call, argv[1:])
    if argv[:1] == ["list"]:
        return await _list(call, argv[1:])
    if argv[:1] in (["install"], ["uninstall"]) and len(argv) > 1:
        return await _locked(call, _install if argv[0] == "install" else _uninstall, argv[1:])
    if argv[:1] in (["install"], ["uninstall"]):
        await call.err("Error: Invalid usage: This command requires at least 1 formula argument.\n")
        return 1
    await call.err(f"Error: Unknown command: brew {' '.join(argv[:1])}\n" if argv else "Usage: brew COMMAND\n")
    return 1


async def _locked(call, work, formulae):
    homebrew = call.mac.containers.homebrew
    if homebrew.locked:
        await call.err(f"Error: A `brew {' '.join(call.argv)}` process has already locked "
                       f"/opt/homebrew/Cellar/{formulae[0]}.\n"
                       "Please wait for it to finish or terminate it to continue.\n")
        return 1
    homebrew.locked = True
    try:
        return await work(call, homebrew, formulae)
    finally:
        homebrew.locked = False


async def _install(call, homebrew, formulae):
    unknown = [name for name in formulae if name not in FORMULAE]
    if unknown:
        await call.err(f'Warning: No available formula with the name "{unknown[0]}".\n'
                       "==> Searching for similarly named formulae and casks...\n"
                       f'Error: No formulae or casks found for {unknown[0]}.\n')
        return 1
    missing = [name for name in formulae if name not in homebrew.installed]
    for name in formulae:
        if name not in missing:
            await _already(call, name)
    if not missing:
        return 0
    await call.pause(2)
    order = [each for name in missing for each in (*_DEPENDENCIES.get(name, ()), name)
             if each not in homebrew.installed]
    await call.out(f"==> Fetching downloads for: {', '.join(missing)}\n")
    for name in order:
        if not await _download(call, name):
            return 1
    for name in order:
        await _pour(call, homebrew, name)
    await _caveats(call, missing)
    return 0


async def _already(call, name):
    version = FORMULAE[name][0]
    await call.err(f"Warning: {name} {version} is already installed and up-to-date.\n"
                   f"To reinstall {version}, run:\n  brew reinstall {name}\n")


async def _download(call, name):
    version = FORMULAE[name][0]
    address = f"{_BOTTLES}/{name}/{version}"
    await call.out(f"==> Downloading {address}\n")
    if not call.mac.network.reaches_internet():
        await call.err("curl: (6) Could not resolve host: bottles.example\n"
                       f"Error: {name}: Failed to download resource \"{name} ({version})\"\n"
                       f"Download failed: {address}\n")
        return False
    for percent in (2.1, 18.4, 37.0, 61.5, 88.2, 100.0):
        await call.err("\r" + "#" * int(percent * 0.72) + f" {percent:.1f}%")
        await call.pause(0.5)
    await call.err("\n")
    return True


async def _pour(call, homebrew, name):
    version, files, size = FORMULAE[name]
    await call.out(f"==> Installing {name}\n==> Pouring {name}--{version}.arm64_sequoia.bottle.tar.gz\n")
    await call.pause(1.5)
    homebrew.add(name)
    await call.out(f"🍺  /opt/homebrew/Cellar/{name}/{version}: {files} files, {size}\n")


async def _caveats(call, names):
    await call.out("==> Running `brew cleanup`...\n")
    if "colima" in names:
        await call.out("==> Caveats\n==> colima\nTo start colima now and restart at login:\n"
                       "  brew services start colima\nOr, if you don't want/need a background service you can just "
                       "run:\n  /opt/homebrew/opt/colima/bin/colima start -f\n")
    if not call.env.get("HOMEBREW_NO_ENV_HINTS"):
        await call.out("Hide these hints with `HOMEBREW_NO_ENV_HINTS=1` (see `man brew`).\n")


async def _uninstall(call, homebrew, formulae):
    for name in formulae:
        if name not in homebrew.installed:
            await call.err(f"Error: No such keg: /opt/homebrew/Cellar/{name}\n")
            return 1
        version, files, size = FORMULAE[name]
        await call.out(f"Uninstalling /opt/homebrew/Cellar/{name}/{version}... ({files} files, {size})\n")
        homebrew.remove(name)
    return 0


async def _list(call, args):
    homebrew = call.mac.containers.homebrew
    names = [word for word in args if not word.startswith("-")]
    shown = sorted(each for each in homebrew.installed if not names or each in names)
    if "--versions" in args:
        await call.out("".join(f"{name} {FORMULAE[name][0]}\n" for name in shown))
    else:
        await call.out("".join(f"{name}\n" for name in shown))
    return 0 if shown or not names else 1


async def _services(call, args):
    homebrew = call.mac.containers.homebrew
    if not args or args[0] == "list":
        state = "started" if homebrew.colima_service else "none"
        user = " ada  ~/Library/LaunchAgents/homebrew.mxcl.colima.plist" if homebrew.colima_service else ""
        row = f"colima {state}{user}\n" if "colima" in homebrew.installed else ""
        await call.out("Name   Status  User File\n" + row)
        return 0
    if len(args) != 2 or args[0] not in ("start", "stop", "restart"):
        await call.err("Usage: brew services [subcommand]\n\nError: Invalid usage: unknown subcommand: "
                       f"{args[0]}\n")
        return 1
    if args[1] not in homebrew.installed:
        await call.err(f'Error: No available formula with the name "{args[1]}".\n' if args[1] not in FORMULAE
                       else f"Error: Formula `{args[1]}` is not installed.\n")
        return 1
    if args[1] != "colima":
        await call.err(f"Error: Formula `{args[1]}` has not implemented #plist, #service or provided a locatable "
                       "service file.\n")
        return 1
    if args[0] == "restart":
        await _stop_service(call, homebrew)
        return await _start_service(call, homebrew)
    return await (_start_service if args[0] == "start" else _stop_service)(call, homebrew)


async def _start_service(call, homebrew):
    if homebrew.colima_service:
        await call.out("Service `colima` already started, use `brew services restart colima` to restart.\n")
        return 0
    await call.pause(1)
    homebrew.colima_service = True
    homebrew.service = asyncio.create_task(_service_process(call.mac))
    await call.out(f"==> Successfully started `colima` (label: {_SERVICE_LABEL})\n")
    return 0


async def _service_process(mac):
    """`colima start -f` below launchd: it starts Colima, which takes a while, and then waits for a signal only.

    Where Colima runs already it ends at once and well, and is started again after launchd's pause.
    """
    colima = mac.containers.colima
    while colima.running:
        await asyncio.sleep(mac.scaled(_LAUNCHD_PAUSE))
    await asyncio.sleep(mac.scaled(18))
    if not colima.failure:
        await colima.start()
        mac.containers.homebrew.service_waits = True


async def _stop_service(call, homebrew):
    if not homebrew.colima_service:
        await call.err("Warning: Service `colima` is not started.\n")
        return 0
    await call.out("Stopping `colima`... (might take a while)\n")
    await call.pause(5)
    homebrew.colima_service = False
    if homebrew.end_service() and call.mac.containers.colima.running:
        await call.mac.containers.colima.stop()
    await call.out(f"==> Successfully stopped `colima` (label: {_SERVICE_LABEL})\n")
    return 0
