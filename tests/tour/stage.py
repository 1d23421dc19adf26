"""Where a story plays: the simulated Mac, the program in it, and the pictures that are taken."""

import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import time

import hands
import tree
from screen import NotOnScreen, Program

CONTROL = "/run/simmac/control.sock"
STEPS = 8
TITLE_BAR = 26
EDGE = 14
SETTLING = 0.3   # an animation takes 0.12 seconds
END_LIMIT = 20
MENU_WIDTH, MENU_HEIGHT = 360, 190
DOT_COLOURS = {"green": (40, 205, 65), "orange": (255, 149, 0), "red": (255, 59, 48), "gray": (142, 142, 147)}


def ctl(*words):
    """Gives the simulated Mac a control command and answers with its result."""
    with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as handle:
        handle.connect(CONTROL)
        handle.sendall(json.dumps({"command": [str(word) for word in words]}).encode() + b"\n")
        with handle.makefile("rb") as answers:
            answer = json.loads(answers.readline())
    if not answer["ok"]:
        raise ValueError(answer["error"])
    return answer["result"]


def dark_desktop():
    """Whether this desktop is dark, as its own settings say."""
    folder = os.environ.get("XDG_CONFIG_DIRS", "").split(":")[0]
    return pathlib.Path(folder, "kdeglobals").is_file()


