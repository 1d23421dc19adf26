"""The machine behind Colima: who holds port 53 in it, and what reaches the Mac."""

import unittest

from container_tools import ContainerCase, run_arguments
from the_mac import eventually

ASK = ("ssh", "--", "sudo", "ss", "-H", "-lntup", "sport = :53")
MAKE_ROOM = ("ssh", "--", "sudo", "sh", "-c",
             "echo except-interface=lo > /etc/dnsmasq.d/02-corvane.conf && systemctl restart dnsmasq")
IN_USE = "failed to bind host port 127.0.0.1:53/tcp: address already in use"


class MachineCase(ContainerCase):
    state = "engine"

    def holders(self):
        """Local address and name of what holds port 53 over IPv4 in the machine."""
        rows = [line.split() for line in self.colima(*ASK).out.splitlines()]
        return {(row[4], row[6].split('"')[1]) for row in rows if "[" not in row[4]}

    def run_pihole(self):
        self.mac.shell("echo FTLCONF_webserver_api_password=Aa-_.@+9 > /tmp/env")
        return self.docker(*run_arguments(env_file="/tmp/env"))


class DnsmasqTest(MachineCase):
    def test_Dnsmasq_holds_the_loopback_and_docker_cannot_publish_there(self):
        self.assertEqual(self.holders(), {("127.0.0.1:53", "dnsmasq"), ("192.168.5.1:53", "dnsmasq")})
        self.assertSays(self.run_pihole(), 125, IN_USE)
        self.assertEqual(self.container_state(), "created|none\n")

    def test_Room_is_made_by_one_file_and_names_still_resolve(self):
        self.assertEqual(self.colima(*MAKE_ROOM).status, 0)
        self.assertEqual(self.holders(), {("192.168.5.1:53", "dnsmasq")})
        self.assertIn("93.184.215.14", self.colima("ssh", "--", "getent", "hosts", "example.com").out)
        self.assertEqual(self.run_pihole().status, 0)
        self.assertEqual(self.holders(), {("192.168.5.1:53", "dnsmasq"), ("127.0.0.1:53", "docker-proxy")})

    def test_Room_outlives_a_stop_and_not_a_deletion(self):
        self.colima(*MAKE_ROOM)
        self.colima("stop")
        self.colima("start")
        self.assertEqual(self.holders(), {("192.168.5.1:53", "dnsmasq")})
        self.colima("delete", "--force")
        self.colima("start")
        self.assertIn(("127.0.0.1:53", "dnsmasq"), self.holders())

    def test_Deletion_without_data_keeps_the_container_which_then_finds_no_room(self):
        self.colima(*MAKE_ROOM)
        self.run_pihole()
        self.colima("delete", "--force")
        self.colima("start")
        self.assertSays(self.docker("start", "pihole"), 1, IN_USE)

    def test_Dnsmasq_answers_on_the_mac_where_no_pihole_is(self):
        self.assertEqual([self.answer("example.com", option) for option in ("+tcp",)], ["93.184.215.14\n"])
        self.assertIn("refused", self.answer("example.com", "+notcp"))
        self.mac.ctl("forwarder", "grpc")
        self.assertEqual(self.answer("example.com", "+notcp"), "93.184.215.14\n")
        self.colima(*MAKE_ROOM)
        self.assertIn("refused", self.answer("example.com", "+notcp"))

    def test_Older_colima_has_no_dnsmasq(self):
        self.mac.ctl("colima-release", "0.8")
        self.assertEqual(self.holders(), set())
        self.assertIn("93.184.215.14", self.colima("ssh", "--", "getent", "hosts", "example.com").out)
        self.assertSays(self.colima("ssh", "--", "sudo", "systemctl", "restart", "dnsmasq"), 1,
                        "Failed to restart dnsmasq.service: Unit dnsmasq.service not found.")
        self.assertEqual(self.run_pihole().status, 0)

    def test_Wrong_settings_keep_dnsmasq_down(self):
        script = "echo nonsense=1 > /etc/dnsmasq.d/03-wrong.conf; systemctl restart dnsmasq"
        self.assertSays(self.colima("ssh", "--", "sudo", "sh", "-c", script), 1, "Job for dnsmasq.service failed")
        self.assertEqual(self.holders(), set())


