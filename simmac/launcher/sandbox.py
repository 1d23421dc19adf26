"""The walls of the Mac: what bubblewrap is told."""

import os
import shutil
import subprocess

from launcher import display_cookies
from launcher.folders import host_etc
from launcher.problem import Problem

NAMESPACES = ["--unshare-user", "--unshare-net", "--unshare-pid", "--unshare-ipc", "--unshare-uts",
              "--uid", "0", "--gid", "0", "--die-with-parent"]
# The last one is for the user namespace of Colima's machine.
DAEMON_RIGHTS = ("CAP_NET_ADMIN", "CAP_NET_BIND_SERVICE", "CAP_SETPCAP", "CAP_SETFCAP")
SIMMAC = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))
REPOSITORY = os.path.dirname(SIMMAC)
FONT_CACHE = "/var/cache/fontconfig"
NOT_ALLOWED = ("This system does not let bubblewrap make namespaces, which the simulated Mac needs: allow them with "
               "\"sysctl -w kernel.unprivileged_userns_clone=1 user.max_user_namespaces=10000\" (in a container, "
               "start the container with --privileged).")


def begin_probe():
    """Starts a trial run, so that a system without namespaces is told in a sentence; `end_probe` judges it."""
    if shutil.which("bwrap") is None:
        raise Problem("bubblewrap is not installed; install it with \"apt-get install bubblewrap\".")
    return subprocess.Popen(["bwrap", *NAMESPACES, "--ro-bind", "/", "/", "--proc", "/proc", "--dev", "/dev",
                             "/bin/true"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)


def end_probe(probe):
    """Raises the sentence when the trial run failed."""
    if probe.wait() != 0:
        raise Problem(NOT_ALLOWED)


def arguments(folder, program, shares, display, cache):
    """bubblewrap's arguments for the Mac in this private folder."""
    words = [*NAMESPACES, "--hostname", "adas-mac", "--cap-drop", "ALL"]
    for right in DAEMON_RIGHTS:
        words += ["--cap-add", right]
    words += _system(f"{folder}/root")
    words += ["--bind", folder, "/run/simmac", "--bind", cache, "/run/simmac-cache"]
    words += _what_the_caller_brings(folder, program, shares, display)
    return words + ["--remount-ro", "/", "--chdir", "/"]


def _system(root):
    words = ["--ro-bind", "/usr", "/usr", "--ro-bind", "/usr", "/run/host/usr", "--tmpfs", "/usr/bin",
             "--tmpfs", "/usr/sbin"]
    for name in ("bin", "sbin", "lib", "lib32", "lib64", "libx32"):
        if os.path.islink(f"/{name}"):
            words += ["--symlink", f"usr/{name}", f"/{name}"]
    for name in ("/usr/local/bin", "/usr/local/sbin"):
        if os.path.isdir(name):
            words += ["--tmpfs", name]
    words += ["--ro-bind", f"{root}/etc", "/etc"]
    for name in host_etc():
        words += ["--ro-bind", f"/etc/{name}", f"/etc/{name}"]
    for name in ("opt", "Applications", "Users", "var", "tmp"):
        words += ["--bind", f"{root}/{name}", f"/{name}"]
    if os.path.isdir(FONT_CACHE):   # without it every program that draws text first reads all fonts
        words += ["--ro-bind", FONT_CACHE, FONT_CACHE]
    return words + ["--ro-bind", f"{root}/System", "/System", "--bind", f"{root}/run-user", "/run/user/0",
                    "--dev", "/dev", "--proc", "/proc"]


def _what_the_caller_brings(folder, program, shares, display):
    words = ["--ro-bind", REPOSITORY, REPOSITORY]
    if "/" in program:
        for path in {os.path.abspath(program), os.path.realpath(program)}:
            home = os.path.dirname(path)
            if not _is_below(home, REPOSITORY) and not _is_below(home, "/usr") and home not in ("/bin", "/sbin"):
                words += ["--ro-bind", home, home]
    for share in shares:
        words += ["--bind", os.path.abspath(share), os.path.abspath(share)]
    if display is not None:
        number = display.lstrip(":").split(".")[0]
        words += ["--bind", f"/tmp/.X11-unix/X{number}", f"/tmp/.X11-unix/X{number}"]
        if keys := display_cookies.copy_for_any_host(folder):
            words += ["--ro-bind", keys, "/run/xauthority"]
    return words


def _is_below(path, folder):
    return path == folder or path.startswith(folder + "/")
