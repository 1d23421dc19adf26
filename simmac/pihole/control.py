"""The small channel over which the play is directed: JSON lines on a unix socket."""

import asyncio
import json
from dataclasses import fields
from pathlib import Path

from .gravity import BlockList
from .list_server import Source
from .names import BLOCKED

_SOURCE_PARTS = [part.name for part in fields(Source)]


class Control:
    """Carries out one request per line and answers each with one line."""

    def __init__(self, pihole, path: Path):
        self._pihole = pihole
        self._path = path

    async def open(self) -> None:
        self._path.unlink(missing_ok=True)
        self._server = await asyncio.start_unix_server(self._serve, self._path)

    async def _serve(self, reader, writer) -> None:
        try:
            while line := await reader.readline():
                writer.write((json.dumps(await self._answer(line)) + "\n").encode())
                await writer.drain()
        except OSError:
            pass
        finally:
            writer.close()

    async def _answer(self, line: bytes) -> dict:
        try:
            return {"ok": True, **(await self._carry_out(json.loads(line)) or {})}
        except (ValueError, KeyError, TypeError, OSError) as error:
            return {"ok": False, "error": str(error)}

    def _set_gravity(self, word: str) -> None:
        """The lists as they can be found: as good as new, empty, missing from the beginning, or damaged."""
        pihole = self._pihole
        if word not in ("good", "empty", "missing", "damaged"):
            raise ValueError(f"Lists are good, empty, missing or damaged, not {word}.")
        if word == "damaged":
            pihole.gravity.damage()
            return
        pihole.gravity.forget()
        if word != "missing":
            pihole.gravity.furnish(pihole.clock.now(), BLOCKED if word == "good" else ())
        pihole.save_rules()

    def _add_list(self, request: dict) -> None:
        """Subscribes to one more list, or switches it; the next run fetches it."""
        pihole, moment = self._pihole, int(self._pihole.clock.now())
        lists = pihole.gravity.database.lists
        known = next((each for each in lists if each.address == request["address"]), None)
        if not known:
            known = BlockList(pihole.gravity.database.next_id(lists), request["address"], request.get("comment"), True,
                              moment, moment)
            lists.append(known)
        known.enabled = request.get("enabled", True)
        pihole.rules_changed()

    async def _carry_out(self, request: dict) -> dict | None:
        pihole = self._pihole
        match request["do"]:
            case "state":
                return {"knobs": pihole.knobs.as_dict(), "questions": len(pihole.log.all()), "requests": pihole.api.requests,
                        "blocking": pihole.blocking.enabled, "seats": pihole.sessions.taken()}
            case "set":
                pihole.knobs.set(request["name"], request["value"])
                await pihole.dns.follow_knobs()
            case "advance":
                pihole.clock.advance(float(request["seconds"]))
            case "day":
                pihole.log.fill(int(request["questions"]), int(request["names"]))
            case "gravity":
                self._set_gravity(request["word"])
            case "source" | "only-source" as which:
                if which == "only-source":
                    pihole.list_server.sources.clear()
                given = {name: request[name] for name in _SOURCE_PARTS if name in request}
                pihole.list_server.sources[request["address"]] = Source(**given)
            case "list":
                self._add_list(request)
            case "password":
                pihole.set_password(request["value"])
            case "end":
                pihole.stop()
            case "restart":
                await pihole.restart()
            case "reset":
                await pihole.reset(request.get("password"), request.get("knobs", {}))
            case other:
                raise ValueError(f"no such request: {other}")
        return None
