"""networksetup, scutil, route and resolv.conf: one truth, told by four voices."""

import json
import unittest

from the_mac import MacCase

STAR = "An asterisk (*) denotes that a network service is disabled.\n"
NOT_VALID = "** Error: The parameters were not valid.\n"


class ServicesTest(MacCase):
    def test_Services_are_listed_in_order_below_the_explanation(self):
        self.assertEqual(self.mac.run("/usr/sbin/networksetup", "-listallnetworkservices").out,
                         STAR + "Wi-Fi\nThunderbolt Bridge\n")

    def test_Disabled_service_carries_an_asterisk(self):
        self.mac.ctl("service", "disable", "Thunderbolt Bridge")
        self.assertEqual(self.mac.run("/usr/sbin/networksetup", "-listallnetworkservices").out,
                         STAR + "Wi-Fi\n*Thunderbolt Bridge\n")
        self.assertIn("(*) Thunderbolt Bridge\n",
                      self.mac.run("/usr/sbin/networksetup", "-listnetworkserviceorder").out)

    def test_Service_order_names_port_and_device(self):
        self.assertEqual(
            self.mac.run("/usr/sbin/networksetup", "-listnetworkserviceorder").out,
            STAR + "(1) Wi-Fi\n(Hardware Port: Wi-Fi, Device: en0)\n\n"
            "(2) Thunderbolt Bridge\n(Hardware Port: Thunderbolt Bridge, Device: bridge0)\n\n")

    def test_Strange_names_survive(self):
        for name in ("Ada's (old) LAN: 10.0.0.1", "Büro 日本", "  two  blanks ", "a\"b\\c$d`e"):
            self.mac.ctl("service", "add", name)
            self.assertIn(f"\n{name}\n", self.mac.run("/usr/sbin/networksetup", "-listallnetworkservices").out)
            self.assertEqual(self.mac.run("/usr/sbin/networksetup", "-getdnsservers", name).out,
                             f"There aren't any DNS Servers set on {name}.\n")

    def test_Service_added_renamed_and_removed(self):
        self.mac.ctl("service", "add", "LAN", "en7")
        self.mac.ctl("service", "rename", "LAN", "Desk")
        self.assertIn("(3) Desk\n(Hardware Port: LAN, Device: en7)",
                      self.mac.run("/usr/sbin/networksetup", "-listnetworkserviceorder").out)
        self.mac.ctl("service", "remove", "Desk")
        self.assertNotIn("Desk", self.mac.run("/usr/sbin/networksetup", "-listallnetworkservices").out)

    def test_Linked_first_service_takes_the_default_route(self):
        self.mac.ctl("service", "add", "LAN", "en7", "linked")
        self.assertIn("interface: en0", self.mac.run("/sbin/route", "-n", "get", "default").out)
        self.mac.ctl("service", "first", "LAN")
        self.assertIn("  interface: en7\n", self.mac.run("/sbin/route", "-n", "get", "default").out)


