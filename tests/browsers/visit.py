"""Runs inside a simulated Mac: lets a real browser ask for a new name every two seconds, and tells who was asked.

    visit.py BROWSER SETTING SECONDS [--rule] [--at SECOND EVENT]...

`--rule` first gives Pi-hole the rule that keeps browsers with it. `--at` says what happens while the page is open: "reopen"
(the browser is quit and opened again), "blocking off", "blocking on", or a control command of the simulated Mac.

Prints one line of JSON: a list with one entry for each name, in the order in which the page used them. An entry is the
sorted list of who was asked for that name: "pi-hole", a DNS server's address, or a provider's name.
"""

import argparse
import http.server
import json
import os
import shlex
import subprocess
import threading
import time
import urllib.request

from profiles import BROWSERS

HOME = os.environ["HOME"]
PASSWORD = "correct-horse-9"
API = "http://127.0.0.1:8080/api"
BELOW = "page.example.net"
PERIOD = 2.0
RULE = r"^chrome\.cloudflare-dns\.com$;reply=NXDOMAIN"
# Firefox would make namespaces of its own, which a program in the simulated Mac has no right to.
WITHOUT_SANDBOX = {f"MOZ_DISABLE_{part}_SANDBOX": "1" for part in ("CONTENT", "GMP", "RDD", "SOCKET_PROCESS", "UTILITY")}
WITHOUT_SANDBOX |= {"MOZ_ASSUME_USER_NS": "0", "MOZ_CRASHREPORTER_DISABLE": "1"}
PAGE = """<!doctype html><title>Lookups</title><script>
let number = Number(location.hash.slice(1));
function ask() {
  new Image().src = "http://ads" + number++ + ".BELOW/pixel.png";
}
ask();
setInterval(ask, PERIOD);
</script>""".replace("BELOW", BELOW).replace("PERIOD", str(int(PERIOD * 1000)))


class Page(http.server.BaseHTTPRequestHandler):
    """Serves the one page whatever is asked for."""

    def do_GET(self):
        body = PAGE.encode()
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def control(*words):
    """The list that the simulated Mac answers to a control command, one entry a line."""
    out = subprocess.run(["simmac", "ctl", *words], capture_output=True, text=True, check=True).stdout
    return [json.loads(line) for line in out.splitlines()]


def asked_of_pihole():
    """The names in Pi-hole's own log."""
    sid = call("/auth", {"password": PASSWORD})["session"]["sid"]
    return [query["domain"] for query in call("/queries?length=-1", sid=sid)["queries"]]


def call(path, body=None, sid=""):
    """One call of Pi-hole's web API."""
    data = None if body is None else json.dumps(body).encode()
    request = urllib.request.Request(API + path, data, {"Content-Type": "application/json", "X-FTL-SID": sid})
    with urllib.request.urlopen(request, timeout=10) as reply:
        return json.load(reply)


def who_was_asked():
    """For each name of the page, in its order, who was asked for it."""
    asked = [("pi-hole", name) for name in asked_of_pihole()]
    asked += [(each["server"], each["name"]) for each in control("outside-questions")]
    asked += [tuple(each) for each in control("secure-questions")]
    servers = {}
    for server, name in asked:
        if name.endswith("." + BELOW):
            number = int(name.removesuffix("." + BELOW).removeprefix("ads"))
            servers.setdefault(number, set()).add(server)
    return [sorted(servers.get(number, ())) for number in range(max(servers, default=-1) + 1)]


def add_rule():
    """Gives Pi-hole the rule that Corvane gives it."""
    sid = call("/auth", {"password": PASSWORD})["session"]["sid"]
    call("/domains/deny/regex", {"domain": RULE, "comment": "Corvane"}, sid)


class Browser:
    """A real browser with the page open."""

    def __init__(self, words, address):
        self._words, self._address = words, address
        self.open(0)

    def open(self, number):
        """The names of the page are counted from this number on."""
        with open("/tmp/browser.log", "ab") as log:
            self._process = subprocess.Popen([*self._words, f"{self._address}#{number}"], stdin=subprocess.DEVNULL,
                                             stdout=log, stderr=log, env=os.environ | WITHOUT_SANDBOX)

    def quit(self):
        self._process.terminate()
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            self._process.kill()


def happen(browser, second, words):
    """What one event says."""
    if words == ["reopen"]:
        browser.quit()
        browser.open(int(second / PERIOD))
    elif words[0] == "blocking":
        sid = call("/auth", {"password": PASSWORD})["session"]["sid"]
        call("/dns/blocking", {"blocking": words[1] == "on"}, sid)
    else:
        control(*words)


def visit(browser, setting, lasting, events):
    """Opens the page in the browser for so many seconds; each event is a second and what happens then."""
    page = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Page)
    threading.Thread(target=page.serve_forever, daemon=True).start()
    opened = Browser(BROWSERS[browser](f"{HOME}/profile", setting), f"http://127.0.0.1:{page.server_port}/")
    began = time.monotonic()
    for second, words in sorted(events):
        time.sleep(max(0.0, began + second - time.monotonic()))
        happen(opened, second, shlex.split(words))
    time.sleep(max(0.0, began + lasting - time.monotonic()))
    opened.quit()


def arguments():
    """What the command line says."""
    parser = argparse.ArgumentParser()
    parser.add_argument("browser", choices=BROWSERS)
    parser.add_argument("setting")
    parser.add_argument("seconds", type=float)
    parser.add_argument("--rule", action="store_true")
    parser.add_argument("--at", nargs=2, action="append", default=[], metavar=("SECOND", "EVENT"))
    return parser.parse_args()


if __name__ == "__main__":
    asked = arguments()
    if asked.rule:
        add_rule()
    visit(asked.browser, asked.setting, asked.seconds, [(float(second), words) for second, words in asked.at])
    time.sleep(1.0)   # Pi-hole writes its log once a second
    print(json.dumps(who_was_asked()))
