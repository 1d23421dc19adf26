"""The stand-in Pi-hole's web API over time: sessions, timers, the query log, imports, connections."""

import json
import time
import unittest

from pihole_stand_in import StandIn
from plain_http import Connection, exchange, get, log_in, post


class WebCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pihole = StandIn()
        cls.addClassCleanup(cls.pihole.close)

    def setUp(self):
        self.pihole.ask(do="reset", password="test-password", knobs={"login_seconds": 0, "login_limit": 1000, "own_questions": -1})
        self.port = self.pihole.web_port
        self.sid, self.csrf = log_in(self.port)

    def blocking(self):
        answer = get(self.port, "/api/dns/blocking", self.sid).json
        return answer["blocking"], answer["timer"]

    def log_in_with(self, password):
        return exchange(self.port, "POST", "/api/auth", body=json.dumps({"password": password}).encode())


class SessionTest(WebCase):
    def test_Cookie_names_the_session_that_was_sent(self):
        self.assertIn(f"sid={self.sid};", get(self.port, "/api/dns/blocking", self.sid).header("Set-Cookie"))

    def test_Seventeenth_session_finds_no_seat(self):
        answers = [self.log_in_with("test-password").status for _ in range(17)]
        self.assertEqual(answers, [200] * 15 + [429] * 2)

    def test_Every_call_renews_a_session(self):
        for _ in range(3):
            self.pihole.ask(do="advance", seconds=1700)
            self.assertEqual(get(self.port, "/api/dns/blocking", self.sid).status, 200)
        log_in(self.port)
        self.assertEqual(get(self.port, "/api/dns/blocking", self.sid).status, 200)

    def test_Seat_that_ran_out_goes_to_the_next_login(self):
        for _ in range(15):
            log_in(self.port)
        self.pihole.ask(do="advance", seconds=1801)
        self.assertEqual(self.log_in_with("test-password").status, 200)
        self.assertEqual(get(self.port, "/api/dns/blocking", self.sid).status, 401)

    def test_Only_three_logins_fit_into_a_second(self):
        self.pihole.set("login_limit", 3)
        time.sleep(1.02 - time.time() % 1)
        answers = [self.log_in_with("wrong") for _ in range(3)] + [self.log_in_with("test-password")]
        self.assertEqual([answer.status for answer in answers], [401, 401, 401, 429])
        self.assertEqual(answers[3].json["error"]["key"], "rate_limiting")
        self.assertIsNone(answers[3].header("Retry-After"))
        self.assertGreaterEqual(answers[3].json["took"], 0.25)
        self.assertEqual(self.log_in_with("test-password").status, 429)
        time.sleep(1.02 - time.time() % 1)
        self.assertEqual(self.log_in_with("test-password").status, 200)


class TimerTest(WebCase):
    def test_Timer_runs_down_in_tenths_and_blocking_returns(self):
        answer = post(self.port, "/api/dns/blocking", self.sid, {"blocking": False, "timer": 1}).json
        self.assertEqual((answer["blocking"], answer["timer"]), ("disabled", 1))
        seen, deadline = [], time.monotonic() + 3
        while (state := self.blocking())[0] == "disabled" and time.monotonic() < deadline:
            if state[1] > 0.3:
                self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")
            seen.append(state[1])
            time.sleep(0.03)
        self.assertEqual(state, ("enabled", None))
        self.assertEqual(seen, sorted(seen, reverse=True))
        self.assertTrue(all(abs(left * 10 - round(left * 10)) < 1e-6 for left in seen), seen)
        self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")

    def test_Timer_of_five_seconds_reads_below_zero_at_its_end(self):
        post(self.port, "/api/dns/blocking", self.sid, {"blocking": False, "timer": 5})
        self.pihole.ask(do="advance", seconds=4.8)
        lowest, deadline = 5.0, time.monotonic() + 3
        while (state := self.blocking())[0] == "disabled" and time.monotonic() < deadline:
            lowest = min(lowest, state[1])
        self.assertAlmostEqual(lowest, -0.1, places=6)

    def test_Timer_can_also_end_a_time_of_blocking(self):
        post(self.port, "/api/dns/blocking", self.sid, {"blocking": True, "timer": 60})
        self.pihole.ask(do="advance", seconds=61)
        self.assertEqual(self.blocking(), ("disabled", None))

    def test_Timers_that_are_none_are_no_timers(self):
        for timer in (0, -5, "300", None, True):
            post(self.port, "/api/dns/blocking", self.sid, {"blocking": False, "timer": timer})
            self.pihole.ask(do="advance", seconds=400)
            self.assertEqual(self.blocking(), ("disabled", None), timer)


