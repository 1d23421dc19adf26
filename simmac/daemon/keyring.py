"""The user's keychain: a Secret Service on a session bus of the Mac's own."""

import asyncio
import os
import re
import signal

from daemon.mac import RUN, run_quietly

FOLDER = "/var/lib/keyring"
BUS_CONFIGURATION = """\
<busconfig>
  <type>session</type>
  <listen>{address}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
SCHEMA = "app.corvane.Corvane"
ITEM = ("service", "Corvane", "account", "pihole-admin-password")


class Keyring:
    """An unlocked keyring; its files lie outside the home folder, so that a reset does not pull them away."""

    def __init__(self):
        self.bus = f"unix:path={RUN}/bus"
        self._pid = None
        self._env = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=self.bus, HOME=FOLDER, XDG_DATA_HOME=FOLDER,
                         XDG_RUNTIME_DIR=FOLDER)

    async def start(self):
        """Starts the bus and the keyring, and waits until the keyring is there."""
        os.makedirs(FOLDER, mode=0o700, exist_ok=True)
        # A bus that starts nothing by itself: a second, locked keyring would get in the way.
        with open(f"{FOLDER}/bus.conf", "w", encoding="ascii") as file:
            file.write(BUS_CONFIGURATION.format(address=self.bus))
        await run_quietly("dbus-daemon", f"--config-file={FOLDER}/bus.conf", "--fork", env=self._env)
        await run_quietly("gnome-keyring-daemon", "--unlock", "--components=secrets", "--daemonize",
                          env=self._env, input_text="ada\n")
        for _ in range(200):
            owner = await self._ask_bus("GetConnectionUnixProcessID", "string:org.freedesktop.secrets")
            if found := re.search(r"uint32 (\d+)", owner[1]):
                self._pid = int(found[1])
                return
            await asyncio.sleep(0.01)

    def silence(self, silent):
        """Whoever asks the keyring from now on waits, or is answered again."""
        os.kill(self._pid, signal.SIGSTOP if silent else signal.SIGCONT)

    async def store(self, password):
        """Puts Corvane's item into the keyring."""
        await self._secret_tool("store", "--label=Corvane", "xdg:schema", SCHEMA, *ITEM, input_text=password)

    async def clear(self):
        """Takes Corvane's item out of the keyring."""
        await self._secret_tool("clear", *ITEM)

    async def password(self):
        """The item's secret; empty when there is none."""
        return (await self._secret_tool("lookup", *ITEM))[1]

    async def _secret_tool(self, *words, input_text=None):
        return await run_quietly("secret-tool", *words, env=self._env, input_text=input_text)

    async def _ask_bus(self, question, *words):
        return await run_quietly("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                 f"org.freedesktop.DBus.{question}", *words, env=self._env)
