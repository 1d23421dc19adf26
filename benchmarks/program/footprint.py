"""Measures a running Corvane from outside. Runs inside a simulated Mac with a desktop."""

import os
import pathlib
import subprocess
import sys
import time

IDLE_SECONDS = 45  # three polls


def windows(*search):
    """The X windows that the search finds."""
    found = subprocess.run(["xdotool", "search", *search], capture_output=True, text=True)
    return found.stdout.split()


def resident(pid):
    """Resident memory in MB."""
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    return 0.0


def processor_seconds(pid):
    """Time that the process and its ended children have used."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return sum(map(int, fields[11:13])) / os.sysconf("SC_CLK_TCK")


def seconds_until(condition, start, limit=20):
    while time.monotonic() - start < limit:
        if condition():
            return time.monotonic() - start
        time.sleep(0.005)
    return limit


def main():
    rows = []
    start = time.monotonic()
    process = subprocess.Popen([sys.argv[1]])
    # The dot's window in the tray has the program's class; the main window is the second one that can be seen.
    rows.append(("dot after", seconds_until(lambda: windows("--onlyvisible", "--class", "^Corvane$"), start), 0.5, "s"))
    rows.append(("dot and window after", seconds_until(lambda: len(windows("--onlyvisible", "--class", "^Corvane$")) > 1, start), 1.0, "s"))
    time.sleep(5)
    subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Corvane$", "windowactivate", "--sync"], check=True)
    rows.append(("memory with the window", resident(process.pid), 110, "MB"))
    subprocess.run(["xdotool", "key", "ctrl+w"], check=True)
    time.sleep(3)
    left = windows("--onlyvisible", "--name", "^Corvane$")
    rows.append(("memory in the menu bar only", resident(process.pid), 60, "MB"))
    before = processor_seconds(process.pid)
    time.sleep(IDLE_SECONDS)
    rows.append(("processor while polling", 100 * (processor_seconds(process.pid) - before) / IDLE_SECONDS, 0.3, "%"))
    process.terminate()
    process.wait(20)
    for name, value, budget, unit in rows:
        print(f"{name:30} {value:8.2f} {unit:3} (at most {budget})")
    if left:
        print("The window did not close.")
    return 1 if left or any(value > budget for _, value, budget, _ in rows) else 0


if __name__ == "__main__":
    sys.exit(main())