class QueryTest(WebCase):
    def test_Queries_show_a_tenth_of_a_second_later_or_more(self):
        delays = []
        for number in range(5):
            name = f"x{number}.example.com"
            self.pihole.short(name)
            answered = time.monotonic()
            while get(self.port, "/api/queries?length=1", self.sid).json["queries"][:1] == [] or \
                    get(self.port, "/api/queries?length=1", self.sid).json["queries"][0]["domain"] != name:
                self.assertLess(time.monotonic() - answered, 10, "never")
            delays.append(time.monotonic() - answered)
        self.assertGreater(min(delays), 0.08)

    def test_Counters_change_at_once(self):
        before = get(self.port, "/api/stats/summary", self.sid).json["queries"]
        self.pihole.short("doubleclick.net")
        self.pihole.short("example.com")
        after = get(self.port, "/api/stats/summary", self.sid).json["queries"]
        self.assertEqual((after["total"] - before["total"], after["blocked"] - before["blocked"]), (2, 1))
        self.assertAlmostEqual(after["percent_blocked"], 50.0)

    def test_Lengths_are_kept_newest_first_in_lower_case(self):
        self.pihole.set("log_delay", 0)
        for number in range(4):
            self.pihole.short(f"N{number}.Example.COM")
        domains = [query["domain"] for query in get(self.port, "/api/queries", self.sid).json["queries"]]
        self.assertEqual(domains, [f"n{number}.example.com" for number in (3, 2, 1, 0)])
        for length, count in (("2", 2), ("0", 0), ("-1", 4), ("300", 4), ("rubbish", 4)):
            answer = get(self.port, f"/api/queries?length={length}", self.sid).json
            self.assertEqual(len(answer["queries"]), count, length)
            self.assertEqual(answer["recordsTotal"], 4)

    def test_Delay_can_be_set(self):
        self.pihole.set("log_delay", 5)
        self.pihole.short("example.com")
        self.assertEqual(get(self.port, "/api/queries", self.sid).json["queries"], [])
        self.pihole.ask(do="advance", seconds=5)
        self.assertEqual(len(get(self.port, "/api/queries", self.sid).json["queries"]), 1)


class ImportTest(WebCase):
    def upload(self, archive):
        body = (b'--border\r\nContent-Disposition: form-data; name="file"; filename="x.zip"\r\n'
                b"Content-Type: application/zip\r\n\r\n" + archive + b"\r\n--border--\r\n")
        return exchange(self.port, "POST", "/api/teleporter", [("X-FTL-SID", self.sid), (
            "Content-Type", "multipart/form-data; boundary=border")], body)

    def test_Import_takes_the_resolver_away_for_a_moment(self):
        self.pihole.set("restart", 6)   # long enough for a busy machine
        archive = get(self.port, "/api/teleporter", self.sid).body
        self.assertEqual(len(self.upload(archive).json["files"]), 8)
        time.sleep(0.15)
        self.assertIn("timed out", self.pihole.dig("example.com"))
        deadline = time.monotonic() + 12
        while True:
            try:
                answer = get(self.port, "/api/dns/blocking", self.sid)
                break
            except ConnectionError:
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.02)
        self.assertEqual(answer.json["blocking"], "enabled")

    def test_During_an_import_connections_end_without_an_answer(self):
        self.pihole.set("restart", 3)
        archive = get(self.port, "/api/teleporter", self.sid).body
        self.upload(archive)
        time.sleep(0.2)
        with self.assertRaises(ConnectionError):
            get(self.port, "/api/dns/blocking", self.sid)

    def test_Backup_made_while_blocking_was_off_turns_it_off(self):
        self.pihole.set("restart", 0.1)
        post(self.port, "/api/dns/blocking", self.sid, {"blocking": False})
        archive = get(self.port, "/api/teleporter", self.sid).body
        post(self.port, "/api/dns/blocking", self.sid, {"blocking": True})
        self.upload(archive)
        time.sleep(0.4)
        self.assertEqual(self.blocking(), ("disabled", None))


class ConnectionTest(WebCase):
    def test_Idle_connection_is_closed_after_five_seconds(self):
        connection = Connection(self.port, 8)
        self.addCleanup(connection.close)
        connection.send("GET", "/api/info/login", [("Host", "x")])
        self.assertEqual(connection.receive().status, 200)
        began = time.monotonic()
        self.assertEqual(connection.socket.recv(1), b"")
        self.assertAlmostEqual(time.monotonic() - began, 5, delta=0.7)

    def test_One_connection_carries_many_requests(self):
        connection = Connection(self.port)
        self.addCleanup(connection.close)
        for _ in range(5):
            connection.send("GET", "/api/dns/blocking", [("Host", "x"), ("X-FTL-SID", self.sid)])
            self.assertEqual(connection.receive().json["blocking"], "enabled")

    def test_Pages_lead_to_the_login(self):
        self.assertEqual(exchange(self.port, "GET", "/admin").header("Location"), "/admin/")
        self.assertEqual(exchange(self.port, "GET", "/admin/").header("Location"), "/admin/login")
        page = exchange(self.port, "GET", "/admin/login")
        self.assertEqual(page.status, 200)
        self.assertIn(b"<title>Pi-hole", page.body)

    def test_Rubbish_ends_only_its_own_connection(self):
        for rubbish in (b"rubbish\r\n\r\n", b"GET / HTTP/1.1\r\nno colon\r\n\r\n", b"\x00\xff" * 50 + b"\r\n\r\n",
                        b"POST /api/auth HTTP/1.1\r\nContent-Length: -4\r\n\r\n",
                        b"POST /api/auth HTTP/1.1\r\nContent-Length: x\r\n\r\n"):
            connection = Connection(self.port)
            connection.socket.sendall(rubbish)
            self.assertEqual(connection.receive().status, 400, rubbish)
            connection.close()
        self.assertEqual(get(self.port, "/api/dns/blocking", self.sid).status, 200)

    def test_Hanging_web_answers_nothing_until_told(self):
        self.pihole.set("web", "hang")
        with self.assertRaises(TimeoutError):
            exchange(self.port, "GET", "/admin", timeout=0.4)
        self.pihole.set("web", "on")
        self.assertEqual(exchange(self.port, "GET", "/admin").status, 308)


if __name__ == "__main__":
    unittest.main()
