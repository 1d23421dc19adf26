"""Small things in which the stand-in is as the real Pi-hole: flags and options of answers, and what the web refuses."""

import json
import time
import unittest

from pihole_stand_in import StandIn
from plain_http import Connection, exchange, get, log_in


class DetailCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pihole = StandIn()
        cls.addClassCleanup(cls.pihole.close)

    def setUp(self):
        self.pihole.ask(do="reset", password="test-password",
                        knobs={"login_seconds": 0, "login_limit": 1000, "own_questions": -1, "log_delay": 0})
        self.port = self.pihole.web_port


class AnswerTest(DetailCase):
    def test_Blocked_answers_are_own_ones_and_say_why_over_tcp(self):
        for option in ("+notcp", "+tcp"):
            answer = self.pihole.dig("doubleclick.net", "A", option)
            self.assertRegex(answer, r"flags: qr aa rd ra;")
            self.assertEqual("EDE: 15 (Blocked): (gravity)" in answer, option == "+tcp")
        self.assertIn("EDE: 15 (Blocked): (special)", self.pihole.dig("use-application-dns.net", "A", "+tcp"))
        self.assertIn("EDE: 15 (Blocked): (gravity (CNAME))", self.pihole.dig("metrics.example.org", "A", "+tcp"))

    def test_Answers_of_the_upstream_are_not(self):
        self.assertRegex(self.pihole.dig("example.com"), r"flags: qr rd ra;")

    def test_What_the_upstream_does_not_know_comes_without_edns(self):
        for name, kind in (("nosuch.example.com", "A"), ("example.com", "AAAA")):
            self.assertNotIn("EDNS", self.pihole.dig(name, kind))
        self.assertIn("EDNS", self.pihole.dig("example.com"))

    def test_A_busy_day_can_be_had_at_once(self):
        self.pihole.ask(do="day", questions=5000, names=300)
        sid, _ = log_in(self.port)
        slots = get(self.port, "/api/history", sid).json["history"]
        self.assertEqual(sum(slot["total"] for slot in slots), 5000)
        self.assertGreater(sum(slot["total"] > 0 for slot in slots), 140)
        since = time.time() - 400
        recent = get(self.port, f"/api/queries?from={since:.0f}&upstream=blocklist&length=1000", sid).json["queries"]
        self.assertEqual(len({query["domain"] for query in recent if query["domain"].startswith("recent")}), 300)

    def test_A_reset_puts_the_clock_back(self):
        self.pihole.ask(do="advance", seconds=800000)
        self.setUp()
        sid, _ = log_in(self.port)
        newest = get(self.port, "/api/history", sid).json["history"][-1]["timestamp"]
        self.assertLess(abs(newest - time.time()), 1200)

    def test_Pihole_has_its_containers_address(self):
        self.assertEqual(self.pihole.short("pi.hole"), "172.17.0.2")
        self.assertTrue(self.pihole.short("pi.hole", "AAAA").startswith("fe80::"))
        self.assertIn("ANSWER: 0", self.pihole.dig("pi.hole", "HTTPS"))

    def test_Each_blocking_mode_answers_in_its_way(self):
        for mode, v4, v6 in (("zero", "0.0.0.0", "::"), ("nodata", "", ""), ("nxdomain", "", ""),
                             ("ip", "172.17.0.2", "fe80::42:acff:fe11:2"), ("ip-nodata-aaaa", "172.17.0.2", "")):
            self.pihole.set("block_mode", mode)
            self.assertEqual((self.pihole.short("doubleclick.net"), self.pihole.short("doubleclick.net", "AAAA")), (v4, v6))
            status = "NXDOMAIN" if mode == "nxdomain" else "NOERROR"
            self.assertIn(f"status: {status}", self.pihole.dig("doubleclick.net"))

    def test_A_stale_answer_is_counted_as_such(self):
        self.pihole.short("example.com")
        self.pihole.ask(do="advance", seconds=400)
        self.pihole.short("example.com")
        self.pihole.short("example.com")
        sid, _ = log_in(self.port)
        statuses = [query["status"] for query in get(self.port, "/api/queries", sid).json["queries"]]
        self.assertEqual(statuses, ["CACHE", "CACHE_STALE", "FORWARDED"])


