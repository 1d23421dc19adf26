"""colima: starting, stopping, its two port forwarders."""

import unittest

from container_tools import ContainerCase
from the_mac import eventually

SIZES = ("--cpu", "2", "--memory", "2", "--disk", "10")


class StartTest(ContainerCase):
    state = "stopped"

    def test_Start_prints_logfmt_on_standard_error(self):
        result = self.colima("start", *SIZES)
        self.assertEqual((result.status, result.out), (0, ""))
        lines = result.err.splitlines()
        for line in lines:
            self.assertRegex(line, r'^time="\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ" level=info msg=\S')
        self.assertIn('level=info msg="starting colima"', lines[0])
        self.assertTrue(lines[-1].endswith("level=info msg=done"))
        self.assertEqual(self.docker("ps", "-q").status, 0)
        self.assertEqual(self.mac.ctl("status")["containers"]["colima"], "running")

    def test_Sizes_are_taken_and_kept(self):
        self.colima("start", "--cpu", "3", "--memory=4", "-d", "20")
        self.assertRegex(self.colima("list").out, r"default +Running +aarch64 +3 +4GiB +20GiB +docker")
        self.colima("stop")
        self.colima("start")
        self.assertRegex(self.colima("list").out, r"default +Running +aarch64 +3 +4GiB +20GiB +docker")

    def test_Second_start_is_no_error(self):
        self.colima("start")
        self.assertSays(self.colima("start"), 0, 'level=warning msg="already running, ignoring"')

    def test_Start_while_the_machine_boots_ends_at_once_and_docker_answers_later(self):
        self.mac.ctl("engine", "boot")
        self.assertSays(self.colima("start"), 0, 'level=warning msg="already running, ignoring"')
        self.assertSays(self.docker("ps"), 1, "Cannot connect to the Docker daemon")
        self.mac.ctl("engine", "start")
        self.assertEqual(self.docker("ps").status, 0)

    def test_Stop_stops_and_a_second_stop_is_no_error(self):
        self.colima("start")
        self.assertSays(self.colima("stop"), 0, 'msg="stopping colima"')
        self.assertSays(self.colima("stop"), 0, 'msg="not running" context=vm')
        self.assertSays(self.colima("status"), 1, 'level=fatal msg="colima is not running"')

    def test_Status_and_version(self):
        self.colima("start")
        self.assertSays(self.colima("status"), 0, "socket: unix:///Users/ada/.colima/default/docker.sock")
        self.assertRegex(self.colima("version").out, r"^colima version \d+\.\d+\.\d+\ngit commit: \w+\n$")

    def test_Option_for_the_forwarder_can_be_missing(self):
        self.assertIn("--port-forwarder", self.colima("start", "--help").out)
        self.mac.ctl("port-forwarder-option", "off")
        self.assertNotIn("port-forwarder", self.colima("start", "--help").out)
        self.assertSays(self.colima("start", "--port-forwarder", "grpc"), 1,
                        'level=fatal msg="unknown flag: --port-forwarder"')

    def test_Wrong_arguments_are_fatal(self):
        self.assertSays(self.colima("start", "--cpu", "two"), 1, 'invalid argument \\"two\\" for \\"--cpu\\" flag')
        self.assertSays(self.colima("start", "--port-forwarder", "tcp"), 1, "error in config: invalid port forwarder: 'tcp'")
        self.assertSays(self.colima("nonsense"), 1, 'unknown command \\"nonsense\\" for \\"colima\\"')
        self.assertEqual(self.mac.ctl("status")["containers"]["colima"], "stopped")

    def test_Start_fails_when_told_so(self):
        self.mac.ctl("colima", "fail", "error starting vm: exit status 1")
        self.assertSays(self.colima("start"), 1, 'level=fatal msg="error starting vm: exit status 1"')
        self.mac.ctl("colima", "fail", "off")
        self.assertEqual(self.colima("start").status, 0)

    def test_Start_without_docker_is_fatal(self):
        self.brew("uninstall", "docker")
        self.assertSays(self.colima("start"), 1, "dependency check failed for docker: docker not found")


