"""What can go wrong when this Mac and its browsers are to use Pi-hole."""

import pathlib
import sys

from scenes import play

LIBRARY = pathlib.Path("/Users/ada/Library/Application Support")
PROMPT_CANCELLED = "You cancelled the administrator prompt. Nothing was changed."


def browser_file(name, text):
    """Leaves a browser's settings file where that browser keeps it."""
    path = LIBRARY / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="ascii")


def no_service_chosen(stage):
    """Without a network service there is nothing to change, and Pi-hole alone has a warning."""
    stage.begin("running", "service add Ethernet-adapter-of-the-desk-in-the-room-behind-the-kitchen en7 linked")
    stage.step(6)
    stage.use("Wi-Fi  (used for your internet connection)")
    stage.use("Pi-hole only (no 1.1.1.1 backup)")
    stage.sees_part("Warning: with Pi-hole only")
    stage.picture("pihole-only")


def dns_before_pihole(stage):
    """DNS does not change before Pi-hole answers."""
    stage.begin("engine")
    stage.step(6)
    stage.use("Change DNS...")
    stage.sees("Pi-hole is not answering yet, so the Mac's DNS was not changed. Finish step 4 first.")
    stage.picture("dns-before-pihole")


def prompt_cancelled(stage):
    """A cancelled administrator prompt changes nothing."""
    stage.begin("running", "prompt cancel")
    stage.step(6)
    stage.use("Change DNS...")
    stage.use("Change DNS")
    stage.sees(PROMPT_CANCELLED)
    stage.picture("prompt-cancelled")


def dns_not_confirmed(stage):
    """Behind a VPN the change is not confirmed, and a sentence says why."""
    stage.begin("running", "vpn on 10.8.0.1")
    stage.step(6)
    stage.picture("dns-behind-vpn")
    stage.use("Wi-Fi")
    stage.use("Change DNS...")
    stage.sees("Change DNS on 1 network service(s)?")
    stage.use("Change DNS")
    stage.sees("Not confirmed")
    stage.picture("dns-not-confirmed")


def restore_fails(stage):
    """Old settings that cannot be put back are reported."""
    stage.begin("protected", "prompt refuse")
    stage.step(6)
    stage.use("Restore my old settings")
    stage.sees("Restore my old DNS settings?")
    stage.picture("restore-question")
    stage.use("Restore")
    stage.program.gone("Restore my old DNS settings?")
    stage.sees_part("administrator")
    stage.picture("restore-refused")


def browsers(stage):
    """Browsers with secure DNS on, off, not set and not readable look different, and one that goes past Pi-hole is found."""
    stage.begin("protected", "app add com.google.Chrome", "app add com.brave.Browser", "app add org.mozilla.firefox",
                "app add com.microsoft.edgemac", "browser own-dns 1.1.1.1")
    browser_file("Google/Chrome/Local State", '{"dns_over_https":{"mode":"secure"}}')
    browser_file("BraveSoftware/Brave-Browser/Local State", '{"dns_over_https":{"mode":"off"}}')
    browser_file("Firefox/Profiles/a.default/prefs.js", "")
    stage.step(7)
    stage.picture("browsers-question")
    stage.use("Allow the read-only check")
    stage.sees_start("Google Chrome, ")
    stage.use("Browser test")
    stage.top()
    stage.picture("browsers")
    stage.bottom()
    stage.picture("browser-test-running")
    stage.step(8)
    stage.sees("Almost there")
    stage.picture("almost-there")
    stage.step(7)
    stage.sees_part("did not show up in Pi-hole's log within 20 seconds.")
    stage.bottom()
    stage.picture("browser-test-failed")


def no_browser_settings(stage):
    """Without any browser but Safari the list is still there."""
    stage.begin("running", "app remove com.apple.Safari")
    stage.step(7)
    stage.use("Allow the read-only check")
    stage.sees("Check again")
    stage.picture("no-browsers")


def nothing_done(stage):
    """The last step claims nothing that was not tested."""
    stage.begin("homebrew")
    stage.step(8)
    stage.sees("Almost there", "Docker engine, not checked yet")
    stage.picture("nothing-done")


SCENES = (no_service_chosen, dns_before_pihole, prompt_cancelled, dns_not_confirmed, restore_fails, browsers,
          no_browser_settings, nothing_done)

if __name__ == "__main__":
    sys.exit(play(SCENES))
