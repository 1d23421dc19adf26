"""Runs one stand-in Pi-hole until it is told to end.

    python3 -m pihole --dns 127.0.0.1:53 --web 127.0.0.1:8080 --data /some/folder

The password comes from FTLCONF_webserver_api_password, as in the container of the real one.
"""

import argparse
import asyncio
import json
import os
import signal
import sys
from pathlib import Path

from .control import Control
from .pihole import Pihole, Settings


def _address(text: str) -> tuple[str, int]:
    host, _, port = text.rpartition(":")
    return host, int(port)


def _arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="pihole", description="A stand-in Pi-hole.")
    parser.add_argument("--dns", type=_address, default=("0.0.0.0", 53), help="where DNS listens, host:port")
    parser.add_argument("--web", type=_address, default=("0.0.0.0", 80), help="where the web API listens")
    parser.add_argument("--data", type=Path, default=Path("/etc/pihole"), help="folder of its settings")
    parser.add_argument("--control", type=Path, help="unix socket over which it is directed")
    parser.add_argument("--name", help="name of the process as other tools see it")
    parser.add_argument("--give-up-rights", action="store_true", help="keep no capability after binding")
    parser.add_argument("--boot", type=float, default=0, help="seconds until DNS answers")
    parser.add_argument("--web-boot", type=float, default=0, help="seconds until the web API answers")
    parser.add_argument("--settled", action="store_true", help="block from the first moment")
    parser.add_argument("--client", help="address that every client seems to have")
    parser.add_argument("--address", default="172.17.0.2", help="address that pi.hole has")
    parser.add_argument("--marked-log", action="store_true", help="mark lines of standard error, in standard output")
    parser.add_argument("--knobs", type=json.loads, default={}, help="JSON object of settings of the play")
    return parser.parse_args()


def _settings(arguments: argparse.Namespace) -> Settings:
    return Settings(arguments.dns, arguments.web, arguments.data, arguments.boot, arguments.web_boot, arguments.settled,
                    arguments.client, arguments.address, os.environ.get("FTLCONF_webserver_api_password"),
                    os.environ.get("FTLCONF_dns_upstreams", "1.1.1.1"), arguments.marked_log, arguments.knobs)


async def _run(arguments: argparse.Namespace) -> None:
    ended = asyncio.Event()
    loop = asyncio.get_running_loop()
    for number in (signal.SIGTERM, signal.SIGINT):
        loop.add_signal_handler(number, ended.set)
    pihole = Pihole(_settings(arguments))
    await pihole.start()
    if arguments.give_up_rights:
        from .rights import give_up
        give_up()
    if arguments.control:
        await Control(pihole, arguments.control).open()
    await ended.wait()
    pihole.stop()
    await pihole.over()


def main() -> int:
    arguments = _arguments()
    if arguments.name:
        Path("/proc/self/comm").write_text(arguments.name)
    try:
        asyncio.run(_run(arguments))
    except OSError as error:
        print(f"pihole: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