class ContextTest(ContainerCase):
    state = "engine"

    def test_Running_colima_does_not_take_dockers_context_back_and_a_start_does(self):
        self.mac.ctl("docker-context", "desktop-linux")
        self.assertSays(self.docker("ps"), 1, "unix:///Users/ada/.docker/run/docker.sock. Is the docker daemon running?")
        self.assertSays(self.colima("start"), 0, 'level=warning msg="already running, ignoring"')
        self.assertEqual(self.docker("ps").status, 1)
        self.colima("stop")
        self.colima("start")
        self.assertEqual(self.docker("ps").status, 0)


class ForegroundTest(ContainerCase):
    state = "stopped"

    def test_Start_in_the_foreground_waits_for_a_signal_and_then_stops_the_machine(self):
        result = self.colima("start", "-f", limit=2)
        self.assertEqual(result.status, -15)
        self.assertIn("keeping Colima in the foreground, press ctrl+c to exit...", result.err)
        self.assertTrue(eventually(lambda: self.colima("status").status == 1))


class FirstStartTest(ContainerCase):
    state = "homebrew"

    def test_First_start_makes_the_machine_and_a_warning_may_say_fatal(self):
        self.brew("install", "colima", "docker")
        result = self.colima("start", *SIZES)
        self.assertSays(result, 0, 'msg="creating and starting ..." context=vm')
        self.assertRegex(result.err, r"level=warning msg=.*level=fatal")
        self.assertIn('msg="downloading disk image ..." context=vm', result.err)
        self.assertNotIn(b"\r", result.raw_err)

    def test_First_start_needs_the_internet_and_later_ones_do_not(self):
        self.brew("install", "colima", "docker")
        self.mac.ctl("internet", "off")
        self.assertSays(self.colima("start"), 1, "DNS lookup failed for host 'github.com'")
        self.mac.ctl("internet", "on")
        self.colima("start")
        self.colima("stop")
        self.mac.ctl("internet", "off")
        self.assertEqual(self.colima("start").status, 0)


