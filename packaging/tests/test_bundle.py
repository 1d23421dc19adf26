#!/usr/bin/env python3
"""The bundle that scripts/mac-check links, and the files that become part of it."""

import json
import pathlib
import plistlib
import re
import struct
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
CONTENTS = ROOT / "build/mac-check/ui/Corvane.app/Contents"
PNG = b"\x89PNG\r\n\x1a\n"


def text(*parts):
    return ROOT.joinpath(*parts).read_text(encoding="utf-8")


def version():
    return re.search(r"project\(Corvane VERSION ([\d.]+)", text("CMakeLists.txt"))[1]


def pictures(icon):
    """The pictures of an icon file: type to width in pixels."""
    kind, length = struct.unpack(">4sI", icon[:8])
    assert kind == b"icns" and length == len(icon), "the container's head does not fit"
    found, at = {}, 8
    while at < len(icon):
        kind, length = struct.unpack(">4sI", icon[at : at + 8])
        picture = icon[at + 8 : at + length]
        assert picture.startswith(PNG), f"{kind} holds no PNG"
        width, height = struct.unpack(">II", picture[16:24])
        assert width == height, f"{kind} is not square"
        found[kind.decode()] = width
        at += length
    return found


class PropertyList(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.info = plistlib.loads((CONTENTS / "Info.plist").read_bytes())

    def test_names_this_version_of_corvane(self):
        self.assertEqual(self.info["CFBundleIdentifier"], "app.corvane.Corvane")
        self.assertEqual(self.info["CFBundleName"], "Corvane")
        self.assertEqual(self.info["CFBundleShortVersionString"], version())
        self.assertEqual(self.info["CFBundleVersion"], version())
        self.assertEqual(self.info["CFBundlePackageType"], "APPL")

    def test_asks_for_macos_13(self):
        self.assertEqual(self.info["LSMinimumSystemVersion"], "13.0")

    def test_says_what_it_is_and_whose(self):
        self.assertEqual(self.info["LSApplicationCategoryType"], "public.app-category.utilities")
        self.assertIn("The Corvane authors", self.info["NSHumanReadableCopyright"])

    def test_shows_sharp_text_and_a_dock_icon(self):
        self.assertIs(self.info["NSHighResolutionCapable"], True)
        self.assertNotIn("LSUIElement", self.info)
        self.assertNotIn("LSBackgroundOnly", self.info)

    def test_says_why_whenever_macos_may_ask_the_user(self):
        for key in ("NSDocumentsFolderUsageDescription", "NSLocalNetworkUsageDescription"):
            self.assertRegex(self.info[key], r"Corvane .*\.$", key)

    def test_leaves_no_placeholder_open(self):
        self.assertEqual([value for value in self.info.values() if "$" in str(value) or value == ""], [])


class Bundle(unittest.TestCase):
    def test_holds_the_program_where_the_property_list_says(self):
        info = plistlib.loads((CONTENTS / "Info.plist").read_bytes())
        program = CONTENTS / "MacOS" / info["CFBundleExecutable"]
        self.assertTrue(program.stat().st_mode & 0o111, "not executable")
        head = subprocess.run(
            ["llvm-objdump-19", "--macho", "--private-headers", str(program)], check=True, capture_output=True, text=True
        ).stdout
        self.assertRegex(head, r"ARM64\s+ALL\s+0x00\s+EXECUTE")
        self.assertRegex(head, r"platform macos\s+sdk\s+13\.0\s+minos\s+13\.0|minos 13\.0")

    def test_leaves_the_place_of_the_settings_to_the_system(self):
        info = plistlib.loads((CONTENTS / "Info.plist").read_bytes())
        program = CONTENTS / "MacOS" / info["CFBundleExecutable"]
        asked = subprocess.run(["llvm-nm-19", "-u", str(program)], check=True, capture_output=True, text=True).stdout
        self.assertIn("_CFPreferencesCopyValue", asked)
        self.assertIn("_kCFPreferencesCurrentApplication", asked, "the system takes the identifier of the bundle")
        self.assertNotIn("QSettings", asked, "Qt makes up an identifier of its own")

    def test_holds_the_icon_where_the_property_list_says(self):
        info = plistlib.loads((CONTENTS / "Info.plist").read_bytes())
        icon = CONTENTS / "Resources" / f"{info['CFBundleIconFile']}.icns"
        self.assertEqual(
            pictures(icon.read_bytes()),
            {"ic11": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256, "ic14": 512, "ic09": 512, "ic10": 1024},
        )

    def test_holds_nothing_else(self):
        self.assertEqual(sorted(path.name for path in CONTENTS.iterdir()), ["Info.plist", "MacOS", "Resources"])


class Entitlements(unittest.TestCase):
    def test_only_the_script_engine_may_make_code(self):
        self.assertEqual(
            plistlib.loads((PACKAGING / "Corvane.entitlements").read_bytes()), {"com.apple.security.cs.allow-jit": True}
        )


class Icon(unittest.TestCase):
    def test_a_drawing_that_is_none_gives_no_icon(self):
        with tempfile.TemporaryDirectory() as folder:
            drawing = pathlib.Path(folder, "drawing.svg")
            drawing.write_text("no drawing", encoding="utf-8")
            icon = pathlib.Path(folder, "icon.icns")
            made = subprocess.run([PACKAGING / "make-icon", drawing, icon], capture_output=True, check=False)
            self.assertNotEqual(made.returncode, 0)
            self.assertFalse(icon.exists())


class Lists(unittest.TestCase):
    def test_the_cask_offers_this_version(self):
        self.assertIn(f'version "{version()}"', text("packaging", "corvane.rb"))

    def test_the_cask_clears_up_what_the_identifier_names(self):
        self.assertIn("~/Library/Preferences/app.corvane.Corvane.plist", text("packaging", "corvane.rb"))

    def test_the_lists_for_homebrew_are_sorted_and_name_each_once(self):
        first, second = (re.findall(r'^brew "([^"]+)"$', text("packaging", name), re.M) for name in ("Brewfile", "Brewfile.tests"))
        self.assertEqual(first, sorted(set(first)))
        self.assertEqual(second, sorted(set(second) - set(first)))
        self.assertGreater(len(first), 5)
        self.assertIn("googletest", second)


    def test_what_npm_fetches_is_fixed_by_checksum_and_names_no_host(self):
        packages = json.loads(text("packaging", "maccheck", "package-lock.json"))["packages"]
        fetched = [package for name, package in packages.items() if name]
        self.assertGreaterEqual(len(fetched), 2)
        for package in fetched:
            self.assertRegex(package["integrity"], r"^sha512-")
            self.assertNotIn("resolved", package)


class Scripts(unittest.TestCase):
    def test_shellcheck_has_nothing_to_say(self):
        tracked = subprocess.run(["git", "ls-files"], cwd=ROOT, check=True, capture_output=True, text=True).stdout.split("\n")
        files = [ROOT / name for name in tracked if name and not pathlib.Path(name).suffix and (ROOT / name).is_file()]
        scripts = [file for file in files if re.match(rb"#!.*\b(?:ba)?sh\b", file.read_bytes()[:40])]
        self.assertIn(PACKAGING / "release", scripts)
        checked = subprocess.run(["shellcheck", *scripts], capture_output=True, text=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout)


if __name__ == "__main__":
    unittest.main()
