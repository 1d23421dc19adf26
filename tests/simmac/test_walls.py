"""What a program finds inside a Mac, what it cannot touch, and that nothing outside changes."""

import hashlib
import os
import shutil
import tempfile
import time
import unittest

from the_mac import REPOSITORY, MacCase, RunningMac, run, simmac


class InsideTest(MacCase):
    def test_Program_has_no_capability(self):
        status = self.mac.run("/bin/cat", "/proc/self/status").out
        for name in ("CapInh", "CapPrm", "CapEff", "CapBnd", "CapAmb"):
            self.assertIn(f"{name}:\t0000000000000000\n", status)
        self.assertIn("NoNewPrivs:\t1\n", status)

    def test_Read_only_folder_is_read_only(self):
        self.assertEqual(self.mac.shell("mkdir -m 555 ~/sealed && touch ~/sealed/file").status, 1)

    def test_System_folders_and_the_project_cannot_be_written(self):
        for path in ("/usr/bin/x", "/usr/sbin/x", "/usr/lib/x", "/etc/x", "/System/x", "/x", f"{REPOSITORY}/x",
                     f"{REPOSITORY}/simmac/x"):
            self.assertNotEqual(self.mac.run("/usr/bin/touch", path).status, 0, path)

    def test_Home_is_that_of_a_Mac(self):
        out = self.mac.shell("echo $HOME $XDG_CONFIG_HOME $USER $PATH; whoami; cd; pwd; ls Library").out
        self.assertEqual(out, "/Users/ada /Users/ada/.config ada /usr/bin:/bin:/usr/sbin:/sbin\nada\n/Users/ada\n"
                              "Application Support\nCaches\nPreferences\n")

    def test_Time_zone_is_a_link_as_on_a_Mac(self):
        zone = self.mac.run("/bin/readlink", "/etc/localtime").out.strip()
        self.assertEqual(zone.partition("/zoneinfo/")[0], "/usr/share")
        self.assertEqual(self.mac.shell("date +%Z%z").out, time.strftime("%Z%z\n"))

    def test_Tools_stand_at_their_paths(self):
        for path in ("/usr/sbin/networksetup", "/usr/sbin/scutil", "/usr/sbin/lsof", "/sbin/route", "/usr/bin/dig",
                     "/usr/bin/osascript", "/usr/bin/open", "/usr/bin/dscacheutil", "/usr/bin/killall",
                     "/usr/bin/sw_vers"):
            self.assertEqual(self.mac.run("/usr/bin/test", "-x", path).status, 0, path)

    def test_Bare_Mac_has_nothing_of_Homebrew(self):
        self.assertEqual(self.mac.shell("ls -A /opt/homebrew/bin /usr/local/bin").out,
                         "/opt/homebrew/bin:\n\n/usr/local/bin:\n")

    def test_Network_is_its_own(self):
        self.assertEqual(self.mac.shell("tail -n +3 /proc/net/dev | cut -d: -f1").out.split(), ["lo"])

    def test_Processes_outside_are_out_of_sight(self):
        pids = self.mac.shell("ls /proc | grep '^[0-9]*$'").out.split()
        self.assertLess(len(pids), 20)

    def test_Control_works_from_inside(self):
        self.assertEqual(self.mac.shell("simmac ctl wifi off && simmac ctl state").out, "bare\n")
        self.assertFalse(self.mac.ctl("status")["wifi"])
        refused = self.mac.shell("simmac ctl wifi perhaps")
        self.assertEqual((refused.status, refused.err), (2, "simmac: Say one of: on, off, yes, no.\n"))

    def test_Any_bytes_on_the_control_socket_get_an_answer(self):
        script = ("import socket, sys\n"
                  "s = socket.socket(socket.AF_UNIX); s.connect('/run/simmac/control.sock'); f = s.makefile('rwb')\n"
                  "for line in (b'\\xff\\xfe', b'[]', b'{}', b'{\"command\": 5}', b'{\"command\": []}', b'[' * 50000,\n"
                  "             b'{\"command\": [\"state\"]}'):\n"
                  "    f.write(line + b'\\n'); f.flush(); print(f.readline().decode().split(',')[0])\n")
        self.assertEqual(self.mac.run("/usr/bin/python3", "-c", script).out,
                         "{\"ok\": false\n" * 6 + "{\"ok\": true\n")

    def test_Any_bytes_on_the_tools_socket_harm_nobody(self):
        script = ("import os, socket\n"
                  "for data in (b'', b'\\0', b'\\xff' * 9, b'\\1\\0\\0\\0\\0\\0\\0\\0\\0', os.urandom(5000)):\n"
                  "    s = socket.socket(socket.AF_UNIX); s.connect('/run/simmac/tools.sock')\n"
                  "    s.sendall(data); s.close()\n")
        self.assertEqual(self.mac.run("/usr/bin/python3", "-c", script).status, 0)
        self.assertEqual(self.mac.run("/usr/bin/sw_vers").status, 0)


