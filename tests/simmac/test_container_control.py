"""The control commands for the engine and the container."""

import json
import unittest

from container_tools import STATE, ContainerCase, run_arguments
from the_mac import Problem, eventually


class DirectedTest(ContainerCase):
    """What the control commands do to the container."""

    state = "running"

    def container_word(self):
        return self.container_state().split("|")[0].strip()

    def test_Container_is_stopped_started_and_removed_from_outside(self):
        self.mac.ctl("container", "stop")
        self.assertEqual(self.container_word(), "exited")
        self.mac.ctl("container", "start")
        self.assertEqual((self.container_state(), self.answer("doubleclick.net")), ("running|healthy\n", "0.0.0.0\n"))
        self.mac.ctl("container", "kill")
        self.assertEqual(self.container_word(), "exited")
        self.mac.ctl("container", "rm")
        self.assertSays(self.docker("inspect", "--format", STATE, "pihole"), 1, "No such object")
        self.assertRefused("container", "stop")

    def test_Start_from_outside_meets_a_taken_port(self):
        self.mac.ctl("container", "stop")
        self.mac.ctl("take-port", "53", "tcp", "--as", "named", "--in-machine")
        self.assertIn("address already in use", self.refusal("container", "start"))

    def refusal(self, *words):
        with self.assertRaises(Problem) as caught:
            self.mac.ctl(*words)
        return str(caught.exception)

    def test_Engine_takes_pihole_with_it_and_brings_it_back(self):
        self.mac.ctl("engine", "stop")
        self.assertEqual(self.docker("info").status, 1)
        self.assertIn("refused", self.answer())
        self.mac.ctl("engine", "start")
        self.assertEqual((self.container_state(), self.answer()), ("running|healthy\n", "93.184.215.14\n"))

    def summary(self):
        """What Pi-hole tells about its lists."""
        script = """\
            base=http://127.0.0.1:8080/api
            sid=$(curl -s -d '{"password":"correct-horse-9"}' $base/auth | sed 's/.*"sid":"\\([^"]*\\)".*/\\1/')
            curl -s -H "X-FTL-SID: $sid" $base/stats/summary"""
        return json.loads(self.mac.shell(script).out)["gravity"]["domains_being_blocked"]

    def test_Lists_are_taken_away_and_given_back(self):
        self.mac.ctl("pihole", "login-limit", "100")
        good = self.summary()
        self.assertGreater(good, 100)
        for word, size in (("empty", 0), ("missing", -2), ("good", good)):
            self.mac.ctl("pihole", "gravity", word)
            self.assertEqual(self.summary(), size)
        self.mac.ctl("pihole", "gravity", "damaged")
        self.assertEqual((self.summary(), self.answer("doubleclick.net")), (good, "203.0.113.66\n"))

    def test_First_start_takes_what_the_list_server_gives(self):
        self.mac.ctl("pihole", "list-server", "refused")
        self.docker("rm", "-f", "pihole")
        self.docker("volume", "rm", "pihole_etc")
        self.docker(*run_arguments())
        self.assertTrue(eventually(lambda: self.answer() == "93.184.215.14\n"))
        self.assertTrue(eventually(lambda: self.summary() == 0))
        self.assertIn("no cached list available", self.docker("logs", "pihole").out)

    def test_Wrong_words_are_refused(self):
        for words in (("engine",), ("engine", "begin"), ("container",), ("container", "health", "ill"),
                      ("compose", "maybe"), ("registry", "add"), ("colima", "fail"), ("internet", "slow"), ("pihole", "gravity", "bad"), ("pihole", "privacy", "4"),
                      ("pihole", "list-server", "slow"), ("pihole", "boot-seconds", "soon"), ("pihole", "times", "slow")):
            self.assertRefused(*words)


if __name__ == "__main__":
    unittest.main()
