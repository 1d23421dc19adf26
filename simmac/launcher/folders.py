"""The private folders that become the root of the Mac."""

import fcntl
import os
import shutil
import stat
import tempfile

from launcher.problem import Problem

# Of the host's /etc, what its libraries and desktop programs read; everything else is the Mac's own.
HOST_ETC = ("alternatives", "dbus-1", "fonts", "glvnd", "gtk-3.0", "ImageMagick-6", "ld.so.cache", "ld.so.conf",
            "ld.so.conf.d", "magic", "mime.types", "pango", "protocols", "services", "ssl/openssl.cnf",
            "terminfo", "X11", "xdg")
ZONES = "/usr/share/zoneinfo/"
LEFT_BEHIND = {"lock", "root", "control.sock", "tools.sock", "bus", "simmac-tool", "settings.json"}
ETC = {
    "passwd": "ada:x:0:0:Ada:/Users/ada:/bin/sh\nnobody:x:65534:65534:nobody:/:/bin/false\n",
    "group": "wheel:x:0:\nnogroup:x:65534:\n",
    "hosts": "127.0.0.1\tlocalhost\n::1\tlocalhost\n",
    "host.conf": "multi on\n",
    "hostname": "adas-mac\n",
    "machine-id": "5f0c2f6d9b9e4c0f8e6a7d1b3c5a9e01\n",
    "nsswitch.conf": "passwd: files\ngroup: files\nhosts: files dns\nservices: files\nprotocols: files\n",
    "resolv.conf": "",
    "shells": "/bin/sh\n/bin/bash\n",
}


class PrivateFolder:
    """The folder of one Mac; its lock is held as long as the Mac lives."""

    def __init__(self, at=None):
        if at is None:
            _remove_dead_ones()
            self.path, self._lock = _fresh_folder()
        else:
            self.path = os.path.abspath(at)
            os.makedirs(self.path, mode=0o700, exist_ok=True)
            self._lock = lock(self.path)
        if self._lock is None:
            raise Problem(f"A simulated Mac already runs at {self.path}.")
        if set(os.listdir(self.path)) - LEFT_BEHIND:
            raise Problem(f"{self.path} holds other files; name an empty folder or a new one.")
        for name in LEFT_BEHIND - {"lock"}:
            remove_tree(f"{self.path}/{name}")

    def furnish(self):
        """Makes the folders of the Mac's root, as far as they do not depend on its state."""
        root = f"{self.path}/root"
        for folder in ("etc/ssl/certs", "opt/homebrew/bin", "Applications", "System/Library/CoreServices", "Users/ada",
                       "var/log", "var/lib/simmac", "var/cache/fontconfig", "run-user", "tmp/.X11-unix"):
            os.makedirs(f"{root}/{folder}")
        os.symlink("/tmp", f"{root}/var/tmp")
        os.symlink("/run", f"{root}/var/run")
        os.symlink(time_zone(), f"{root}/etc/localtime")
        os.chmod(f"{root}/run-user", 0o700)
        os.chmod(f"{root}/tmp/.X11-unix", 0o1777)
        for name, text in ETC.items():
            with open(f"{root}/etc/{name}", "w", encoding="ascii") as file:
                file.write(text)
        for name in host_etc():
            _mount_point(f"/etc/{name}", f"{root}/etc/{name}")

    def remove(self):
        """Takes the folder away."""
        remove_tree(self.path)


def _fresh_folder():
    """A new folder and its lock. It gets its name when it is locked, so that no other Mac clears it away as dead."""
    unlocked = tempfile.mkdtemp(prefix="new-simmac-")
    handle = lock(unlocked)
    folder = f"{os.path.dirname(unlocked)}/{_prefix()}{os.path.basename(unlocked).removeprefix('new-simmac-')}"
    os.rename(unlocked, folder)
    return folder, handle


def _prefix():
    return f"simmac-{os.getuid()}-"


def lock(folder):
    """An open file that holds the folder's lock; none when somebody else holds it."""
    file = os.open(f"{folder}/lock", os.O_RDWR | os.O_CREAT | os.O_CLOEXEC, 0o600)
    try:
        fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return file
    except OSError:
        os.close(file)
        return None


def time_zone():
    """The file of the host's time zone. A Mac links to it; without a link ICU reads some 1,400 zones to find its name."""
    zone = os.path.realpath("/etc/localtime")
    return zone if zone.startswith(ZONES) else ZONES + "Etc/UTC"


def host_etc():
    """The parts of the host's /etc that exist and are lent to the Mac."""
    return [name for name in HOST_ETC if os.path.exists(f"/etc/{name}")]


def remove_tree(path):
    """Removes a file, or a folder with everything in it, read-only folders too."""
    def make_writable_and_retry(function, failed, _error):
        parent = os.path.dirname(failed)
        for each in (parent, failed):
            if os.path.lexists(each) and not os.path.islink(each):
                os.chmod(each, os.stat(each).st_mode | stat.S_IRWXU)
        try:
            function(failed)
        except OSError:
            pass
    if os.path.isdir(path):
        shutil.rmtree(path, onerror=make_writable_and_retry)
    elif os.path.lexists(path):
        os.unlink(path)


def _mount_point(like, path):
    if os.path.isdir(like):
        os.makedirs(path)
    else:
        with open(path, "w", encoding="ascii"):
            pass


def _remove_dead_ones():
    """Clears away what Macs left behind whose launcher was killed."""
    base = tempfile.gettempdir()
    for name in os.listdir(base):
        folder = f"{base}/{name}"
        if name.startswith(_prefix()) and os.path.isfile(f"{folder}/lock"):
            handle = lock(folder)
            if handle is not None:
                remove_tree(folder)
                os.close(handle)