class ServersTest(MacCase):
    def get(self, name="Wi-Fi"):
        return self.mac.run("/usr/sbin/networksetup", "-getdnsservers", name)

    def test_Automatic_servers_are_told_in_a_sentence(self):
        result = self.get()
        self.assertEqual((result.status, result.out), (0, "There aren't any DNS Servers set on Wi-Fi.\n"))

    def test_Servers_by_hand_are_listed_one_a_line(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1", "1.1.1.1")
        self.assertEqual(self.get().out, "127.0.0.1\n1.1.1.1\n")

    def test_Unknown_service_is_an_error_on_standard_output(self):
        result = self.get("Bogus")
        self.assertEqual((result.status, result.out, result.err),
                         (4, "Bogus is not a recognized network service.\n" + NOT_VALID, ""))

    def test_Missing_argument_shows_the_usage(self):
        result = self.mac.run("/usr/sbin/networksetup", "-getdnsservers")
        self.assertEqual(result.status, 4)
        self.assertIn("** Error: The amount of parameters was not correct.\n", result.out)

    def test_Setting_servers_needs_the_administrator(self):
        result = self.mac.run("/usr/sbin/networksetup", "-setdnsservers", "Wi-Fi", "127.0.0.1")
        self.assertEqual((result.status, result.out), (14, "** Error: Command requires admin privileges.\n"))
        self.assertIn("aren't any", self.get().out)

    def test_A_guessed_token_gives_no_rights(self):
        result = self.mac.run("/usr/sbin/networksetup", "-setdnsservers", "Wi-Fi", "127.0.0.1",
                              env={"SIMMAC_ADMIN": "yes"})
        self.assertEqual(result.status, 14)


class AsAdministratorTest(MacCase):
    def set(self, words):
        text = f"/usr/sbin/networksetup -setdnsservers {words}".replace("\\", "\\\\").replace('"', '\\"')
        return self.mac.run("/usr/bin/osascript", "-e", f'do shell script "{text}" with administrator privileges')

    def servers(self, name="Wi-Fi"):
        return next(each["servers"] for each in self.mac.ctl("services") if each["name"] == name)

    def test_Servers_are_set_in_order(self):
        self.assertEqual(self.set("'Wi-Fi' '127.0.0.1' '1.1.1.1'").status, 0)
        self.assertEqual(self.servers(), ["127.0.0.1", "1.1.1.1"])

    def test_Empty_goes_back_to_automatic(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        self.assertEqual(self.set("'Wi-Fi' Empty").status, 0)
        self.assertEqual(self.servers(), [])

    def test_Apostrophe_in_a_name_survives_the_quoting(self):
        self.mac.ctl("service", "add", "Ada's LAN")
        self.assertEqual(self.set("'Ada'\\''s LAN' '127.0.0.1'").status, 0)
        self.assertEqual(self.servers("Ada's LAN"), ["127.0.0.1"])

    def test_A_word_that_is_no_address_changes_nothing(self):
        result = self.set("'Wi-Fi' nonsense")
        self.assertEqual(result.status, 1)
        self.assertIn("nonsense is not a valid IP address.  No changes were saved.\r" + NOT_VALID.strip() + " (4)",
                      result.raw_err.decode())
        self.assertEqual(self.servers(), [])

    def test_macOS_that_keeps_nothing_says_nothing(self):
        self.mac.ctl("keeps", "Wi-Fi", "no")
        self.assertEqual(self.set("'Wi-Fi' 127.0.0.1").status, 0)
        self.assertEqual(self.servers(), [])

    def test_macOS_that_keeps_other_servers(self):
        self.mac.ctl("keeps", "Wi-Fi", "127.0.0.1")
        self.assertEqual(self.set("'Wi-Fi' 127.0.0.1 1.1.1.1").status, 0)
        self.assertEqual(self.servers(), ["127.0.0.1"])


class ResolversTest(MacCase):
    def report(self):
        return self.mac.run("/usr/sbin/scutil", "--dns").out

    def resolv_conf(self):
        lines = self.mac.run("/bin/cat", "/etc/resolv.conf").out.splitlines()
        return [line.split()[1] for line in lines if line.startswith("nameserver")]

    def test_Report_has_the_layout_of_scutil(self):
        self.assertTrue(self.report().startswith(
            "DNS configuration\n\nresolver #1\n  search domain[0] : home.arpa\n  nameserver[0] : 192.168.1.1\n"
            "  if_index : 15 (en0)\n  flags    : Request A records\n"
            "  reach    : 0x00020002 (Reachable,Directly Reachable Address)\n\n"
            "resolver #2\n  domain   : local\n  options  : mdns\n  timeout  : 5\n  flags    : Request A records\n"
            "  reach    : 0x00000000 (Not Reachable)\n  order    : 300000\n\nresolver #3\n"
            "  domain   : 254.169.in-addr.arpa\n"))
        self.assertTrue(self.report().endswith(
            "DNS configuration (for scoped queries)\n\nresolver #1\n  search domain[0] : home.arpa\n"
            "  nameserver[0] : 192.168.1.1\n  if_index : 15 (en0)\n  flags    : Scoped, Request A records\n"
            "  reach    : 0x00020002 (Reachable,Directly Reachable Address)\n"))

    def test_Servers_by_hand_appear_everywhere_at_once(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1", "1.1.1.1")
        self.assertIn("  nameserver[0] : 127.0.0.1\n  nameserver[1] : 1.1.1.1\n", self.report())
        self.assertIn("Local Address", self.report())
        self.assertEqual(self.resolv_conf(), ["127.0.0.1", "1.1.1.1"])

    def test_VPN_resolver_goes_first(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        self.mac.ctl("vpn", "on", "10.9.8.7")
        report = self.report()
        self.assertIn("resolver #1\n  search domain[0] : corp.example\n  nameserver[0] : 10.9.8.7\n"
                      "  if_index : 24 (utun4)\n", report.split("(for scoped queries)")[0])
        self.assertIn("DNS configuration (for service-specific queries)\n", report)
        self.assertIn("nameserver[0] : 127.0.0.1", report.split("(for scoped queries)")[1])
        self.assertEqual(self.resolv_conf(), ["10.9.8.7"])
        self.assertIn("interface: utun4", self.mac.run("/sbin/route", "-n", "get", "default").out)
        self.mac.ctl("vpn", "off")
        self.assertEqual(self.resolv_conf(), ["127.0.0.1"])

    def test_Split_VPN_leaves_the_route_alone(self):
        self.mac.ctl("vpn", "on", "split")
        self.assertIn("interface: en0", self.mac.run("/sbin/route", "-n", "get", "default").out)
        self.assertEqual(self.resolv_conf(), ["10.8.0.1"])

    def test_Split_VPN_stands_before_the_servers_of_the_Mac(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1", "1.1.1.1")
        self.mac.ctl("vpn", "on", "10.9.8.7", "split")
        self.assertIn("resolver #1\n  nameserver[0] : 10.9.8.7\n  if_index : 24 (utun4)\n"
                      "  flags    : Supplemental, Request A records\n"
                      "  reach    : 0x00000003 (Reachable,Transient Connection)\n  order    : 101400\n\n"
                      "resolver #2\n  search domain[0] : home.arpa\n  nameserver[0] : 127.0.0.1\n"
                      "  nameserver[1] : 1.1.1.1\n", self.report())
        self.assertIn("  order    : 200000\n\nresolver #3\n  domain   : local\n", self.report())

    def test_Hidden_server_takes_the_lookups_and_is_not_listed(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1", "1.1.1.1")
        listed = self.report()
        self.mac.ctl("hidden-dns", "1.1.1.1")
        self.assertEqual(self.resolv_conf(), ["1.1.1.1"])
        self.assertEqual(self.report(), listed)
        self.mac.ctl("hidden-dns", "none")
        self.assertEqual(self.resolv_conf(), ["127.0.0.1", "1.1.1.1"])

    def test_Without_Wi_Fi_there_is_no_server_and_no_route(self):
        self.mac.ctl("wifi", "off")
        self.assertNotIn("nameserver", self.report())
        route = self.mac.run("/sbin/route", "-n", "get", "default")
        self.assertEqual((route.status, route.out, route.err),
                         (1, "", "route: writing to routing socket: not in table\n"))
        self.assertNotEqual(self.mac.run("getent", "hosts", "example.com").status, 0)
        self.mac.ctl("wifi", "on")
        self.assertEqual(self.mac.run("getent", "hosts", "example.com").status, 0)

    def test_Router_that_announces_IPv6_is_listed_last(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        self.mac.ctl("router-ipv6", "fe80::1%en0")
        self.assertIn("  nameserver[0] : 127.0.0.1\n  nameserver[1] : fe80::1%en0\n", self.report())

    def test_Other_DHCP_server_answers_at_its_own_address(self):
        self.mac.ctl("dhcp", "10.1.1.1")
        self.assertEqual(self.resolv_conf(), ["10.1.1.1"])
        self.assertIn("status: NOERROR", self.mac.run("/usr/bin/dig", "@10.1.1.1", "example.com").out)
        self.assertIn("status: NOERROR", self.mac.run("/usr/bin/dig", "@10.1.1.1", "+tcp", "example.com").out)

    def test_Running_program_sees_new_servers_without_a_restart(self):
        script = ("import socket, subprocess\n"
                  "def ask(name):\n"
                  "    try: socket.getaddrinfo(name, 80)\n"
                  "    except OSError: pass\n"
                  "ask('one.example.net')\n"
                  "subprocess.run(['simmac', 'ctl', 'servers', 'Wi-Fi', '1.1.1.1'], check=True)\n"
                  "ask('two.example.net')\n")
        self.mac.run("/usr/bin/python3", "-c", script)
        asked = {each["name"]: each["server"] for each in self.mac.ctl("outside-questions")}
        self.assertEqual((asked["one.example.net"], asked["two.example.net"]), ("192.168.1.1", "1.1.1.1"))

    def test_Unknown_name_does_not_exist_and_other_types_are_empty(self):
        self.assertIn("status: NXDOMAIN", self.mac.run("/usr/bin/dig", "nothing.invalid").out)
        answer = self.mac.run("/usr/bin/dig", "example.com", "AAAA").out
        self.assertIn("status: NOERROR", answer)
        self.assertIn("ANSWER: 0", answer)


class ControlTest(MacCase):
    def test_Nonsense_is_refused_with_a_sentence(self):
        for words in (["wifi", "perhaps"], ["vpn"], ["service", "remove", "Bogus"], ["servers", "Wi-Fi", "x"],
                      ["keeps", "Wi-Fi"], ["service", "add", "Wi-Fi"], ["dhcp"], ["bogus"], ["reset", "bogus"],
                      ["macos", "new"], ["prompt", "sometimes"], ["browser"], ["set", "arm64"]):
            with self.subTest(words):
                self.assertRefused(*words)

    def test_Status_is_plain_data(self):
        status = json.loads(json.dumps(self.mac.ctl("status")))
        self.assertEqual((status["state"], status["wifi"], status["resolvers"]), ("bare", True, ["192.168.1.1"]))


if __name__ == "__main__":
    unittest.main()
