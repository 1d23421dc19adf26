"""Recorded exchanges about names that the user allows and denies, and how soon DNS follows."""

import time
import unittest

from daily_pihole import DailyCase
from plain_http import exchange

# No exchanges, but observations; the tests named beside them show the same.
OBSERVATIONS = {"46a-allow-takes-effect": "EffectTest", "50h-deny-regex-lookups": "EffectTest.test_Own_reply_of_an_expression"}

ALLOWED = "/api/domains/allow/exact"


class RuleExchanges(DailyCase):
    def setUp(self):
        super().setUp()
        self.furnish()

    def test_Names_are_allowed_as_recorded(self):
        self.replay_all("45a-allow-new", "45b-allow-duplicate", "45c-allow-capitals", "45d-allow-blank", "45e-allow-space",
                        "45f-allow-ip", "45g-allow-scheme", "45h-allow-idn", "45i-allow-300", "45j-allow-label-64",
                        "45k-allow-trailing-dot", "45l-allow-wildcard", "45m-allow-no-dot")
        self.change(ALLOWED, {"domain": "_dmarc.example.com", "comment": "x"})
        self.replay_all("45n-allow-array", "45o-allow-array-invalid", "45p-allow-defaults", "45q-allow-denied-name",
                        "45r-allow-malformed", "45s-allow-nosid")
        long = self.recorded("45t-allow-get-all")["domains"][-1]["comment"]
        self.change(ALLOWED, {"domain": "long.example.com", "comment": long})
        self.replay_all("45t-allow-get-all", "45u-allow-get-one", "45v-allow-get-missing", "45w-allow-put",
                        "45x-allow-put-enabled-only")
        self.change(ALLOWED, {"domain": ["one.example.com", "two.example.com"]})
        self.replay_all("45y-allow-put-new", "45z-allow-delete", "45za-allow-delete-again", "45zb-allow-delete-capitals",
                        "45zc-allow-delete-idn", "45zd-allow-batch-delete")

    def test_Expressions_are_denied_as_recorded(self):
        for rule in ("(^|\\.)tracker[0-9]+\\.example\\.net$",):
            self.delete("/api/domains/deny/regex/" + rule.replace("\\", "%5C").replace("^", "%5E"))
        self.delete("/api/domains/deny/exact/bad.example.net")
        self.replay_all("50a-deny-regex-nxdomain", "50b-deny-regex-again", "50c-deny-regex-get", "50d-deny-regex-all",
                        "50e-deny-regex-delete", "50f-deny-regex-delete-again", "50g-deny-regex-broken")

    def delete(self, target):
        self.assertEqual(exchange(self.pihole.web_port, "DELETE", target, [("X-FTL-SID", self.sid)]).status, 204)


class EffectTest(DailyCase):
    """What allowing does to answers."""

    def setUp(self):
        super().setUp()
        self.furnish()

    def assertAllows(self, name, asked=None, works=True):
        """Allowing the name opens the asked one, and deleting it closes that again."""
        asked = asked or name
        before = self.pihole.short(asked)
        self.change(ALLOWED, {"domain": name})
        time.sleep(0.05)
        after = self.pihole.short(asked)
        if works:
            self.assertNotEqual(after, before)
            self.assertEqual(after.splitlines()[-1], "203.0.113.66")
        else:
            self.assertEqual(after, before)
        exchange(self.pihole.web_port, "DELETE", f"{ALLOWED}/{name.lower()}", [("X-FTL-SID", self.sid)])
        time.sleep(0.05)
        self.assertEqual(self.pihole.short(asked), before)

    def test_Allowing_beats_everything_of_pihole_itself(self):
        for name in ("doubleclick.net", "bad.example.net", "tracker7.example.net", "sub.tracking.example.net",
                     "use-application-dns.net", "DoubleClick.net"):
            self.assertAllows(name)

    def test_A_name_on_the_way_is_enough(self):
        for name, asked in (("metrics.example.org", "metrics.example.org"), ("stats.g.doubleclick.net", "metrics.example.org"),
                            ("cdn.example.org", "cdn.example.org"), ("deep.example.org", "deep.example.org"),
                            ("mid.example.org", "deep.example.org"), ("alias.example.org", "alias.example.org")):
            self.assertAllows(name, asked)

    def test_What_does_not_help(self):
        for name, asked in (("extede.example.org", None), ("extnull.example.org", None),
                            ("doubleclick.net.", "doubleclick.net"), ("doubleclick.net", "ad.doubleclick.net")):
            self.assertAllows(name, asked, works=False)

    def test_It_works_a_moment_later_and_survives_restart_and_run(self):
        self.pihole.set("effect", 0.5)
        self.change(ALLOWED, {"domain": "doubleclick.net"})
        self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")
        time.sleep(0.7)
        self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")
        self.run_lists()
        self.pihole.restart()
        self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")

    def test_Blocked_answers_are_short_lived(self):
        self.assertRegex(self.pihole.dig("doubleclick.net"), r"doubleclick.net.\t+2\tIN\tA\t0.0.0.0")
        self.assertRegex(self.pihole.dig("example.com"), r"example.com.\t+300\tIN")
        self.pihole.ask(do="advance", seconds=100)
        self.assertRegex(self.pihole.dig("example.com"), r"example.com.\t+200\tIN")

    def test_Own_reply_of_an_expression(self):
        name = "chrome.cloudflare-dns.com"
        self.assertEqual(self.pihole.short(name), "162.159.61.3\n172.64.41.3")
        self.change("/api/domains/deny/regex", {"domain": f"^{name.replace('.', chr(92) + '.')}$;reply=NXDOMAIN"})
        time.sleep(0.05)
        for kind in ("A", "AAAA", "HTTPS"):
            self.assertIn("status: NXDOMAIN", self.pihole.dig(name, kind))
        self.change("/api/domains/deny/exact", {"domain": name})
        time.sleep(0.05)
        self.assertEqual((self.pihole.short(name), self.pihole.short(name, "AAAA")), ("0.0.0.0", "::"))
        self.assertIn("ANSWER: 0", self.pihole.dig(name, "HTTPS"))


if __name__ == "__main__":
    unittest.main()
