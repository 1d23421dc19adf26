"""Measures a running Corvane from outside. Runs inside a simulated Mac with a desktop."""

import os
import pathlib
import statistics
import subprocess
import sys
import time

IDLE_SECONDS = 45  # three polls
ROUNDS = 15
SETTLING = 2
BUDGETS = {"dot after": (0.5, "s"), "dot and window after": (1.0, "s"), "memory with the window": (110, "MB"),
           "memory in the menu bar only": (60, "MB"), "processor while polling": (0.3, "%"), "wake-ups a minute": (120, "")}


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


def wake_ups(pid):
    """How often the threads of the process went to sleep by themselves, and so were woken."""
    count = 0
    for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status"):
        count += int(status.read_text().split("\nvoluntary_ctxt_switches:")[1].split()[0])
    return count


def start_once(program):
    """Starts the program, opens and closes its window; answers with its process and what was measured."""
    start = time.monotonic()
    process = subprocess.Popen([program])
    # The dot's window in the tray has the program's class; the main window is the second one that can be seen.
    seen = ("--onlyvisible", "--class", "^Corvane$")
    figures = {"dot after": seconds_until(lambda: windows(*seen), start),
               "dot and window after": seconds_until(lambda: len(windows(*seen)) > 1, start)}
    time.sleep(SETTLING)
    figures["memory with the window"] = resident(process.pid)
    subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Corvane$", "windowactivate", "--sync"], check=True)
    subprocess.run(["xdotool", "key", "ctrl+w"], check=True)
    time.sleep(SETTLING)
    figures["memory in the menu bar only"] = resident(process.pid)
    return process, figures


def idle(pid):
    """What the process costs while nobody does anything."""
    before, woken = processor_seconds(pid), wake_ups(pid)
    time.sleep(IDLE_SECONDS)
    return {"processor while polling": 100 * (processor_seconds(pid) - before) / IDLE_SECONDS,
            "wake-ups a minute": (wake_ups(pid) - woken) * 60 / IDLE_SECONDS}


def main():
    rounds = []
    for _ in range(ROUNDS):
        process, figures = start_once(sys.argv[1])
        rounds.append(figures)
        left = windows("--onlyvisible", "--name", "^Corvane$")
        if len(rounds) == ROUNDS:
            figures |= idle(process.pid)
        process.terminate()
        process.wait(20)
    over = bool(left)
    for name, (budget, unit) in BUDGETS.items():
        value = statistics.median(figures[name] for figures in rounds if name in figures)
        over |= value > budget
        print(f"{name:58} {value:10.3f} {unit:8} {'ok' if value <= budget else 'TOO MUCH'} (at most {budget})")
    if left:
        print("The window did not close.")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
