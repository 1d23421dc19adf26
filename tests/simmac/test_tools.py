"""The smaller tools, the applications, and the ports that others hold."""

import time
import unittest

from the_mac import MacCase, RunningMac, eventually

BIND = ("import socket, sys; s = socket.socket(type=socket.SOCK_STREAM if sys.argv[1] == 'tcp' else socket.SOCK_DGRAM);"
        " s.bind(('127.0.0.1', int(sys.argv[2])))")


class FactsTest(MacCase):
    def test_Version_is_told_by_tool_and_by_file(self):
        self.mac.ctl("macos", "12.6")
        self.assertEqual(self.mac.run("/usr/bin/sw_vers", "-productVersion").out, "12.6\n")
        self.assertEqual(self.mac.run("/usr/bin/sw_vers").out,
                         "ProductName:\t\tmacOS\nProductVersion:\t\t12.6\nBuildVersion:\t\t21H1320\n")
        plist = self.mac.run("/bin/cat", "/System/Library/CoreServices/SystemVersion.plist").out
        self.assertIn("<key>ProductVersion</key>\n\t<string>12.6</string>", plist)

    def test_Processor_is_told_by_file(self):
        path = "/System/Library/CoreServices/hw.optional.arm64"
        self.assertEqual(self.mac.run("/bin/cat", path).out, "1\n")
        self.mac.ctl("arm64", "no")
        self.assertEqual(self.mac.run("/bin/cat", path).out, "0\n")

    def test_Reset_brings_back_the_facts(self):
        self.mac.ctl("arm64", "no")
        self.mac.ctl("macos", "11.0")
        self.mac.ctl("reset")
        status = self.mac.ctl("status")
        self.assertEqual((status["arm64"], status["macos"]), (True, "14.5"))


class OpenTest(MacCase):
    def outside_names(self):
        return [each["name"] for each in self.mac.ctl("outside-questions")]

    def test_Opening_an_address_looks_its_host_up_through_the_system(self):
        self.assertEqual(self.mac.run("/usr/bin/open", "http://cv-123abc.example.com/").status, 0)
        self.assertTrue(eventually(lambda: "cv-123abc.example.com" in self.outside_names()))
        self.assertEqual(self.mac.ctl("opened"), [{"bundle": None, "address": "http://cv-123abc.example.com/"}])

    def test_Browser_with_its_own_resolver_asks_that_one(self):
        self.mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        self.mac.ctl("browser", "own-dns", "1.1.1.1")
        self.mac.run("/usr/bin/open", "http://cv-456def.example.com/")
        self.assertTrue(eventually(lambda: "cv-456def.example.com" in self.outside_names()))
        self.assertEqual({each["server"] for each in self.mac.ctl("outside-questions")
                          if each["name"] == "cv-456def.example.com"}, {"1.1.1.1"})

    def test_Browser_that_must_be_there_is_opened_at_its_own_page(self):
        missing = self.mac.run("/usr/bin/open", "-b", "com.google.Chrome", "chrome://settings/security")
        self.assertEqual(missing.status, 1)
        self.assertIn("com.google.Chrome", missing.err)
        self.mac.ctl("app", "add", "com.google.Chrome")
        self.assertEqual(self.mac.run("/usr/bin/open", "-b", "com.google.Chrome", "chrome://settings/security").status,
                         0)
        self.assertEqual(self.mac.ctl("opened"),
                         [{"bundle": "com.google.Chrome", "address": "chrome://settings/security"}])

    def test_Settings_open_by_their_scheme(self):
        self.assertEqual(self.mac.run("/usr/bin/open", "x-apple.systempreferences:").status, 0)

    def test_What_nothing_can_open_is_an_error(self):
        result = self.mac.run("/usr/bin/open", "no-such-file")
        self.assertEqual((result.status, result.err), (1, "The file no-such-file does not exist.\n"))
        self.assertEqual(self.mac.ctl("opened"), [])


