"""A stand-in in the state in which the exchanges of daily life were recorded: its lists, its rules, its questions."""

import recordings
from exchange_case import ExchangeCase
from plain_http import post

HOSTS, ADS, ABP = "file:///opt/lists/hosts.txt", "http://127.0.0.1:8090/ads.txt", "http://127.0.0.1:8090/abp.txt"
SLOW = "http://127.0.0.1:8090/slow.txt"
_HOSTS = ["doubleclick.net", "ad.doubleclick.net", "googleads.g.doubleclick.net", "stats.g.doubleclick.net"]
_HOSTS += [f"ads{number}.tracker.example" for number in range(17)]
TRACKER = {"domain": "(^|\\.)tracker[0-9]+\\.example\\.net$"}


class DailyCase(ExchangeCase):
    """Three lists of 21, 3 and 3 entries, one denying expression and one denied name."""

    client = "172.17.0.1"

    def setUp(self):
        super().setUp()
        self.pihole.set("pace", 0.01)
        self.pihole.set("effect", 0)
        self.pihole.set("log_delay", 0)
        self.pihole.ask(do="only-source", address=HOSTS, names=_HOSTS)
        self.pihole.ask(do="gravity", word="missing")
        self.sid, _ = self.log_in()

    def furnish(self):
        """Lists and rules as they were recorded."""
        self.run_lists()
        self.run_lists()
        self.subscribe(ADS, "test", names=["doubleclick.net", "stats.g.doubleclick.net", "ads.flurry.com"], dated=True)
        self.subscribe(ABP, "test", abp=["tracking.example.net", "tracking.example.org", "banner.example.net"])
        self.change("/api/domains/deny/regex", TRACKER)
        self.change("/api/domains/deny/exact", {"domain": "bad.example.net"})
        self.run_lists()

    def subscribe(self, address, comment=None, **source):
        self.pihole.ask(do="source", address=address, **source)
        self.pihole.ask(do="list", address=address, comment=comment)

    def change(self, target, value):
        answer = post(self.pihole.web_port, target, self.sid, value)
        self.assertEqual(answer.status, 201, answer.body)
        return answer

    def run_lists(self):
        """One whole list run; its text."""
        answer = post(self.pihole.web_port, "/api/action/gravity", self.sid, {})
        self.assertTrue(answer.body.decode().endswith("[✓] Done.\n"), answer.body.decode())
        return answer.body.decode()

    def replay_all(self, *names):
        for name in names:
            self.replay(name, self.sid)

    def recorded(self, name):
        """The recorded answer's JSON."""
        return recordings.load(name).answer.json
