#!/usr/bin/env python3
"""Breaks our declarations of Apple's frameworks in one place after another and asks whether the second source notices."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
from importlib.machinery import SourceFileLoader

CHECK = pathlib.Path(__file__).resolve().parents[1] / "maccheck"
HEADERS = pathlib.Path(os.environ.get("CORVANE_MAC_HEADERS", CHECK.parents[1] / "build/mac-headers"))
check_names = SourceFileLoader("check_names", str(CHECK / "check-names")).load_module()

# Framework, what is there, what is put there instead, what has to be said.
BROKEN = [
    ("AppKit", "(BOOL)openURL:", "(BOOL)openAddress:", "-[NSWorkspace openAddress:] is not in the second source"),
    ("AppKit", "unhide:(nullable id)sender", "unhide:(id)sender", "-[NSApplication unhide:]: argument 1 is object here and object? at Apple"),
    ("AppKit", "(CGFloat)length", "(BOOL)length", "-[NSStatusBar statusItemWithLength:]: argument 1 is boolean here and number at Apple"),
    ("AppKit", "(getter=isHidden, readonly) BOOL hidden", "(getter=isHidden) BOOL hidden", "NSApplication.hidden: readonly differs"),
    ("AppKit", "strong) NSMenu *menu", "strong) NSImage *menu", "NSStatusItem.menu is NSImage? here and NSMenu at Apple"),
    ("AppKit", "nullable, strong) NSMenu *menu", "strong) NSMenu *menu", "NSStatusItem.menu is NSMenu here and NSMenu? at Apple"),
    ("AppKit", "NSControl : NSView", "NSControl : NSImage", "NSControl extends NSImage here, but not at Apple"),
    ("AppKit", "NSWorkspaceDidWakeNotification", "NSWorkspaceAwokeNotification", "NSWorkspaceAwokeNotification is not in the second source"),
    ("Foundation", "NSApplicationSupportDirectory = 14", "NSApplicationSupportDirectory = 15", "NSApplicationSupportDirectory is 15 here and 14 at Apple"),
    ("Foundation", "NSFileManager", "NSFileKeeper", "NSFileKeeper is not in the second source"),
    ("Foundation", "(1ULL << 20)", "(1ULL << 21)", "NSActivityIdleSystemSleepDisabled is 2097152 here and 1048576 at Apple"),
    ("Foundation", "(id<NSObject>)activity", "(BOOL)activity", "-[NSProcessInfo endActivity:]: argument 1 is boolean here"),
    ("ServiceManagement", "    SMAppServiceStatusEnabled,\n", "", "SMAppServiceStatusRequiresApproval is 1 here and 2 at Apple"),
    ("ServiceManagement", "- (BOOL)registerAndReturnError", "- (void)registerAndReturnError", "-[SMAppService registerAndReturnError:] gives void here and boolean at Apple"),
    ("Security", "SecItemDelete(CFDictionaryRef query)", "SecItemDelete(void)", "SecItemDelete takes 0 arguments here and 1 at Apple"),
    ("Security", "CFStringRef kSecReturnData", "CFStringRef kSecReturnBytes", "kSecReturnBytes is not in the second source"),
    ("CoreFoundation", "CFDictionaryEqualCallBack equal;\n    CFDictionaryHashCallBack hash;", "CFDictionaryEqualCallBack equal;", "CFDictionaryKeyCallBacks has the fields"),
    ("CoreGraphics", "CGSizeMake", "CGSizeMade", "docs/MAC.md says that CGSizeMake is not in the second source, which is not so"),
]


class Names(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.frameworks = pathlib.Path(folder.name, "frameworks")
        shutil.copytree(CHECK / "frameworks", self.frameworks)

    def check(self):
        return subprocess.run(
            [CHECK / "check-names", "--frameworks", self.frameworks, "--headers", HEADERS],
            capture_output=True, text=True, check=False,
        )

    def test_our_declarations_are_apples(self):
        done = self.check()
        self.assertEqual((done.returncode, done.stdout), (0, "Apple's names are Apple's\n"), done.stderr)

    def test_one_wrong_name_fails_the_check(self):
        header = self.frameworks / "Security.framework/Headers/Security.h"
        header.write_text(header.read_text(encoding="utf-8").replace("kSecReturnData", "kSecReturnBytes"), encoding="utf-8")
        done = self.check()
        self.assertEqual(done.returncode, 1)
        self.assertIn("check-names: kSecReturnBytes is not in the second source", done.stdout)

    def test_whatever_is_wrong_is_found(self):
        package = check_names.known(HEADERS)
        for framework, right, wrong, said in BROKEN:
            header = self.frameworks / f"{framework}.framework/Headers/{framework}.h"
            text = header.read_text(encoding="utf-8")
            with self.subTest(wrong=wrong):
                self.assertIn(right, text)
                header.write_text(text.replace(right, wrong), encoding="utf-8")
                self.assertIn(said, "\n".join(check_names.faults(self.frameworks, HEADERS, package)))
            header.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    unittest.main()
