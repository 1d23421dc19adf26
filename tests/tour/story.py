"""The tour: from a Mac that has only Homebrew to a protected one, on the real screens."""

import sys

import hands
import tree
from screen import NotOnScreen
from stage import Stage, failed


def tick(text):
    """Prints a step that was seen to work."""
    print(f"  ✓ {text}", flush=True)


def welcome(stage):
    stage.sees("What this wizard will do")
    stage.picture("welcome")
    stage.follows_the_desktop()
    tick("Corvane opens with Welcome, as light or dark as the desktop")
    stage.use("Next")


def checks(stage):
    stage.sees("This is an Apple silicon Mac.")
    stage.sees("colima, failed", "Ports 53 and 8080, warning")
    stage.picture("checks")
    tick("The Mac was checked: Homebrew is there, Docker and Colima are not")
    stage.use("Next")


def install(stage):
    stage.use("Install Colima and Docker")
    stage.sees("Turning on Colima at login", "Finished.")
    stage.use("Test")
    stage.picture("install")
    tick("Colima and Docker were installed and Docker answers")
    stage.use("Next")


def start(stage):
    stage.use("Start Pi-hole")
    stage.sees("UDP port 53 is probably not reaching your Mac")
    stage.sees_start("This is usual right after Colima was installed.")
    stage.picture("udp-help")
    tick("Room was made in Colima's virtual machine; Pi-hole runs, but Colima forwards TCP only")
    stage.use("Restart Colima with UDP forwarding for me")
    stage.use("Restart Colima")
    stage.program.gone("UDP port 53 is probably not reaching your Mac")
    stage.sees("Running and healthy.")
    stage.program.see("Answer: ", start=True)
    stage.picture("start")
    tick("Pi-hole runs, its admin page and its DNS answer")
    stage.use("Next")


def blocking(stage):
    stage.use("Test")
    stage.sees_start("Blocked:")
    stage.picture("blocking")
    tick("A tracker is blocked and a normal name resolves")
    stage.use("Next")


def dns(stage):
    stage.use("Change DNS...")
    stage.sees("Change DNS on 1 network service(s)?")
    stage.picture("dns-question")
    stage.use("Change DNS")
    stage.sees("This Mac uses Pi-hole")
    stage.picture("dns")
    tick("This Mac's DNS points at Pi-hole: three test names were found in its log")
    stage.use("Next")


def browser(stage):
    stage.use("Allow the read-only check")
    stage.use("Browser test")
    stage.sees_part("appeared in Pi-hole's query log")
    stage.picture("browser")
    tick("The default browser uses Pi-hole")
    stage.use("Next")


def done(stage):
    stage.sees("Pi-hole is running and this Mac uses it")
    stage.picture("done")
    stage.dot("green")
    tick("Done: the dot is green")
    stage.use("Go to the main window")


def dashboard(stage):
    stage.sees("Pi-hole is answering and this Mac uses it", "Today")
    stage.picture("dashboard")
    stage.use("Pause blocking 5 minutes")
    stage.sees("Resume blocking")
    stage.picture("paused")
    stage.use("Resume blocking")
    stage.sees("Pause blocking 5 minutes")
    tick("The dashboard shows the counters, pauses and resumes")
    stage.use("Refresh")
    stage.use("Check for updates")
    stage.sees_start("Version 2026.")
    stage.picture("update")
    tick("A newer version of Pi-hole was found")


def settings(stage):
    stage.use("Settings")
    stage.sees("Launch Corvane at login")
    stage.picture("settings")
    stage.use("Close")
    tick("Settings open and close")


def restore(stage):
    stage.use("Restore my old settings")
    stage.sees("Restore my old DNS settings?")
    stage.use("Restore")
    stage.sees("Your old DNS settings are back.")
    stage.program.read("Pi-hole is answering, but this Mac does not use it")
    stage.picture("restored")
    tick("The old DNS settings are back")


def leave(stage):
    stage.quit()
    if stage.complaints():
        raise NotOnScreen(f"silence: Corvane printed\n{stage.complaints()}")
    tick("Corvane quits and has printed nothing")


CHAPTERS = (welcome, checks, install, start, blocking, dns, browser, done, dashboard, settings, restore, leave)


def main():
    """Tells the story by this hand; ends with 1 when something was not seen."""
    by, command, folder = sys.argv[1:4]
    tree.start_accessibility()
    stage = Stage(command, folder, hands.Keyboard if by == "keyboard" else hands.Mouse)
    stage.open()
    try:
        for chapter in CHAPTERS:
            chapter(stage)
    except NotOnScreen as problem:
        failed(stage, problem)
        return 1
    print(f"  {stage.count} pictures in {folder}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
