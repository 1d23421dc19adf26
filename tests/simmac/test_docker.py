"""docker: what it prints on which stream, how it ends, and what becomes of the container."""

import json
import unittest

from container_tools import DOWN, ENV_FILE, STATE, ContainerCase, run_arguments
from the_mac import eventually

NO_CONTAINER = "Error response from daemon: No such container: pihole\n"


class RunningTest(ContainerCase):
    state = "running"

    def test_Info_tells_the_server_version(self):
        self.assertEnds(self.docker("info", "--format", "{{.ServerVersion}}"), 0, "28.4.0\n", "")

    def test_Inspect_tells_state_and_health(self):
        self.assertEnds(self.docker("inspect", "--format", STATE, "pihole"), 0, "running|healthy\n", "")
        for health in ("starting", "unhealthy", "none"):
            self.mac.ctl("container", "health", health)
            self.assertEqual(self.container_state(), f"running|{health}\n")

    def test_Inspect_without_a_format_is_json(self):
        found = json.loads(self.docker("inspect", "pihole").out)[0]
        self.assertEqual(found["State"]["Status"], "running")
        self.assertEqual(found["HostConfig"]["PortBindings"]["80/tcp"], [{"HostIp": "127.0.0.1", "HostPort": "8080"}])

    def test_Wrong_templates_are_refused(self):
        for template in ("{{.Nope}}", "{{nope}}", "{{if .State}}x", "{{end}}", "{{"):
            result = self.docker("inspect", "--format", template, "pihole")
            self.assertEqual(result.status, 1, template)
            self.assertIn("template", result.err)

    def test_Ps_shows_the_container_only_while_it_runs(self):
        self.assertRegex(self.docker("ps").out,
                         r"^CONTAINER ID .*NAMES\n[0-9a-f]{12} .*\(healthy\) .*8080->80/tcp.*pihole\n$")
        self.docker("stop", "pihole")
        self.assertEqual(self.docker("ps", "-q").out, "")
        self.assertIn("Exited (0)", self.docker("ps", "-a").out)

    def test_Stop_and_start_take_dns_away_and_bring_it_back(self):
        self.assertEqual(self.answer(), "93.184.215.14\n")
        self.assertEnds(self.docker("stop", "pihole"), 0, "pihole\n", "")
        self.assertEqual(self.container_state(), "exited|unhealthy\n")
        self.assertIn("refused", self.answer())
        self.assertEnds(self.docker("start", "pihole"), 0, "pihole\n", "")
        self.assertTrue(eventually(lambda: self.answer() == "93.184.215.14\n"))
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))

    def test_Restart_is_one_command(self):
        before = self.docker("inspect", "--format", "{{.State.Pid}}", "pihole").out
        self.assertEnds(self.docker("restart", "pihole"), 0, "pihole\n", "")
        self.assertNotEqual(self.docker("inspect", "--format", "{{.State.Pid}}", "pihole").out, before)

    def test_Two_starts_at_once_make_one_process(self):
        self.docker("stop", "pihole")
        start = "/opt/homebrew/bin/docker start pihole"
        self.assertEqual(self.mac.shell(f"{start} & {start} & {start}; wait").out, "pihole\n" * 3)
        self.assertEqual(self.container_state().split("|")[0], "running")
        self.assertTrue(eventually(lambda: self.answer() == "93.184.215.14\n"))

    def test_Killed_container_stays_down_and_a_crashed_one_comes_back(self):
        self.docker("kill", "pihole")
        self.assertEqual(self.docker("inspect", "--format", "{{.State.ExitCode}}", "pihole").out, "137\n")
        self.docker("start", "pihole")
        self.mac.ctl("container", "crash")
        self.assertTrue(eventually(lambda: self.answer() == "93.184.215.14\n"))

    def test_Removal_needs_force_and_keeps_the_volumes(self):
        self.assertSays(self.docker("rm", "pihole"), 1, 'cannot remove container "pihole": container is running')
        self.assertEnds(self.docker("rm", "-f", "pihole"), 0, "pihole\n", "")
        self.assertEnds(self.docker("rm", "-f", "pihole"), 0, "", NO_CONTAINER)
        self.assertEnds(self.docker("rm", "pihole"), 1, "", NO_CONTAINER)
        self.assertIn("pihole_etc", self.docker("volume", "ls").out)

    def test_Volumes_go_only_when_nobody_uses_them(self):
        self.assertSays(self.docker("volume", "rm", "pihole_etc"), 1,
                        "Error response from daemon: remove pihole_etc: volume is in use - [")
        self.docker("rm", "-f", "pihole")
        self.assertEnds(self.docker("volume", "rm", "pihole_etc", "pihole_dnsmasq"), 0,
                        "pihole_etc\npihole_dnsmasq\n", "")
        self.assertEnds(self.docker("volume", "rm", "pihole_etc"), 1, "",
                        "Error response from daemon: get pihole_etc: no such volume\n")

    def test_Missing_container_is_named_in_dockers_words(self):
        self.docker("rm", "-f", "pihole")
        self.assertEnds(self.docker("inspect", "--format", STATE, "pihole"), 1, "\n",
                        "Error: No such object: pihole\n")
        self.assertEnds(self.docker("inspect", "pihole"), 1, "[]\n", "Error: No such object: pihole\n")
        self.assertEnds(self.docker("start", "pihole"), 1, "",
                        NO_CONTAINER + "Error: failed to start containers: pihole\n")
        for command in ("stop", "restart", "kill", "logs"):
            self.assertEnds(self.docker(command, "pihole"), 1, "", NO_CONTAINER)

    def test_Containers_are_found_by_the_port_that_they_publish(self):
        def found(*places):
            filters = [word for place in places for word in ("--filter", f"publish={place}")]
            return self.docker("ps", *filters, "--format", "{{.Names}}").out
        self.assertEqual([found("53"), found("53/udp"), found("54", "8080"), found("54", "8080/udp"), found()],
                         ["pihole\n", "pihole\n", "pihole\n", "", "pihole\n"])

    def test_Password_of_the_env_file_opens_the_web_api(self):
        def log_in(password):
            body = json.dumps({"password": password})
            return self.mac.run("/usr/bin/curl", "-s", "-o", "/dev/null", "-w", "%{http_code}", "-d", body,
                                "http://127.0.0.1:8080/api/auth").out
        self.assertEqual((log_in("correct-horse-9"), log_in("wrong")), ("200", "401"))


