"""How long a Pi-hole in a container takes: true times when asked for, and what becomes of questions meanwhile."""

import time
import unittest

from container_tools import ContainerCase, run_arguments
from the_mac import eventually

ANSWER = "93.184.215.14\n"
WEB = ("/usr/bin/curl", "-s", "-o", "/dev/null", "-w", "%{http_code}", "http://127.0.0.1:8080/api/info/login")


class TimesCase(ContainerCase):
    def web_status(self):
        return self.mac.run(*WEB).out

    def seconds_until(self, check, limit=30.0):
        """How long it takes until the check is true."""
        began = time.monotonic()
        self.assertTrue(eventually(check, limit))
        return time.monotonic() - began

    def answers_over_tcp(self):
        """Whether DNS answers; unlike over UDP, a question that comes too early fails at once."""
        return self.answer("example.com", "+tcp") == ANSWER

    def asked_at_once(self):
        """One question with dig's patience as Corvane asks it."""
        return self.mac.run("/usr/bin/dig", "@127.0.0.1", "+time=3", "+tries=1", "+short", "example.com")


class TrueTimesTest(TimesCase):
    """Only Pi-hole takes its true times; the rest of the Mac is fast."""

    state = "running"

    def setUp(self):
        super().setUp()
        self.mac.ctl("pihole", "times", "real")

    def test_Dns_and_the_web_answer_a_second_after_a_start(self):
        self.mac.ctl("container", "stop")
        began = time.monotonic()
        self.docker("start", "pihole")
        self.assertGreater(self.seconds_until(self.answers_over_tcp), 0.8)
        self.assertTrue(eventually(lambda: self.web_status() == "200"))
        self.assertGreater(time.monotonic() - began, 1.3)

    def test_Dns_answers_before_the_web_does(self):
        self.mac.ctl("pihole", "web-seconds", "3")
        self.mac.ctl("container", "stop")
        self.docker("start", "pihole")
        self.assertTrue(eventually(self.answers_over_tcp))
        self.assertEqual(self.web_status(), "000")

    def test_Question_that_comes_too_early_is_lost(self):
        self.mac.ctl("container", "stop")
        self.docker("start", "pihole")
        lost = self.asked_at_once()
        self.assertIn("timed out", lost.out)
        self.assertGreater(lost.seconds, 2.9)
        self.assertEqual(self.answer(), ANSWER)

    def test_Question_that_comes_just_before_is_answered_late(self):
        self.mac.ctl("pihole", "boot-seconds", "10")
        self.mac.ctl("container", "stop")
        self.docker("start", "pihole")
        time.sleep(9.0)
        waited = self.asked_at_once()
        self.assertEqual(waited.out, ANSWER)
        self.assertGreater(waited.seconds, 0.4)

    def test_Stop_takes_three_seconds_and_dns_is_gone_at_once(self):
        script = ("/opt/homebrew/bin/docker stop pihole & sleep 0.6; "
                  "dig @127.0.0.1 +time=1 +tries=1 +short example.com; wait")
        result = self.mac.shell(script)
        self.assertIn("timed out", result.out)
        self.assertGreater(result.seconds, 2.8)

    def test_Import_takes_dns_away_for_a_moment(self):
        self.mac.ctl("pihole", "settle-seconds", "0")
        script = """\
            base=http://127.0.0.1:8080/api
            sid=$(curl -s -d '{"password":"correct-horse-9"}' $base/auth | sed 's/.*"sid":"\\([^"]*\\)".*/\\1/')
            curl -s -H "X-FTL-SID: $sid" -o /tmp/backup.zip $base/teleporter
            curl -s -H "X-FTL-SID: $sid" -F "file=@/tmp/backup.zip;type=application/zip" $base/teleporter; sleep 0.1
            dig @127.0.0.1 +time=1 +tries=1 +tcp +short example.com"""
        self.assertNotIn(ANSWER, self.mac.shell(script).out)
        self.assertTrue(eventually(lambda: self.answer() == ANSWER))


class HealthTest(TimesCase):
    state = "running"

    def test_Health_stays_open_for_half_a_minute(self):
        self.mac.ctl("pihole", "times", "real")
        self.mac.ctl("pihole", "boot-seconds", "0.01")
        self.docker("restart", "pihole")
        began = time.monotonic()
        self.assertTrue(eventually(lambda: self.answer() == ANSWER))
        while time.monotonic() < began + 29:
            self.assertEqual(self.container_state(), "running|starting\n")
            time.sleep(1)
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))

    def test_Frozen_pihole_is_unhealthy_after_three_checks_and_answers_what_waits_when_it_thaws(self):
        self.mac.ctl("pihole", "health-seconds", "0.5")
        self.docker("restart", "pihole")
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))
        self.mac.ctl("container", "freeze")
        self.assertIn("timed out", self.answer())
        self.assertTrue(eventually(lambda: self.container_state() == "running|unhealthy\n"))
        self.assertRefused("pihole", "state")
        self.mac.shell("dig @127.0.0.1 +time=5 +tries=1 +short example.com > /tmp/late 2>&1 & sleep 0.3")
        self.mac.ctl("container", "thaw")
        self.assertTrue(eventually(lambda: self.mac.shell("cat /tmp/late").out == ANSWER))
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))

    def test_Container_that_answers_late_is_unhealthy_until_it_does(self):
        self.mac.ctl("pihole", "health-seconds", "0.3")
        self.mac.ctl("pihole", "boot-seconds", "2")
        self.docker("restart", "pihole")
        self.assertEqual(self.container_state(), "running|starting\n")
        self.assertTrue(eventually(lambda: self.container_state() == "running|unhealthy\n"))
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))


class RealSpeedTest(TimesCase):
    state = "running"
    options = ("--speed", "real")

    def test_Times_are_those_of_the_mac_unless_told_otherwise(self):
        slow = self.docker("stop", "pihole").seconds
        self.assertGreater(slow, 2.8)
        self.mac.ctl("pihole", "times", "fast")
        self.docker("start", "pihole")
        self.assertEqual(self.answer(), ANSWER)
        self.assertLess(self.docker("stop", "pihole").seconds, slow)

    def test_First_start_takes_longer_than_later_ones(self):
        self.docker("rm", "-f", "pihole")
        self.docker("volume", "rm", "pihole_etc")
        self.mac.shell('d="$HOME/x"; mkdir -p "$d"; echo FTLCONF_webserver_api_password=a > "$d/env"')
        self.docker(*run_arguments(env_file="/Users/ada/x/env"), limit=30)
        self.assertGreater(self.seconds_until(self.answers_over_tcp), 1.3)


if __name__ == "__main__":
    unittest.main()