class OutsideTest(unittest.TestCase):
    def picture(self):
        """What a Mac must not change outside."""
        seen = {}
        for path in ("/etc/resolv.conf", "/etc/hosts", "/etc/nsswitch.conf", "/proc/net/fib_trie",
                     "/proc/sys/net/ipv4/ip_unprivileged_port_start"):
            with open(path, "rb") as file:
                seen[path] = hashlib.sha256(file.read()).hexdigest()
        for path in ("/", "/etc", "/opt", "/usr/bin", "/usr/sbin", "/usr/local/bin", "/run", "/var"):
            seen[path] = sorted(os.listdir(path)) if os.path.isdir(path) else None
        return seen

    def test_Nothing_outside_changes(self):
        before = self.picture()
        mac = RunningMac()
        mac.ctl("servers", "Wi-Fi", "127.0.0.1")
        mac.ctl("port53", "grant")
        mac.ctl("take-port", "53", "udp")
        mac.ctl("app", "add", "org.mozilla.firefox")
        mac.ctl("vpn", "on")
        during = self.picture()
        mac.end()
        self.assertEqual((before, before), (during, self.picture()))

    def test_Two_Macs_live_side_by_side(self):
        first, second = RunningMac(), RunningMac()
        self.addCleanup(first.end)
        self.addCleanup(second.end)
        first.ctl("servers", "Wi-Fi", "127.0.0.1")
        for mac in (first, second):
            mac.ctl("take-port", "53", "udp")
        self.assertEqual(first.run("/usr/sbin/networksetup", "-getdnsservers", "Wi-Fi").out, "127.0.0.1\n")
        self.assertIn("aren't any", second.run("/usr/sbin/networksetup", "-getdnsservers", "Wi-Fi").out)
        self.assertEqual(second.journal("osascript"), [])

    def test_Shared_folder_can_be_written_and_others_cannot_be_seen(self):
        with tempfile.TemporaryDirectory() as shared, tempfile.TemporaryDirectory() as other:
            self.assertEqual(run(f"echo made > {shared}/file", "--share", shared).returncode, 0)
            self.assertTrue(os.path.exists(f"{shared}/file"))
            self.assertNotEqual(run(f"ls {other}", "--share", shared).returncode, 0)

    def test_Program_of_another_folder_is_visible_there(self):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy("/bin/echo", f"{folder}/speak")
            self.assertEqual(simmac("run", "--", f"{folder}/speak", "a b", "", "c").stdout, "a b  c\n")

    def test_Callers_variables_arrive_but_not_the_callers_session(self):
        env = dict(os.environ, SPECIAL="a=b", XDG_CONFIG_HOME="/else", DBUS_SESSION_BUS_ADDRESS="unix:path=/else")
        out = run("echo $SPECIAL $XDG_CONFIG_HOME $DBUS_SESSION_BUS_ADDRESS", env=env).stdout
        self.assertEqual(out, "a=b /Users/ada/.config\n")

    def test_Private_folder_may_lie_deep(self):
        with tempfile.TemporaryDirectory() as base:
            deep = os.path.join(base, *["a-rather-long-name"] * 8)
            self.assertEqual(run("sw_vers -productName", "--at", deep).stdout, "macOS\n")

    def test_Settings_hold_from_the_start(self):
        out = run("sw_vers -productVersion; cat /etc/resolv.conf", "--set", "macos=12.6", "--set", "vpn=on 10.1.2.3")
        self.assertIn("12.6\n", out.stdout)
        self.assertIn("nameserver 10.1.2.3\n", out.stdout)

    def test_Low_ports_are_granted_only_on_demand(self):
        script = "python3 -c 'import socket; socket.socket().bind((\"127.0.0.1\", 53))' 2>/dev/null"
        self.assertEqual([run(script).returncode, run(script, "--grant-port-53").returncode], [1, 0])

    def test_Tool_answers_before_an_interpreter_would_have_started(self):
        mac = RunningMac()
        self.addCleanup(mac.end)
        tool, interpreter = [], []
        for _ in range(5):
            tool.append(mac.shell("for i in $(seq 20); do sw_vers >/dev/null; done").seconds)
            interpreter.append(mac.shell("for i in $(seq 20); do python3 -c 'import json, socket'; done").seconds)
        print(f"\nA tool answers in {min(tool) * 50:.1f} ms, an interpreter in {min(interpreter) * 50:.1f} ms.")
        self.assertLess(min(tool), min(interpreter))


if __name__ == "__main__":
    unittest.main()
