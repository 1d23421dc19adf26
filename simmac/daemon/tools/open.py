"""open: hands addresses to the browser, and to the settings application what is its own."""

import asyncio
import socket
import urllib.parse

from daemon import dns_message
from daemon.tools import tool

SETTINGS = "x-apple.systempreferences"


@tool("open", at="/usr/bin/open")
async def open_address(call):
    """`open ADDRESS` and `open -b BUNDLE ADDRESS`."""
    words, bundle = list(call.argv), None
    if len(words) > 1 and words[0] == "-b":
        bundle, words = words[1], words[2:]
        if bundle not in call.mac.applications.installed:
            await call.err("LSCopyApplicationURLsForBundleIdentifier() failed while trying to determine the application"
                           f" with bundle identifier {bundle}.\n")
            return 1
    if not words and bundle is None:
        await call.err("Usage: open [-e] [-t] [-f] [-W] [-R] [-n] [-g] [-h] [-s <partial SDK name>][-b <bundle "
                       "identifier>] [-a <application>] [-u URL] [filenames] [--args arguments]\n")
        return 1
    for address in words:
        if not _can_be_opened(call, address, bundle):
            await call.err(f"The file {address} does not exist.\n")
            return 1
    _hand_over(call.mac, bundle, words)
    return 0


@tool("xdg-open", at="/usr/bin/xdg-open")
async def xdg_open(call):
    """What desktop programs of Linux call for the same."""
    return await open_address(call)


def _can_be_opened(call, address, bundle):
    scheme = urllib.parse.urlsplit(address).scheme
    return bool(scheme) and (bundle is not None or scheme in ("http", "https", "file", "mailto", SETTINGS))


def _hand_over(mac, bundle, addresses):
    """The browser works on by itself, as `open` does not wait for it."""
    for address in addresses or [""]:
        mac.facts.opened.append({"bundle": bundle, "address": address})
        host = urllib.parse.urlsplit(address).hostname
        if host and urllib.parse.urlsplit(address).scheme in ("http", "https"):
            mac.keep(asyncio.create_task(_look_up(mac, host)))


async def _look_up(mac, host):
    """What a browser does first: it looks the name up."""
    try:
        resolver = mac.network.next_browser_dns()
        if resolver is None:
            await asyncio.to_thread(socket.getaddrinfo, host, 80, type=socket.SOCK_STREAM)
        else:
            await asyncio.to_thread(_ask_directly, resolver, host)
    except OSError:
        pass   # the browser shows an error page


def _ask_directly(server, host):
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as handle:
        handle.settimeout(1.0)
        handle.sendto(dns_message.write_question(host), (server, 53))
        handle.recv(4096)