class LogTest(ContainerCase):
    state = "running"

    def test_Tail_gives_the_newest_lines(self):
        whole = self.docker("logs", "pihole").out
        self.assertIn("Starting pihole-FTL", whole)
        self.assertEqual(self.docker("logs", "--tail", "2", "pihole").out,
                         "".join(line + "\n" for line in whole.split("\n")[-3:-1]))
        self.assertEqual(self.docker("logs", "--tail", "0", "pihole").out, "")
        self.assertEqual(self.docker("logs", "--tail", "x", "pihole").out, whole)

    def test_Followed_log_shows_what_happens_now_but_no_question(self):
        script = ("/opt/homebrew/bin/docker logs --tail 0 --follow pihole > /tmp/followed & follower=$!; sleep 0.2; "
                  "dig @127.0.0.1 +short doubleclick.net > /dev/null; sleep 0.2; "
                  "/opt/homebrew/bin/docker restart pihole > /dev/null; wait $follower; cat /tmp/followed")
        followed = self.mac.shell(script).out
        self.assertIn("[i] Container stop requested...", followed)
        self.assertNotIn("doubleclick", followed)

    def test_Standard_error_comes_apart_and_in_its_place(self):
        result = self.docker("logs", "pihole")
        self.assertIn("chown: cannot access", result.err)
        self.assertNotIn("chown", result.out)
        both = self.mac.shell("/opt/homebrew/bin/docker logs pihole 2>&1").out
        self.assertRegex(both, r"pre-start checks\nchown: [^\n]*\n  \[i\] Setting capabilities")

    def test_Lines_keep_their_control_characters(self):
        self.assertIn(b"  [i] Building tree...\r\x1b[K  [\xe2\x9c\x93] Building tree\n",
                      self.docker("logs", "pihole").raw_out)

    def test_Following_ends_with_the_container(self):
        script = ("/opt/homebrew/bin/docker logs --follow pihole > /dev/null & follower=$!; sleep 0.2; "
                  "/opt/homebrew/bin/docker stop pihole > /dev/null; wait $follower; echo ended $?")
        self.assertEqual(self.mac.shell(script, limit=5).out, "ended 0\n")

    def test_Log_is_kept_over_a_restart_and_gone_with_the_container(self):
        self.docker("restart", "pihole")
        self.assertEqual(self.docker("logs", "pihole").out.count("Starting FTL configuration"), 2)
        self.docker("rm", "-f", "pihole")
        self.docker(*run_arguments())
        self.assertEqual(self.docker("logs", "pihole").out.count("Starting FTL configuration"), 1)


