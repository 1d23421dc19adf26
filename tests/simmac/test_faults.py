"""Tools that go wrong when they are told to, and the journal that saw it."""

import threading
import unittest

from the_mac import MacCase

SW_VERS = "/usr/bin/sw_vers"


class FaultsTest(MacCase):
    def fault(self, *words):
        self.mac.ctl("fault", *words)

    def test_Failing_tool_ends_with_the_status_and_the_words(self):
        self.fault("sw_vers", "fail", "3", "It broke.")
        result = self.mac.run(SW_VERS)
        self.assertEqual((result.status, result.out, result.err), (3, "", "It broke.\n"))

    def test_Fault_at_the_third_call_spares_the_others(self):
        self.fault("sw_vers", "fail", "--at", "3")
        self.assertEqual([self.mac.run(SW_VERS).status for _ in range(5)], [0, 0, 1, 0, 0])

    def test_Fault_with_a_pattern_strikes_only_what_matches(self):
        self.fault("sw_vers", "fail", "--when", "-product*", "--at", "2")
        runs = [self.mac.run(SW_VERS, word).status
                for word in ("-productName", "-buildVersion", "-productVersion", "-productName")]
        self.assertEqual(runs, [0, 0, 1, 0])

    def test_Clear_takes_every_fault_back(self):
        self.fault("sw_vers", "fail")
        self.fault("clear")
        self.assertEqual(self.mac.run(SW_VERS).status, 0)
        self.assertEqual(self.mac.ctl("fault", "list"), [])

    def test_Hanging_tool_waits_until_it_is_ended(self):
        self.fault("sw_vers", "hang")
        result = self.mac.run(SW_VERS, limit=0.3)
        self.assertEqual((result.status, result.out), (-15, ""))
        self.assertEqual(self.mac.ended("sw_vers")["status"], "cancelled")

    def test_Reset_ends_a_tool_that_still_runs(self):
        self.fault("sw_vers", "hang")
        reset = threading.Timer(0.2, self.mac.ctl, ("reset",))
        reset.start()
        result = self.mac.run(SW_VERS)
        reset.join()
        self.assertEqual(result.status, -9)

    def test_Tool_that_ignores_SIGTERM_needs_SIGKILL(self):
        self.fault("sw_vers", "ignore-term")
        result = self.mac.run(SW_VERS, limit=0.3)
        self.assertEqual(result.status, -9)
        self.assertGreater(result.seconds, 1.0)

    def test_Late_tool_answers_in_the_end(self):
        self.fault("sw_vers", "late", "0.4")
        result = self.mac.run(SW_VERS, "-productName")
        self.assertEqual((result.status, result.out), (0, "macOS\n"))
        self.assertGreaterEqual(result.seconds, 0.4)

    def test_Rubbish_is_no_text_and_ends_well(self):
        self.fault("sw_vers", "rubbish")
        result = self.mac.run(SW_VERS)
        self.assertEqual(result.status, 0)
        self.assertIn(b"\x00\xff\xfe", result.raw_out)
        with self.assertRaises(UnicodeDecodeError):
            result.raw_out.decode()

    def test_Flood_fills_both_streams(self):
        self.fault("sw_vers", "flood", "5")
        result = self.mac.run(SW_VERS)
        self.assertEqual((result.status, len(result.raw_out), len(result.raw_err)), (0, 5 * 2**20, 5 * 2**20))

    def test_Flood_ends_with_a_reader_that_goes_away(self):
        self.fault("sw_vers", "flood", "4096")
        result = self.mac.shell("sw_vers 2>/dev/null | head -c 1000 | wc -c; true")
        self.assertEqual(result.out.strip(), "1000")
        self.assertLess(result.seconds, 5.0)

    def test_Tool_dies_by_the_signal(self):
        for name, number in (("SEGV", 11), ("SIGKILL", 9), ("6", 6)):
            self.fault("clear")
            self.fault("sw_vers", "die", name)
            self.assertEqual(self.mac.run(SW_VERS).status, -number)

    def test_Vanished_tool_is_not_there_until_the_fault_is_cleared(self):
        self.fault("sw_vers", "vanish")
        self.assertEqual(self.mac.run(SW_VERS).status, 127)
        self.fault("clear")
        self.assertEqual(self.mac.run(SW_VERS).status, 0)

    def test_Tool_vanishes_at_its_second_call(self):
        self.fault("sw_vers", "vanish", "--at", "2")
        self.assertEqual([self.mac.run(SW_VERS).status for _ in range(3)], [0, 127, 127])

    def test_Tool_that_was_not_installed_does_not_appear_when_faults_are_cleared(self):
        self.fault("docker", "vanish")
        self.fault("clear")
        self.assertEqual(self.mac.run("/opt/homebrew/bin/docker").status, 127)

    def test_All_tools_can_vanish_at_once(self):
        self.fault("*", "vanish")
        self.assertEqual([self.mac.run(path).status for path in (SW_VERS, "/sbin/route")], [127, 127])
        self.fault("clear")
        self.assertEqual(self.mac.run(SW_VERS).status, 0)

    def test_Real_tools_can_go_wrong_too(self):
        self.fault("dig", "fail", "9")
        self.fault("lsof", "vanish")
        self.assertEqual(self.mac.run("/usr/bin/dig", "example.com").status, 9)
        self.assertEqual(self.mac.run("/usr/sbin/lsof").status, 127)

    def test_Star_strikes_every_tool(self):
        self.fault("*", "fail", "5")
        self.assertEqual(self.mac.run(SW_VERS).status, 5)
        self.assertEqual(self.mac.run("/usr/sbin/scutil", "--dns").status, 5)

    def test_Nonsense_is_refused_with_a_sentence(self):
        for words in (["sw_vers"], ["sw_vers", "sulk"], ["bogus", "fail"], ["sw_vers", "late"],
                      ["sw_vers", "late", "x"], ["sw_vers", "late", "nan"], ["sw_vers", "die", "NONE"],
                      ["sw_vers", "fail", "300"], ["sw_vers", "fail", "--at"], ["sw_vers", "fail", "--at", "0"],
                      ["sw_vers", "hang", "5"]):
            with self.subTest(words):
                self.assertRefused("fault", *words)


