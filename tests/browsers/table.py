"""Whom real browsers ask for names while the Mac's DNS points at Pi-hole, as a table.

    table.py [--rule] [--seconds N] [--jobs N]
    table.py --interruptions [--jobs N]

Every row is a fresh simulated Mac and a fresh profile. The names in a row are those of whoever was asked, in the order in
which the browser went over to them; there is a new name every two seconds. `--interruptions` shows what becomes of browsers
whose settings are untouched when the rule has no effect for a while.
"""

import argparse
import concurrent.futures
import json
import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
SIMMAC = f"{os.path.dirname(os.path.dirname(HERE))}/simmac/simmac"

SERVERS = {"Pi-hole only": "127.0.0.1", "with 1.1.1.1": "127.0.0.1 1.1.1.1", "with the router": "127.0.0.1 192.168.1.1"}
SETTINGS = {"chromium": ("nothing", "automatic", "off", "secure"), "firefox": ("nothing", "0", "2", "3", "5")}
ROWS = [(servers, browser, setting) for servers in SERVERS for browser in SETTINGS for setting in SETTINGS[browser]]

# What happens, at which second, and how long the page stays open.
OUTAGE = ["--at", "30", "pihole silent on", "--at", "60", "pihole silent off"]
INTERRUPTIONS = [
    ("Pi-hole silent from 30 to 60 s", "chromium", 660, OUTAGE),
    ("Pi-hole silent from 30 to 60 s", "firefox", 240, OUTAGE),
    ("Pi-hole silent from 300 to 330 s", "chromium", 420, ["--at", "300", OUTAGE[2], "--at", "330", OUTAGE[5]]),
    ("blocking off from 30 to 90 s", "chromium", 150, ["--at", "30", "blocking off", "--at", "90", "blocking on"]),
    ("the outage, then other servers and back at 80 and 100 s", "chromium", 150,
     [*OUTAGE, "--at", "80", "servers Wi-Fi 127.0.0.1", "--at", "100", "servers Wi-Fi 127.0.0.1 1.1.1.1"]),
    ("the outage, then the browser is quit and opened again at 80 s", "chromium", 140, [*OUTAGE, "--at", "80", "reopen"]),
]


def asked(servers, browser, setting, lasting, *more):
    """Who was asked for each name of the page, in its order."""
    words = [SIMMAC, "run", "--state", "protected", "--set", f"servers=Wi-Fi {SERVERS[servers]}", "--",
             "/usr/bin/python3", f"{HERE}/visit.py", browser, setting, str(lasting), *more]
    done = subprocess.run(words, capture_output=True, text=True, timeout=lasting + 120, check=False)
    if done.returncode != 0:
        raise RuntimeError(done.stderr or done.stdout)
    return json.loads(done.stdout.splitlines()[-1])


def stages(entries):
    """The same, shortened: (who, how many names) for each stretch of names that went to the same servers."""
    found = []
    for entry in entries:
        who = " and ".join(entry) or "nobody"
        if found and found[-1][0] == who:
            found[-1][1] += 1
        else:
            found.append([who, 1])
    return [(who, count) for who, count in found]


def told(entries):
    """The same in words."""
    return ", then ".join(f"{who} ({count})" for who, count in stages(entries))


def print_interruptions(jobs):
    """Prints what becomes of browsers when the rule has no effect for a while."""
    print("| what happens | browser | who was asked (names) |\n|---|---|---|")
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        runs = [(case, pool.submit(asked, "with 1.1.1.1", case[1], "nothing", case[2], "--rule", *case[3]))
                for case in INTERRUPTIONS]
        for case, run in runs:
            print("|", " | ".join((case[0], case[1], told(run.result()))), "|", flush=True)


def main():
    """Prints the table."""
    parser = argparse.ArgumentParser()
    parser.add_argument("--rule", action="store_true")
    parser.add_argument("--interruptions", action="store_true")
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--jobs", type=int, default=3)
    options = parser.parse_args()
    if options.interruptions:
        print_interruptions(options.jobs)
        return 0
    more = ["--rule"] if options.rule else []
    print("| name servers | browser | its setting | who was asked (names) |\n|---|---|---|---|")
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        runs = [(row, pool.submit(asked, *row, options.seconds, *more)) for row in ROWS]
        for row, run in runs:
            print("|", " | ".join((*row, told(run.result()))), "|", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
