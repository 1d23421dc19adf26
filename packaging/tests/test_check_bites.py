#!/usr/bin/env python3
"""Breaks the Mac half in one place after another and asks whether the Mac check would find it.

Each broken copy is compiled with the very command that scripts/mac-check compiled the whole file with.
"""

import json
import pathlib
import shlex
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build/mac-check"
MAC = ROOT / "platform/mac"


def command_for(source):
    entries = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
    return next(shlex.split(entry["command"]) for entry in entries if pathlib.Path(entry["file"]) == source)


class Check(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def compile(self, source, right, wrong):
        """Compiles the source with one piece of it exchanged; answers what the compiler said, "" when nothing."""
        text = source.read_text(encoding="utf-8")
        self.assertIn(right, text)
        broken = self.folder / source.name
        broken.write_text(text.replace(right, wrong), encoding="utf-8")
        words = [str(broken) if word == str(source) else word for word in command_for(source)]
        words[words.index("-o") + 1] = str(self.folder / "broken.o")
        return subprocess.run(words, cwd=BUILD, capture_output=True, text=True, check=False).stderr

    def link(self, code, *frameworks):
        """Compiles and links a program of its own; answers what the linker said."""
        source = self.folder / "program.mm"
        source.write_text(code, encoding="utf-8")
        words = command_for(MAC / "wake_signals.mm")
        program = self.folder / "program.o"
        words[words.index("-o") + 1] = str(program)
        words[words.index("-c") + 1] = str(source)
        subprocess.run(words, cwd=BUILD, check=True, capture_output=True)
        line = [ROOT / "packaging/maccheck/link", "--headers", ROOT / "build/mac-headers", "-o", self.folder / "program"]
        named = [word for framework in frameworks for word in ("-framework", framework)]
        return subprocess.run([*line, program, *named], capture_output=True, text=True, check=False).stderr

    def test_a_sound_file_passes(self):
        self.assertEqual(self.compile(MAC / "workspace.mm", "openURL:url", "openURL:url"), "")

    def test_a_wrong_selector_is_found(self):
        said = self.compile(MAC / "workspace.mm", "openURL:url", "openAddress:url")
        self.assertIn("declares the selector 'openAddress:'", said)

    def test_a_wrong_argument_is_found(self):
        said = self.compile(MAC / "workspace.mm", "openURL:url", "openURL:address.toString().toNSString()")
        self.assertIn("cannot initialize a parameter of type 'NSURL * _Nonnull'", said)

    def test_a_missing_bridging_cast_is_found(self):
        said = self.compile(MAC / "wake_signals.mm", "(__bridge CFArrayRef)keys", "(CFArrayRef)keys")
        self.assertIn("requires a bridged cast", said)

    def test_an_interface_newer_than_macos_13_is_found(self):
        said = self.compile(MAC / "workspace.mm", "[NSApp unhide:nil];", "[NSApp activate];")
        self.assertIn("'activate' is only available on macOS 14.0 or newer", said)

    def test_a_call_that_only_linux_has_is_found(self):
        said = self.compile(MAC / "process.cpp", "if (pipe(ends) != 0)", "if (pipe2(ends, O_CLOEXEC) != 0)")
        self.assertIn("use of undeclared identifier 'pipe2'", said)

    def test_a_function_that_nobody_defines_is_found(self):
        said = self.link("int nowhere();\nint main() { return nowhere(); }\n")
        self.assertIn("undefined symbol: __Z7nowherev  nowhere()", said)

    def test_a_framework_that_nobody_links_is_found(self):
        program = "#import <AppKit/AppKit.h>\nint main() { return NSApp.hidden; }\n"
        self.assertIn("undefined symbol: _NSApp", self.link(program))
        self.assertEqual(self.link(program, "AppKit"), "")


if __name__ == "__main__":
    unittest.main()
