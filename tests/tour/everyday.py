"""The main window, the menu and Settings in every state of Pi-hole."""

import socket
import subprocess
import sys
import time

import tree
from scenes import play
from screen import NotOnScreen
from stage import ctl

SILENCE = 1   # seconds after which a second telling would have come

NAMES = ("example.com", "doubleclick.net", "www.example.com", "googleadservices.com", "example.com", "example.net",
         "ssl.google-analytics.com", "example.org", "www.example.org", "example.com", "www.example.net", "example.net")


def protected(stage):
    """Green: Pi-hole answers and this Mac uses it."""
    stage.reset("protected")
    subprocess.run(["dig", "@127.0.0.1", "+short", *NAMES], check=True, stdout=subprocess.DEVNULL)
    stage.open()
    stage.dashboard()
    stage.sees("Pi-hole is answering and this Mac uses it", "Blocking: On")
    # The fourth is the question by which Corvane proves the browsers' rule.
    stage.program.wait("Blocked: 3 or 4", lambda: {"Blocked: 3", "Blocked: 4"} & set(stage.program.texts()))
    stage.dot("green")
    stage.picture("green")
    stage.use("Refresh")
    stage.program.gone("Press Refresh to load the last 300 lines (docker logs --tail 300 pihole).")
    stage.picture("log")
    stage.use("Follow")
    stage.use("Pause blocking 5 minutes")
    stage.sees("Resume blocking")
    stage.sees_start("Blocking: Paused (")
    stage.picture("paused-and-following")
    stage.use("Resume blocking")
    stage.sees("Blocking is back on.")


def tests_again(stage):
    """All tests can be run again from the main window."""
    stage.begin("running")
    stage.dashboard()
    stage.use("Run tests again")
    stage.sees("Run tests again: running")
    stage.picture("tests-running")
    stage.program.gone("Run tests again: running")
    stage.use("Setup wizard")
    stage.step(8)
    stage.sees("Blocking (step 5), passed", "This Mac uses Pi-hole (step 6), failed")
    stage.picture("outcomes")


def small_window(stage):
    """The smallest window still shows everything that matters."""
    stage.begin("protected")
    stage.program.see("What this wizard will do")
    subprocess.run(["xdotool", "getactivewindow", "windowsize", "860", "620"], check=True)
    stage.step(6)
    stage.picture("small-set-up")
    stage.dashboard()
    stage.picture("small-dashboard")


def not_used(stage):
    """Orange: Pi-hole answers, but this Mac does not use it."""
    stage.begin("running")
    stage.dashboard()
    stage.sees("Pi-hole is answering, but this Mac does not use it")
    stage.dot("orange")
    stage.picture("orange")
    ctl("pihole", "web", "drop")
    stage.use("Pause blocking 5 minutes")
    stage.sees_start("Could not pause blocking: ")
    stage.picture("pause-failed")


def dead(stage):
    """Red: the banner warns, and starts Pi-hole again."""
    stage.begin("dead")
    stage.dashboard()
    stage.sees("This Mac uses Pi-hole, but Pi-hole is not answering", "Start Pi-hole now")
    stage.dot("red")
    stage.picture("red")
    stage.use("Start Pi-hole now")
    stage.sees("Pi-hole is answering and this Mac uses it")
    stage.dot("green")
    stage.picture("green-again")


def dead_engine(stage):
    """The banner starts Colima first, and shows why that fails."""
    stage.begin("dead-engine", "colima fail error starting vm: not enough memory")
    stage.sees("Start Pi-hole now")
    stage.picture("red-in-the-set-up")
    stage.dashboard()
    stage.use("Start Pi-hole now")
    stage.sees("Colima did not start. See the log.")
    stage.picture("banner-failed")
    stage.use("Hide")
    stage.program.gone("Start Pi-hole now")
    stage.picture("banner-hidden")


def stopped(stage):
    """Gray: Pi-hole is stopped; it can be started, stopped and restarted."""
    stage.begin("running")
    stage.dashboard()
    stage.sees("Pi-hole is answering, but this Mac does not use it")
    stage.use("Stop")
    stage.sees("Pi-hole is stopped", "Queries: -")
    stage.dot("gray")
    stage.picture("gray-stopped")
    ctl("take-port", "8080", "tcp", "--as", "nginx", "--in-machine")
    stage.use("Start")
    stage.sees_start("A port that Pi-hole needs")
    stage.picture("start-failed")


def docker_down(stage):
    """Gray: Docker does not run."""
    stage.begin("stopped")
    stage.dashboard()
    stage.sees("Stopped (Docker/Colima is not running)")
    stage.picture("gray-docker-down")
    stage.use("Refresh")
    stage.picture("log-without-docker")


def checking(stage):
    """Gray: the state is not known yet."""
    stage.begin("protected", "fault docker hang --when inspect*")
    stage.dashboard()
    stage.sees("Checking Pi-hole...")
    stage.dot("gray")
    stage.picture("gray-checking")


def spoken(stage):
    """A screen reader says the warning and the answer to what was pressed, each once."""
    stage.begin("protected")
    stage.dashboard()
    stage.sees("Pi-hole is answering and this Mac uses it")
    alerts = tree.Alerts()
    stage.use("Pause blocking 5 minutes")
    stage.sees("Blocking is paused for 5 minutes.")
    stage.use("Stop")
    stage.sees("Start Pi-hole now")
    warning = "This Mac's DNS points at Pi-hole, but Pi-hole is not answering. Websites may not load."
    stage.program.wait("the warning to be said", lambda: warning in alerts.said())
    time.sleep(SILENCE)
    for sentence in ("Blocking is paused for 5 minutes.", warning):
        if alerts.said().count(sentence) != 1:
            raise NotOnScreen(f"said once: {sentence}; said was {alerts.said()}")


def menu(stage):
    """The dot's menu says the state, opens the window that was closed, and quits."""
    stage.begin("protected")
    stage.dashboard()
    stage.sees("Pi-hole is answering and this Mac uses it")
    stage.open_menu()
    stage.corner("menu")
    stage.key("Escape")
    stage.use("Stop")
    stage.sees("This Mac uses Pi-hole, but Pi-hole is not answering")
    stage.key("ctrl+w")
    stage.program.wait("the window to close", lambda: not stage.program.windows())
    stage.open_menu()
    stage.corner("menu-while-stopped")
    stage.choose_from_below(3)
    stage.sees("Start Pi-hole now")
    stage.open_menu()
    stage.choose_from_below(2)
    stage.ends_well()


def listens(port):
    """Whether something takes connections at this port."""
    with socket.socket() as handle:
        return handle.connect_ex(("127.0.0.1", port)) == 0


def settings(stage):
    """Settings open as a sheet and as a window, and move the admin page to another port."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Settings")
    stage.sees("Launch Corvane at login")
    stage.picture("settings-sheet")
    stage.bottom()
    stage.picture("settings-sheet-end")
    stage.use("Close")
    stage.key("ctrl+comma")
    stage.sees("Launch Corvane at login")
    stage.picture("settings-window")
    stage.use("Admin page port")
    stage.sees("8085")
    stage.picture("settings-ports")
    stage.use("8085")
    stage.program.wait("the admin page at its new port", lambda: listens(8085))
    stage.picture("settings-port-moved")


SCENES = (protected, tests_again, small_window, not_used, dead, dead_engine, stopped, docker_down, checking, spoken, menu,
          settings)

if __name__ == "__main__":
    sys.exit(play(SCENES))
