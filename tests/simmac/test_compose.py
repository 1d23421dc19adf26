"""docker compose: what it makes of a project, and what it refuses."""

import json
import unittest

from container_tools import COMPOSE_FILE, DOWN, SUPPORT, ContainerCase, run_arguments
from the_mac import eventually


class ComposeCase(ContainerCase):
    def setUp(self):
        super().setUp()
        self.mac.ctl("compose", "on")

    def project(self, old, new):
        """Changes a piece of the project's file."""
        text = self.mac.run("/bin/cat", COMPOSE_FILE).out
        self.assertIn(old, text)
        self.write(text.replace(old, new))

    def write(self, text):
        self.mac.run("/bin/sh", "-c", 'mkdir -p "$1" && printf %s "$2" > "$1/docker-compose.yml"', "sh", SUPPORT, text)

    def assertNoProject(self, text, message):
        """A project of this text is refused with this message, and nothing is made."""
        self.write(text)
        result = self.compose("up", "-d")
        self.assertIn(message, result.err)
        self.assertEqual((result.status, result.out), (1, ""), text)


class ProjectTest(ComposeCase):
    state = "running"

    def test_Version_is_told(self):
        self.assertRegex(self.docker("compose", "version").out, r"^Docker Compose version v\d+\.\d+\.\d+\n$")

    def test_Running_project_is_left_alone(self):
        self.assertEnds(self.compose("up", "-d"), 0, "", " Network corvane_default  Creating\n"
                        " Network corvane_default  Created\n Container pihole  Running\n")

    def test_Pull_and_up_make_the_container(self):
        self.docker("rm", "-f", "pihole")
        self.project("2026.09.0", "2026.10.0")
        pull = self.compose("pull")
        self.assertEqual((pull.status, pull.out), (0, ""))
        self.assertTrue(pull.err.startswith(" pihole Pulling \n"))
        self.assertTrue(pull.err.endswith(" pihole Pulled \n"))
        up = self.compose("up", "-d")
        self.assertEqual((up.status, up.out), (0, ""))
        for word in ("Creating", "Created", "Starting", "Started"):
            self.assertIn(f" Container pihole  {word}\n", up.err)
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))
        found = json.loads(self.docker("inspect", "pihole").out)[0]
        self.assertEqual(found["Config"]["Image"], "pihole/pihole:2026.10.0")
        self.assertIn("FTLCONF_webserver_api_password=correct-horse-9", found["Config"]["Env"])
        self.assertIn("TZ=UTC", found["Config"]["Env"])

    def test_Changed_port_recreates_the_container(self):
        self.project("8080:80", "8090:80")
        self.assertIn(" Container pihole  Recreate\n", self.compose("up", "-d").err)
        code = "curl -s -o /dev/null -w '%{http_code}' http://127.0.0.1:8090/admin"
        self.assertTrue(eventually(lambda: self.mac.shell(code).out == "308"))

    def test_Other_peoples_container_of_the_name_is_in_the_way(self):
        self.docker("rm", "-f", "pihole")
        self.docker(*run_arguments())
        self.assertSays(self.compose("up", "-d"), 1, 'The container name "/pihole" is already in use by container "')

    def test_Volume_that_docker_run_made_is_mentioned(self):
        self.docker("rm", "-f", "pihole")
        self.docker("volume", "rm", "pihole_etc", "pihole_dnsmasq")
        self.docker(*run_arguments())
        self.docker("rm", "-f", "pihole")
        result = self.compose("up", "-d")
        self.assertSays(result, 0, 'level=warning msg="volume \\"pihole_etc\\" already exists but was not created by '
                        "Docker Compose.")

    def test_Pull_fails_in_dockers_words(self):
        self.project("2026.09.0", "2099.01.0")
        result = self.compose("pull")
        self.assertSays(result, 1, "Error response from daemon: manifest for pihole/pihole:2099.01.0 not found: "
                        "manifest unknown")
        self.mac.ctl("internet", "off")
        self.assertSays(self.compose("pull"), 1, "no such host")
        self.mac.ctl("engine", "stop")
        self.assertEnds(self.compose("up", "-d"), 1, "", DOWN)

    def test_Taken_port_is_an_error_in_dockers_words(self):
        self.docker("rm", "-f", "pihole")
        self.mac.ctl("take-port", "53", "udp", "--in-machine")
        self.assertSays(self.compose("up", "-d"), 1,
                        "failed to bind host port 127.0.0.1:53/udp: address already in use")
        self.assertEqual(self.container_state().split("|")[0], "created")

    def test_Missing_env_file_is_named_with_its_path(self):
        self.mac.run("/bin/rm", f"{SUPPORT}/pihole.env")
        self.assertEnds(self.compose("up", "-d"), 1, "", f"env file {SUPPORT}/pihole.env not found: stat "
                        f"{SUPPORT}/pihole.env: no such file or directory\n")

    def test_Missing_file_is_named(self):
        self.mac.run("/bin/rm", COMPOSE_FILE)
        self.assertEnds(self.compose("pull"), 1, "", f"open {COMPOSE_FILE}: no such file or directory\n")
        self.assertEnds(self.docker("compose", "pull", cwd="/tmp"), 14, "",
                        "no configuration file provided: not found\n")