class Stage:
    """One program at a time, used with one kind of hand, and a folder of numbered pictures."""

    def __init__(self, command, folder, hand=hands.Mouse):
        self.command = command
        self.folder = pathlib.Path(folder)
        self.count = 0
        self.program = None
        self.hand = None
        self._kind = hand
        self._log = open(self.folder / "corvane.log", "w+b")

    # -- the program ------------------------------------------------------------------------------------------------

    def open(self):
        """Starts the program."""
        self.program = Program([self.command], self._log)
        self.hand = self._kind(self.program)
        window = self.program.wait("the window in front", self._active_window)
        self.program.wait("the window in its place", hands.at_rest(window))

    def _active_window(self):
        window = self.program.window()
        return window if window and tree.active(window) else None

    def reset(self, state, *commands):
        """Puts the Mac into a state and gives it these commands, each one text."""
        ctl("reset", state)
        for command in commands:
            ctl(*command.split())

    def begin(self, state, *commands):
        """Puts the Mac into a state, gives it these commands and starts the program."""
        self.reset(state, *commands)
        self.open()

    def end(self):
        """Ends the program from outside."""
        if self.program and self.program.process.poll() is None:
            self.program.process.send_signal(signal.SIGTERM)
            self.program.process.wait(END_LIMIT)

    def quit(self):
        """Quits the program as a user does."""
        self.key("ctrl+q")
        self.ends_well()

    def ends_well(self):
        """Waits for the program to end by itself, with its memory in order."""
        status = self.program.process.wait(END_LIMIT)
        if status != 0:
            raise NotOnScreen(f"a good end: Corvane ended with {status}")

    def complaints(self):
        """What the programs have printed so far; a good one prints nothing."""
        self._log.seek(0)
        return self._log.read().decode("utf-8", "replace").strip()

    # -- what a user does -------------------------------------------------------------------------------------------

    def use(self, name):
        """Presses the button, turns the switch or goes to the field of this name."""
        self.hand.use(name)

    def key(self, name):
        """Presses a key or several at once, for example ctrl+q."""
        hands.xdotool("key", *name.split())

    def type(self, text):
        """Types a text where the focus is."""
        hands.xdotool("type", "--delay", 4, text)

    def step(self, number):
        """Goes to a step of the set-up by its row at the side."""
        ending = f", step {number} of {STEPS}"
        found = self.program.wait(f"the row of step {number}", lambda: next(
            (text for text in self.program.texts() if text.endswith(ending)), None))
        self.hand.use(found)
        self.program.see(f"Step {number} of {STEPS}")

    def dashboard(self):
        """Leaves the set-up for the main window."""
        self.use("Main window")
        self.program.see("Today")

    def open_menu(self):
        """Clicks the dot in the tray and waits for its menu, which the accessibility bus does not know."""
        before = _windows_on_display()
        icon = tree.Box(*_tray_icon())
        hands.xdotool("mousemove", *icon.middle(), "click", 3)
        self.program.wait("the dot's menu", lambda: _windows_on_display() > before)

    def choose_from_below(self, place):
        """Chooses an item of the open menu, counted from below."""
        self.key(" ".join(["Up"] * place))
        self.key("Return")

    def top(self):
        """Scrolls to the top, where a story shows its results."""
        self.hand.top()

    def bottom(self):
        """Scrolls to the bottom."""
        self.hand.bottom()

    # -- what a user sees -------------------------------------------------------------------------------------------

    def sees(self, *sentences):
        """Waits for these sentences on the screen, scrolling to those that are out of sight."""
        for sentence in sentences:
            node = self.program.read(sentence)
            if not tree.shown(node):
                self.hand.show(node)
            self.program.see(tree.says(node))

    def sees_start(self, *beginnings):
        """Waits for texts on the screen that begin so."""
        for beginning in beginnings:
            self.program.see(beginning, start=True)

    def sees_part(self, part):
        """Waits for a text that holds this."""
        self.program.wait(part, lambda: any(part in text for text in self.program.texts()))

    def switched(self, name, on):
        """Waits until the switch of this name is on, or off."""
        self.program.wait(f"{name} {'on' if on else 'off'}", lambda: (
            (node := self.program.control(name)) and tree.checked(node) == on))

    def dot(self, colour):
        """Waits until the dot in the tray has this colour: green, orange, red or gray."""
        middle = tree.Box(*_tray_icon()).middle()
        self.program.wait(f"a {colour} dot", lambda: _colour_at(*middle) == colour)

    def follows_the_desktop(self):
        """Checks the last picture: the program is dark on a dark desktop and light on a light one."""
        last = max(self.folder.glob(f"{self.count:02}-*.png"))
        mean = subprocess.run(["convert", str(last), "-format", "%[fx:mean]", "info:"], check=True, capture_output=True,
                              text=True).stdout
        if (float(mean) < 0.5) != dark_desktop():
            raise NotOnScreen(f"the desktop's appearance: the picture's lightness is {mean}")

    def picture(self, name):
        """Takes a picture of all windows of the program, with a little of the desktop around them."""
        self.count += 1
        time.sleep(SETTLING)
        frame = None
        for window in self.program.windows():
            place = tree.box(window)
            place.top -= TITLE_BAR
            frame = place.around(frame) if frame else place
        self._shoot(name, frame)

    def corner(self, name):
        """Takes a picture of the corner in which the dot's menu opens."""
        self.count += 1
        time.sleep(SETTLING)
        icon = tree.Box(*_tray_icon())
        self._shoot(name, tree.Box(icon.right - MENU_WIDTH, 0, icon.right, MENU_HEIGHT))

    def display(self, name):
        """Takes a picture of the whole display."""
        self.count += 1
        time.sleep(SETTLING)
        self._shoot(name, None)

    def _shoot(self, name, frame):
        path = self.folder / f"{self.count:02}-{name}.png"
        crop = []
        if frame:
            left, top = max(0, frame.left - EDGE), max(0, frame.top - EDGE)
            crop = ["-crop", f"{frame.right + EDGE - left}x{frame.bottom + EDGE - top}+{left}+{top}", "+repage"]
        subprocess.run(["import", "-window", "root", *crop, str(path)], check=True)


def _windows_on_display():
    """How many windows of the program are on the display, menus among them."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "Corvane"], capture_output=True, check=False)
    return len(found.stdout.split())


def _colour_at(x, y):
    """Which colour of a dot comes closest to that of this pixel."""
    pixel = subprocess.run(["import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "rgb:-"], check=True,
                           capture_output=True).stdout
    return min(DOT_COLOURS, key=lambda name: sum((one - other) ** 2 for one, other in zip(pixel, DOT_COLOURS[name])))


def _tray_icon():
    """Where the tray is."""
    found = subprocess.run(["xdotool", "search", "--name", "^panel$", "getwindowgeometry", "--shell"], check=True,
                           capture_output=True, text=True).stdout
    left, top, width, height = (int(line.split("=")[1]) for line in found.split()[1:5])
    return left, top, left + width, top + height


def failed(stage, problem):
    """Says what was missing and what was there instead, and keeps a picture of it."""
    print(f"  ✗ {problem}", file=sys.stderr)
    print("    On the screen: " + " | ".join(text for text in stage.program.texts() if text), file=sys.stderr)
    stage.display("failure")
