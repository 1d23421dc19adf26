"""The release feed: TLS that only this Mac trusts, and every way to go wrong."""

import json
import unittest

from the_mac import MacCase

ADDRESS = "https://api.github.com/repos/pi-hole/docker-pi-hole/releases/latest"


class FeedTest(MacCase):
    state = "bare"

    def curl(self, *words, address=ADDRESS):
        return self.mac.run("/usr/bin/curl", "-sS", "--max-time", "1", *words, address)

    def test_Release_is_told_over_trusted_tls(self):
        result = self.curl("-H", "Accept: application/vnd.github+json")
        self.assertEqual((result.status, json.loads(result.out)["tag_name"]), (0, "2026.10.0"))
        request = self.mac.ctl("feed", "requests")[-1]
        self.assertEqual(request["line"], "GET /repos/pi-hole/docker-pi-hole/releases/latest HTTP/1.1")
        self.assertIn("Accept: application/vnd.github+json", request["headers"])

    def test_Tag_body_and_status_can_be_set(self):
        self.mac.ctl("feed", "tag", "v2027.01.0-rc1")
        self.assertEqual(json.loads(self.curl().out)["tag_name"], "v2027.01.0-rc1")
        self.mac.ctl("feed", "body", "[1, 2")
        self.mac.ctl("feed", "status", "503")
        self.assertEqual(self.curl("-w", "|%{http_code}").out, "[1, 2|503")
        self.mac.ctl("reset", "bare")
        self.assertEqual(json.loads(self.curl().out)["tag_name"], "2026.10.0")

    def test_Redirect_leads_where_it_is_told(self):
        self.mac.ctl("feed", "redirect", "http://127.0.0.1:1/x")
        self.assertEqual(self.curl("-w", "%{http_code} %{redirect_url}").out, "302 http://127.0.0.1:1/x")

    def test_Stranger_as_issuer_is_not_trusted(self):
        self.mac.ctl("feed", "wrong-cert", "on")
        self.assertEqual(self.curl().status, 60)
        self.mac.ctl("feed", "wrong-cert", "off")
        self.assertEqual(self.curl().status, 0)

    def test_Slow_hanging_and_cut_answers_never_become_whole(self):
        for manner, status in (("slow", 28), ("hang", 28), ("cut", 18)):
            self.mac.ctl("feed", manner)
            self.assertEqual(self.curl().status, status, manner)
        self.mac.ctl("feed", "normal")
        self.assertEqual(self.curl().status, 0)

    def test_Endless_answer_does_not_end(self):
        self.mac.ctl("feed", "endless")
        result = self.mac.run("/usr/bin/curl", "-sS", "--max-time", "1", "-o", "/dev/null", "-w", "%{size_download}",
                              ADDRESS)
        self.assertEqual(result.status, 28)
        self.assertGreater(int(result.out), 1 << 20)

    def test_Client_that_leaves_an_endless_answer_leaves_the_mac_idle(self):
        self.mac.ctl("feed", "endless")
        script = "set -o pipefail; curl -sS --max-time 5 %s | head -c %d > /dev/null" % (ADDRESS, 3 << 20)
        for _ in range(5):
            self.mac.run("/bin/bash", "-c", script)
        used = "awk '{print $14 + $15}' $(grep -sl daemon.main /proc/[0-9]*/cmdline | head -1 | xargs dirname)/stat; "
        before, after = self.mac.shell(f"{used} sleep 1; {used}").out.split()
        self.assertLess(int(after) - int(before), 50)

    def test_Without_a_network_the_feed_is_away(self):
        self.mac.ctl("wifi", "off")
        self.assertNotEqual(self.curl().status, 0)
        self.mac.ctl("wifi", "on")
        self.mac.ctl("internet", "off")
        self.assertEqual(self.curl().status, 6)

    def test_Other_paths_do_not_exist(self):
        self.assertIn("Not Found", self.curl(address="https://api.github.com/repos").out)

    def test_Wrong_words_are_refused(self):
        for words in ((), ("nonsense",), ("tag",), ("status", "x"), ("slow", "very")):
            self.assertRefused("feed", *words)


if __name__ == "__main__":
    unittest.main()
