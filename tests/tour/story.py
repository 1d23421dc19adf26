"""The tour: from a Mac that has only Homebrew to a protected one, on the real screens."""

import pathlib
import subprocess
import sys
import time

import screen

CTL = [sys.executable, str(pathlib.Path(__file__).resolve().parents[2] / "simmac" / "simmac"), "ctl"]


class Tour:
    def __init__(self, by, command, folder):
        self.folder = pathlib.Path(folder)
        self.log = open(self.folder / "corvane.log", "wb")
        self.program = screen.Program([command], self.log)
        self.hand = screen.Keyboard(self.program) if by == "keyboard" else screen.Mouse(self.program)
        self.count = 0

    def step(self, text):
        print(f"  ✓ {text}", flush=True)

    def picture(self, name):
        self.count += 1
        time.sleep(0.4)
        path = self.folder / f"{self.count:02}-{name}.png"
        subprocess.run([*CTL, "screenshot", str(path)], check=True, stdout=subprocess.DEVNULL)

    def passes(self, *sentences, start=False):
        for sentence in sentences:
            self.program.see(sentence, start=start)

    def next(self):
        self.hand.use("Next")

    def run(self):
        for part in (self.welcome, self.checks, self.install, self.start, self.blocking, self.dns, self.browser, self.done,
                     self.dashboard, self.settings, self.restore):
            part()
        self.program.process.terminate()
        self.program.process.wait(20)

    def welcome(self):
        self.program.see("What this wizard will do")
        self.picture("welcome")
        self.step("Corvane opens with Welcome")
        self.next()

    def checks(self):
        self.passes("This is an Apple silicon Mac.")
        self.picture("checks")
        self.step("The Mac was checked: Homebrew is there, Docker and Colima are not")
        self.next()

    def install(self):
        self.hand.use("Install Colima and Docker", "push button")
        self.passes("Finished.")
        self.hand.use("Test", "push button")
        self.picture("install")
        self.step("Colima and Docker were installed and Docker answers")
        self.next()

    def start(self):
        self.hand.use("Start Pi-hole", "push button")
        self.passes("Running and healthy.")
        self.program.see("Answer: ", start=True)
        self.picture("start")
        self.step("Pi-hole runs, its admin page and its DNS answer")
        self.next()

    def blocking(self):
        self.hand.use("Test", "push button")
        self.program.see("Blocked:", start=True)
        self.picture("blocking")
        self.step("A tracker is blocked and a normal name resolves")
        self.next()

    def dns(self):
        self.hand.use("Change DNS...")
        self.picture("dns-question")
        self.hand.use("Change DNS", "push button")
        self.passes("This Mac uses Pi-hole")
        self.picture("dns")
        self.step("This Mac's DNS points at Pi-hole: three test names were found in its log")
        self.next()

    def browser(self):
        self.hand.use("Allow the read-only check")
        self.hand.use("Browser test", "push button")
        self.program.wait("the browser test's verdict",
                          lambda: any("appeared in Pi-hole's query log" in text for text in self.program.texts()))
        self.picture("browser")
        self.step("The default browser uses Pi-hole")
        self.next()

    def done(self):
        self.passes("Pi-hole is running and this Mac uses it")
        self.picture("done")
        self.step("Done: the dot is green")
        self.hand.use("Go to the main window")

    def dashboard(self):
        self.passes("Pi-hole is answering and this Mac uses it", "Today")
        self.picture("dashboard")
        self.hand.use("Pause blocking 5 minutes")
        self.passes("Resume blocking")
        self.picture("paused")
        self.hand.use("Resume blocking")
        self.passes("Pause blocking 5 minutes")
        self.step("The dashboard shows the counters, pauses and resumes")
        self.hand.use("Refresh", "push button")
        self.hand.use("Check for updates", "push button")
        self.program.see("Version 2026.", start=True)
        self.picture("update")
        self.step("A newer version of Pi-hole was found")

    def settings(self):
        self.hand.use("Settings", "push button")
        self.program.see("Launch Corvane at login")
        self.picture("settings")
        self.hand.use("Close")
        self.step("Settings open and close")

    def restore(self):
        self.hand.use("Restore my old settings")
        self.hand.use("Restore", "push button")
        self.passes("Your old DNS settings are back.")
        self.picture("restored")
        self.step("The old DNS settings are back")


def main():
    by, command, folder = sys.argv[1:]
    screen.start_accessibility()
    tour = Tour(by, command, folder)
    try:
        tour.run()
    except screen.NotOnScreen as problem:
        tour.picture("failure")
        print(f"  ✗ {problem}", file=sys.stderr)
        print("    On the screen: " + " | ".join(text for text in tour.program.texts() if text), file=sys.stderr)
        return 1
    print(f"The tour is done: {tour.count} pictures in {folder}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
