"""Recorded exchanges about lists, search, list runs, and a Pi-hole that never had lists."""

import threading
import time
import unittest

from daily_pihole import ABP, ADS, HOSTS, SLOW, DailyCase
from plain_http import Connection, exchange, get, post

# No exchanges, but observations; the tests named beside them show the same.
OBSERVATIONS = {"44d-gravity-stray-bytes": "RunTest.test_Result_follows_without_a_head",
                "44i-gravity-captive-portal": "RunTest.test_Login_page_replaces_good_lists_by_nothing",
                "44j-gravity-twice": "RunTest.test_Two_runs_at_once_destroy_the_database",
                "44k-gravity-twice-aftermath": "RunTest.test_Two_runs_at_once_destroy_the_database",
                "44l-gravity-changes-during-run": "RunTest.test_What_is_changed_meanwhile_is_lost",
                "44m-gravity-client-gone": "RunTest.test_Run_goes_on_without_its_client",
                "44n-gravity-meanwhile-first": "RunTest.test_Dns_goes_on_meanwhile",
                "44n-gravity-meanwhile-again": "RunTest.test_Dns_goes_on_meanwhile",
                "44o-gravity-no-dns": "RunTest.test_Run_without_dns_fails_behind_its_text",
                "44p-gravity-all-fail": "RunTest.test_Last_update_moves_on_although_every_list_failed",
                "44q-gravity-killed": "RunTest.test_Killed_run_leaves_the_old_lists",
                "44r-restart-during-gravity": "RunTest.test_Restart_waits_for_the_run",
                "44s-stop-during-gravity": "RunTest.test_End_waits_for_the_run",
                "47i-never-second-gravity": "NeverTest.test_Lists_count_only_after_a_second_run",
                "47v-never-then-restart": "NeverTest.test_A_refused_change_puts_them_in_force_too"}


class ListExchanges(DailyCase):
    shapes = {"43a-search-two-lists", "43b-search-abp", "43e-search-cname-target", "43g-search-partial",
              "43m-search-allowed", "43n-search-partial-rules", "47k-messages-lists-failed", "47l-messages-count",
              "47w-messages-restored"}

    def test_Lists_of_the_first_run_are_as_recorded(self):
        self.run_lists()
        self.run_lists()
        self.pihole.ask(do="gravity", word="missing")
        self.run_lists()
        self.pihole.restart()
        self.replay("44a-lists", self.log_in()[0])

    def test_Search_finds_what_was_recorded(self):
        self.furnish()
        self.replay_all("43a-search-two-lists", "43b-search-abp", "43c-search-regex", "43d-search-cname-itself",
                        "43e-search-cname-target", "43f-search-none", "43g-search-partial", "43h-search-empty",
                        "43i-search-space", "43j-search-idn-debug", "43k-search-trailing-dot", "43l-search-N-too-large",
                        "43n-search-partial-rules")
        self.change("/api/domains/allow/exact", {"domain": "doubleclick.net", "comment": "Allowed in Corvane"})
        self.replay_all("43m-search-allowed")

    def test_Same_rows_are_found(self):
        self.furnish()
        for name in ("43a-search-two-lists", "43b-search-abp", "43e-search-cname-target"):
            recorded = self.recorded(name)["search"]
            found = get(self.pihole.web_port, f"/api/search/{recorded['parameters']['domain']}", self.sid).json["search"]
            self.assertEqual([(row["domain"], row["id"], row["number"]) for row in found["gravity"]],
                             [(row["domain"], row["id"], row["number"]) for row in recorded["gravity"]])
            self.assertEqual(found["results"], recorded["results"])

    def test_Run_prints_what_was_recorded(self):
        self.furnish()
        self.replay_text("44b-gravity", self.sid)
        self.replay_text("44c-gravity-color", self.sid)

    def test_Lists_that_fail_are_told_as_recorded(self):
        self.furnish()
        for address, trouble in (("http://127.0.0.1:8090/404.txt", "not-found"), ("http://127.0.0.1:9/refused.txt", "refused"),
                                 ("http://127.0.0.1:8090/html.txt", "page"), ("http://127.0.0.1:8090/empty.txt", "empty"),
                                 ("http://127.0.0.1:8090/500.txt", "error"), ("ftpx://nope/x.txt", "refused"),
                                 ("http://nx.lists.example/list.txt", "refused")):
            self.subscribe(address, trouble=trouble)
        self.replay_text("44e-gravity-lists-fail", self.sid)
        self.replay_all("44f-lists-after-failures")
        self.pihole.ask(do="advance", seconds=25)
        self.replay_all("47k-messages-lists-failed", "47l-messages-count")

    def test_Lists_of_a_server_that_has_gone_are_used_from_their_copies(self):
        self.furnish()
        for address in (ADS, ABP):
            self.pihole.ask(do="source", address=address, trouble="refused")
        self.replay_text("44g-gravity-server-gone", self.sid)
        self.replay_all("44h-lists-cached")


