"""The socket to which the small program at every tool's path connects."""

import asyncio
import signal
import socket
import struct

from daemon.call import Call, DiesBy, RunReal
from daemon.tools import TOOLS

LONGEST_REQUEST = 2**26


async def serve(mac, path):
    """Opens the tools' socket."""
    return await asyncio.start_unix_server(lambda r, w: _client(mac, r, w), path, limit=2**20)


async def _client(mac, reader, writer):
    try:
        call = await _read_call(mac, reader, writer)
        await _run_until_gone(call, reader)
    except (ConnectionError, asyncio.IncompleteReadError, UnicodeDecodeError, ValueError):
        pass   # whoever connected is no tool, or is gone
    finally:
        writer.close()


async def _read_call(mac, reader, writer):
    """A request is: length, number of arguments, then name, folder, arguments and environment, each ended by NUL."""
    length, count = struct.unpack("<II", await reader.readexactly(8))
    if length > LONGEST_REQUEST:
        raise ValueError(length)
    texts = [part.decode("utf-8", "surrogateescape")
             for part in (await reader.readexactly(length)).split(b"\0")[:-1]]
    if len(texts) < 2 + count:
        raise ValueError(texts)
    name, folder = texts[0].rsplit("/", 1)[-1], texts[1]
    env = dict(pair.split("=", 1) for pair in texts[2 + count:] if "=" in pair)
    pid = struct.unpack("3i", writer.get_extra_info("socket").getsockopt(
        socket.SOL_SOCKET, socket.SO_PEERCRED, 12))[0]
    return Call(mac, name, texts[2:2 + count], env, folder, pid, mac.prompt.covers(env), writer)


async def _run_until_gone(call, reader):
    """Runs the tool; it is cancelled when its caller goes away first."""
    entry = call.mac.journal.begin(call)
    work = asyncio.ensure_future(_outcome(call))
    call.mac.work.add(work)
    work.add_done_callback(call.mac.work.discard)
    gone = asyncio.ensure_future(reader.read(1))
    gone.add_done_callback(lambda ended: ended.cancelled() or ended.exception())   # a killed caller resets it
    await asyncio.wait((work, gone), return_when=asyncio.FIRST_COMPLETED)
    if not work.done():
        work.cancel()
        await asyncio.wait((work,))
        call.mac.journal.end(entry, "cancelled")
        return
    outcome = _result(work)
    if outcome is None:   # the caller went away while something was being written to it
        call.mac.journal.end(entry, "cancelled")
        gone.cancel()
        return
    if not isinstance(outcome, RunReal):
        call.mac.journal.end(entry, f"signal {outcome.signal}" if isinstance(outcome, DiesBy) else outcome)
    await call.finish(outcome)
    await asyncio.wait((gone,))
    if isinstance(outcome, RunReal):
        call.mac.journal.end(entry, "real")


def _result(work):
    if work.cancelled():   # by a reset
        return DiesBy(signal.SIGKILL)
    return None if isinstance(work.exception(), ConnectionError) else work.result()


async def _outcome(call):
    """How the tool ends; a mistake of ours is said on standard error, so that it cannot pass unseen."""
    try:
        status = await call.mac.faults.strike(call)
        return await TOOLS[call.tool](call) if status is None else status
    except (RunReal, DiesBy) as special:
        return special
    except (asyncio.CancelledError, ConnectionError):
        raise
    except KeyError:
        if call.tool in TOOLS:
            raise
        await call.err(f"The simulated Mac does not play the tool \"{call.tool}\".\n")
        return 127
    except Exception as error:
        await call.err(f"The simulated Mac made a mistake in \"{call.tool}\": {error!r}\n")
        return 70
