"""A running program, seen the way a screen reader sees it."""

import subprocess
import time

import tree

PATIENCE = 40   # seconds that anything on the screen may take
PAUSE = 0.04
CONTROLS = ("push button", "check box", "combo box", "list item", "text", "menu item")


class NotOnScreen(Exception):
    """What was looked for did not appear in time."""


class Program:
    """One program under test."""

    def __init__(self, command, log):
        self.process = subprocess.Popen(command, stdout=log, stderr=subprocess.STDOUT)
        self._root = None

    def windows(self):
        """Its windows that are on the screen."""
        if self._root is None or tree.process_of(self._root) != self.process.pid:
            self._root = next((each for each in tree.programs() if tree.process_of(each) == self.process.pid), None)
        return [each for each in tree.children(self._root) if tree.shown(each)] if self._root else []

    def window(self):
        """The window in front; none when every window is closed."""
        windows = self.windows()
        return next((each for each in windows if tree.active(each)), windows[-1] if windows else None)

    def nodes(self):
        """Everything in the window in front."""
        window = self.window()
        return tree.walk(window) if window else ()

    def find(self, text, *, start=False):
        """The first node on the screen that says this (or something that starts with it)."""
        for node in self.nodes():
            said = tree.says(node)
            if (said.startswith(text) if start else said == text) and tree.shown(node):
                return node
        return None

    def text(self, text):
        """The first node that says this, scrolled out of sight or not."""
        return next((node for node in self.nodes() if tree.says(node) == text), None)

    def control(self, name):
        """The control of this name, or of a name that begins with it and a colon, scrolled out of sight or not."""
        near = None
        for node in self.nodes():
            said = tree.says(node)
            if said.startswith(name) and tree.role(node) in CONTROLS:
                if said == name:
                    return node
                if said.startswith(name + ":"):
                    near = near or node
        return near

    def wait(self, what, condition):
        """Waits for the condition and answers with its value."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if self.process.poll() is not None:
                raise NotOnScreen(f"Corvane ended with {self.process.returncode} while waiting for: {what}")
            value = condition()
            if value:
                return value
            time.sleep(PAUSE)
        raise NotOnScreen(f"never seen: {what}")

    def see(self, text, *, start=False):
        """Waits until the text is on the screen."""
        return self.wait(text, lambda: self.find(text, start=start))

    def read(self, text):
        """Waits until the text is in the window, scrolled out of sight or not."""
        return self.wait(text, lambda: self.text(text))

    def gone(self, text):
        """Waits until the text is no longer there."""
        self.wait(f"no more: {text}", lambda: not self.text(text))

    def texts(self):
        """Everything that the window in front says."""
        return [tree.says(node) for node in self.nodes()]
