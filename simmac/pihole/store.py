"""What outlives a restart: the settings file, lists and rules, what was asked, and the sessions of a clean end."""

import base64
import hashlib
import json
import secrets
import tomllib
from pathlib import Path

_ROUNDS = 1000


def hash_password(password: str) -> str:
    salt = secrets.token_bytes(16)
    return f"$PBKDF2-SHA256$r={_ROUNDS}${_b64(salt)}${_b64(_derive(password, salt))}"


def matches(password: str, stored: str) -> bool:
    try:
        _, _, _, salt, digest = stored.split("$")
        return secrets.compare_digest(_b64(_derive(password, base64.b64decode(salt))), digest)
    except ValueError:
        return False


def _derive(password: str, salt: bytes) -> bytes:
    return hashlib.pbkdf2_hmac("sha256", password.encode(), salt, _ROUNDS)


def _b64(data: bytes) -> str:
    return base64.b64encode(data).decode()


class Store:
    """The folder that stands for /etc/pihole."""

    def __init__(self, folder: Path):
        self._folder = folder
        self._folder.mkdir(parents=True, exist_ok=True)
        self._settings = folder / "pihole.toml"

    def settings_text(self) -> str:
        return self._settings.read_text() if self._settings.exists() else ""

    def read(self) -> tuple[str | None, bool]:
        """The stored password hash (None when none was ever set) and whether blocking is on."""
        return parse_settings(self.settings_text())

    def write(self, password_hash: str, blocking: bool) -> None:
        self._settings.write_text(
            "# Pi-hole configuration file (v6.4.1)\n"
            "[dns]\n"
            '  upstreams = ["1.1.1.1"]\n'
            '  listeningMode = "ALL"\n\n'
            "  [dns.blocking]\n"
            f"    active = {str(blocking).lower()}\n"
            '    mode = "NULL"\n\n'
            "[webserver]\n"
            "  [webserver.session]\n"
            "    timeout = 1800\n"
            "    restore = true\n\n"
            "  [webserver.api]\n"
            "    max_sessions = 16\n"
            f'    pwhash = "{password_hash}"\n')

    def keep(self, name: str, value) -> None:
        """Keeps a value for the next start: whole or, when the process dies meanwhile, as it was."""
        path = self._folder / f"{name}.json"
        fresh = path.with_suffix(".new")
        fresh.write_text(json.dumps(value))
        fresh.replace(path)

    def kept(self, name: str):
        """What was kept, or None."""
        try:
            return json.loads((self._folder / f"{name}.json").read_text())
        except (OSError, ValueError):
            return None

    def take(self, name: str):
        """What was kept; it is taken out, so that it comes back once only."""
        value = self.kept(name)
        self.forget(name)
        return value

    def forget(self, name: str) -> None:
        (self._folder / f"{name}.json").unlink(missing_ok=True)


def parse_settings(text: str) -> tuple[str | None, bool]:
    try:
        settings = tomllib.loads(text)
    except tomllib.TOMLDecodeError:
        return None, True
    password_hash = settings.get("webserver", {}).get("api", {}).get("pwhash")
    return password_hash, settings.get("dns", {}).get("blocking", {}).get("active", True)