class StatesTest(MachineCase):
    def found(self):
        containers = self.mac.ctl("status")["containers"]
        machine = containers["machine"]
        return machine["on"], machine["dnsmasq"], machine["room"], containers["forwarder"]

    def test_Colima_is_new_until_pihole_was_set_up(self):
        for state, expected in (("stopped", (False, True, False, "ssh")), ("engine", (True, True, False, "ssh")),
                                ("running", (True, True, True, "grpc")), ("dead", (True, True, True, "grpc")),
                                ("dead-engine", (False, True, True, "grpc")), ("bare", (False, True, False, "ssh"))):
            self.mac.ctl("reset", state)
            self.assertEqual(self.found(), expected, state)

    def test_Reset_undoes_whatever_was_done_in_there(self):
        self.mac.ctl("take-port", "53", "tcp", "--as", "named", "--on", "127.0.0.9", "--in-machine")
        self.colima("ssh", "--", "sudo", "sh", "-c", "echo x > /etc/dnsmasq.d/03-wrong.conf; systemctl restart dnsmasq")
        self.mac.ctl("reset", "engine")
        self.assertEqual(self.holders(), {("127.0.0.1:53", "dnsmasq"), ("192.168.5.1:53", "dnsmasq")})


class SshTest(MachineCase):
    def test_Both_streams_and_a_failure_come_through(self):
        result = self.colima("ssh", "--", "sh", "-c", "echo one; echo two >&2; exit 3")
        self.assertEqual((result.status, result.out), (1, "one\n"))
        self.assertIn("two\n", result.err)
        self.assertIn('level=fatal msg="exit status 3"', result.err)

    def test_Words_arrive_as_they_were_given(self):
        self.assertEqual(self.colima("ssh", "--", "printf", "%s|", "a b", "$HOME", "it's").out, "a b|$HOME|it's|")

    def test_Stopped_machine_runs_nothing(self):
        self.colima("stop")
        self.assertSays(self.colima(*ASK), 1, 'level=fatal msg="colima not running"')

    def test_Machine_has_its_own_files_and_cannot_be_seen_by_the_mac(self):
        self.assertEqual(self.colima("ssh", "--", "cat", "/etc/resolv.conf").out,
                         "# Generated by Colima\n\nnameserver 192.168.5.1\n")
        self.assertEqual(self.mac.shell("ls /etc/dnsmasq.d").status, 2)


class NamesTest(MachineCase):
    """The machine asks whom the Mac asks."""

    def test_Names_are_asked_for_in_the_order_of_the_macs_servers(self):
        self.mac.ctl("servers", "Wi-Fi", "192.0.2.9", "1.1.1.1")
        self.assertIn("93.184.215.14", self.colima("ssh", "--", "getent", "hosts", "example.com").out)
        self.assertIn({"server": "1.1.1.1", "name": "example.com"}, self.mac.ctl("outside-questions"))

    def test_Pull_fails_while_the_mac_asks_a_pihole_that_is_down(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        self.colima(*MAKE_ROOM)
        self.assertSays(self.docker("pull", "pihole/pihole:2026.10.0"), 1, "no such host")
        self.mac.ctl("servers", "Wi-Fi", "1.1.1.1")
        self.assertTrue(eventually(lambda: self.docker("pull", "pihole/pihole:2026.10.0").status == 0))


class OtherHolderTest(MachineCase):
    def test_Another_program_can_hold_the_port_in_there(self):
        self.colima(*MAKE_ROOM)
        self.mac.ctl("take-port", "53", "udp", "--as", "named", "--in-machine")
        self.assertIn(("127.0.0.1:53", "named"), self.holders())
        self.assertSays(self.run_pihole(), 125, IN_USE.replace("tcp", "udp"))
        self.mac.ctl("free-port", "53", "udp", "--in-machine")
        self.assertEqual(self.docker("start", "pihole").status, 0)

    def test_Place_in_a_stopped_machine_is_refused(self):
        self.colima("stop")
        self.assertRefused("take-port", "53", "udp", "--in-machine")
        self.assertRefused("machine", "true")


if __name__ == "__main__":
    unittest.main()
