"""The two ways to use a program: by mouse, and by keyboard alone."""

import math
import subprocess
import time

import tree

UP, DOWN = 4, 5                   # the mouse wheel
NOTCH = 60                        # how far one notch of the wheel scrolls
TOP_BARS = ("Settings", "Dismiss")      # buttons above what scrolls, each in a bar with others
BOTTOM_BARS = ("Back", "Close")         # buttons below what scrolls
BAR_BUTTONS = TOP_BARS + BOTTOM_BARS + ("Next", "Main window", "Setup wizard")
BUTTON = "push button"
BAR_MARGIN = 12
SETTLING = 0.05


def xdotool(*words):
    """Moves the real mouse, presses real keys."""
    subprocess.run(["xdotool", *map(str, words)], check=True)


class Mouse:
    """Uses controls by pointing and clicking, and scrolls to those that are out of sight."""

    def __init__(self, program):
        self.program = program

    def use(self, name):
        """Clicks the control as soon as it is enabled and at rest."""
        node = self.program.wait(f"{name} (enabled)", lambda: self._ready(name))
        self.click(*tree.box(node).middle())

    def _ready(self, name):
        """The control, in sight and at rest, if it is still enabled then."""
        node = tree.usable(self.program.control(name))
        if not node:
            return None
        self.show(node)
        self.program.wait(f"{name} to stand still", at_rest(node))
        return tree.usable(node)

    def click(self, x, y, button=1):
        """Clicks at a place."""
        xdotool("mousemove", x, y, "click", button)
        time.sleep(SETTLING)

    def show(self, node):
        """Scrolls until the whole control is in sight, or as far as it goes."""
        if tree.says(node) in BAR_BUTTONS:
            return
        sight, banner = self._sight()
        place = tree.box(node)
        if sight.holds(place) or (banner and banner.holds(place)):
            return
        self._roll(sight, (sight.top + sight.bottom) // 2 - (place.top + place.bottom) // 2)
        self.program.wait("scrolling to come to rest", at_rest(node))

    def top(self):
        """Scrolls to the top."""
        self._roll(self._sight()[0], 3000)
        time.sleep(SETTLING)

    def bottom(self):
        """Scrolls to the bottom."""
        self._roll(self._sight()[0], -3000)
        time.sleep(SETTLING)

    def _roll(self, sight, distance):
        notches = max(1, math.ceil(abs(distance) / NOTCH))
        # At the edge, where no log lies that scrolls by itself.
        xdotool("mousemove", sight.right - 5, sight.top + 5, "click", "--repeat", notches, "--delay", 2,
                UP if distance > 0 else DOWN)

    def _sight(self):
        """The part of the window that scrolls, and the banner above it if there is one."""
        nodes = {}
        for node in self.program.nodes():
            nodes.setdefault((tree.role(node), tree.says(node)), node)
        sheet = nodes.get(("panel", "Settings"))
        if sheet and (BUTTON, "Close") in nodes:
            return tree.box(sheet), None
        sight = tree.box(self.program.window())
        warning = nodes.get(("panel", "Warning"))
        banner = tree.box(warning) if warning else None
        for name in TOP_BARS:
            if (BUTTON, name) in nodes:
                sight.top = max(sight.top, tree.box(nodes[BUTTON, name]).bottom + BAR_MARGIN)
        if banner:
            sight.top = max(sight.top, banner.bottom)
        if (BUTTON, "Back") in nodes:
            sight.bottom = tree.box(nodes[BUTTON, "Back"]).top - BAR_MARGIN
        return sight, banner


def at_rest(node):
    """A condition: the node has not moved since it was last asked for."""
    last = [None]

    def rests():
        now = tree.box(node).middle()
        last[0], before = now, last[0]
        return now == before
    return rests


class Keyboard:
    """Uses controls by Tab and Space alone; the focus brings what is out of sight into view."""

    def __init__(self, program):
        self.program = program

    def use(self, name):
        """Presses the control as soon as it is enabled and Tab has reached it."""
        self.program.wait(f"{name} reached with Tab", lambda: self._stands_on(name))
        xdotool("key", "space")
        time.sleep(SETTLING)

    def show(self, node):
        """Tabs on until the focus has brought the node into sight."""
        self.program.wait(f"{tree.says(node)} in sight", lambda: tree.shown(node) or xdotool("key", "Tab"))

    def _stands_on(self, name):
        """Whether the focus is on the control and it can be used; else moves on, once the control is no longer waited for."""
        node = self.program.control(name)
        if node and not tree.usable(node):
            return None
        focused = self._focused() or ""
        if focused == name or focused.startswith(name + ":"):
            return True
        xdotool("key", "Tab")
        return None

    def _focused(self):
        inmost = None
        for node in self.program.nodes():
            if tree.focused(node):
                inmost = node
        return tree.says(inmost) if inmost else None
