"""The control commands for the engine and the container."""

import unittest

from container_tools import STATE, ContainerCase
from the_mac import Problem


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

    def test_Wrong_words_are_refused(self):
        for words in (("engine",), ("engine", "begin"), ("container",), ("container", "health", "ill"),
                      ("compose", "maybe"), ("registry", "add"), ("colima", "fail"), ("internet", "slow")):
            self.assertRefused(*words)


if __name__ == "__main__":
    unittest.main()
