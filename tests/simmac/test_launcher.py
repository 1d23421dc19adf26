"""Entering a Mac: what the program finds there, what it cannot touch, and that nothing is left behind."""

import hashlib
import os
import pty
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

from the_mac import REPOSITORY, SIMMAC, MacCase, RunningMac, eventually


def simmac(*words, **more):
    """Runs the command to its end."""
    return subprocess.run([SIMMAC, *words], capture_output=True, text=True, timeout=60, check=False, **more)


def run(script, *options, **more):
    """Runs a shell script in a fresh Mac."""
    return simmac("run", *options, "--", "/bin/sh", "-c", script, **more)


def processes_with(text):
    """The processes of this machine whose command line holds the text."""
    found = []
    for pid in filter(str.isdecimal, os.listdir("/proc")):
        try:
            with open(f"/proc/{pid}/cmdline", "rb") as file:
                if text.encode() in file.read() and int(pid) != os.getpid():
                    found.append(int(pid))
        except OSError:
            pass
    return found


class EndingTest(unittest.TestCase):
    def setUp(self):
        self.base = tempfile.mkdtemp(prefix="ending-")
        self.addCleanup(shutil.rmtree, self.base, ignore_errors=True)
        self.folder = f"{self.base}/mac"

    def start(self, script):
        process = subprocess.Popen([SIMMAC, "run", "--at", self.folder, "--", "/bin/sh", "-c", script],
                                   stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.wait)
        self.assertEqual(process.stdout.readline(), "ready\n")
        return process

    def assertNothingRuns(self):
        self.assertTrue(eventually(lambda: not processes_with(self.folder)), processes_with(self.folder))

    def test_Status_of_the_program_is_the_status_of_the_command(self):
        self.assertEqual([run(f"exit {status}").returncode for status in (0, 1, 42, 255)], [0, 1, 42, 255])

    def test_Program_that_died_by_a_signal_gives_128_and_the_signal(self):
        self.assertEqual(run("kill -SEGV $$").returncode, 128 + signal.SIGSEGV)

    def test_Streams_belong_to_the_program(self):
        result = run("cat; echo err >&2", input="from outside\n")
        self.assertEqual((result.stdout, result.stderr), ("from outside\n", "err\n"))

    def test_Private_folder_is_gone_afterwards_and_kept_when_told(self):
        run("true", "--at", self.folder)
        self.assertFalse(os.path.exists(self.folder))
        run("echo kept > ~/file", "--at", self.folder, "--keep")
        with open(f"{self.folder}/root/Users/ada/file", encoding="ascii") as file:
            self.assertEqual(file.read(), "kept\n")
        self.assertEqual(run("test -e ~/file", "--at", self.folder).returncode, 1)

    def test_Children_of_the_program_end_with_it(self):
        run(f"sleep 4711 {self.folder} & setsid sleep 4711 & true", "--at", self.folder)
        self.assertNothingRuns()

    def test_SIGTERM_ends_the_program_gently(self):
        process = self.start("trap 'echo asked; exit 9' TERM; echo ready; while :; do sleep 0.05; done")
        process.terminate()
        self.assertEqual((process.stdout.readline(), process.wait(10)), ("asked\n", 9))
        self.assertNothingRuns()

    def test_SIGKILL_leaves_no_process_behind(self):
        process = self.start("setsid sleep 4711 & echo ready; sleep 4711")
        self.assertGreater(len(processes_with(self.folder)), 1)
        process.kill()
        process.wait()
        self.assertNothingRuns()

    def test_Mac_whose_daemon_dies_is_over(self):
        process = self.start("echo ready; kill -9 $PPID; sleep 4711")
        self.assertEqual(process.wait(10), 128 + signal.SIGKILL)
        self.assertNothingRuns()

    def test_What_a_killed_Mac_left_is_cleared_away_by_the_next(self):
        env = dict(os.environ, TMPDIR=self.base)
        process = subprocess.Popen([SIMMAC, "run", "--", "/bin/sh", "-c", "echo ready; sleep 4711"],
                                   stdout=subprocess.PIPE, env=env)
        self.assertEqual(process.stdout.readline(), b"ready\n")
        process.kill()
        process.wait()
        process.stdout.close()
        self.assertEqual(len(os.listdir(self.base)), 1)
        self.assertTrue(eventually(lambda: run("true", env=env).returncode == 0 and not os.listdir(self.base)))

    def test_Folder_of_a_killed_Mac_can_be_used_again(self):
        process = self.start("echo ready; sleep 4711")
        process.kill()
        process.wait()
        self.assertNothingRuns()
        self.assertEqual(run("true", "--at", self.folder).returncode, 0)


