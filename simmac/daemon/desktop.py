"""The Mac's desktop: a display, a window manager and a tray."""

import asyncio
import ctypes
import os
import time

from daemon.control import Refused
from daemon.mac import HOME

SCREEN = "1600x1000x24"
START_LIMIT = 3.0


class Desktop:
    """A display of its own (or the caller's), with what a desktop has around the windows."""

    def __init__(self, display, appearance):
        self.display = display    # the caller's display, or none: a display of our own is started
        self.appearance = appearance
        self._processes = []      # kept, because a process that nobody holds is ended

    async def start(self):
        """Starts everything and returns when windows can be opened."""
        if self.display is None:
            self.display = await self._own_display()
            await asyncio.to_thread(_paint, self.display, int(self.appearance.colours.ground, 16))
        env = dict(os.environ, DISPLAY=self.display, HOME=HOME)
        self.appearance.furnish()
        window_manager, settings = self.appearance.window_manager()
        await self._begin(*window_manager, env=env | settings)
        await self._begin("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "24",
                          "--expand", "true", "--SetDockType", "true", "--transparent", "true", "--alpha", "0",
                          "--tint", f"0x{self.appearance.colours.bar}", env=env)
        await asyncio.to_thread(_wait_for_owners, self.display, ("WM_S0", "_NET_SYSTEM_TRAY_S0"))

    async def picture(self):
        """A PNG picture of the whole display."""
        process = await asyncio.create_subprocess_exec(
            "import", "-display", self.display, "-window", "root", "png:-", stdout=asyncio.subprocess.PIPE)
        return (await process.communicate())[0]

    async def _own_display(self):
        """Starts Xvfb, which picks a free number and says it as soon as it takes clients."""
        read_end, write_end = os.pipe()
        await self._begin("Xvfb", "-displayfd", str(write_end), "-screen", "0", SCREEN, "-nolisten", "tcp", "-noreset",
                          pass_fds=(write_end,))
        os.close(write_end)
        with os.fdopen(read_end, encoding="ascii") as said:
            number = (await asyncio.to_thread(said.readline)).strip()   # the whole line: Xvfb writes it in pieces
        if not number:
            raise Refused("Xvfb did not start, so there is no display.")
        return f":{number}"

    async def _begin(self, *argv, **more):
        nothing = asyncio.subprocess.DEVNULL
        self._processes.append(await asyncio.create_subprocess_exec(
            *argv, stdin=nothing, stdout=nothing, stderr=nothing, **more))


def _connect(display):
    xlib = ctypes.CDLL("libX11.so.6")
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    xlib.XInternAtom.restype = xlib.XGetSelectionOwner.restype = xlib.XDefaultRootWindow.restype = ctypes.c_ulong
    return xlib, ctypes.c_void_p(xlib.XOpenDisplay(display.encode()))


def _paint(display, colour):
    """Gives the desktop behind the windows its colour."""
    xlib, handle = _connect(display)
    if handle:
        root = ctypes.c_ulong(xlib.XDefaultRootWindow(handle))
        xlib.XSetWindowBackground(handle, root, ctypes.c_ulong(colour))
        xlib.XClearWindow(handle, root)
        xlib.XCloseDisplay(handle)


def _wait_for_owners(display, selections):
    """Waits until the window manager and the tray have announced themselves, so that no program comes too early."""
    xlib, handle = _connect(display)
    deadline = time.monotonic() + START_LIMIT
    while handle and time.monotonic() < deadline:
        atoms = [ctypes.c_ulong(xlib.XInternAtom(handle, name.encode(), 0)) for name in selections]
        if all(xlib.XGetSelectionOwner(handle, atom) for atom in atoms):
            break
        time.sleep(0.01)
    if handle:
        xlib.XCloseDisplay(handle)
