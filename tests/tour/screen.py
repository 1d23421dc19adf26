"""A running program seen through its accessibility tree and touched with a real mouse and keyboard."""

import itertools
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"
UP, DOWN = 4, 5  # the mouse wheel
BOTTOM_BARS = ("Back", "Close")  # the buttons that stand in a bar below what scrolls
PATIENCE = 60  # seconds that anything on the screen may take

def start_accessibility():
    """Starts the bus on which programs tell what they show; it ends with the desktop's own bus."""
    subprocess.Popen([ACCESSIBILITY_BUS, "--launch-immediately"])
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        found = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                                "org.a11y.Bus.GetAddress"], capture_output=True)
        if found.returncode == 0:
            return
        time.sleep(0.05)
    raise NotOnScreen("the accessibility bus")


class NotOnScreen(Exception):
    """What was looked for did not appear in time."""


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def children(node):
    try:
        return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]
    except GLib.Error:
        return []


def walk(node):
    """The node and everything below it, in reading order."""
    yield node
    for child in children(node):
        yield from walk(child)


def says(node):
    """What a screen reader says for the node."""
    try:
        return node.get_name() or ""
    except GLib.Error:
        return ""


def has(node, state):
    try:
        return node.get_state_set().contains(state)
    except GLib.Error:
        return False


def shown(node):
    return has(node, Atspi.StateType.VISIBLE) and has(node, Atspi.StateType.SHOWING)


def middle(node):
    box = node.get_extents(Atspi.CoordType.SCREEN)
    return box.x + box.width // 2, box.y + box.height // 2


def usable(node):
    """The node if it is enabled."""
    return node if node and has(node, Atspi.StateType.ENABLED) else None


class Program:
    """One program under test."""

    def __init__(self, command, log):
        self.process = subprocess.Popen(command, stdout=log, stderr=subprocess.STDOUT)

    def root(self):
        desktop = Atspi.get_desktop(0)
        for child in children(desktop):
            try:
                if child.get_process_id() == self.process.pid:
                    return child
            except GLib.Error:
                continue
        return None

    def window(self):
        """The window in front."""
        windows = [node for node in children(self.root()) if shown(node)]
        return next((node for node in windows if has(node, Atspi.StateType.ACTIVE)), windows[-1])

    def nodes(self):
        root = self.root()
        return walk(root) if root else ()

    def find(self, name, *, role=None, start=False):
        """The first node with this name (or one that starts with it) that is on the screen."""
        for node in self.nodes():
            text = says(node)
            if (text.startswith(name) if start else text == name) and shown(node):
                if role is None or node.get_role_name() == role:
                    return node
        return None

    def wait(self, what, condition):
        """Waits for the condition and answers with its value."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if self.process.poll() is not None:
                raise NotOnScreen(f"Corvane ended with {self.process.returncode} while waiting for: {what}")
            value = condition()
            if value:
                return value
            time.sleep(0.1)
        raise NotOnScreen(f"never seen: {what}")

    def see(self, text, *, start=False):
        return self.wait(text, lambda: self.find(text, start=start))

    def control(self, name, role=None):
        """The control of this name, or of a name that begins with it and a colon."""
        return self.find(name, role=role) or self.find(name + ":", role=role, start=True)

    def ready(self, name, role=None):
        """The control once it can be used."""
        return self.wait(f"{name} (enabled)", lambda: usable(self.control(name, role)))

    def texts(self):
        return [says(node) for node in self.nodes() if shown(node)]


class Mouse:
    """Uses controls by pointing and clicking, and scrolls down and up for one that is out of sight."""

    def __init__(self, program):
        self.program = program

    def use(self, name, role=None):
        wheel = itertools.cycle([DOWN] * 30 + [UP] * 30)
        node = self.program.wait(f"{name} (enabled)", lambda: self._looked_for(name, role, wheel))
        xdotool("mousemove", *middle(node), "click", 1)
        time.sleep(0.15)

    def _looked_for(self, name, role, wheel):
        """The control if it can be clicked now; turns the wheel when it cannot be seen whole."""
        node = self.program.control(name, role)
        if node and self._in_sight(node):
            return usable(node)
        xdotool("mousemove", *middle(self.program.window()), "click", next(wheel))
        return None

    def _in_sight(self, node):
        """Whether the whole control lies above the bar at the bottom of its window, which covers what scrolls below it."""
        box = node.get_extents(Atspi.CoordType.SCREEN)
        frame = self.program.window().get_extents(Atspi.CoordType.SCREEN)
        floor = frame.y + frame.height
        for name in BOTTOM_BARS:
            bar = self.program.find(name, role="push button")
            if bar and bar != node:
                floor = min(floor, bar.get_extents(Atspi.CoordType.SCREEN).y)
        in_bar = box.y >= floor - 4
        return frame.y <= box.y and (box.y + box.height <= floor or says(node) in BOTTOM_BARS + ("Next",) and in_bar)


class Keyboard:
    """Uses controls by Tab and Space alone; the focus brings what is out of sight into view."""

    def __init__(self, program):
        self.program = program

    def use(self, name, role=None):
        self.program.wait(f"{name} reached with Tab", lambda: self._stands_on(name, role))
        xdotool("key", "space")
        time.sleep(0.15)

    def _stands_on(self, name, role):
        """Whether the focus is on the control and it can be used; else moves on, once the control is no longer waited for."""
        node = self.program.control(name, role)
        if node and not usable(node):
            return None
        focused = self._focused() or ""
        if focused == name or focused.startswith(name + ":"):
            return True
        xdotool("key", "Tab")
        return None

    def _focused(self):
        for node in self.program.nodes():
            if has(node, Atspi.StateType.FOCUSED) and shown(node) and not children_focused(node):
                return says(node)
        return None


def children_focused(node):
    return any(has(child, Atspi.StateType.FOCUSED) for child in walk(node) if child is not node)
