"""Whom real browsers ask for names while the Mac's DNS points at Pi-hole, as a table.

    table.py [--rule] [--seconds N] [--jobs N]

Every row is a fresh simulated Mac and a fresh profile. The names in a row are those of whoever was asked, in the order in
which the browser went over to them.
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


def main():
    """Prints the table."""
    parser = argparse.ArgumentParser()
    parser.add_argument("--rule", action="store_true")
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--jobs", type=int, default=3)
    options = parser.parse_args()
    more = ["--rule"] if options.rule else []
    print("| name servers | browser | its setting | who was asked (names) |\n|---|---|---|---|")
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        runs = [(row, pool.submit(asked, *row, options.seconds, *more)) for row in ROWS]
        for row, run in runs:
            told = ", then ".join(f"{who} ({count})" for who, count in stages(run.result()))
            print("|", " | ".join((*row, told)), "|", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
