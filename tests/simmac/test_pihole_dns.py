"""The stand-in Pi-hole's DNS, asked by dig and by bytes."""

import random
import socket
import struct
import time
import unittest

from pihole_stand_in import StandIn

QUESTION = b"\x07example\x03com\x00\x00\x01\x00\x01"


def query(identifier=7, flags=0x0100, questions=1, body=QUESTION):
    return struct.pack(">6H", identifier, flags, questions, 0, 0, 0) + body


class DnsCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pihole = StandIn()
        cls.addClassCleanup(cls.pihole.close)

    def setUp(self):
        self.pihole.ask(do="reset", password="test-password")

    def send(self, data, timeout=0.5):
        """The answer to bytes sent over UDP; empty when none comes."""
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            client.settimeout(timeout)
            client.sendto(data, ("127.0.0.1", self.pihole.dns_port))
            try:
                return client.recv(65535)
            except TimeoutError:
                return b""

    def rcode(self, data):
        return self.send(data)[3] & 0x0F


class AnswerTest(DnsCase):
    def test_Known_name_resolves_over_both_transports(self):
        for option in ("+notcp", "+tcp"):
            self.assertEqual(self.pihole.short("example.com", "A", option), "93.184.215.14")

    def test_Tracker_names_are_nowhere(self):
        for name in ("doubleclick.net", "ad.doubleclick.net", "googleadservices.com", "www.google-analytics.com",
                     "DoubleClick.NET"):
            self.assertEqual(self.pihole.short(name), "0.0.0.0", name)
            self.assertEqual(self.pihole.short(name, "AAAA"), "::", name)

    def test_Names_below_a_listed_one_are_not_blocked(self):
        self.assertEqual(self.pihole.short("deep.below.doubleclick.net"), "203.0.113.66")

    def test_Name_that_only_ends_like_a_tracker_is_not_blocked(self):
        self.assertIn("status: NXDOMAIN", self.pihole.dig("notdoubleclick.net"))

    def test_Blocked_names_do_not_exist_when_told_so(self):
        self.pihole.set("block_mode", "nxdomain")
        answer = self.pihole.dig("doubleclick.net")
        self.assertIn("status: NXDOMAIN", answer)
        self.assertNotIn("0.0.0.0", answer)

    def test_Unknown_name_does_not_exist_and_says_who_says_so(self):
        answer = self.pihole.dig("nosuch-name.example.com", "A", "+authority")
        self.assertIn("status: NXDOMAIN", answer)
        self.assertIn("SOA", answer)

    def test_Other_type_of_a_known_name_is_empty(self):
        answer = self.pihole.dig("example.com", "AAAA")
        self.assertIn("status: NOERROR", answer)
        self.assertIn("ANSWER: 0", answer)

    def test_Text_record_may_look_like_a_status(self):
        answer = self.pihole.dig("odd.example.net", "TXT")
        self.assertIn('"status: NXDOMAIN"', answer)
        self.assertIn("status: NOERROR", answer)

    def test_Names_for_encrypted_dns_do_not_exist(self):
        self.assertIn("status: NXDOMAIN", self.pihole.dig("use-application-dns.net"))

    def test_Spelling_of_the_question_comes_back(self):
        self.assertIn(b"\x07ExAmPlE\x03CoM", self.send(query(body=QUESTION.replace(b"example\x03com",
                                                                                 b"ExAmPlE\x03CoM"))))


class SizeTest(DnsCase):
    def test_Large_answer_is_cut_over_udp_and_whole_over_tcp(self):
        cut = self.pihole.dig("large.example.net", "TXT", "+ignore", "+noedns")
        self.assertRegex(cut, r"flags: [a-z ]*\btc\b")
        self.assertIn("ANSWER: 0", cut)
        self.assertIn("ANSWER: 8", self.pihole.dig("large.example.net", "TXT", "+tcp"))

    def test_Larger_buffer_of_the_asker_is_used(self):
        self.assertIn("ANSWER: 8", self.pihole.dig("large.example.net", "TXT", "+ignore", "+bufsize=4096"))

    def test_Plain_dig_falls_back_to_tcp_by_itself(self):
        self.assertEqual(len(self.pihole.short("many.example.net").splitlines()), 100)

    def test_Answer_without_edns_carries_none(self):
        self.assertNotIn("EDNS", self.pihole.dig("example.com", "A", "+noedns"))
        self.assertIn("EDNS", self.pihole.dig("example.com", "A", "+edns"))


