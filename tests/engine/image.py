"""The image of the stand-in Pi-hole, made of what this machine has, in the folder of a registry."""

import gzip
import hashlib
import io
import json
import os
import subprocess
import sys
import sysconfig
import tarfile

REPOSITORY = "pihole/pihole"
SIMMAC = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))), "simmac")
HOME = "/opt/stand-in"
SECOND = 10**9   # in nanoseconds, as the image's settings count
HEALTH_CHECK = """\
import socket
import sys
question = b"\\x07\\x01\\x01\\x00\\x00\\x01" + bytes(6) + b"\\x02pi\\x04hole\\x00\\x00\\x01\\x00\\x01"
with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asker:
    asker.settimeout(1)
    asker.sendto(question, ("127.0.0.1", 53))
    sys.exit(asker.recv(512)[:2] != question[:2])
"""
# Of the standard library, what a server never needs.
LEFT_OUT = ("__pycache__", "test", "idlelib", "tkinter", "lib2to3", "ensurepip", "distutils", "pydoc_data", "turtledemo")


class Registry:
    """The folder that a registry serves: it holds the image under some tags."""

    def __init__(self, folder):
        self._root = f"{folder}/docker/registry/v2"
        self._images = f"{self._root}/repositories/{REPOSITORY}"
        self._layers = [self._layer(_python), self._layer(_stand_in)]

    def add(self, tag):
        """Publishes the image under one more tag; only its last layer differs from that of the other tags."""
        layers = [*self._layers, self._layer(lambda tar: _text(tar, "etc/pihole-version", tag))]
        settings = self._put(json.dumps(_settings(layers)).encode())
        manifest = self._put(json.dumps({
            "schemaVersion": 2, "mediaType": "application/vnd.docker.distribution.manifest.v2+json",
            "config": _reference("application/vnd.docker.container.image.v1+json", *settings),
            "layers": [_reference("application/vnd.docker.image.rootfs.diff.tar.gzip", *layer["blob"])
                       for layer in layers]}).encode())[0]
        for blob in (settings[0], *(layer["blob"][0] for layer in layers)):
            self._link(f"_layers/{blob.replace(':', '/')}", blob)
        self._link(f"_manifests/revisions/{manifest.replace(':', '/')}", manifest)
        self._link(f"_manifests/tags/{tag}/index/{manifest.replace(':', '/')}", manifest)
        self._link(f"_manifests/tags/{tag}/current", manifest)

    def _layer(self, fill):
        """A layer with what the function puts into its archive."""
        plain = io.BytesIO()
        with tarfile.open(fileobj=plain, mode="w") as tar:
            fill(tar)
        return {"unpacked": _digest(plain.getvalue()),
                "blob": self._put(gzip.compress(plain.getvalue(), compresslevel=1, mtime=0))}

    def _put(self, data):
        """Stores some bytes; answers with their digest and their number."""
        digest = _digest(data)
        path = f"{self._root}/blobs/sha256/{digest[7:9]}/{digest[7:]}"
        os.makedirs(path, exist_ok=True)
        with open(f"{path}/data", "wb") as file:
            file.write(data)
        return digest, len(data)

    def _link(self, name, digest):
        os.makedirs(f"{self._images}/{name}", exist_ok=True)
        with open(f"{self._images}/{name}/link", "w", encoding="ascii") as file:
            file.write(digest)


def _digest(data):
    return f"sha256:{hashlib.sha256(data).hexdigest()}"


def _reference(kind, digest, size):
    return {"mediaType": kind, "digest": digest, "size": size}


def _settings(layers):
    """What the engine is told about the image; its health is asked for often, so that tests need not wait."""
    machine = subprocess.run(["dpkg", "--print-architecture"], check=True, capture_output=True, text=True).stdout.strip()
    return {
        "architecture": machine, "os": "linux", "created": "2026-09-01T00:00:00Z",
        "rootfs": {"type": "layers", "diff_ids": [layer["unpacked"] for layer in layers]},
        "config": {
            "Entrypoint": [sys.executable, "-S", "-m", "pihole"], "WorkingDir": HOME, "Env": ["PATH=/usr/bin"],
            "ExposedPorts": {"53/tcp": {}, "53/udp": {}, "80/tcp": {}},
            "Healthcheck": {"Test": ["CMD", sys.executable, "-S", f"{HOME}/health_check.py"],
                            "Interval": SECOND // 2, "Timeout": 5 * SECOND, "Retries": 3}}}


def _unless(left_out):
    """Lets everything into an archive but files and folders of such a name."""
    return lambda entry: None if left_out(os.path.basename(entry.name)) else entry


def _text(tar, name, text):
    entry = tarfile.TarInfo(name)
    entry.size, entry.mode = len(text.encode()), 0o644
    tar.addfile(entry, io.BytesIO(text.encode()))


def _python(tar):
    """Python with its standard library and the shared libraries that these need."""
    library = sysconfig.get_path("stdlib")
    tar.add(library, filter=_unless(lambda name: name in LEFT_OUT or name.startswith("config-")))
    extensions = sysconfig.get_path("platstdlib") + "/lib-dynload"
    native = [os.path.realpath(sys.executable), *(f"{extensions}/{name}" for name in sorted(os.listdir(extensions)))]
    for path in sorted({sys.executable, native[0], *_needed_by(native)}):
        tar.add(os.path.realpath(path), arcname=path)
    _text(tar, "etc/passwd", "root:x:0:0:root:/:/bin/false\n")


def _needed_by(programs):
    """The shared libraries, at the paths where the loader looks for them."""
    lines = subprocess.run(["ldd", *programs], check=False, capture_output=True, text=True).stdout.splitlines()
    words = [word for line in lines if not line.endswith(":") for word in line.split()]
    return {word for word in words if word.startswith("/") and os.path.exists(word)}


def _stand_in(tar):
    tar.add(f"{SIMMAC}/pihole", arcname=f"{HOME}/pihole", filter=_unless(lambda name: name in LEFT_OUT))
    _text(tar, f"{HOME}/health_check.py", HEALTH_CHECK)
