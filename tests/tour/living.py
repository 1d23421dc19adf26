"""The days after the set-up: a site that does not load, pauses of every length, fresh block lists, a look back at the day, and a
Pi-hole that comes back by itself or is not wanted any more."""

import pathlib
import subprocess
import sys
import time

from scenes import play
from screen import NotOnScreen
from stage import ctl

SUPPORT = pathlib.Path.home() / "Library/Application Support/Corvane"
HOUR, MINUTE = 3600, 60
PROTECTED, BACKUP, ASLEEP = 1, 3, 6     # what the dot said, as the record of the day numbers it


def look_up(*names):
    subprocess.run(["dig", "@127.0.0.1", "+short", *names], check=True, stdout=subprocess.DEVNULL)


def site_that_does_not_load(stage):
    """A site that does not load is repaired in two clicks, and the repair is undone."""
    stage.begin("protected")
    ctl("pihole", "log-delay", "0")
    stage.dashboard()
    stage.use("Show what is blocked")
    stage.sees_start("Nothing was blocked since.")
    stage.picture("repair-open")
    look_up("metrics.example.org", "doubleclick.net")
    stage.sees("metrics.example.org")
    stage.picture("repair-blocked")
    stage.use("Allow metrics.example.org for 1 hour")
    stage.sees_start("metrics.example.org is allowed (until ")
    stage.picture("repair-allowed")
    stage.use("Undo: block metrics.example.org again")
    stage.sees_start("metrics.example.org is no longer allowed.")
    stage.use("Done")


def pauses(stage):
    """A pause of another length counts down and is ended by one click."""
    stage.begin("protected")
    stage.dashboard()
    stage.sees("Blocking: On")
    stage.use("Pause for...")
    stage.picture("pause-lengths")
    stage.use("1 hour")
    stage.sees("Blocking is paused for 1 hour.")
    stage.sees_start("Blocking is paused: 59 minutes")
    stage.picture("pause-counts-down")
    stage.use("Resume blocking")
    stage.sees("Blocking is back on.")


def lists(stage):
    """Fresh lists, and lists that a log-in page answers for."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Refresh lists")
    stage.sees("The block lists are loaded.")
    stage.picture("lists-fresh")
    ctl("pihole", "list-server", "refused")
    stage.use("Refresh lists")
    stage.sees_start("The block lists are loaded.\nraw.githubusercontent.com")
    stage.picture("lists-failed")


def comes_back(stage):
    """Colima dies, and Pi-hole comes back by itself."""
    stage.begin("dead")
    stage.dashboard()
    stage.use("Start Pi-hole now")
    stage.sees("Pi-hole is answering and this Mac uses it")
    ctl("engine", "stop")
    stage.sees("Start Pi-hole now")
    stage.use("Start Pi-hole again when it stops unasked")
    stage.switched("Start Pi-hole again when it stops unasked", True)
    stage.sees_start("Pi-hole does not run. Corvane starts it again within 10 seconds")
    stage.picture("comes-back-soon")
    stage.sees("Pi-hole is answering and this Mac uses it")
    stage.sees_part("Started again after Colima had stopped")
    stage.dot("green")
    stage.picture("came-back")
    stage.use("Settings")
    stage.use("What Corvane did")
    stage.picture("comebacks-in-the-settings")


def _spans(*spans):
    """A record of the day: how long the dot said what, up to now."""
    start = int(time.time()) - sum(seconds for seconds, _ in spans)
    lines = ["corvane day 1"]
    for seconds, state in spans:
        lines.append(f"span {start} {start + seconds} {state}")
        start += seconds
    return "\n".join([*lines, "end", ""])


def afternoon(stage):
    """The picture of the day shows the two minutes on the backup server."""
    stage.reset("protected", "pihole-day 20000 300")
    SUPPORT.mkdir(parents=True, exist_ok=True)
    (SUPPORT / "day.txt").write_text(_spans(
        (8 * HOUR, ASLEEP), (9 * HOUR, PROTECTED), (2 * MINUTE, BACKUP), (6 * HOUR, PROTECTED)), encoding="ascii")
    stage.open()
    stage.dashboard()
    stage.sees("ad0.example.net, blocked 197 times")
    stage.sees_part(", 2 min on the backup, 8 h asleep.")
    stage.picture("the-day")


def without_corvane(stage):
    """The old DNS servers come back by the script alone, with Corvane and Colima gone."""
    stage.begin("running", "servers Wi-Fi 9.9.9.9")
    stage.step(6)
    stage.use("Change DNS...")
    stage.use("Change DNS")
    stage.sees("This Mac uses Pi-hole")
    stage.end()
    for tool in ("brew", "colima", "docker"):
        ctl("fault", tool, "vanish")
    said = subprocess.run([SUPPORT / "Restore DNS.command"], check=True, capture_output=True, text=True).stdout
    if not said.endswith("Done: your old DNS servers are back.\n") or "  Wi-Fi:\n9.9.9.9\n" not in said:
        raise NotOnScreen(f"the old server after the script: it said\n{said}")


if __name__ == "__main__":
    sys.exit(play([site_that_does_not_load, pauses, lists, afternoon, comes_back, without_corvane]))
