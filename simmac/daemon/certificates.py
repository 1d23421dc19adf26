"""The certificate authority that only the simulated Mac trusts, and what it has signed."""

import hashlib
import os
import shutil
import subprocess
import tempfile

from pihole.names import FEED_HOST, SECURE_DNS

CACHE = "/run/simmac-cache"
HOSTS = (FEED_HOST, *SECURE_DNS)
_EC = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "3650"]


def ensure():
    """The folder with ca.pem, good.pem and wrong.pem for all hosts; made once and kept from one Mac to the next."""
    folder = f"{CACHE}/authority-" + hashlib.sha256(" ".join(HOSTS).encode()).hexdigest()[:12]
    if not os.path.isdir(folder):
        new = tempfile.mkdtemp(dir=CACHE if os.access(CACHE, os.W_OK) else None)
        _make(new)
        try:
            os.rename(new, folder)
        except OSError:      # another Mac was quicker, or there is no cache
            if not os.path.isdir(folder):
                return new
            shutil.rmtree(new, ignore_errors=True)
    return folder


def _make(folder):
    _authority(folder, "ca", "Simulated Mac Root")
    _authority(folder, "stranger", "A Stranger")
    names = ",".join(f"DNS:{host}" for host in HOSTS)
    for name, authority in (("good", "ca"), ("wrong", "stranger")):
        _openssl("req", "-x509", *_EC, "-CA", f"{folder}/{authority}.pem", "-CAkey", f"{folder}/{authority}.key",
                 "-subj", f"/CN={HOSTS[0]}", "-addext", f"subjectAltName={names}", "-addext",
                 "basicConstraints=critical,CA:FALSE", "-keyout", f"{folder}/{name}.key",
                 "-out", f"{folder}/{name}.pem")
    # Programs look an authority up by a link of this name.
    os.symlink("simulated-mac-root.pem", f"{folder}/" + _openssl("x509", "-in", f"{folder}/ca.pem", "-noout",
                                                                "-hash").strip() + ".0")


def _authority(folder, name, subject):
    _openssl("req", "-x509", *_EC, "-subj", f"/CN={subject}", "-keyout", f"{folder}/{name}.key",
             "-out", f"{folder}/{name}.pem")


def _openssl(*arguments):
    return subprocess.run(["openssl", *arguments], check=True, stdin=subprocess.DEVNULL, capture_output=True,
                          text=True).stdout


def trust(mac, folder):
    """Puts the authority where programs look for those that they trust, and nothing else beside it."""
    store = mac.path("/etc/ssl/certs")
    os.makedirs(store, exist_ok=True)
    shutil.copy(f"{folder}/ca.pem", f"{store}/simulated-mac-root.pem")
    shutil.copy(f"{folder}/ca.pem", f"{store}/ca-certificates.crt")
    for name in os.listdir(folder):
        if name.endswith(".0") and not os.path.lexists(f"{store}/{name}"):
            os.symlink(os.readlink(f"{folder}/{name}"), f"{store}/{name}")
