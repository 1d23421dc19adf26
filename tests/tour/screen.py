"""A running program seen through its accessibility tree and touched with a real mouse and keyboard."""

import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"
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
        """The first shown node with this name (or one that starts with it)."""
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

    def ready(self, name, role=None):
        """The control of this name, or of a name that begins with it and a colon, once it can be used."""
        def usable():
            node = self.find(name, role=role) or self.find(name + ":", role=role, start=True)
            return node if node and has(node, Atspi.StateType.ENABLED) else None
        return self.wait(f"{name} (enabled)", usable)

    def texts(self):
        return [says(node) for node in self.nodes() if shown(node)]


class Mouse:
    """Uses controls by pointing and clicking, and scrolls when a control is out of sight."""

    def __init__(self, program):
        self.program = program

    def use(self, name, role=None):
        node = self.program.ready(name, role)
        for wheel in [None] + [5] * 40 + [4] * 80:
            x, y = middle(node)
            if self._in_sight(node):
                xdotool("mousemove", x, y, "click", 1)
                time.sleep(0.15)
                return
            window = self.program.window()
            xdotool("mousemove", *middle(window), "click", wheel or 5)
            time.sleep(0.05)
        raise NotOnScreen(f"{name} cannot be scrolled into sight")

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
    """Uses controls by Tab and Space alone."""

    def __init__(self, program):
        self.program = program

    def use(self, name, role=None):
        self.program.ready(name, role)
        for _ in range(150):
            focused = self._focused() or ""
            if focused == name or focused.startswith(name + ":"):
                xdotool("key", "space")
                time.sleep(0.15)
                return
            xdotool("key", "Tab")
            time.sleep(0.03)
        raise NotOnScreen(f"{name} cannot be reached with Tab")

    def _focused(self):
        for node in self.program.nodes():
            if has(node, Atspi.StateType.FOCUSED) and shown(node) and not children_focused(node):
                return says(node)
        return None


def children_focused(node):
    return any(has(child, Atspi.StateType.FOCUSED) for child in walk(node) if child is not node)
