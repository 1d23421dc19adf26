"""Measures a running Corvane from outside. Runs inside a simulated Mac with a desktop."""

import collections
import importlib.util
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import time

CPUCLOCK_SCHED = 2   # of <linux/posix-timers.h>: the clock of a process by its number
IDLE_SECONDS = 45  # three polls
ROUNDS = 15
SETTLING = 2
SIMMAC = pathlib.Path(__file__).resolve().parents[2] / "simmac" / "simmac"
# Whose pages they are, by the name of the mapped file: the first one that matches.
OWNERS = (("Qt Quick and QML", r"libQt6(Quick|Qml|Labs|OpenGL)|/qml/"), ("the rest of Qt", r"libQt6|/qt6/"),
          ("ICU, for Qt's texts", r"libicu"), ("the keyring, the bus and glib", r"libsecret|libgcrypt|libg(io|lib|object|module|pg)|dbus"),
          ("drawing, fonts and the display", r"free|harfbuzz|font|png|libX|xcb|xkb|GL|/fonts/|\.[ot]tf"),
          ("the C and C++ libraries", r"libstdc|libc\.|libm\.|ld-linux|libgcc"), ("other libraries", r"\.so"),
          ("Corvane's program", r"/Corvane$"), ("other files", r"^/"), ("its own memory", r""))
# What a start does, by the call with which each part ends.
PARTS_OF_A_START = (("libraries are found and bound", r'connect\(.*\.X11-unix'), ("Qt meets the display", r'/etc/fonts/fonts\.conf'),
                    ("fonts, the state, the dot", r'openat\(.*/qml/.*\.so'))
BUDGETS = {"dot after": (0.5, "s"), "dot and window after": (1.0, "s"), "memory with the window": (110, "MB"),
           "memory in the menu bar only": (66, "MB"), "memory of its own in the menu bar": (15, "MB"), "processor while polling": (0.3, "%"), "wake-ups a minute": (120, "")}


def windows(*search):
    """The X windows that the search finds."""
    found = subprocess.run(["xdotool", "search", *search], capture_output=True, text=True)
    return found.stdout.split()


def memory(pid, kind="Rss"):
    """Memory of the process in MB: all that is resident, or "Pss", or "Private_Dirty", which no other process shares. None
    when it has ended."""
    try:
        rollup = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    except (FileNotFoundError, ProcessLookupError):
        return 0.0
    return int(re.search(rf"^{kind}: +(\d+) kB$", rollup, re.MULTILINE)[1]) / 1024


def page_map(pid):
    """Resident pages in MB by whose they are, and those of all shared libraries: other programs use these too."""
    sizes, libraries, path = collections.Counter(), 0, ""
    for line in pathlib.Path(f"/proc/{pid}/smaps").read_text().splitlines():
        if found := re.match(r"[0-9a-f]+-[0-9a-f]+ (?:\S+ +){4}(.*)$", line):
            path = found[1]
        elif line.startswith("Rss:"):
            size = int(line.split()[1]) / 1024
            sizes[next(owner for owner, pattern in OWNERS if re.search(pattern, path))] += size
            libraries += size if ".so" in path else 0
    return sizes, libraries


def family(pid):
    """The process and all that it has begun."""
    found = [pid]
    for parent in found:
        begun = subprocess.run(["pgrep", "-P", str(parent)], capture_output=True, text=True).stdout
        found += map(int, begun.split())
    return found


def processor_seconds(pid):
    """Time that the process itself has used, ended threads included; the kernel counts ticks of 10 ms anywhere else."""
    return time.clock_gettime((~pid << 3) | CPUCLOCK_SCHED)


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


def tools_started():
    """How many of the Mac's tools were called so far."""
    return len(subprocess.run([SIMMAC, "ctl", "journal"], capture_output=True, text=True, check=True).stdout.splitlines())


