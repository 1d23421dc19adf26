"""Recorded exchanges about what was asked and blocked, the history of a day, timers, and what Pi-hole tells about itself."""

import time
import unittest
import unittest.mock

import recordings
from daily_pihole import DailyCase
from plain_http import get, post

# No exchanges, but observations; the tests named beside them show the same.
OBSERVATIONS = {"40c-history-restart": "HistoryTest.test_Clean_restart_keeps_everything",
                "40e-cost-100k": "the real one's speed is nothing that a stand-in could have",
                "40h-history-clients": "HistoryTest.test_Slots_by_client_add_up",
                "40i-history-slots-move": "HistoryTest.test_Next_slot_is_there_a_minute_early",
                "41o-how-soon-blocked": "QueryTest.test_Counters_and_recent_names_are_there_before_the_log",
                "41q-privacy-levels": "QueryTest.test_Privacy_hides_more_with_each_level",
                "48l-timer-readings": "TimerTest.test_Timer_counts_down_in_tenths",
                "48m-timer-events": "TimerTest", "49a-probes": "ProbeTest",
                "49b-probe-load": "arithmetic on a day of 24 000 questions; ProbeTest shows that they are counted"}

ASKED = (("doubleclick.net", "A"), ("doubleclick.net", "AAAA"), ("doubleclick.net", "HTTPS"), ("ads.flurry.com", "A"),
         ("metrics.example.org", "A"), ("metrics.example.org", "AAAA"), ("metrics.example.org", "HTTPS"),
         ("deep.example.org", "A"), ("cdn.example.org", "A"), ("alias.example.org", "A"), ("tracker7.example.net", "A"),
         ("bad.example.net", "A"), ("sub.tracking.example.net", "A"), ("extnull.example.org", "A"),
         ("extnull.example.org", "AAAA"), ("extip.example.org", "A"), ("extnxra.example.org", "A"),
         ("extede.example.org", "A"), ("use-application-dns.net", "A"), ("mask.icloud.com", "A"))


class ActivityCase(DailyCase):
    def setUp(self):
        super().setUp()
        self.furnish()

    def ask(self, *asked):
        for name, kind in asked:
            self.pihole.short(name, kind)

    def get(self, target):
        return get(self.pihole.web_port, target, self.sid).json


