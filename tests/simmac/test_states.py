"""The states that a Mac can start in, as a user would find them."""

import unittest

from the_mac import MacCase

SUPPORT = "/Users/ada/Library/Application Support/Corvane"
TOOLS = {"bare": [], "homebrew": ["brew"]}
ALL_TOOLS = ["brew", "colima", "docker"]


class StatesTest(MacCase):
    def enter(self, state):
        self.mac.ctl("reset", state)

    def docker(self, *words):
        return self.mac.run("/opt/homebrew/bin/docker", *words)

    def test_Tools_are_there_as_the_state_says(self):
        for state in ("bare", "homebrew", "stopped", "engine", "running", "protected", "dead", "dead-engine", "bare"):
            self.enter(state)
            self.assertEqual(self.mac.shell("ls /opt/homebrew/bin").out.split(), TOOLS.get(state, ALL_TOOLS), state)
            self.assertEqual(self.mac.ctl("state"), state)

    def test_Engine_answers_where_it_runs(self):
        answers = {}
        for state in ("stopped", "engine", "running", "dead", "dead-engine"):
            self.enter(state)
            answers[state] = self.docker("info", "--format", "{{.ServerVersion}}").status == 0
        self.assertEqual(answers, {"stopped": False, "engine": True, "running": True, "dead": True,
                                   "dead-engine": False})

    def test_Running_Pi_hole_is_healthy_and_answers(self):
        self.enter("running")
        self.assertEqual(self.docker("inspect", "--format", "{{.State.Status}}|{{.State.Health.Status}}",
                                     "pihole").out, "running|healthy\n")
        self.assertIn("status: NOERROR", self.mac.run("/usr/bin/dig", "@127.0.0.1", "example.com").out)
        self.assertIn("aren't any", self.mac.run("/usr/sbin/networksetup", "-getdnsservers", "Wi-Fi").out)

    def test_Port_is_free_once_its_holder_is_gone_whoever_closed_the_connections(self):
        self.enter("running")
        ask = ("import socket; s = socket.create_connection(('127.0.0.1', 8080)); "
               "s.sendall(b'GET /admin HTTP/1.1\\r\\nHost: a\\r\\nConnection: close\\r\\n\\r\\n'); "
               "print(b''.join(iter(lambda: s.recv(4096), b''))[:12].decode())")
        self.assertEqual(self.mac.run("/usr/bin/python3", "-c", ask).out, "HTTP/1.1 308\n")
        self.enter("homebrew")
        bind = "import socket; socket.socket().bind(('127.0.0.1', 8080)); print('free')"
        self.assertEqual(self.mac.run("/usr/bin/python3", "-c", bind).out, "free\n")

    def test_Protected_Mac_asks_Pi_hole(self):
        self.enter("protected")
        self.assertEqual(self.mac.run("/usr/sbin/networksetup", "-getdnsservers", "Wi-Fi").out, "127.0.0.1\n1.1.1.1\n")
        self.assertTrue(self.mac.run("getent", "ahostsv4", "doubleclick.net").out.startswith("0.0.0.0 "))

    def test_Dead_Pi_hole_is_pointed_at_and_does_not_answer(self):
        for state in ("dead", "dead-engine"):
            self.enter(state)
            self.assertEqual(self.mac.ctl("status")["resolvers"], ["127.0.0.1", "1.1.1.1"])
            self.assertNotEqual(self.mac.run("/usr/bin/dig", "+time=1", "+tries=1", "@127.0.0.1", "example.com").status,
                                0)

    def test_Project_files_lie_where_Corvane_put_them(self):
        self.enter("running")
        listing = self.mac.shell(f"cd '{SUPPORT}' && stat -c '%a %n' *").out
        self.assertEqual(listing, "644 docker-compose.yml\n600 pihole.env\n")
        self.assertEqual(self.mac.run("/bin/cat", f"{SUPPORT}/pihole.env").out,
                         "FTLCONF_webserver_api_password=correct-horse-9\n")
        self.enter("engine")
        self.assertEqual(self.mac.run("/usr/bin/test", "-e", SUPPORT).status, 1)


if __name__ == "__main__":
    unittest.main()
