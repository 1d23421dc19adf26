"""What can be said on the command line."""

import argparse
import os
import sys

from launcher import ctl, run
from launcher.problem import Problem

DESCRIPTION = """\
A simulated Mac: a private root folder and network in which a Mac's tools are at a Mac's paths.

  simmac run [options] -- PROGRAM ARGUMENT...   runs a program in a fresh Mac and ends with its exit status
  simmac shell [options]                        the same with a shell
  simmac ctl [--at DIR] COMMAND...              shows or changes a running Mac, from inside or outside
  simmac ctl help                               lists what can be shown and changed (in a running Mac)
"""
STATES = ("bare", "homebrew", "stopped", "engine", "running", "protected", "dead", "dead-engine")


def parser():
    """The grammar of the command line."""
    top = argparse.ArgumentParser(prog="simmac", description=DESCRIPTION,
                                  formatter_class=argparse.RawDescriptionHelpFormatter)
    kinds = top.add_subparsers(dest="kind", required=True, metavar="run|shell|ctl")
    _add_run(kinds.add_parser("run", help="run a program in a fresh Mac"), with_program=True)
    _add_run(kinds.add_parser("shell", help="a shell in a fresh Mac"), with_program=False)
    control = kinds.add_parser("ctl", help="show or change a running Mac")
    control.add_argument("--at", metavar="DIR", help="the Mac's private folder (inside a Mac: that Mac)")
    control.add_argument("--wait", metavar="SECONDS", type=float, default=0.0,
                         help="wait at most this long for the Mac to start")
    control.add_argument("words", nargs=argparse.REMAINDER, metavar="COMMAND", help="see: simmac ctl help")
    return top


def _add_run(options, with_program):
    options.add_argument("--state", choices=STATES, default="bare",
                         help="what is installed and running at the start (default: bare)")
    options.add_argument("--set", action="append", default=[], metavar="KEY=VALUE",
                         help="a control command to give at the start, for example wifi=off or \"vpn=on 10.8.0.1\"")
    options.add_argument("--speed", choices=("fast", "real"), default="fast",
                         help="whether brew, colima and the others take the time that they really take")
    options.add_argument("--at", metavar="DIR", help="make the Mac's private folder here, so that others can find it")
    options.add_argument("--keep", action="store_true", help="leave the private folder behind")
    options.add_argument("--share", action="append", default=[], metavar="DIR",
                         help="a folder that the program may write, at its own path")
    options.add_argument("--desktop", action="store_true",
                         help="display (the caller's, else Xvfb), window manager, tray and keyring")
    options.add_argument("--dark", action="store_true", help="a desktop in dark colours")
    options.add_argument("--keyring", action="store_true", help="session bus and unlocked keyring, without a display")
    options.add_argument("--engine", metavar="DIR",
                         help="take Docker from a real engine: docker.sock and control.sock in this folder")
    options.add_argument("--grant-port-53", action="store_true", help="let the program bind port 53")
    if with_program:
        options.add_argument("program", nargs="+", metavar="PROGRAM", help="program and arguments, after --")


def main(words):
    """Does what the command line says; answers with the exit status."""
    options = parser().parse_args(words)
    try:
        if options.kind == "ctl":
            return ctl.control(options.at or os.environ.get("SIMMAC_DIR", "/run/simmac"), options.words, options.wait)
        if options.kind == "shell":
            options.program = [os.environ.get("SIMMAC_SHELL", "/bin/bash"), "--norc"]
        return run.run(options)
    except Problem as problem:
        print(f"simmac: {problem}", file=sys.stderr)
        return 2
