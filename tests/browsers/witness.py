"""Holds real browsers to it: with Corvane's rule in Pi-hole none goes past it that was not told to.

    witness.py one | all

`one` shows the leak without the rule and its end with it, for the one browser and setting that leaks, in half a minute. `all`
holds every row of the table against what it has to show, for a minute each.
"""

import concurrent.futures
import os
import sys

from profiles import CHROMIUM, FIREFOX
from table import ROWS, asked, stages

SKIPPED = 77
# Whom a browser asks that was told to use secure DNS; all others have to ask Pi-hole alone.
TOLD = {("chromium", "secure"): "dns.google", ("firefox", "2"): "mozilla.cloudflare-dns.com",
        ("firefox", "3"): "mozilla.cloudflare-dns.com"}
LEAK = ("with 1.1.1.1", "chromium", "nothing")
PROVIDER = "chrome.cloudflare-dns.com"


def fault(row, entries, lasting):
    """What is wrong with what a row showed; none when nothing is."""
    if len(entries) < lasting / 4:
        return "hardly any name was asked for"
    told = TOLD.get(row[1:])
    if told:
        return None if any(told in entry for entry in entries) else f"{told} was not asked"
    return None if all(entry == ["pi-hole"] for entry in entries) else "not only Pi-hole was asked"


def held(rows, lasting, jobs):
    """Plays the rows with the rule; tells each, and answers whether all show what they have to."""
    good = True
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for row, run in [(row, pool.submit(asked, *row, lasting, "--rule")) for row in rows]:
            wrong = fault(row, run.result(), lasting)
            good = good and not wrong
            print(*row, stages(run.result()), wrong or "as it has to be", sep=" | ", flush=True)
    return good


def leaks(lasting):
    """Whether the browser goes past Pi-hole without the rule: a witness that sees no leak proves nothing."""
    entries = asked(*LEAK, lasting)
    print(*LEAK, stages(entries), "without the rule", sep=" | ", flush=True)
    return any(PROVIDER in entry for entry in entries)


def main(form):
    """The exit status of the form."""
    missing = [path for path in (CHROMIUM, FIREFOX) if not os.path.exists(path)]
    if form == "one":
        missing = [path for path in missing if path == CHROMIUM]
    if missing:
        print("SKIPPED, NO BROWSER WAS ASKED: there is no", " and no ".join(missing),
              "(scripts/packages-browsers.txt)", file=sys.stderr)
        return SKIPPED
    with concurrent.futures.ThreadPoolExecutor(1) as beside:
        without = beside.submit(leaks, 20)
        good = held([LEAK], 20, 1) if form == "one" else held(ROWS, 60, 2)
    if not without.result():
        print("Without the rule nothing leaked, so that the rule proves nothing.")
        good = False
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
