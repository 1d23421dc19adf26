"""brew: installing, its lock, and Colima as a service."""

import unittest

from container_tools import ContainerCase
from the_mac import eventually


class InstallTest(ContainerCase):
    state = "homebrew"

    def tools(self):
        return self.mac.shell("ls /opt/homebrew/bin").out.split()

    def test_Install_makes_the_tools_appear(self):
        self.assertEqual(self.tools(), ["brew"])
        result = self.brew("install", "colima", "docker")
        self.assertEqual(result.status, 0)
        self.assertEqual(self.tools(), ["brew", "colima", "docker"])
        for line in ("==> Fetching downloads for: colima, docker\n", "==> Pouring lima--", "==> Pouring colima--",
                     "==> Pouring docker--", "🍺  /opt/homebrew/Cellar/colima/", "==> Caveats\n"):
            self.assertIn(line, result.out)
        self.assertRegex(result.raw_err, rb"\r#+ 2\.1%\r#+ 18\.4%.*100\.0%\n")

    def test_Hints_go_away_with_their_variable(self):
        self.assertNotIn("Hide these hints", self.brew("install", "colima", env={"HOMEBREW_NO_ENV_HINTS": "1"}).out)
        self.assertIn("Hide these hints", self.brew("install", "docker").out)

    def test_What_is_there_is_not_installed_again(self):
        self.brew("install", "docker")
        self.assertEnds(self.brew("install", "docker"), 0, "", "Warning: docker 28.5.1 is already installed and "
                        "up-to-date.\nTo reinstall 28.5.1, run:\n  brew reinstall docker\n")

    def test_Without_internet_nothing_is_installed(self):
        self.mac.ctl("internet", "off")
        result = self.brew("install", "colima", "docker")
        self.assertSays(result, 1, "curl: (6) Could not resolve host")
        self.assertIn("Error: lima: Failed to download resource", result.err)
        self.assertEqual(self.tools(), ["brew"])

    def test_Unknown_formula_is_refused(self):
        self.assertSays(self.brew("install", "colimaa"), 1, 'No available formula with the name "colimaa"')
        self.assertSays(self.brew("install"), 1, "requires at least 1 formula argument")
        self.assertSays(self.brew("nonsense"), 1, "Unknown command: brew nonsense")

    def test_Version_prefix_and_list(self):
        self.assertRegex(self.brew("--version").out, r"^Homebrew \d+\.\d+\.\d+\n$")
        self.assertEqual(self.brew("--prefix").out, "/opt/homebrew\n")
        self.brew("install", "colima")
        self.assertEqual(self.brew("list").out, "colima\nlima\n")
        self.assertEqual(self.brew("list", "docker").status, 1)

    def test_Uninstalled_tool_is_gone(self):
        self.brew("install", "docker")
        self.assertEqual(self.brew("uninstall", "docker").status, 0)
        self.assertEqual(self.tools(), ["brew"])


class LockTest(ContainerCase):
    state = "homebrew"
    options = ("--speed", "real")

    def test_Second_brew_is_locked_out_until_the_first_has_ended(self):
        script = ("/opt/homebrew/bin/brew install docker > /dev/null 2>&1 & first=$!; sleep 0.5; "
                  "/opt/homebrew/bin/brew install colima; echo second $?; kill $first; wait $first; sleep 0.2; "
                  "timeout 0.5 /opt/homebrew/bin/brew install colima > /dev/null 2>&1; echo third $?")
        result = self.mac.shell(script)
        self.assertEqual(result.out, "second 1\nthird 124\n")
        self.assertIn("Error: A `brew install colima` process has already locked /opt/homebrew/Cellar/colima.\n", result.err)

    def test_Install_takes_seconds_and_shows_progress_on_the_way(self):
        result = self.brew("install", "docker", limit=4)
        self.assertEqual(result.status, -15)
        self.assertIn("% ", result.err.replace("\r", " "))
        self.assertEqual(self.mac.shell("ls /opt/homebrew/bin").out.split(), ["brew"])


class ServiceTest(ContainerCase):
    state = "stopped"

    def docker_works(self):
        return self.docker("info", "--format", "{{.ServerVersion}}").status == 0

    def test_Service_starts_colima_a_while_later(self):
        self.assertEnds(self.brew("services", "start", "colima"), 0,
                        "==> Successfully started `colima` (label: homebrew.mxcl.colima)\n", "")
        self.assertTrue(eventually(self.docker_works))
        self.assertIn("colima started ada", self.brew("services", "list").out)
        self.assertSays(self.brew("services", "start", "colima"), 0, "")
        self.assertIn("already started", self.brew("services", "start", "colima").out)

    def test_Stopping_the_service_stops_the_machine_that_it_started(self):
        self.brew("services", "start", "colima")
        self.assertTrue(eventually(self.docker_works))
        result = self.brew("services", "stop", "colima")
        self.assertEnds(result, 0, "Stopping `colima`... (might take a while)\n"
                        "==> Successfully stopped `colima` (label: homebrew.mxcl.colima)\n", "")
        self.assertFalse(self.docker_works())
        self.assertEnds(self.brew("services", "stop", "colima"), 0, "", "Warning: Service `colima` is not started.\n")

    def test_Machine_that_was_started_by_hand_outlives_a_service_that_found_it_running(self):
        self.colima("start")
        self.brew("services", "start", "colima")
        self.brew("services", "stop", "colima")
        self.assertTrue(self.docker_works())

    def test_Service_that_found_colima_running_starts_it_after_a_stop(self):
        self.colima("start")
        self.brew("services", "start", "colima")
        self.colima("stop")
        self.assertTrue(eventually(self.docker_works))

    def test_Service_waits_for_a_signal_and_not_for_the_machine(self):
        self.brew("services", "start", "colima")
        self.assertTrue(eventually(self.docker_works))
        self.colima("stop")
        self.assertFalse(eventually(self.docker_works, 0.5))
        self.colima("start", "--port-forwarder", "grpc")
        self.assertTrue(self.docker_works())
        self.brew("services", "stop", "colima")
        self.assertFalse(self.docker_works())

    def test_Services_of_other_formulae_are_refused(self):
        self.assertSays(self.brew("services", "start", "docker"), 1, "has not implemented")
        self.assertSays(self.brew("services", "start", "nothing"), 1, 'No available formula with the name "nothing"')
        self.assertSays(self.brew("services", "begin", "colima"), 1, "unknown subcommand")


if __name__ == "__main__":
    unittest.main()