def start_once(program):
    """Starts the program, opens and closes its window; answers with its process and what was measured."""
    start = time.monotonic()
    process = subprocess.Popen([program])
    # The dot's window in the tray has the program's class; the main window is the second one that can be seen.
    seen = ("--onlyvisible", "--class", "^Corvane$")
    figures = {"dot after": seconds_until(lambda: windows(*seen), start),
               "dot and window after": seconds_until(lambda: len(windows(*seen)) > 1, start)}
    time.sleep(SETTLING)
    figures["memory with the window"] = memory(process.pid)
    subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Corvane$", "windowactivate", "--sync"], check=True)
    subprocess.run(["xdotool", "key", "ctrl+w"], check=True)
    time.sleep(SETTLING)
    figures["memory in the menu bar only"] = memory(process.pid)
    figures["memory of its own in the menu bar"] = memory(process.pid, "Private_Dirty")
    figures["pages"], figures["shared libraries in the menu bar"] = page_map(process.pid)
    return process, figures


def parts_of_a_start(program):
    """Seconds of the parts of one start, from a trace of it; tracing makes each a little longer."""
    record = pathlib.Path("/tmp/start.trace")
    tracer = subprocess.Popen(["strace", "-f", "--seccomp-bpf", "-ttt", "-e", "trace=execve,openat,connect", "-o", record, program])
    seconds_until(lambda: len(windows("--onlyvisible", "--class", "^Corvane$")) > 1, time.monotonic())
    seen = time.time()
    subprocess.run(["pkill", "-P", str(tracer.pid)], check=True)
    tracer.wait(20)
    calls = [line.split(None, 2)[1:] for line in record.read_text().splitlines()]
    begun = float(calls[0][0])
    for part, end in PARTS_OF_A_START:
        ended = next(float(at) for at, call in calls if re.search(end, call))
        yield part, ended - begun
        begun = ended
    yield "the first screen", seen - begun


def peers(bare_window):
    """What an empty window of others takes in MB: those that are on this machine. A browser's processes count together, each
    shared page once."""
    commands = {"a bare Qt Quick window": ([bare_window], "Bare window")}
    if importlib.util.find_spec("PyQt6"):
        script = pathlib.Path(__file__).parent / "peers" / "window.py"
        commands["a bare PyQt window"] = (["/usr/bin/python3", "-B", str(script)], "Bare window")
    # Debian's script in front of it wants files that a simulated Mac does not have.
    if chromium := shutil.which("chromium", path="/usr/lib/chromium"):
        commands["Chromium with an empty page"] = ([chromium, "--no-sandbox", "--no-first-run", "--disable-gpu",
                                                    "--user-data-dir=/tmp/peer", "about:blank"], "about:blank")
    for name, (command, title) in commands.items():
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        seconds_until(lambda: windows("--onlyvisible", "--name", title), time.monotonic())
        time.sleep(SETTLING)
        members = family(process.pid)
        size = memory(process.pid) if len(members) == 1 else sum(memory(pid, "Pss") for pid in members)
        if size > 0:   # else it has ended, and is no peer here
            yield name, size
        process.terminate()
        process.wait(20)


def idle(pid):
    """What the process costs while nobody does anything."""
    before, woken, tools = processor_seconds(pid), wake_ups(pid), tools_started()
    time.sleep(IDLE_SECONDS)
    return {"processor while polling": 100 * (processor_seconds(pid) - before) / IDLE_SECONDS,
            "wake-ups a minute": (wake_ups(pid) - woken) * 60 / IDLE_SECONDS,
            "tools started a minute": (tools_started() - tools) * 60 / IDLE_SECONDS}


def median(rounds, name):
    return statistics.median(figures[name] for figures in rounds if name in figures)


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
        value = median(rounds, name)
        over |= value > budget
        print(f"{name:58} {value:10.3f} {unit:8} {'ok' if value <= budget else 'TOO MUCH'} (at most {budget})")
        if name == "memory with the window":
            for peer, size in peers(sys.argv[2]):
                print(f"    peer {peer} {size:.1f}")
        if name == "dot and window after":
            for part, seconds in parts_of_a_start(sys.argv[1]):
                print(f"    part {part} {seconds:.3f}")
        if name == "memory in the menu bar only":
            print(f"    floor pages of shared libraries {median(rounds, 'shared libraries in the menu bar'):.1f}")
            for owner, size in rounds[-1]["pages"].most_common():
                print(f"    part {owner} {size:.1f}")
        if name == "wake-ups a minute":
            print(f"    floor tools started a minute, each waited for {rounds[-1]['tools started a minute']:.1f}")
    if left:
        print("The window did not close.")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
