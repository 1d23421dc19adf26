"""The desktop and the keychain."""

import os
import struct
import subprocess
import tempfile
import unittest

from the_mac import SIMMAC, MacCase, RunningMac

ITEM = ("service", "Corvane", "account", "pihole-admin-password")


class KeyringTest(MacCase):
    options = ("--keyring",)

    def test_Item_can_be_stored_found_and_removed(self):
        stored = self.mac.shell("printf secret | secret-tool store --label=Test xdg:schema app.corvane.Corvane "
                                + " ".join(ITEM))
        self.assertEqual(stored.status, 0)
        self.assertEqual(self.mac.run("secret-tool", "lookup", *ITEM).out, "secret")
        self.assertEqual(self.mac.run("secret-tool", "clear", *ITEM).status, 0)
        self.assertEqual(self.mac.run("secret-tool", "lookup", *ITEM).status, 1)

    def test_Reset_takes_the_item_away(self):
        self.mac.shell("printf secret | secret-tool store --label=Test " + " ".join(ITEM))
        self.mac.ctl("reset")
        self.assertEqual(self.mac.run("secret-tool", "lookup", *ITEM).status, 1)

    def test_Set_up_Mac_has_the_password_in_its_keychain(self):
        self.mac.ctl("reset", "running")
        found = self.mac.run("secret-tool", "search", *ITEM)
        self.assertIn("secret = correct-horse-9\n", found.out)
        self.assertIn("schema = app.corvane.Corvane\n", found.out)


class DesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        display = os.environ.pop("DISPLAY", None)
        cls.mac = RunningMac("--desktop")
        cls.addClassCleanup(cls.mac.end)
        if display is not None:
            os.environ["DISPLAY"] = display

    def test_Display_has_a_window_manager_and_a_tray(self):
        self.assertIn("window id", self.mac.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").out)
        self.assertIn("\"panel\" \"trayer\"", self.mac.run("xwininfo", "-root", "-tree").out.replace("(", " ("))

    def test_Picture_shows_the_whole_display(self):
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([SIMMAC, "ctl", "--at", self.mac.folder, "screenshot", f"{folder}/shot.png"],
                                  check=False)
            self.assertEqual(done.returncode, 0)
            with open(f"{folder}/shot.png", "rb") as file:
                head = file.read(24)
        self.assertEqual((head[:8], struct.unpack(">II", head[16:])), (b"\x89PNG\r\n\x1a\n", (1600, 1000)))

    def test_Desktop_is_light_unless_it_is_asked_to_be_dark(self):
        self.assertGreater(lightness(self.mac), 0.5)
        self.assertEqual(self.mac.shell("printf %s \"$XDG_CURRENT_DESKTOP\"").out, "")

    def test_Keychain_is_there_too(self):
        found = self.mac.shell("printf x | secret-tool store --label=T a b && secret-tool lookup a b")
        self.assertEqual(found.out, "x")


class CallersDisplayTest(unittest.TestCase):
    def test_It_is_reached_though_its_key_names_the_callers_host(self):
        done = subprocess.run(["xvfb-run", "-a", SIMMAC, "run", "--desktop", "--", "/usr/bin/xwininfo", "-root"],
                              capture_output=True, text=True, timeout=60, check=False)
        self.assertIn("Width:", done.stdout, done.stderr)


def lightness(mac):
    """How light the whole display is, from 0 to 1."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([SIMMAC, "ctl", "--at", mac.folder, "screenshot", f"{folder}/shot.png"], check=True)
        found = subprocess.run(["convert", f"{folder}/shot.png", "-format", "%[fx:mean]", "info:"], check=True,
                               capture_output=True, text=True)
    return float(found.stdout)


class DarkDesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.displays = {name: os.environ.pop(name) for name in ("DISPLAY",) if name in os.environ}
        cls.mac = RunningMac("--desktop", "--dark")
        cls.addClassCleanup(cls.mac.end)
        os.environ.update(cls.displays)

    def test_Desktop_is_dark(self):
        self.assertLess(lightness(self.mac), 0.25)

    def test_Programs_find_a_dark_ground_and_light_text(self):
        folder = self.mac.shell("printf %s \"${XDG_CONFIG_DIRS%%:*}\"").out
        settings = self.mac.run("cat", f"{folder}/kdeglobals").out
        self.assertIn("[Colors:Window]\nBackgroundNormal=30,30,30\n", settings)
        self.assertIn("ForegroundNormal=242,242,243\n", settings)

    def test_Reset_leaves_it_dark(self):
        self.mac.ctl("reset")
        self.test_Programs_find_a_dark_ground_and_light_text()


class NoDesktopTest(MacCase):
    def test_Picture_without_a_display_is_refused(self):
        self.assertIn("--desktop", self.assertRefused("screenshot", "x.png"))


if __name__ == "__main__":
    unittest.main()