class HostileTest(DnsCase):
    def test_Odd_packets_get_an_error_or_nothing_and_hurt_nobody(self):
        self.assertEqual(self.send(b"", 0.1), b"")
        self.assertEqual(self.send(b"\x00" * 11, 0.1), b"")
        self.assertEqual(self.send(query(flags=0x8100), 0.1), b"")
        self.assertEqual(self.rcode(query(flags=0x2800)), 4)
        for body in (b"", b"\x3f", b"\xc0\x0c\x00\x01\x00\x01", b"\x07exa", QUESTION[:-2], b"\x01a" * 200,
                     b"\x41" + b"a" * 65 + b"\x00\x00\x01\x00\x01"):
            self.assertEqual(self.rcode(query(body=body)), 1, body)
        self.assertEqual(self.rcode(query(questions=0)), 1)
        self.assertEqual(self.rcode(query(questions=2)), 1)
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")

    def test_Any_bytes_leave_it_standing(self):
        chance = random.Random(5)
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            for _ in range(800):
                packet = bytearray(query(body=QUESTION + b"\0\0\x29\x10\0\0\0\0\0\0\0"))
                for _ in range(chance.randint(1, 8)):
                    packet[chance.randrange(len(packet))] = chance.randrange(256)
                client.sendto(packet[:chance.randint(1, len(packet))], ("127.0.0.1", self.pihole.dns_port))
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")
        self.assertNotIn("Traceback", self.pihole.printed())

    def test_Tcp_connection_carries_many_questions_and_survives_pieces(self):
        with socket.create_connection(("127.0.0.1", self.pihole.dns_port), 2) as client:
            message = query()
            for byte in struct.pack(">H", len(message)) + message:
                client.sendall(bytes([byte]))
            client.sendall((struct.pack(">H", len(message)) + message) * 2)
            with client.makefile("rb") as file:
                for _ in range(3):
                    length = struct.unpack(">H", file.read(2))[0]
                    self.assertEqual(file.read(length)[:2], b"\x00\x07")

    def test_Half_a_tcp_message_holds_up_nobody(self):
        with socket.create_connection(("127.0.0.1", self.pihole.dns_port), 2) as client:
            client.sendall(b"\x00\x30\x00")
            self.assertEqual(self.pihole.short("example.com", "A", "+tcp"), "93.184.215.14")


class TroubleTest(DnsCase):
    def test_Too_many_questions_are_refused_and_said_in_the_log(self):
        self.pihole.set("question_limit", 20)
        before = self.pihole.printed().count("Rate-limiting 127.0.0.1 for at least")
        answers = [self.rcode(query()) for _ in range(25)]
        self.assertEqual(answers, [0] * 20 + [5] * 5)
        self.assertEqual(self.pihole.printed().count("Rate-limiting 127.0.0.1 for at least"), before + 1)
        self.pihole.ask(do="advance", seconds=61)
        self.assertEqual(self.rcode(query()), 0)

    def test_Limit_is_a_thousand_a_minute(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            client.connect(("127.0.0.1", self.pihole.dns_port))
            client.settimeout(2)
            codes = []
            for _ in range(1002):
                client.send(query())
                codes.append(client.recv(512)[3] & 0x0F)
        self.assertEqual(codes, [0] * 1000 + [5] * 2)

    def test_Without_internet_only_what_is_known_is_answered(self):
        self.pihole.short("example.com")
        self.pihole.set("internet", "off")
        self.assertIn("status: SERVFAIL", self.pihole.dig("example.org"))
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")
        self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")
        self.pihole.ask(do="advance", seconds=300 + 3601)
        self.assertIn("status: SERVFAIL", self.pihole.dig("example.com"))

    def test_Expired_answer_is_given_for_one_more_hour(self):
        self.pihole.short("example.com")
        self.pihole.set("internet", "off")
        self.pihole.ask(do="advance", seconds=301)
        self.assertRegex(self.pihole.dig("example.com"), r"(?s)NOERROR.*EDE: 3.*example.com.\t+0\tIN\tA\t93.184.215.14")
        self.pihole.ask(do="advance", seconds=3500)
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")

    def test_Silent_upstream_leaves_new_names_without_an_answer(self):
        self.pihole.set("upstream", "silent")
        self.assertIn("timed out", self.pihole.dig("example.com"))
        self.assertEqual(self.pihole.short("doubleclick.net"), "0.0.0.0")
        self.assertNotEqual(self.pihole.short("pi.hole"), "")

    def test_One_transport_goes_deaf_without_the_other(self):
        self.pihole.set("udp", "drop")
        self.assertIn("timed out", self.pihole.dig("example.com"))
        self.assertEqual(self.pihole.short("example.com", "A", "+tcp"), "93.184.215.14")
        self.pihole.set("udp", "on")
        self.pihole.set("tcp", "drop")
        self.assertIn("timed out", self.pihole.dig("example.com", "A", "+tcp"))
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")

    def test_Closed_udp_refuses_at_once(self):
        self.pihole.set("udp", "closed")
        answer = self.pihole.dig("example.com")
        self.assertIn("connection refused", answer)
        self.assertNotIn("timed out", answer)
        self.pihole.set("udp", "on")
        self.assertEqual(self.pihole.short("example.com"), "93.184.215.14")

    def test_Silent_pihole_answers_nothing(self):
        self.pihole.set("silent", "on")
        self.assertIn("timed out", self.pihole.dig("example.com"))
        self.assertIn("timed out", self.pihole.dig("example.com", "A", "+tcp"))


class StartTest(unittest.TestCase):
    def test_Blocked_names_get_through_for_a_moment_after_a_restart(self):
        pihole = StandIn(restart=0.3, settle=0.4)
        self.addCleanup(pihole.close)
        self.assertEqual(pihole.short("doubleclick.net"), "0.0.0.0")
        pihole.ask(do="restart")
        self.assertEqual(pihole.short("doubleclick.net"), "203.0.113.66")
        time.sleep(0.4)
        self.assertEqual(pihole.short("doubleclick.net"), "0.0.0.0")

    def test_Log_looks_like_that_of_a_container(self):
        pihole = StandIn()
        self.addCleanup(pihole.close)
        before = pihole.printed()
        pihole.short("example.com")
        pihole.short("doubleclick.net")
        text = pihole.printed()
        self.assertEqual(text, before, "no question is printed")
        self.assertRegex(text, r"(?m)^  \[i\] Starting pihole-FTL")
        self.assertIn("  [i] Building tree...\r\x1b[K  [✓] Building tree\n", text)
        self.assertRegex(text, r"(?m)^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} UTC \[\d+M\] INFO: ")


if __name__ == "__main__":
    unittest.main()