class EngineTest(ContainerCase):
    """The engine runs and holds nothing."""

    state = "engine"

    def test_Pull_tells_about_every_layer(self):
        result = self.docker("pull", "pihole/pihole:2026.10.0")
        self.assertEqual((result.status, result.err), (0, ""))
        lines = result.out.splitlines()
        self.assertEqual(lines[0], "2026.10.0: Pulling from pihole/pihole")
        layers = {line.split(":")[0] for line in lines if line.endswith("Pull complete")}
        self.assertEqual(len(layers), 7)
        for layer in layers:
            words = [line.split(": ")[1] for line in lines if line.startswith(layer)]
            self.assertEqual([word for word in words if word != "Waiting"],
                             ["Pulling fs layer", "Verifying Checksum", "Download complete", "Pull complete"])
        self.assertRegex(lines[-3], r"^Digest: sha256:[0-9a-f]{64}$")
        self.assertEqual(lines[-2], "Status: Downloaded newer image for pihole/pihole:2026.10.0")
        again = self.docker("pull", "pihole/pihole:2026.10.0").out
        self.assertIn("Status: Image is up to date for pihole/pihole:2026.10.0\n", again)
        self.assertNotIn("Pull complete", again)

    def test_Pull_of_another_tag_fetches_only_what_is_new(self):
        self.docker("pull", "pihole/pihole:2026.09.0")
        lines = self.docker("pull", "pihole/pihole:2026.10.0").out.splitlines()
        self.assertEqual([line.split(": ")[1] for line in lines[1:8]], ["Already exists"] * 5 + ["Pulling fs layer"] * 2)
        self.assertEqual(len([line for line in lines if line.endswith(": Pull complete")]), 2)

    def test_Pull_fails_in_dockers_words(self):
        manifest = ("Error response from daemon: manifest for pihole/pihole:2099.01.0 not found: manifest unknown: "
                    "manifest unknown\n")
        self.assertEnds(self.docker("pull", "pihole/pihole:2099.01.0"), 1, "", manifest)
        self.assertSays(self.docker("pull", "nobody/nothing:1"), 1, "pull access denied for nobody/nothing")
        self.assertEnds(self.docker("pull", "Pi hole"), 1, "", "invalid reference format\n")
        self.mac.ctl("registry", "add", "2099.01.0")
        self.assertEqual(self.docker("pull", "pihole/pihole:2099.01.0").status, 0)
        self.mac.ctl("disk-full", "on")
        self.assertSays(self.docker("pull", "pihole/pihole:2026.10.0"), 1, "no space left on device")
        self.mac.ctl("internet", "off")
        self.assertSays(self.docker("pull", "pihole/pihole:2026.10.0"), 1, ": no such host")

    def test_Run_makes_the_container_from_27_arguments(self):
        self.mac.shell("mkdir -p \"$HOME/x\"; echo FTLCONF_webserver_api_password=Aa-_.@+9 > \"$HOME/x/my env\"")
        arguments = run_arguments(port=8085, env_file="/Users/ada/x/my env")
        self.assertEqual(len(arguments), 27)
        self.mac.ctl("machine", "room")
        result = self.docker(*arguments)
        self.assertRegex(result.out, r"^[0-9a-f]{64}\n$")
        self.assertIn("Unable to find image 'pihole/pihole:2026.09.0' locally\n", result.err)
        self.assertIn("Pull complete", result.err)
        self.assertTrue(eventually(lambda: self.container_state() == "running|healthy\n"))
        found = json.loads(self.docker("inspect", "pihole").out)[0]
        self.assertIn("FTLCONF_webserver_api_password=Aa-_.@+9", found["Config"]["Env"])
        self.assertEqual(found["HostConfig"]["RestartPolicy"]["Name"], "unless-stopped")
        self.assertEqual(found["HostConfig"]["Binds"], ["pihole_etc:/etc/pihole", "pihole_dnsmasq:/etc/dnsmasq.d"])
        login = ("/usr/bin/curl", "-s", "-o", "/dev/null", "-w", "%{http_code}", "-d", '{"password":"Aa-_.@+9"}',
                 "http://127.0.0.1:8085/api/auth")
        self.assertTrue(eventually(lambda: self.mac.run(*login).out == "200"))

    def test_Run_refuses_what_docker_refuses(self):
        self.assertEnds(self.docker(*run_arguments()), 125, "", f"docker: open {ENV_FILE}: no such file or directory"
                        "\n\nRun 'docker run --help' for more information\n")
        for words, text in ((("-p", "127.0.0.1:x:53"), "invalid hostPort: x"), (("-p", "1:2:3:4"), "invalid IP"),
                            (("-p", "53:53/tpc"), "invalid proto: tpc"), (("--restart", "often"), "unknown policy"),
                            (("-v", "pi hole:/x"), "invalid characters"), (("--nme", "x"), "unknown flag: --nme"),
                            (("-y",), "unknown shorthand flag: 'y' in -y"), (("--name",), "flag needs an argument")):
            tail = () if words == ("--name",) else ("pihole/pihole:2026.09.0",)
            self.assertSays(self.docker("run", "-d", *words, *tail), 125, text)
        self.assertEqual(self.docker("ps", "-aq").out, "")

    def test_Second_container_of_the_name_is_refused(self):
        self.docker("run", "-d", "--name", "pihole", "pihole/pihole:2026.09.0")
        result = self.docker("run", "-d", "--name", "pihole", "pihole/pihole:2026.09.0")
        self.assertEqual(result.status, 125)
        self.assertRegex(result.err, r'^docker: Error response from daemon: Conflict. The container name "/pihole" is '
                                     r'already in use by container "[0-9a-f]{64}"\.')

    def test_Taken_port_leaves_the_container_created(self):
        self.mac.ctl("take-port", "8081", "tcp", "--in-machine")
        result = self.docker("run", "-d", "--name", "pihole", "-p", "127.0.0.1:8081:80", "pihole/pihole:2026.09.0")
        self.assertSays(result, 125, "driver failed programming external connectivity on endpoint pihole (")
        self.assertIn("address already in use", result.err)
        self.assertEqual(self.container_state(), "created|none\n")
        self.mac.ctl("free-port", "8081", "tcp", "--in-machine")
        self.assertEqual(self.docker("start", "pihole").status, 0)
        other = self.docker("run", "-d", "--name", "two", "-p", "127.0.0.1:8081:80", "pihole/pihole:2026.09.0")
        self.assertSays(other, 125, "Bind for 127.0.0.1:8081 failed: port is already allocated")

    def test_Refused_socket_is_said(self):
        self.mac.ctl("docker-permission", "off")
        self.assertSays(self.docker("ps"), 1, "permission denied while trying to connect to the Docker daemon socket")

    def test_Unknown_commands_and_plugins(self):
        self.assertSays(self.docker("nonsense"), 1, "docker: unknown command: docker nonsense")
        self.assertSays(self.docker("compose", "version"), 1, "unknown command: docker compose")
        self.assertSays(self.docker("compose", "-f", "x.yml", "pull"), 125, "unknown shorthand flag: 'f' in -f")
        self.assertRegex(self.docker("--version").out, r"^Docker version \d+\.\d+\.\d+, build \w+\n$")


