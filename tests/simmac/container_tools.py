"""The container tools of a simulated Mac, by short names."""

from the_mac import MacCase

SUPPORT = "/Users/ada/Library/Application Support/Corvane"
COMPOSE_FILE = f"{SUPPORT}/docker-compose.yml"
ENV_FILE = f"{SUPPORT}/pihole.env"
STATE = "{{.State.Status}}|{{if .State.Health}}{{.State.Health.Status}}{{else}}none{{end}}"
DOWN = ("Cannot connect to the Docker daemon at unix:///Users/ada/.colima/default/docker.sock. Is the docker daemon "
        "running?\n")


def run_arguments(tag="2026.09.0", port=8080, env_file=ENV_FILE):
    """The long form in which a container is made without compose."""
    return ["run", "-d", "--name", "pihole", "--restart", "unless-stopped", "-p", "127.0.0.1:53:53/tcp", "-p",
            "127.0.0.1:53:53/udp", "-p", f"127.0.0.1:{port}:80/tcp", "-e", "TZ=Europe/Berlin", "-e",
            "FTLCONF_dns_upstreams=1.1.1.1", "-e", "FTLCONF_dns_listeningMode=ALL", "-e",
            "FTLCONF_misc_etc_dnsmasq_d=true", "--env-file", env_file, "-v", "pihole_etc:/etc/pihole", "-v",
            "pihole_dnsmasq:/etc/dnsmasq.d", f"pihole/pihole:{tag}"]


class ContainerCase(MacCase):
    """Tests of brew, colima and docker."""

    def docker(self, *words, **more):
        return self.mac.run("/opt/homebrew/bin/docker", *words, **more)

    def colima(self, *words, **more):
        return self.mac.run("/opt/homebrew/bin/colima", *words, **more)

    def brew(self, *words, **more):
        return self.mac.run("/opt/homebrew/bin/brew", *words, **more)

    def compose(self, *words, **more):
        return self.docker("compose", "-f", COMPOSE_FILE, *words, **more)

    def container_state(self):
        """State and health as the status poll asks for them."""
        return self.docker("inspect", "--format", STATE, "pihole").out

    def answer(self, name="example.com", *options):
        """What 127.0.0.1 answers over DNS."""
        return self.mac.run("/usr/bin/dig", "@127.0.0.1", "+time=1", "+tries=1", "+short", *options, name).out

    def assertEnds(self, result, status, out=None, err=None):
        """The status and, where they are given, both streams."""
        self.assertEqual((result.status, result.out if out is not None else None,
                          result.err if err is not None else None), (status, out, err))

    def assertSays(self, result, status, text):
        """The status, and a text on standard error."""
        self.assertIn(text, result.err)
        self.assertEqual(result.status, status)