class ActivityExchanges(ActivityCase):
    shapes = {"40a-history-just-started", "40b-history-first-start", "40d-history-day", "40f-history-database",
              "41a-queries-blocked-since", "41b-queries-all-since", "41c-queries-disk", "41d-queries-status",
              "41g-queries-blocked-2", "41h-queries-client", "41i-queries-from-bad", "41j-queries-from-future",
              "41k-queries-order-asc", "41l-queries-cursor", "41n-suggestions", "41p-queries-allowed",
              "42a-recent-blocked", "42b-recent-blocked-10", "42c-top-domains-blocked", "42d-top-domains-blocked-3",
              "42e-top-domains", "42f-top-clients-blocked", "47j-summary-first-start", "47m-version", "47n-ftl",
              "47o-system", "47p-summary-day", "47q-database", "47u-padd"}

    def test_History_is_as_recorded(self):
        self.replay_all("40b-history-first-start")
        self.ask(("example.com", "A"), ("doubleclick.net", "A"))
        self.replay_all("40a-history-just-started", "40d-history-day", "40g-history-database-no-range")
        since = time.time() - 3600
        answer = get(self.pihole.web_port, f"/api/history/database?from={since:.0f}&until={since + 7200:.0f}", self.sid)
        self.compare("40f-history-database", recordings.load("40f-history-database").answer, answer)

    def test_Queries_are_as_recorded(self):
        self.ask(("example.com", "A"), *[("mask.icloud.com", "A")] * 6, *ASKED, ("localhost", "A"))
        self.replay_all("41d-queries-status", "41e-queries-status-unknown", "41f-queries-status-two", "41g-queries-blocked-2",
                        "41i-queries-from-bad", "41l-queries-cursor", "41m-queries-cursor-too-large", "41n-suggestions")
        self.replay_since("41a-queries-blocked-since", "41b-queries-all-since", "41k-queries-order-asc")
        self.replay_ahead("41c-queries-disk", "41j-queries-from-future")
        self.replay_all("41h-queries-client")

    def replay_since(self, *names):
        """The recorded times lie in the past of the stand-in's own clock or in its future: all its questions count."""
        for name in names:
            target = recordings.load(name).target.replace("from=1795288057.871", "from=1.5")
            answer = get(self.pihole.web_port, target, self.sid)
            self.compare(name, recordings.load(name).answer, answer)

    def replay_ahead(self, *names):
        for name in names:
            target = recordings.load(name).target.replace("from=1795288160", "from=99999999999")
            answer = get(self.pihole.web_port, target, self.sid)
            self.assertEqual(answer.json["queries"], [])
            self.compare(name, recordings.load(name).answer, answer)

    def test_Every_kind_of_blocked_question_is_listed_as_recorded(self):
        self.ask(*ASKED)
        def told(query):
            return (query["domain"], query["type"], query["status"], query["reply"]["type"], query["list_id"],
                    query["cname"], query["upstream"] is None)
        ours = self.get("/api/queries?upstream=blocklist&length=100")["queries"]
        recorded = self.recorded("41a-queries-blocked-since")["queries"]
        self.assertEqual([told(query) for query in ours], [told(query) for query in recorded])

    def test_An_allowed_name_carries_its_permission(self):
        self.change("/api/domains/allow/exact", {"domain": "doubleclick.net"})
        time.sleep(0.05)
        self.ask(("doubleclick.net", "A"))
        self.compare("41p-queries-allowed", recordings.load("41p-queries-allowed").answer,
                     get(self.pihole.web_port, "/api/queries?domain=doubleclick.net&length=1", self.sid))
        newest = self.get("/api/queries?domain=*click.net&length=1")["queries"][0]
        self.assertEqual((newest["status"], newest["list_id"]), ("FORWARDED", 3))

    def test_Top_lists_are_as_recorded(self):
        self.ask(("example.com", "A"), *ASKED)
        self.replay_all("42a-recent-blocked", "42b-recent-blocked-10", "42c-top-domains-blocked",
                        "42d-top-domains-blocked-3", "42e-top-domains", "42f-top-clients-blocked")
        self.assertEqual(self.get("/api/stats/recent_blocked"), {"blocked": ["mask.icloud.com"],
                                                                 "took": unittest.mock.ANY})
        counts = {each["domain"]: each["count"] for each in self.get("/api/stats/top_domains?blocked=true")["domains"]}
        self.assertEqual((counts["stats.g.doubleclick.net"], counts["metrics.example.org"], counts["bad.example.net"]),
                         (4, 3, 2))

    def test_Pihole_tells_about_itself_as_recorded(self):
        self.replay_all("47j-summary-first-start")
        self.ask(("example.com", "A"), ("doubleclick.net", "A"))
        self.replay_all("47m-version", "47n-ftl", "47o-system", "47p-summary-day", "47q-database", "47u-padd")

    def test_Messages_are_told_and_deleted_as_recorded(self):
        self.subscribe("http://127.0.0.1:8090/a.txt", trouble="refused")
        self.subscribe("http://127.0.0.1:8090/b.txt", trouble="refused")
        self.run_lists()
        self.subscribe("http://127.0.0.1:8090/a.txt", names=["a.example"])
        self.subscribe("http://127.0.0.1:8090/b.txt", names=["b.example"])
        self.run_lists()
        self.pihole.ask(do="advance", seconds=25)
        answer = get(self.pihole.web_port, "/api/info/messages", self.sid)
        answer.body = answer.body.replace(b"4.2", b"4.6")
        self.compare("47r-messages", recordings.load("47r-messages").answer, answer)
        self.replay_all("47s-message-delete", "47t-message-delete-again")


