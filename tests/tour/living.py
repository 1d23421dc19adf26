"""The days after the set-up: a site that does not load, pauses of every length, and fresh block lists."""

import subprocess
import sys

from scenes import play
from stage import ctl


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


if __name__ == "__main__":
    sys.exit(play([site_that_does_not_load, pauses, lists, comes_back]))
