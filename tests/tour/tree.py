"""What a running program says to a screen reader: a tree of named controls and texts."""

import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"
START_LIMIT = 20


def start_accessibility():
    """Starts the bus on which programs say what they show; it ends with the desktop's own bus."""
    nothing = subprocess.DEVNULL
    subprocess.Popen([ACCESSIBILITY_BUS, "--launch-immediately"], stdout=nothing, stderr=nothing)
    deadline = time.monotonic() + START_LIMIT
    while time.monotonic() < deadline:
        found = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                                "org.a11y.Bus.GetAddress"], capture_output=True, check=False)
        if found.returncode == 0:
            return
        time.sleep(0.05)
    raise TimeoutError("The accessibility bus did not start.")


def programs():
    """The programs that say what they show."""
    return children(Atspi.get_desktop(0))


def process_of(program):
    """The program's process id; none when it has just gone."""
    try:
        return program.get_process_id()
    except GLib.Error:
        return None


def children(node):
    """What is directly below the node; nothing when it has gone."""
    try:
        return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]
    except GLib.Error:
        return []


def walk(node):
    """The node and everything below it, in reading order, without what is hidden."""
    if hidden(node):
        return
    yield node
    for child in children(node):
        yield from walk(child)


def says(node):
    """What a screen reader says for the node."""
    try:
        return node.get_name() or ""
    except GLib.Error:
        return ""


def description(node):
    """What a screen reader adds to the name."""
    try:
        return node.get_description() or ""
    except GLib.Error:
        return ""


def role(node):
    """What the node is, for example "push button"."""
    try:
        return node.get_role_name()
    except GLib.Error:
        return ""


def has(node, state):
    """Whether the node is in this state."""
    try:
        return node.get_state_set().contains(state)
    except GLib.Error:
        return False


def hidden(node):
    """Whether the node takes no room in its window; what is only scrolled out of sight does."""
    return not shown(node) and box(node).empty()


def shown(node):
    """Whether the node is on the screen, not scrolled out of its window."""
    return has(node, Atspi.StateType.SHOWING)


def active(window):
    """Whether the window is the one in front."""
    return has(window, Atspi.StateType.ACTIVE)


def focused(node):
    """Whether keys go to the node."""
    return has(node, Atspi.StateType.FOCUSED)


def checked(node):
    """Whether the switch is on."""
    return has(node, Atspi.StateType.CHECKED)


def usable(node):
    """The node if it is enabled, which Qt Quick 6.4 says in the description alone."""
    if not node or not has(node, Atspi.StateType.ENABLED) or description(node) == "Not available now":
        return None
    return node


class Box:
    """A rectangle on the screen."""

    def __init__(self, left, top, right, bottom):
        self.left, self.top, self.right, self.bottom = left, top, right, bottom

    def empty(self):
        """Whether there is nothing of it."""
        return self.right <= self.left or self.bottom <= self.top

    def middle(self):
        """Its middle."""
        return (self.left + self.right) // 2, (self.top + self.bottom) // 2

    def around(self, other):
        """The smallest rectangle around both."""
        return Box(min(self.left, other.left), min(self.top, other.top), max(self.right, other.right),
                   max(self.bottom, other.bottom))

    def holds(self, other):
        """Whether the other one lies in it from top to bottom."""
        return self.top <= other.top and other.bottom <= self.bottom


def box(node):
    """Where the node is on the screen."""
    try:
        found = node.get_extents(Atspi.CoordType.SCREEN)
    except GLib.Error:
        return Box(0, 0, 0, 0)
    return Box(found.x, found.y, found.x + found.width, found.y + found.height)


class Alerts:
    """What a screen reader says without having been asked: the alerts that programs show from now on."""

    def __init__(self):
        self._said = []
        self._listener = Atspi.EventListener.new(self._note)
        self._listener.register("object:state-changed:showing")

    def _note(self, event):
        if event.detail1 and role(event.source) == "alert":
            self._said.append(says(event.source))

    def said(self):
        """All that was said so far."""
        while GLib.MainContext.default().iteration(False):
            pass
        return list(self._said)