class NeverTest(DailyCase):
    shapes = {"47a-never-summary", "47f-never-messages", "47g-never-ftl"}

    def summary(self):
        return get(self.pihole.web_port, "/api/stats/summary", self.sid).json["gravity"]

    def test_Pihole_without_lists_answers_as_recorded(self):
        self.pihole.ask(do="advance", seconds=25)
        self.replay_all("47a-never-summary", "47b-never-lists", "47c-never-search", "47d-never-allow",
                        "47e-never-blocking", "47f-never-messages", "47g-never-ftl")
        self.assertEqual(self.summary(), {"domains_being_blocked": -2, "last_update": 0})
        self.replay_text("47h-never-gravity", self.sid)

    def test_Lists_count_only_after_a_second_run(self):
        self.run_lists()
        self.assertEqual(self.summary()["domains_being_blocked"], -2)
        self.assertGreater(self.summary()["last_update"], 0)
        self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")
        self.run_lists()
        self.assertEqual((self.summary()["domains_being_blocked"], self.pihole.short("doubleclick.net")), (21, "0.0.0.0"))

    def test_A_refused_change_puts_them_in_force_too(self):
        self.run_lists()
        answer = post(self.pihole.web_port, "/api/domains/allow/exact", self.sid, {"domain": "x.example.com"})
        self.assertEqual((answer.status, answer.json["error"]["hint"]), (400, "Database not available"))
        time.sleep(0.1)
        self.assertEqual((self.summary()["domains_being_blocked"], self.pihole.short("doubleclick.net")), (21, "0.0.0.0"))


