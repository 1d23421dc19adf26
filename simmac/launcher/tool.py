"""The compiled program that is at every tool's path."""

import hashlib
import os
import shutil
import subprocess

from launcher.problem import Problem
from launcher.sandbox import SIMMAC

SOURCE = f"{SIMMAC}/tool/main.cpp"


def cache_folder():
    """Where compiled things are kept from one run to the next."""
    base = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    folder = f"{base}/simmac"
    try:
        os.makedirs(folder, exist_ok=True)
        if os.access(folder, os.W_OK):
            return folder
    except OSError:
        pass
    folder = f"/tmp/simmac-cache-{os.getuid()}"
    os.makedirs(folder, mode=0o700, exist_ok=True)
    return folder


def find(cache):
    """The program: the one that the build made (SIMMAC_TOOL), else one compiled here, once for each source text."""
    built = os.environ.get("SIMMAC_TOOL")
    if built:
        if not os.access(built, os.X_OK):
            raise Problem(f"SIMMAC_TOOL names {built}, which is no program.")
        return built
    with open(SOURCE, "rb") as file:
        name = f"{cache}/simmac-tool-{hashlib.sha256(file.read()).hexdigest()[:16]}"
    if not os.path.exists(name):
        _compile(name)
    return name


def _compile(name):
    compiler = shutil.which("c++")
    if compiler is None:
        raise Problem("There is no C++ compiler; install one with \"apt-get install g++\".")
    fresh = f"{name}.{os.getpid()}"
    done = subprocess.run([compiler, "-std=c++20", "-O2", "-static", SOURCE, "-o", fresh], check=False)
    if done.returncode != 0:
        raise Problem("The program that stands for the tools could not be compiled.")
    os.replace(fresh, name)


def place(program, target):
    """Puts the program where the Mac runs it."""
    if os.path.lexists(target):
        os.unlink(target)
    try:
        os.link(os.path.realpath(program), target)
    except OSError:
        shutil.copy2(program, target)