class ApplicationsTest(MacCase):
    def test_Application_stands_in_its_folder_with_its_identifier(self):
        self.mac.ctl("app", "add", "org.mozilla.firefox")
        plist = self.mac.run("/bin/cat", "/Applications/Firefox.app/Contents/Info.plist").out
        self.assertIn("<string>org.mozilla.firefox</string>", plist)
        self.mac.ctl("app", "remove", "org.mozilla.firefox")
        self.assertEqual(self.mac.run("/bin/ls", "/Applications").out, "Safari.app\n")

    def test_Nonsense_is_refused_with_a_sentence(self):
        for words in (["app"], ["app", "remove", "bogus"], ["app", "add", "a/../b"]):
            self.assertRefused(*words)


class PortsTest(MacCase):
    def bind(self, protocol, port):
        return self.mac.run("/usr/bin/python3", "-c", BIND, protocol, str(port))

    def test_Port_53_may_not_be_bound(self):
        for protocol in ("tcp", "udp"):
            self.assertIn("PermissionError: [Errno 13]", self.bind(protocol, 53).err)

    def test_Port_53_may_be_bound_where_that_is_granted(self):
        self.mac.ctl("port53", "grant")
        self.assertEqual([self.bind("tcp", 53).status, self.bind("udp", 53).status], [0, 0])
        self.mac.ctl("port53", "deny")
        self.assertEqual(self.bind("tcp", 53).status, 1)

    def test_Taken_port_cannot_be_bound_and_lsof_names_its_holder(self):
        self.mac.ctl("port53", "grant")
        self.mac.ctl("take-port", "53", "udp", "--as", "dnsmasq")
        self.assertIn("Address already in use", self.bind("udp", 53).err)
        self.assertEqual(self.bind("tcp", 53).status, 0)
        lsof = self.mac.run("/usr/sbin/lsof", "-nP", "-iUDP:53")
        self.assertEqual(lsof.status, 0)
        self.assertRegex(lsof.out, r"^COMMAND .*\ndnsmasq +\d+ +ada .* UDP 127.0.0.1:53")
        self.mac.ctl("free-port", "53", "udp")
        self.assertEqual(self.bind("udp", 53).status, 0)
        free = self.mac.run("/usr/sbin/lsof", "-nP", "-iUDP:53")
        self.assertNotIn("127.0.0.1:53", free.out)

    def test_Web_port_taken_by_another_program(self):
        self.mac.ctl("take-port", "8080", "tcp", "--as", "java")
        self.assertIn("java", self.mac.run("/usr/sbin/lsof", "-nP", "-iTCP:8080", "-sTCP:LISTEN").out)

    def test_Reset_frees_what_was_taken(self):
        self.mac.ctl("take-port", "8080", "tcp")
        self.mac.ctl("reset")
        self.assertEqual(self.bind("tcp", 8080).status, 0)

    def test_Nonsense_is_refused_with_a_sentence(self):
        self.mac.ctl("take-port", "8080", "tcp")
        for words in (["take-port"], ["take-port", "8080", "tcp"], ["take-port", "0", "tcp"],
                      ["take-port", "80", "icmp"], ["free-port", "9", "udp"]):
            self.assertRefused(*words)


class HomeTest(MacCase):
    def test_Home_folder_is_empty_again_after_a_reset(self):
        self.mac.shell("mkdir -p ~/Library/Preferences/x && echo y > ~/file && echo z > ~/Library/Preferences/x/z")
        self.mac.ctl("reset")
        self.assertEqual(self.mac.shell("find ~ -type f").out, "")
        self.assertEqual(self.mac.shell("test -d \"$HOME/Library/Application Support\"").status, 0)

    def test_Reset_is_quicker_than_a_new_mac(self):
        resets, starts = [], []
        for _ in range(5):
            began = time.monotonic()
            self.mac.ctl("reset")
            resets.append(time.monotonic() - began)
            began = time.monotonic()
            RunningMac().end()
            starts.append(time.monotonic() - began)
        print(f"\nA reset takes {min(resets) * 1000:.0f} ms, a new Mac {min(starts) * 1000:.0f} ms (best of 5).")
        self.assertLess(min(resets), min(starts))


if __name__ == "__main__":
    unittest.main()