class DownTest(ContainerCase):
    state = "dead-engine"

    def test_Stopped_engine_is_told_by_every_command(self):
        for words in (("ps",), ("pull", "pihole/pihole:2026.09.0"), ("stop", "pihole"), ("rm", "-f", "pihole"),
                      ("volume", "rm", "pihole_etc"), ("logs", "pihole")):
            self.assertEnds(self.docker(*words), 1, "", DOWN)
        self.assertEnds(self.docker("start", "pihole"), 1, "", DOWN + "Error: failed to start containers: pihole\n")
        self.assertEnds(self.docker("volume", "rm", "pihole_etc", "pihole_dnsmasq"), 1, "", DOWN + DOWN)
        self.assertEnds(self.docker("info", "--format", "{{.ServerVersion}}"), 1, "\n", DOWN)
        self.assertEnds(self.docker("inspect", "--format", STATE, "pihole"), 1, "\n", DOWN)
        self.assertEnds(self.docker("inspect", "pihole"), 1, "[]\n", DOWN)
        self.assertSays(self.docker(*run_arguments()), 125, "docker: " + DOWN.rstrip("\n"))

    def test_Engine_that_never_ran_has_another_socket(self):
        self.mac.ctl("reset", "homebrew")
        self.brew("install", "colima", "docker")
        self.assertSays(self.docker("ps"), 1, "unix:///var/run/docker.sock. Is the docker daemon running?")


