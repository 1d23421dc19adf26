#!/usr/bin/env python3
"""packaging/release among stand-ins for Apple's tools, which write down how they were called."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PACKAGING = pathlib.Path(__file__).resolve().parents[1]
IDENTITY = "Developer ID Application: Somebody (TEAM123456)"

LOG = '#!/bin/sh\necho "${0##*/} $*" >>"$TOOL_LOG"\n'
TOOLS = {
    "uname": "#!/bin/sh\necho Darwin\n",
    "cmake": LOG
    + """case $1 in --build)
  contents=$2/ui/Corvane.app/Contents
  mkdir -p "$contents/MacOS" && echo code >"$contents/MacOS/Corvane" && chmod +x "$contents/MacOS/Corvane"
esac
""",
    "file": '#!/bin/sh\ngrep -q code "$2" && echo "Mach-O 64-bit" || echo text\n',
    "otool": '#!/bin/sh\necho "    minos ${MINOS:-12.0}"\n',
    "plutil": "#!/bin/sh\necho 0.1.0\n",
    "hdiutil": LOG + 'for image; do :; done\necho image >"$image"\n',
    "codesign": LOG,
    "ditto": LOG,
    "xcrun": LOG,
    "spctl": LOG,
}
DEPLOY = (
    LOG
    + """frameworks=$1/Contents/Frameworks/QtCore.framework/Versions/A
plugins=$1/Contents/PlugIns/platforms
mkdir -p "$frameworks" "$plugins"
echo code >"$frameworks/QtCore" && chmod +x "$frameworks/QtCore"
echo code >"$plugins/libqcocoa.dylib"
"""
)


def put(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")
    path.chmod(0o755)


class Release(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        (self.root / "packaging").mkdir()
        shutil.copy(PACKAGING / "release", self.root / "packaging")
        for name, text in TOOLS.items():
            put(self.root / "tools" / name, text)
        put(self.root / "qt/bin/macdeployqt", DEPLOY)
        self.log = self.root / "log"
        self.log.touch()

    def release(self, **settings):
        environment = {
            "PATH": f"{self.root}/tools:{os.environ['PATH']}",
            "TOOL_LOG": str(self.log),
            "CORVANE_QT": str(self.root / "qt"),
        }
        done = subprocess.run(
            [self.root / "packaging/release"],
            env={key: value for key, value in (environment | settings).items() if value},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
            check=False,
            timeout=60,
        )
        self.calls = self.log.read_text(encoding="utf-8").splitlines()
        return done

    def signed(self):
        """What was signed, in order, by its name in the bundle."""
        calls = [call for call in self.calls if call.startswith("codesign --force")]
        return [call.rsplit("/", 1)[1] for call in calls]

    def test_signs_from_the_inside_out_and_notarises(self):
        done = self.release(CORVANE_SIGN_IDENTITY=IDENTITY, CORVANE_NOTARY_PROFILE="corvane")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(
            self.signed(), ["QtCore", "libqcocoa.dylib", "QtCore.framework", "Corvane.app", "Corvane-0.1.0.dmg"]
        )
        image = f"{self.root}/build/package/Corvane-0.1.0.dmg"
        app = next(call for call in self.calls if call.endswith("Corvane.app") and "entitlements" in call)
        self.assertIn(f"--options runtime --sign {IDENTITY} --entitlements packaging/Corvane.entitlements", app)
        self.assertNotIn("--deep", "\n".join(self.calls))
        order = [call.split(" ")[0] for call in self.calls]
        self.assertLess(order.index("macdeployqt"), order.index("codesign"))
        built = f"{self.root}/build/package"
        stapled = self.calls.index(f"xcrun stapler staple {built}/ui/Corvane.app")
        self.assertEqual(
            self.calls[stapled - 2 : stapled],
            [
                f"ditto -c -k --keepParent {built}/ui/Corvane.app {built}/Corvane.zip",
                f"xcrun notarytool submit {built}/Corvane.zip --keychain-profile corvane --wait",
            ],
        )
        self.assertLess(order.index("codesign"), stapled)
        self.assertLess(stapled, order.index("hdiutil"), "the image holds the application with its ticket")
        self.assertEqual(
            self.calls[-3:],
            [
                f"xcrun notarytool submit {image} --keychain-profile corvane --wait",
                f"xcrun stapler staple {image}",
                f"spctl --assess --type open --context context:primary-signature --verbose=2 {image}",
            ],
        )

    def test_without_an_identity_signs_for_this_mac_and_says_so(self):
        done = self.release(CORVANE_NOTARY_PROFILE="corvane")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("CORVANE_SIGN_IDENTITY is not set", done.stdout)
        self.assertIn("Not notarised: only what is signed with a Developer ID can be.", done.stdout)
        self.assertEqual([call for call in self.calls if call.startswith(("xcrun", "spctl"))], [])
        signatures = [call for call in self.calls if call.startswith("codesign --force")]
        self.assertTrue(signatures)
        self.assertEqual([call for call in signatures if "--sign - " not in call or "runtime" in call], [])
        self.assertIn("Done:", done.stdout)

    def test_without_a_notary_profile_leaves_that_out_and_says_so(self):
        done = self.release(CORVANE_SIGN_IDENTITY=IDENTITY)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("Not notarised: CORVANE_NOTARY_PROFILE is not set.", done.stdout)
        self.assertEqual([call for call in self.calls if call.startswith(("xcrun", "spctl"))], [])

    def test_refuses_libraries_for_a_newer_macos(self):
        done = self.release(MINOS="14.0", CORVANE_SIGN_IDENTITY=IDENTITY)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("needs macOS 14.0. Use Qt's own binaries", done.stderr)
        self.assertEqual(self.signed(), [])

    def test_a_refused_signature_ends_it(self):
        put(self.root / "tools/codesign", LOG + "exit 1\n")
        done = self.release(CORVANE_SIGN_IDENTITY=IDENTITY)
        self.assertNotEqual(done.returncode, 0)
        self.assertNotIn("Done:", done.stdout)
        self.assertEqual([call for call in self.calls if call.startswith("hdiutil")], [])

    def test_asks_for_qt(self):
        self.assertIn("Say in CORVANE_QT", self.release(CORVANE_QT="").stderr)
        self.assertIn("holds no bin/macdeployqt", self.release(CORVANE_QT="/nowhere").stderr)
        self.assertEqual(self.calls, [])

    def test_on_another_system_it_says_where_releases_are_made(self):
        put(self.root / "tools/uname", "#!/bin/sh\necho Linux\n")
        done = self.release()
        self.assertEqual(done.returncode, 1)
        self.assertIn("A release is made on a Mac", done.stderr)


if __name__ == "__main__":
    unittest.main()