class ForwarderTest(ContainerCase):
    state = "running"

    def udp_and_tcp(self):
        return [self.answer("example.com", option) == "93.184.215.14\n" for option in ("+notcp", "+tcp")]

    def asked(self, name):
        return self.mac.run("/usr/bin/dig", "@127.0.0.1", name).out

    def test_Ssh_forwarder_carries_tcp_only_and_grpc_both(self):
        self.assertEqual(self.udp_and_tcp(), [True, True])
        self.mac.ctl("forwarder", "ssh")
        self.assertEqual(self.udp_and_tcp(), [False, True])
        self.colima("stop")
        self.assertEqual(self.udp_and_tcp(), [False, False])
        self.colima("start", *SIZES, "--port-forwarder", "grpc")
        self.assertTrue(eventually(lambda: self.udp_and_tcp() == [True, True]))

    def holders(self, selection):
        return self.mac.run("/usr/sbin/lsof", "-nP", "-Fc", selection).out

    def test_Lsof_names_the_process_of_the_forwarder(self):
        for selection in ("-iTCP@127.0.0.1:53", "-iUDP@127.0.0.1:53", "-iTCP:8080"):
            self.assertIn("\nclimactl\n", self.holders(selection))
        self.mac.ctl("forwarder", "ssh")
        self.assertIn("\nclimactl\n", self.holders("-iTCP:53"))
        self.assertEqual(self.holders("-iUDP:53"), "")
        self.assertIn("\ncssh\n", self.holders("-iTCP:8080"))

    def test_Port_is_given_back_also_when_a_start_was_cut_short(self):
        forwarder = self.mac.run("/usr/sbin/lsof", "-nP", "-t", "-iTCP:53").out.strip()
        self.docker("stop", "pihole")
        self.mac.run("/bin/kill", "-STOP", forwarder)
        self.assertEqual(self.docker("start", "pihole", limit=1).status, -15)
        self.mac.run("/bin/kill", "-CONT", forwarder)
        self.assertTrue(eventually(lambda: self.udp_and_tcp() == [True, True]))
        self.docker("stop", "pihole")
        self.assertEqual(self.holders("-iTCP:53") + self.holders("-iUDP:53") + self.holders("-iTCP:8080"), "")

    def test_Port_that_is_taken_on_the_mac_is_not_forwarded(self):
        self.docker("stop", "pihole")
        self.mac.ctl("take-port", "8080", "tcp", "--as", "nginx")
        self.assertEqual(self.docker("start", "pihole").status, 0)
        self.assertIn("\ncnginx\n", self.holders("-iTCP:8080"))
        self.assertEqual(self.udp_and_tcp(), [True, True])

    def test_Large_bodies_pass_both_ways_unharmed(self):
        script = ("import socket, threading, hashlib, os\n"
                  "data = os.urandom(3_000_000)\n"
                  "c = socket.create_connection(('127.0.0.1', 7777))\n"
                  "threading.Thread(target=lambda: (c.sendall(data), c.shutdown(socket.SHUT_WR))).start()\n"
                  "back = b''\n"
                  "while piece := c.recv(65536): back += piece\n"
                  "print(back == data)\n")
        echo = ("python3 -c 'import socket, threading\n"
                "s = socket.create_server((\"127.0.0.1\", 7777)); print(flush=True); c, _ = s.accept()\n"
                "while piece := c.recv(65536): c.sendall(piece)' > /tmp/echo & "
                "until [ -s /tmp/echo ]; do sleep 0.02; done")
        self.colima("ssh", "--", "sh", "-c", echo)
        self.assertEqual(self.mac.run("/usr/bin/python3", "-c", script).out, "True\n")

    def test_Container_comes_back_with_colima_unless_it_was_stopped(self):
        self.colima("stop")
        self.colima("start")
        self.assertTrue(eventually(lambda: self.udp_and_tcp() == [True, True]))
        self.docker("stop", "pihole")
        self.colima("stop")
        self.colima("start")
        self.assertEqual(self.container_state().split("|")[0], "exited")

    def test_Container_comes_back_also_when_the_first_stop_was_cut_short(self):
        stuck = self.docker("inspect", "--format", "{{.State.Pid}}", "pihole").out.strip()
        self.mac.run("/bin/kill", "-STOP", stuck)
        self.assertEqual(self.colima("stop", limit=0.5).status, -15)
        self.assertTrue(eventually(lambda: self.container_state().startswith("exited|")))
        self.colima("stop")
        self.colima("start")
        self.assertTrue(eventually(lambda: self.udp_and_tcp() == [True, True]))

    def test_Deaf_pihole_runs_and_does_not_answer(self):
        self.mac.ctl("pihole", "silent", "on")
        self.assertEqual(self.container_state(), "running|healthy\n")
        self.assertEqual(self.udp_and_tcp(), [False, False])
        self.mac.ctl("pihole", "silent", "off")
        self.assertEqual(self.udp_and_tcp(), [True, True])

    def test_Pihole_loses_its_upstream_with_the_network(self):
        self.answer("www.example.com")
        for away, back in ((("wifi", "off"), ("wifi", "on")), (("internet", "off"), ("internet", "on"))):
            self.mac.ctl(*away)
            self.assertTrue(eventually(lambda: "SERVFAIL" in self.asked("example.org")))
            self.assertEqual(self.answer("doubleclick.net"), "0.0.0.0\n")
            self.assertEqual(self.answer("www.example.com"), "93.184.215.14\n")
            self.mac.ctl(*back)
            self.assertTrue(eventually(lambda: self.answer("example.net") == "93.184.215.16\n"))

    def test_Wrong_settings_of_pihole_are_refused_with_a_sentence(self):
        for words in (("nonsense", "1"), ("silent", "perhaps"), ("block-mode", "round"), ("seats", "x"), ("udp", "no"),
                      ()):
            self.assertRefused("pihole", *words)


if __name__ == "__main__":
    unittest.main()
