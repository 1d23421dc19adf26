"""osascript: runs the one kind of AppleScript that asks the user for administrator rights."""

import asyncio
import os
import secrets

from daemon.apple_script import SyntaxProblem, parse
from daemon.privileges import free_of_rights
from daemon.tools import tool

CANCELLED = {"en": "User canceled.", "de": "Vom Benutzer abgebrochen.", "fr": "Annulé par l’utilisateur.",
             "es": "El usuario ha cancelado."}
REFUSED = "The administrator user name or password was incorrect. (-60007)"
NO_TEXT = "The command exited with a non-zero status."
ROOT_PATH = "/usr/bin:/bin:/usr/sbin:/sbin"


@tool("osascript", at="/usr/bin/osascript")
async def osascript(call):
    """Runs `-e SCRIPT`."""
    if len(call.argv) != 2 or call.argv[0] != "-e":
        await call.err("usage: osascript [-l language] [-i] [-s flags] [-e statement | programfile] [argument ...]\n")
        return 2
    source = call.argv[1]
    try:
        script, wants_admin = parse(source)
    except SyntaxProblem as problem:
        await call.err(f"{problem.place}: syntax error: {problem}\n")
        return 1
    env = {}
    if wants_admin:
        refusal = await _ask(call, script)
        if refusal:
            return await _error(call, source, refusal)
        env = {"SIMMAC_ADMIN": secrets.token_hex(16)}
        call.mac.prompt.tokens.add(env["SIMMAC_ADMIN"])
    return await _run(call, source, script, env)


async def _ask(call, script):
    """Shows the prompt; answers with the error it ended in, or nothing when the user accepted."""
    answer = call.mac.prompt.ask(script)
    await call.pause(2.0)
    if answer == "hang":
        await asyncio.Event().wait()
    if answer == "cancel":
        return CANCELLED[call.mac.prompt.language] + " (-128)"
    return REFUSED if answer == "refuse" else ""


async def _run(call, source, script, env):
    process = await asyncio.create_subprocess_exec(
        *free_of_rights(["/bin/sh", "-c", script]), cwd="/",
        env={**call.env, "PATH": ROOT_PATH, **env}, stdin=asyncio.subprocess.DEVNULL,
        stdout=asyncio.subprocess.PIPE, stderr=asyncio.subprocess.PIPE)
    out, err = await process.communicate()
    if process.returncode != 0:
        status = process.returncode if process.returncode > 0 else 128 - process.returncode
        return await _error(call, source, f"{_as_text(err) or _as_text(out) or NO_TEXT} ({status})")
    await call.out(_as_text(out) + "\n")
    return 0


def _as_text(data):
    """AppleScript turns line ends into its own and drops the last one."""
    return os.fsdecode(data.removesuffix(b"\n").replace(b"\n", b"\r"))


async def _error(call, source, text):
    await call.err(f"0:{len(source)}: execution error: {text}\n")
    return 1