class TimerExchanges(ActivityCase):
    def test_Timers_are_set_as_recorded(self):
        self.replay_all("48a-timer-30", "48b-timer-second-pause", "48c-timer-3600", "48d-timer-86400", "48e-timer-fraction",
                        "48f-timer-tiny", "48g-timer-huge", "48h-timer-1e308", "48i-timer-infinity", "48j-on-with-timer")
        post(self.pihole.web_port, "/api/dns/blocking", self.sid, {"blocking": True})
        self.replay_all("48k-on-with-timer-later")


class TimerTest(ActivityCase):
    def pause(self, seconds, blocking=False):
        post(self.pihole.web_port, "/api/dns/blocking", self.sid, {"blocking": blocking, "timer": seconds})

    def blocking(self):
        answer = self.get("/api/dns/blocking")
        return answer["blocking"], answer["timer"]

    def test_Timer_counts_down_in_tenths(self):
        self.pause(30)
        self.pihole.ask(do="advance", seconds=0.55)
        left = self.blocking()[1]
        self.assertLessEqual(left, 29.5 + 1e-6)
        self.assertAlmostEqual(left * 10, round(left * 10), places=6)

    def test_Timer_survives_run_and_rules_but_no_restart(self):
        self.pause(300)
        self.run_lists()
        self.change("/api/domains/allow/exact", {"domain": "x.example.com"})
        self.assertGreater(self.blocking()[1], 290)
        self.pihole.set("restart", 0.1)
        post(self.pihole.web_port, "/api/action/restartdns", self.sid, {})
        time.sleep(0.6)
        self.assertEqual(self.blocking(), ("disabled", None))

    def test_Killed_pihole_comes_back_switched_off(self):
        self.pause(300)
        self.pihole.restart(by_force=True)
        self.sid, _ = self.log_in()
        self.assertEqual(self.blocking(), ("disabled", None))

    def test_Timer_stands_still_while_the_process_does(self):
        self.pause(12)
        self.pihole.freeze(1.5)
        self.assertGreater(self.blocking()[1], 11)

    def test_Switching_on_for_a_time_switches_off_afterwards(self):
        self.pause(None)
        self.pause(2, blocking=True)
        self.pihole.ask(do="advance", seconds=3)
        self.assertEqual(self.blocking(), ("disabled", None))


class HistoryTest(ActivityCase):
    def sums(self):
        history = self.get("/api/history")["history"]
        self.assertEqual(len(history), 145)
        return sum(slot["total"] for slot in history), sum(slot["blocked"] for slot in history)

    def counted(self):
        queries = self.get("/api/stats/summary")["queries"]
        return queries["total"], queries["blocked"]

    def test_Clean_restart_keeps_everything(self):
        self.ask(("example.com", "A"), *ASKED)
        before = self.counted()
        self.assertEqual(self.sums(), before)
        self.pihole.restart()
        self.sid, _ = self.log_in()
        self.assertEqual((self.counted(), self.sums()), (before, before))

    def test_Kill_loses_what_came_since_it_was_written_down(self):
        self.ask(("example.com", "A"))
        self.pihole.restart()
        self.sid, _ = self.log_in()
        before = self.counted()
        self.ask(("doubleclick.net", "A"))
        self.pihole.restart(by_force=True)
        self.sid, _ = self.log_in()
        self.assertEqual(self.counted(), before)

    def test_Next_slot_is_there_a_minute_early(self):
        now = time.time()
        self.pihole.ask(do="advance", seconds=600 - now % 600 - 90)   # a minute and a half before the end of a slot
        last = self.get("/api/history")["history"][-1]["timestamp"]
        self.pihole.ask(do="advance", seconds=40)
        self.assertEqual(self.get("/api/history")["history"][-1]["timestamp"], last + 600)
        self.assertEqual(last % 600, 300)

    def test_Slots_by_client_add_up(self):
        self.ask(("example.com", "A"), ("doubleclick.net", "A"))
        answer = self.get("/api/history/clients?N=0")
        self.assertEqual(len(answer["history"]), 145)
        self.assertEqual(sum(slot["data"]["172.17.0.1"] for slot in answer["history"]),
                         answer["clients"]["172.17.0.1"]["total"])
        self.assertEqual({slot["data"]["others"] for slot in answer["history"]}, {0})


