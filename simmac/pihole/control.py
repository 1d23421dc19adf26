"""The small channel over which the play is directed: JSON lines on a unix socket."""

import asyncio
import json
from pathlib import Path


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

    async def _carry_out(self, request: dict) -> dict | None:
        pihole = self._pihole
        match request["do"]:
            case "state":
                return {"knobs": pihole.knobs.as_dict(), "questions": pihole.log.counters()["total"],
                        "blocking": pihole.blocking.enabled}
            case "set":
                pihole.knobs.set(request["name"], request["value"])
                await pihole.dns.follow_knobs()
            case "advance":
                pihole.clock.advance(float(request["seconds"]))
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