class JournalTest(MacCase):
    def test_Call_is_recorded_with_all_that_matters(self):
        self.mac.run(SW_VERS, "-productName", env={"SPECIAL": "a=b"}, cwd="/Users/ada")
        entry = self.mac.ended("sw_vers")
        self.assertEqual((entry["tool"], entry["argv"], entry["cwd"], entry["status"], entry["admin"]),
                         ("sw_vers", ["-productName"], "/Users/ada", 0, False))
        self.assertEqual(entry["env"]["SPECIAL"], "a=b")
        self.assertGreater(entry["pid"], 1)
        self.assertLessEqual(entry["start"], entry["end"])

    def test_Odd_arguments_arrive_unharmed(self):
        odd = ["", " ", "a b", "'\"`$\\", "line\nbreak", "tab\t", "ü日", "--", "-", "*", "\x01\x7f", "x" * 100_000]
        self.mac.run(SW_VERS, *odd)
        self.assertEqual(self.mac.journal()[0]["argv"], odd)

    def test_Bytes_that_are_no_text_arrive_unharmed(self):
        self.mac.shell("sw_vers \"$(printf 'a\\377\\376b')\"")
        self.assertEqual(self.mac.journal()[0]["argv"][0].encode("utf-8", "surrogateescape"), b"a\xff\xfeb")

    def test_A_thousand_variables_arrive(self):
        env = {f"VARIABLE_{number}": "=" * number for number in range(1000)}
        self.mac.run(SW_VERS, env=env)
        recorded = self.mac.journal()[0]["env"]
        self.assertEqual({name: recorded[name] for name in env}, env)

    def test_Sixty_four_calls_at_once_are_all_answered(self):
        result = self.mac.shell("for i in $(seq 64); do sw_vers -productName & done; wait")
        self.assertEqual(result.out, "macOS\n" * 64)
        self.assertEqual(len(self.mac.journal("sw_vers")), 64)

    def test_Real_tool_is_recorded_to_its_end(self):
        self.mac.run("/usr/bin/dig", "example.com", "A")
        entry = self.mac.ended("dig")
        self.assertEqual((entry["argv"], entry["status"]), (["example.com", "A"], "real"))

    def test_Reset_forgets_the_journal(self):
        self.mac.run(SW_VERS)
        self.mac.ctl("reset")
        self.assertEqual(self.mac.journal(), [])


if __name__ == "__main__":
    unittest.main()