class StrictTest(ComposeCase):
    state = "engine"

    def test_What_is_no_yaml_is_refused_with_its_line(self):
        self.assertNoProject("services:\n  a: b: c\n", "yaml: line 2: mapping values are not allowed")
        self.assertNoProject("services:\n\tpihole:\n", "yaml: line 2: ")
        self.assertNoProject("services: [", "yaml: line")
        self.assertNoProject("- a\n", "top-level object must be a mapping")
        self.assertNoProject("", "empty compose file")

    def test_Key_that_stands_twice_is_refused(self):
        self.assertNoProject("services:\n  a:\n    image: pihole/pihole\n    image: x\n",
                             'mapping key "image" already defined at line 3')

    def test_Unknown_keys_are_refused_by_name(self):
        self.assertNoProject("service: {}\n", "additional properties 'service' not allowed")
        self.assertNoProject("services:\n  a:\n    imag: x\n", "additional properties 'imag' not allowed")
        self.assertNoProject("services:\n  a:\n    image: x\nvolumes:\n  v:\n    nam: x\n",
                             "additional properties 'nam' not allowed")

    def test_Wrong_values_are_refused(self):
        for body, message in (("ports: ['127.0.0.1:x:53']", "invalid hostPort: x"),
                              ("ports: ['1.2.3:5:53']", "invalid IP address: 1.2.3"),
                              ("ports: ['53:53/tpc']", "invalid proto: tpc"), ("ports: 53", "ports must be a array"),
                              ("restart: often", "unknown policy 'often'"),
                              ("volumes: ['pihole_etc:/x']", 'refers to undefined volume pihole_etc'),
                              ("volumes: ['v:x']", "invalid volume specification"),
                              ("environment: {A: [1]}", "environment.A must be"),
                              ("container_name: 5", "container_name must be a string"),
                              ("environment: ['A=${']", "invalid interpolation format")):
            self.assertNoProject(f"services:\n  a:\n    image: pihole/pihole\n    {body}\n", message)
        self.assertNoProject("services:\n  a:\n    image: UPPER\n", "invalid reference format")
        self.assertNoProject("services:\n  a: {restart: 'no'}\n", "neither an image nor a build context")
        self.assertNoProject("name: Not Good\nservices:\n  a: {image: x}\n", 'invalid project name "Not Good"')
        self.assertNoProject("name: x\n", "no service selected")

    def environment(self, lines, env_lines=()):
        self.write("services:\n  a:\n    container_name: a\n    image: pihole/pihole:2026.09.0\n" + lines)
        for text in env_lines:
            self.mac.run("/bin/sh", "-c", 'printf %s "$2" > "$1/x.env"', "sh", SUPPORT, text)
        result = self.compose("up", "-d", env={"OUTSIDE": "from outside"})
        self.assertEqual(result.status, 0, result.err)
        return json.loads(self.docker("inspect", "a").out)[0]["Config"]["Env"]

    def test_Values_become_text_and_variables_are_filled_in(self):
        self.assertEqual(self.environment("    environment:\n      A: true\n      B: 5\n      C: ${OUTSIDE}\n"
                                          "      D: ${NONE:-other}\n      E: a$$b\n      OUTSIDE:\n"),
                         ["A=true", "B=5", "C=from outside", "D=other", "E=a$b", "OUTSIDE=from outside"])

    def test_Env_file_loses_quotes_and_comments_and_gives_way_to_the_project(self):
        text = "# first\nA='x # y'\nB=plain # comment\n\nexport C=\"$OUTSIDE\"\nD=from file\nE=a#b\n"
        self.assertEqual(self.environment("    env_file: [x.env]\n    environment: {D: from project}\n", [text]),
                         ["A=x # y", "B=plain", "C=from outside", "D=from project", "E=a#b"])


if __name__ == "__main__":
    unittest.main()