class QueryTest(ActivityCase):
    def test_Counters_and_recent_names_are_there_before_the_log(self):
        self.pihole.set("log_delay", 60)
        self.ask(("doubleclick.net", "A"))
        self.assertEqual(self.get("/api/stats/recent_blocked")["blocked"], ["doubleclick.net"])
        self.assertEqual(self.get("/api/stats/summary")["queries"]["blocked"], 1)
        self.assertEqual(sum(slot["blocked"] for slot in self.get("/api/history")["history"]), 1)
        self.assertEqual(self.get("/api/queries")["queries"], [])

    def test_Privacy_hides_more_with_each_level(self):
        seen = []
        for level in (1, 2, 3):
            self.pihole.set("privacy", level)
            self.ask(("doubleclick.net", "A"))
            queries = self.get("/api/queries?length=1")["queries"]
            seen.append([(query["domain"], query["client"]["ip"]) for query in queries])
            self.assertEqual(self.get("/api/stats/recent_blocked")["blocked"], [])
            self.assertEqual(self.get("/api/stats/top_domains")["total_queries"], -1)
            self.assertEqual(self.get("/api/stats/top_clients")["total_queries"], 1 if level == 1 else -1)
            self.assertEqual(len(self.get("/api/history/clients")["history"]), 145 if level == 1 else 0)
            self.assertEqual(self.get("/api/stats/summary")["queries"]["total"], level)
        self.assertEqual(seen, [[("hidden", "172.17.0.1")], [("hidden", "0.0.0.0")], []])


class ProbeTest(ActivityCase):
    def counted(self, *asked, options=()):
        """How many of the questions were counted, and the newest in the log."""
        before = self.get("/api/stats/summary")["queries"]["total"]
        for name, kind in asked:
            self.pihole.dig(name, kind, *options)
        newest = (self.get("/api/queries?length=1")["queries"] or [None])[0]
        return self.get("/api/stats/summary")["queries"]["total"] - before, newest

    def test_The_name_of_pihole_itself_is_not_counted(self):
        self.assertEqual(self.counted(("pi.hole", "A"), ("pi.hole", "AAAA"), ("pi.hole", "HTTPS"))[0], 0)
        self.assertRegex(self.pihole.dig("pi.hole"), r"flags: qr aa(?s:.)*pi.hole.\t+0\tIN\tA\t172.17.0.2")

    def test_Everything_else_is_counted(self):
        asked = (("localhost", "A"), ("x.localhost", "A"), ("corvane-check.invalid", "A"), ("corvane-check.test", "A"),
                 ("version.bind", "TXT"), ("example.com", "NS"))
        self.assertEqual(self.counted(*asked)[0], len(asked))
        self.assertEqual(self.pihole.short("x.localhost"), "127.0.0.1")
        self.assertIn("status: NXDOMAIN", self.pihole.dig("corvane-check.invalid"))

    def test_A_client_can_be_named_by_its_whole_address(self):
        self.ask(("example.com", "A"))
        for subnet, client in (("192.0.2.53/32", "192.0.2.53"), ("127.0.0.1/32", "172.17.0.1"), ("192.0.2.0/24", "172.17.0.1")):
            _, newest = self.counted(("example.com", "A"), options=(f"+subnet={subnet}",))
            self.assertEqual(newest["client"]["ip"], client)
            if client != "172.17.0.1":
                self.assertEqual(newest["status"], "FORWARDED")

    def test_Pihole_asks_for_the_names_of_its_clients(self):
        self.pihole.set("own_questions", 0)
        self.pihole.ask(do="restart")
        time.sleep(0.3)
        self.counted(("example.com", "A"), options=("+subnet=192.0.2.53/32",))
        time.sleep(0.1)
        own = [query for query in self.get("/api/queries")["queries"] if query["type"] == "PTR"]
        self.assertEqual({(query["domain"], query["client"]["ip"]) for query in own},
                         {("53.2.0.192.in-addr.arpa", "127.0.0.1"), ("1.0.0.127.in-addr.arpa", "127.0.0.1")})


if __name__ == "__main__":
    unittest.main()
