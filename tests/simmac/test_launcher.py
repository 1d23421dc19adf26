"""Entering a Mac and leaving it: statuses, signals, refusals, and that nothing is left behind."""

import os
import pty
import shutil
import signal
import socket
import subprocess
import tempfile
import unittest

from the_mac import SIMMAC, Problem, RunningMac, ctl, eventually, run, simmac


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

    def test_Folder_without_a_real_engine_is_refused(self):
        self.assertSentence(run("true", "--engine", "/usr"), "/usr is not the folder of a real engine")

    def test_Mac_that_does_not_answer_is_told_after_the_limit(self):
        with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX) as silent:
            silent.bind(f"{folder}/control.sock")
            silent.listen()
            with self.assertRaisesRegex(Problem, "did not answer within 0.2 seconds"):
                ctl.ask(folder, ["state"], limit=0.2)

    def test_Control_of_no_Mac_is_refused(self):
        self.assertSentence(simmac("ctl", "--at", "/no/such/folder", "status"), "No simulated Mac runs at")


if __name__ == "__main__":
    unittest.main()
