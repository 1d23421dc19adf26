"""The small tools of macOS: sw_vers, dscacheutil, killall."""

from daemon.tools import tool


@tool("sw_vers", at="/usr/bin/sw_vers")
async def sw_vers(call):
    """The version of macOS, whole or one part of it."""
    facts = call.mac.facts
    values = {"productname": "macOS", "productversion": facts.macos, "buildversion": facts.build()}
    if not call.argv:
        await call.out(f"ProductName:\t\tmacOS\nProductVersion:\t\t{facts.macos}\nBuildVersion:\t\t{facts.build()}\n")
        return 0
    value = values.get(call.argv[0].lstrip("-").lower())
    if value is None:
        await call.err("usage: sw_vers [--help|--productName|--productVersion|--productVersionExtra|--buildVersion]\n")
        return 1
    await call.out(value + "\n")
    return 0


@tool("dscacheutil", at="/usr/bin/dscacheutil")
async def dscacheutil(call):
    """Empties the cache of names."""
    if call.argv == ["-flushcache"]:
        call.mac.network.flushes += 1
        return 0
    await call.err("Usage: dscacheutil -flushcache\n")
    return 64


@tool("killall", at="/usr/bin/killall")
async def killall(call):
    """Sends a signal to the Mac's DNS responder, which only the administrator may do."""
    names = [word for word in call.argv if not word.startswith("-")]
    if names != ["mDNSResponder"]:
        await call.err("No matching processes belonging to you were found\n")
        return 1
    if not call.admin:
        await call.err("No matching processes belonging to you were found\n")
        return 1
    return 0
