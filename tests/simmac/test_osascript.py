"""The administrator prompt, and the little AppleScript that leads to it."""

import unittest

from the_mac import MacCase


class PromptTest(MacCase):
    def osascript(self, shell_script, admin=True, **more):
        text = shell_script.replace("\\", "\\\\").replace('"', '\\"')
        tail = " with administrator privileges" if admin else ""
        return self.mac.run("/usr/bin/osascript", "-e", f'do shell script "{text}"{tail}', **more)

    def test_Accepted_prompt_runs_the_script_with_the_real_shell(self):
        result = self.osascript("printf '%s' \"$((6 * 7))\" | tr 4 5")
        self.assertEqual((result.status, result.out, result.err), (0, "52\n", ""))

    def test_Every_odd_character_survives_the_two_quotings(self):
        odd = "a\"b\\c$d`e'f\tg\u00fc \u65e5 ; | & < > * ? [x] {y} #"
        quoted = "'" + odd.replace("'", "'\\''") + "'"
        self.assertEqual(self.osascript(f"printf '%s' {quoted}").out, odd + "\n")

    def test_Line_ends_of_the_output_become_carriage_returns(self):
        self.assertEqual(self.osascript("printf 'a\\nb\\n'").raw_out, b"a\rb\n")

    def test_Script_without_output_prints_an_empty_line(self):
        self.assertEqual(self.osascript("true").raw_out, b"\n")

    def test_Failing_script_is_worded_as_an_execution_error(self):
        result = self.osascript("echo broken >&2; exit 7")
        self.assertEqual((result.status, result.out), (1, ""))
        self.assertRegex(result.err, r"^0:\d+: execution error: broken \(7\)\n$")

    def test_Failing_script_that_spoke_on_standard_output_is_heard(self):
        self.assertRegex(self.osascript("echo said; exit 3").err, r"^0:\d+: execution error: said \(3\)\n$")

    def test_Silent_failure_has_AppleScripts_own_sentence(self):
        self.assertRegex(self.osascript("false").err,
                         r"^0:\d+: execution error: The command exited with a non-zero status. \(1\)\n$")

    def test_Cancelled_prompt_runs_nothing(self):
        self.mac.ctl("prompt", "cancel")
        result = self.osascript("touch /tmp/ran")
        self.assertEqual((result.status, result.out), (1, ""))
        self.assertRegex(result.err, r"^0:\d+: execution error: User canceled. \(-128\)\n$")
        self.assertNotEqual(self.mac.shell("test -e /tmp/ran").status, 0)

    def test_Cancelled_prompt_speaks_the_users_language(self):
        self.mac.ctl("language", "de")
        self.mac.ctl("prompt", "cancel")
        err = self.osascript("true").err
        self.assertNotIn("User canceled", err)
        self.assertIn("(-128)", err)

    def test_Refused_prompt_names_the_wrong_password(self):
        self.mac.ctl("prompt", "refuse")
        result = self.osascript("true")
        self.assertEqual(result.status, 1)
        self.assertIn("The administrator user name or password was incorrect. (-60007)", result.err)

    def test_Prompt_that_nobody_answers_ends_with_its_caller(self):
        self.mac.ctl("prompt", "hang")
        result = self.osascript("touch /tmp/ran", limit=0.3)
        self.assertEqual((result.status, result.out, result.err), (-15, "", ""))
        self.assertEqual(self.mac.ended("osascript")["status"], "cancelled")
        self.assertNotEqual(self.mac.shell("test -e /tmp/ran").status, 0)

    def test_Once_holds_for_one_prompt(self):
        self.mac.ctl("prompt", "cancel", "once")
        self.assertEqual([self.osascript("true").status for _ in range(3)], [1, 0, 0])

    def test_Prompts_are_counted_and_a_reset_forgets_them(self):
        self.osascript("true")
        self.mac.ctl("prompt", "cancel")
        self.osascript("true")
        self.osascript("true", admin=False)
        self.assertEqual(self.mac.ctl("prompts"), 2)
        self.mac.ctl("reset")
        self.assertEqual(self.mac.ctl("prompts"), 0)
        self.assertEqual(self.osascript("true").status, 0)

    def test_Script_without_administrator_rights_has_none(self):
        result = self.osascript("/usr/sbin/networksetup -setdnsservers Wi-Fi 127.0.0.1", admin=False)
        self.assertIn("** Error: Command requires admin privileges. (14)", result.err)

    def test_Rights_reach_the_scripts_grandchildren(self):
        self.osascript("sh -c 'sh -c \"/usr/sbin/networksetup -setdnsservers Wi-Fi 127.0.0.1\"'")
        self.assertEqual(self.mac.ctl("services")[0]["servers"], ["127.0.0.1"])
        self.assertTrue(self.mac.journal("networksetup")[0]["admin"])

    def test_Cache_flush_works_under_the_prompt(self):
        result = self.osascript("/usr/bin/dscacheutil -flushcache && /usr/bin/killall -HUP mDNSResponder")
        self.assertEqual(result.status, 0)
        self.assertEqual(self.mac.journal("killall")[0]["argv"], ["-HUP", "mDNSResponder"])
        self.assertEqual(self.mac.run("/usr/bin/killall", "-HUP", "mDNSResponder").status, 1)

    def test_What_is_no_script_is_a_syntax_error(self):
        for source in ("nonsense", 'do shell script "open', 'do shell script "bad \\q escape"', ""):
            with self.subTest(source):
                result = self.mac.run("/usr/bin/osascript", "-e", source)
                self.assertEqual(result.status, 1)
                self.assertRegex(result.err, r"^\d+:\d+: syntax error: .* \(-27\d\d\)\n$")
        self.assertEqual(self.mac.ctl("prompts"), 0)


if __name__ == "__main__":
    unittest.main()