class OldReleaseTest(ContainerCase):
    """Docker as Debian 12 has it; that it really speaks so is compared with the real one in tests/engine."""

    state = "engine"

    def setUp(self):
        super().setUp()
        self.mac.ctl("docker-release", "old")

    def test_It_says_the_same_in_other_words(self):
        self.assertEnds(self.docker("info", "--format", "{{.ServerVersion}}"), 0, "20.10.24\n", "")
        self.assertEnds(self.docker("logs", "pihole"), 1, "", "Error: No such container: pihole\n")
        self.assertEnds(self.docker("rm", "-f", "pihole"), 0, "", "Error: No such container: pihole\n")
        self.assertEnds(self.docker("stop", "pihole"), 1, "", NO_CONTAINER)
        self.assertEnds(self.docker("volume", "rm", "a", "b"), 1, "",
                        "Error: No such volume: a\nError: No such volume: b\n")
        self.assertEnds(self.docker("compose", "version"), 1, "",
                        "docker: 'compose' is not a docker command.\nSee 'docker --help'\n")
        self.assertEnds(self.docker(*run_arguments()), 125, "", f"docker: open {ENV_FILE}: no such file or directory.\n"
                        "See 'docker run --help'.\n")

    def test_Its_proxy_names_the_taken_port(self):
        self.docker("pull", "pihole/pihole:2026.09.0")
        self.mac.ctl("take-port", "8081", "tcp", "--in-machine")
        result = self.docker("run", "-d", "--name", "pihole", "-p", "127.0.0.1:8081:80", "pihole/pihole:2026.09.0")
        self.assertRegex(result.err, r"^docker: Error response from daemon: driver failed programming external "
                                     r"connectivity on endpoint pihole \([0-9a-f]{64}\): Error starting userland proxy: "
                                     r"listen tcp4 127\.0\.0\.1:8081: bind: address already in use\.\n$")

    def test_A_reset_brings_the_new_release_back(self):
        self.mac.ctl("reset")
        self.assertEnds(self.docker("logs", "pihole"), 1, "", NO_CONTAINER)


class FeelTest(ContainerCase):
    state = "running"
    options = ("--speed", "real")

    def test_Stop_takes_about_three_seconds(self):
        self.assertAlmostEqual(self.docker("stop", "pihole").seconds, 3.1, delta=0.7)

    def test_Started_container_answers_after_a_while_and_is_not_healthy_at_once(self):
        self.mac.ctl("container", "stop")
        self.docker("start", "pihole")
        self.assertEqual(self.container_state(), "running|starting\n")
        self.assertNotEqual(self.answer(), "93.184.215.14\n")
        self.assertTrue(eventually(lambda: self.answer() == "93.184.215.14\n"))
        self.assertEqual(self.container_state(), "running|starting\n")

    def test_Pull_that_is_broken_off_leaves_no_image(self):
        result = self.docker("pull", "pihole/pihole:2026.10.0", limit=2)
        self.assertEqual(result.status, -15)
        self.assertIn("Download complete", result.out)
        self.assertNotIn("2026.10.0", self.docker("images").out)


if __name__ == "__main__":
    unittest.main()