class LoginTest(DetailCase):
    def log_in(self, body):
        text = body if isinstance(body, bytes) else json.dumps(body).encode()
        return exchange(self.port, "POST", "/api/auth", [("User-Agent", "a browser")], text)

    def test_Second_factor_is_asked_for_and_used_once(self):
        self.pihole.set("totp", 123456)
        right = {"password": "test-password"}
        missing = self.log_in(right)
        self.assertEqual((missing.status, missing.json["error"]["message"]), (400, "No 2FA token found in JSON payload"))
        wrong = self.log_in({**right, "totp": 1})
        self.assertEqual((wrong.status, wrong.json["error"]["message"]), (401, "Invalid 2FA token"))
        good = self.log_in({**right, "totp": 123456})
        self.assertEqual((good.status, good.json["session"]["totp"]), (200, True))
        again = self.log_in({**right, "totp": 123456})
        self.assertEqual((again.status, again.json["error"]["message"]), (401, "Reused 2FA token"))
        self.assertEqual(self.log_in({"password": "no", "totp": 123456}).status, 401)

    def test_Hint_begins_where_pihole_stopped_to_read(self):
        for body, hint in ((b"{garbage", "arbage"), (b"garbage", "garbage"), (b'{"pass', "pass"), (b'{"a" 1}', "1}"),
                           (b'{"password":', "")):
            self.assertEqual(self.log_in(body).json["error"]["hint"], hint, body)

    def test_Sessions_name_their_program(self):
        sid = self.log_in({"password": "test-password"}).json["session"]["sid"]
        sessions = get(self.port, "/api/auth/sessions", sid).json["sessions"]
        self.assertEqual([session["user_agent"] for session in sessions], ["a browser"])

    def test_Login_page_has_no_length_and_ends_its_connection(self):
        connection = Connection(self.port)
        self.addCleanup(connection.close)
        connection.send("GET", "/admin/login", [("Host", "x")])
        page = connection.receive()
        self.assertEqual((page.status, page.header("Connection"), page.header("Content-Length")), (200, "close", None))
        self.assertIn(b"</html>", page.body)
        self.assertEqual(connection.socket.recv(1), b"")


class UploadTest(DetailCase):
    def upload(self, boundary, archive):
        sid, _ = log_in(self.port)
        body = (f'--{boundary}\r\nContent-Disposition: form-data; name="file"; filename="x.zip"\r\n'
                "Content-Type: application/zip\r\n\r\n").encode() + archive + f"\r\n--{boundary}--\r\n".encode()
        return exchange(self.port, "POST", "/api/teleporter", [
            ("X-FTL-SID", sid), ("Content-Type", f"multipart/form-data; boundary={boundary}")], body)

    def wait_for_restart(self):
        """Until the web has gone and come back."""
        gone, deadline = False, time.monotonic() + 5
        while time.monotonic() < deadline:
            try:
                exchange(self.port, "GET", "/api/info/login")
                if gone:
                    return
            except ConnectionError:
                gone = True
        raise AssertionError("The stand-in did not restart.")

    def test_Boundaries_of_four_to_seventy_letters_are_taken(self):
        archive = get(self.port, "/api/teleporter", log_in(self.port)[0]).body
        self.pihole.set("restart", 0.3)
        for length in (1, 3, 71):
            self.assertEqual(self.upload("b" * length, archive).status, 400, length)
        self.assertEqual(self.upload("b" * 4, archive).status, 200)
        self.wait_for_restart()

    def test_Import_brings_the_rules_of_its_backup(self):
        self.pihole.set("restart", 0.3)
        sid, _ = log_in(self.port)
        archive = get(self.port, "/api/teleporter", sid).body
        exchange(self.port, "POST", "/api/domains/allow/exact", [("X-FTL-SID", sid)], b'{"domain":"later.example"}')
        self.assertEqual(len(get(self.port, "/api/domains", sid).json["domains"]), 1)
        self.assertEqual(self.upload("border", archive).status, 200)
        self.wait_for_restart()
        self.assertEqual(get(self.port, "/api/domains", sid).json["domains"], [])


if __name__ == "__main__":
    unittest.main()
