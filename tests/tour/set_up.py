"""What can go wrong on the way from Welcome to a running Pi-hole."""

import sys

from scenes import play
from stage import ctl

TAKEN = "A port that Pi-hole needs is taken. See what holds it below."
NO_INTERNET = "Docker could not reach the internet to download Pi-hole."


def nothing_to_restore(stage):
    """Welcome says that there is nothing to restore."""
    stage.begin("homebrew")
    stage.use("Restore my old settings")
    stage.sees("Restore my old DNS settings?")
    stage.picture("restore-question-without-backup")
    stage.use("Restore")
    stage.sees("There is nothing to restore: no saved settings and no service points at Pi-hole.")
    stage.picture("nothing-to-restore")


def unfit_mac(stage):
    """A Mac with an Intel processor and an old macOS is told what is missing."""
    stage.begin("bare", "arm64 no", "macos 12.7")
    stage.step(2)
    stage.sees("Apple silicon, warning", "macOS version, failed", "Homebrew, failed")
    stage.picture("unfit-mac")


def ports_taken(stage):
    """Ports that are taken name their holders, and the admin page moves to a free one."""
    stage.begin("homebrew", "port53 grant", "take-port 53 udp --as dnsmasq", "take-port 8080 tcp --as nginx",
                "take-port 8082 tcp --as node")
    stage.step(2)
    stage.sees("Ports 53 and 8080, failed")
    stage.sees_part("Port 53 cannot be moved")
    stage.picture("ports-taken")
    stage.use("Use another port for the admin page:")
    stage.sees("8081", "8083")
    stage.picture("free-ports")
    stage.use("8083")
    stage.sees("Ports 53 and 8083, failed")
    stage.picture("port-moved")


def no_free_port(stage):
    """With every port taken the picker gives way to a sentence."""
    stage.begin("homebrew", *(f"take-port {port} tcp --as nginx" for port in range(8080, 8091)))
    stage.step(2)
    stage.sees("Ports 8081 to 8090 are all taken too.")
    stage.picture("no-free-port")


def no_homebrew(stage):
    """Without Homebrew, Corvane says that it never installs it."""
    stage.begin("bare")
    stage.step(3)
    stage.sees("Homebrew is not installed. This app never installs it for you.", "Get Homebrew (opens brew.sh)")
    stage.picture("no-homebrew")


def installation_fails(stage):
    """An installation that fails says so and shows its log."""
    stage.begin("homebrew")
    ctl("fault", "brew", "fail", "1", "Error: Failure while executing; `git` exited with 128.", "--when", "install*")
    stage.step(3)
    stage.use("Install Colima and Docker")
    stage.sees("Show details")
    stage.use("Show details")
    stage.bottom()
    stage.picture("installation-failed")


def quits_while_installing(stage):
    """Quitting while an installation runs is asked about, and a cancelled one says so."""
    stage.begin("homebrew", "fault brew hang --when install*")
    stage.step(3)
    stage.use("Install Colima and Docker")
    stage.sees("Live log")
    stage.use("Live log")
    stage.picture("installing")
    stage.key("ctrl+q")
    stage.sees("Quit while Corvane is still working?")
    stage.picture("quit-while-working")
    stage.use("Cancel")
    stage.sees("Installing Colima and Docker")
    stage.use("Cancel")
    stage.sees("Cancelled.")
    stage.picture("installation-cancelled")


def docker_does_not_answer(stage):
    """A Docker test without an engine fails."""
    stage.begin("stopped")
    stage.step(3)
    stage.use("Test")
    stage.sees("failed")
    stage.picture("docker-test-failed")
    stage.step(4)
    stage.sees("Docker is not running yet (step 3).")
    stage.picture("start-without-docker")


def colima_does_not_start(stage):
    """Colima that does not start shows why in its log."""
    stage.begin("stopped", "colima fail error starting vm: not enough memory")
    stage.step(3)
    stage.use("Start Colima")
    stage.sees("Show details")
    stage.use("Show details")
    stage.picture("colima-failed")


def weak_password(stage):
    """A password that breaks a rule is told which one."""
    stage.begin("engine")
    stage.step(4)
    stage.use("Admin password")
    stage.key("ctrl+a")
    stage.type("short")
    stage.sees("Use at least 8 characters.")
    stage.picture("password-too-short")
    stage.type(" but with blanks")
    stage.sees("Use only letters, digits and - _ . @ +")
    stage.picture("password-with-other-characters")


def start_without_internet(stage):
    """A start that cannot download Pi-hole says so in plain words."""
    stage.begin("engine", "internet off")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.sees_start(NO_INTERNET)
    stage.use("Show details")
    stage.picture("start-without-internet")


def start_with_port_taken(stage):
    """A start that meets a taken port shows who holds it."""
    stage.begin("engine", "machine room", "port53 grant", "take-port 53 udp --as unbound")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.sees_part("is in use by:")
    stage.picture("start-with-port-taken")


def makes_room(stage):
    """A start begins with making room for Pi-hole in Colima's virtual machine, and says so."""
    stage.begin("engine", "forwarder grpc")
    ctl("fault", "colima", "late", "4", "--when", "ssh -- sudo sh *")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.use("Live log")
    stage.picture("making-room")
    stage.sees("Running and healthy.")


def no_room(stage):
    """What else holds the port in Colima's virtual machine is named, before anything is done."""
    stage.begin("engine", "machine room", "take-port 53 udp --as named --in-machine")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.sees_start("Port 53 is taken inside Colima's virtual machine, by the program 'named'.")
    stage.picture("no-room")


def udp_does_not_arrive(stage):
    """DNS over UDP that does not arrive is recognised and repaired."""
    stage.begin("engine")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.sees("UDP port 53 is probably not reaching your Mac", "Restart Colima with UDP forwarding for me")
    stage.picture("udp-help")
    stage.use("Restart Colima with UDP forwarding for me")
    stage.sees("Restart Colima with UDP forwarding?")
    stage.picture("udp-question")
    stage.use("Restart Colima")
    stage.program.gone("UDP port 53 is probably not reaching your Mac")
    stage.sees("Running and healthy.")
    stage.picture("udp-repaired")


def udp_by_hand(stage):
    """A Colima without the option leaves the steps to the user."""
    stage.begin("engine", "port-forwarder-option off")
    stage.step(4)
    stage.use("Start Pi-hole")
    stage.sees("This Colima version does not show a --port-forwarder option, so use the manual steps above.")
    stage.picture("udp-by-hand")


def nothing_blocked(stage):
    """A Pi-hole that blocks nothing fails the blocking test."""
    stage.begin("running", "pihole settle 600", "pihole restart")
    stage.step(5)
    stage.use("Test")
    stage.sees("Nothing was blocked, failed")
    stage.picture("nothing-blocked")


SCENES = (nothing_to_restore, unfit_mac, ports_taken, no_free_port, no_homebrew, installation_fails,
          quits_while_installing, docker_does_not_answer, colima_does_not_start, weak_password, start_without_internet,
          start_with_port_taken, makes_room, no_room,
          udp_does_not_arrive, udp_by_hand, nothing_blocked)

if __name__ == "__main__":
    sys.exit(play(SCENES))