class TerminalTest(unittest.TestCase):
    def at_a_terminal(self, program, keys):
        """Starts a program at a terminal, presses keys when it says "ready", and answers with its exit status."""
        pid, terminal = pty.fork()
        if pid == 0:
            os.execv(SIMMAC, [SIMMAC, "run", "--", *program])
        seen = b""
        while b"ready" not in seen:
            seen += os.read(terminal, 4096)
        os.write(terminal, keys)
        status = os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])
        os.close(terminal)
        return status

    def test_Ctrl_C_reaches_the_program_and_only_the_program(self):
        script = "trap 'simmac ctl state >/dev/null && exit 6' INT; echo ready; while :; do sleep 0.1; done"
        self.assertEqual(self.at_a_terminal(["/bin/sh", "-c", script], b"\x03"), 6)

    def test_Ctrl_C_ends_a_program_that_does_not_care(self):
        self.assertEqual(self.at_a_terminal(["/bin/sh", "-c", "echo ready; exec sleep 4711"], b"\x03"),
                         128 + signal.SIGINT)


class RefusingTest(unittest.TestCase):
    def assertSentence(self, result, words):
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertRegex(result.stderr, r"^simmac: [^\n]*\.\n$")
        self.assertIn(words, result.stderr)

    def test_Without_namespaces_one_sentence_says_what_to_do(self):
        result = subprocess.run(
            ["bwrap", "--unshare-user", "--disable-userns", "--dev-bind", "/", "/", SIMMAC, "run", "--", "/bin/true"],
            capture_output=True, text=True, timeout=60, check=False)
        self.assertSentence(result, "sysctl -w")

    def test_Without_bubblewrap_one_sentence_says_what_to_do(self):
        with tempfile.TemporaryDirectory() as empty:
            self.assertSentence(run("true", env={"PATH": empty}), "apt-get install bubblewrap")

    def test_Folder_that_holds_other_files_is_left_alone(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(f"{folder}/precious", "w", encoding="ascii") as file:
                file.write("x")
            self.assertSentence(run("true", "--at", folder), "holds other files")
            self.assertTrue(os.path.exists(f"{folder}/precious"))

    def test_Folder_of_a_running_Mac_is_refused(self):
        mac = RunningMac()
        self.addCleanup(mac.end)
        self.assertSentence(run("true", "--at", mac.folder), "already runs")
        self.assertEqual(mac.run("/bin/true").status, 0)

    def test_Missing_program_and_bad_settings_are_refused(self):
        self.assertSentence(simmac("run", "--", "/no/such/program"), "is not a program")
        self.assertSentence(run("true", "--set", "wifi"), "KEY=VALUE")
        self.assertSentence(run("true", "--set", "wifi=perhaps"), "on, off")
        self.assertSentence(run("true", "--share", "/no/such/folder"), "is not a folder")

    def test_Control_of_no_Mac_is_refused(self):
        self.assertSentence(simmac("ctl", "--at", "/no/such/folder", "status"), "No simulated Mac runs at")


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
                  "    s = socket.socket(socket.AF_UNIX); s.connect('/run/simmac/tools.sock'); s.sendall(data); s.close()\n")
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

    def test_It_starts_in_well_under_a_second(self):
        times = []
        for _ in range(5):
            began = time.monotonic()
            self.assertEqual(run("true").returncode, 0)
            times.append(time.monotonic() - began)
        print(f"\nA Mac starts, runs a program and ends in {min(times) * 1000:.0f} ms (best of {len(times)}).")
        self.assertLess(min(times), 0.8)

    def test_Tool_answers_in_a_few_milliseconds(self):
        mac = RunningMac()
        self.addCleanup(mac.end)
        result = mac.shell("for i in $(seq 100); do sw_vers >/dev/null; done")
        print(f"\nA tool answers in {result.seconds * 10:.1f} ms.")
        self.assertLess(result.seconds / 100, 0.02)


if __name__ == "__main__":
    unittest.main()