class RunTest(DailyCase):
    shapes = {"47w-messages-restored"}

    def setUp(self):
        super().setUp()
        self.furnish()

    def summary(self):
        return get(self.pihole.web_port, "/api/stats/summary", self.sid).json["gravity"]

    def begin(self, seconds=1.0):
        """A run that takes this long and goes on beside the test; what ends when it does."""
        self.pihole.set("pace", 1)
        self.subscribe(SLOW, names=["slow.example.net"], seconds=max(seconds - 0.6, 0))
        run = threading.Thread(target=lambda: exchange(self.pihole.web_port, "POST", "/api/action/gravity",
                                                       [("X-FTL-SID", self.sid)], timeout=30))
        run.start()
        time.sleep(0.2)
        return run

    def ask_raw(self):
        """One run over a connection of its own: the answer and what comes behind it."""
        connection = Connection(self.pihole.web_port, 30)
        self.addCleanup(connection.close)
        connection.send("POST", "/api/action/gravity", [("Host", "x"), ("X-FTL-SID", self.sid)])
        return connection.receive(), connection.stray(b"}"), connection

    def test_Result_follows_without_a_head(self):
        answer, stray, connection = self.ask_raw()
        self.assertEqual(answer.status, 200)
        self.assertRegex(stray, rb'^\{"status":"success","took":[0-9.e-]+\}$')
        connection.send("GET", "/api/dns/blocking", [("Host", "x"), ("X-FTL-SID", self.sid)])
        self.assertEqual(connection.receive().json["blocking"], "enabled")

    def test_Run_without_dns_fails_behind_its_text(self):
        self.pihole.set("internet", "off")
        before = self.summary()
        answer, stray, connection = self.ask_raw()
        self.assertEqual(answer.status, 200)
        self.assertEqual(answer.body.decode(), "  [✗] DNS resolution is currently unavailable\n  [i] Waiting up to 120 "
                         "seconds for DNS resolution..." + "." * 38
                         + "   [✗] No DNS resolution available. Please contact support.\n")
        self.assertTrue(stray.startswith(b'{"error":{"key":"server_error","message":"Gravity failed"'), stray)
        self.assertEqual((self.summary(), self.pihole.short("doubleclick.net")), (before, "0.0.0.0"))

    def test_Login_page_replaces_good_lists_by_nothing(self):
        self.pihole.set("list_server", "page")
        self.assertIn("ignored 3 non-domain entries)\n      Sample of non-domain entries:\n", self.run_lists())
        lists = get(self.pihole.web_port, "/api/lists", self.sid).json["lists"]
        self.assertEqual([(each["status"], each["number"], each["invalid_domains"]) for each in lists],
                         [(2, 21, 0), (1, 0, 3), (1, 0, 3)])
        blocked, answer = self.summary()["domains_being_blocked"], self.pihole.short("ads.flurry.com")
        self.assertEqual((blocked, answer), (21, "203.0.113.66"))
        self.pihole.set("list_server", "good")
        self.run_lists()
        self.assertEqual((self.summary()["domains_being_blocked"], self.pihole.short("ads.flurry.com")), (25, "0.0.0.0"))

    def test_Two_runs_at_once_destroy_the_database(self):
        first = self.begin()
        second = threading.Thread(target=self.run_lists)
        second.start()
        first.join()
        second.join()
        self.assertEqual(get(self.pihole.web_port, "/api/lists", self.sid).json["error"]["hint"], "Database not available")
        self.assertEqual(self.summary()["domains_being_blocked"], 26)
        self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")
        self.run_lists()
        self.assertEqual(self.summary()["domains_being_blocked"], 26)
        self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")
        rules = get(self.pihole.web_port, "/api/domains", self.sid).json["domains"]
        self.assertEqual([rule["id"] for rule in rules], [1, 2])
        kinds = [each["type"] for each in get(self.pihole.web_port, "/api/info/messages", self.sid).json["messages"]]
        self.assertIn("GRAVITY_RESTORED", kinds)
        self.pihole.ask(do="advance", seconds=25)
        self.replay_all("47w-messages-restored")

    def test_What_is_changed_meanwhile_is_lost(self):
        self.change("/api/domains/allow/exact", {"domain": "before.example.com"})
        run = self.begin()
        self.change("/api/domains/allow/exact", {"domain": "during.example.com"})
        headers = [("X-FTL-SID", self.sid)]
        self.assertEqual(exchange(self.pihole.web_port, "DELETE", "/api/domains/allow/exact/before.example.com",
                                  headers).status, 204)
        allowed = get(self.pihole.web_port, "/api/domains/allow/exact", self.sid).json["domains"]
        self.assertEqual([each["domain"] for each in allowed], ["during.example.com"])
        run.join()
        allowed = get(self.pihole.web_port, "/api/domains/allow/exact", self.sid).json["domains"]
        self.assertEqual([each["domain"] for each in allowed], ["before.example.com"])

    def test_Run_goes_on_without_its_client(self):
        self.pihole.set("pace", 1)
        before = self.summary()["last_update"]
        self.pihole.ask(do="advance", seconds=10)
        connection = Connection(self.pihole.web_port)
        connection.send("POST", "/api/action/gravity", [("Host", "x"), ("X-FTL-SID", self.sid)])
        connection.close()
        time.sleep(1.5)
        self.assertGreater(self.summary()["last_update"], before)

    def test_Dns_goes_on_meanwhile(self):
        run = self.begin(1.5)
        while run.is_alive():
            self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")
        self.assertEqual(self.pihole.short("slow.example.net"), "0.0.0.0")

    def test_Last_update_moves_on_although_every_list_failed(self):
        before = self.summary()["last_update"]
        for address in (HOSTS, ADS, ABP):
            self.pihole.ask(do="source", address=address, trouble="refused")
        self.pihole.ask(do="advance", seconds=10)
        self.run_lists()
        self.assertGreater(self.summary()["last_update"], before)

    def test_Killed_run_leaves_the_old_lists(self):
        self.begin(20)
        self.pihole.restart(by_force=True)
        self.sid, _ = self.log_in()
        self.assertEqual((self.summary()["domains_being_blocked"], self.pihole.short("doubleclick.net")), (25, "0.0.0.0"))

    def test_Restart_waits_for_the_run(self):
        run = self.begin(2)
        self.pihole.set("restart", 0.1)
        answer = post(self.pihole.web_port, "/api/action/restartdns", self.sid, {})
        self.assertEqual((answer.status, answer.json["status"]), (200, "success"))
        time.sleep(0.3)
        self.assertIn("timed out", self.pihole.dig("example.com"))
        run.join()
        deadline = time.monotonic() + 5
        while self.pihole.short("example.com", "A", "+tcp") != "93.184.215.14":
            self.assertLess(time.monotonic(), deadline)

    def test_End_waits_for_the_run(self):
        self.begin(20)
        self.pihole.process.terminate()
        time.sleep(1)
        self.assertIsNone(self.pihole.process.poll())
        self.assertIn("timed out", self.pihole.dig("example.com"))
        self.pihole.process.kill()


if __name__ == "__main__":
    unittest.main()
