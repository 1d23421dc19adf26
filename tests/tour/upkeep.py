"""Updates, backups, and the end of Pi-hole on this Mac."""

import sys

from scenes import play
from stage import ctl

NEWEST = "2026.10.0"


def update(stage):
    """A newer version is found and installed after a question."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Check for updates")
    stage.sees_start(f"Version {NEWEST} is available")
    stage.use("Back up and update")
    stage.sees(f"Update Pi-hole to {NEWEST}?")
    stage.picture("update-question")
    stage.use("Update")
    stage.sees(f"Updated to {NEWEST}.")
    stage.bottom()
    stage.picture("updated")


def update_fails(stage):
    """An update that cannot be downloaded leaves the old version."""
    stage.begin("protected", f"registry remove {NEWEST}")
    stage.dashboard()
    stage.use("Check for updates")
    stage.sees_start(f"Version {NEWEST} is available")
    stage.use("Back up and update")
    stage.use("Update")
    stage.sees("Show details")
    stage.use("Show details")
    stage.bottom()
    stage.sees("Pinned Pi-hole version: 2026.09.0")
    stage.bottom()
    stage.picture("update-failed")


def update_check_fails(stage):
    """A feed with a wrong certificate is not believed."""
    stage.begin("protected", "feed wrong-cert on")
    stage.dashboard()
    stage.use("Check for updates")
    stage.sees_start("Could not check for updates: ")
    stage.picture("update-check-failed")


def backup(stage):
    """A backup is saved, and put back after a question."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Back up...")
    stage.sees("File name:")
    stage.picture("save-panel")
    stage.use("Save")
    stage.sees_start("Backup saved to pihole-backup-")
    stage.picture("backup-saved")
    name = stage.program.find("Backup saved to ", start=True).get_name()[len("Backup saved to "):-1]
    stage.use("Dismiss")
    stage.use("Restore...")
    stage.sees("File name:")
    stage.type(name)
    stage.key("Return")
    stage.sees("Restore this backup?")
    stage.picture("backup-question")
    stage.use("Restore backup")
    stage.sees("Backup restored.")
    stage.picture("backup-restored")


def colima_at_login(stage):
    """Switching Colima's start at login is asked about, and a refusal changes nothing."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Settings")
    stage.use("Start Colima at login")
    stage.sees("Stop starting Colima at login?")
    stage.picture("colima-question")
    stage.use("Cancel")
    stage.switched("Start Colima at login", on=True)
    stage.use("Start Colima at login")
    stage.use("Continue")
    stage.program.wait("Homebrew to be asked", lambda: any(
        "stop" in call["argv"] for call in ctl("journal", "brew")))
    stage.program.gone("Turning off Colima at login")
    stage.switched("Start Colima at login", on=False)
    stage.picture("colima-by-hand")


def removal(stage):
    """Pi-hole is removed after a question, and the wizard begins again."""
    stage.begin("protected")
    stage.dashboard()
    stage.use("Settings")
    stage.use("Remove Pi-hole...")
    stage.sees("Remove Pi-hole?")
    stage.picture("removal-question")
    stage.use("Remove Pi-hole")
    stage.program.gone("Remove Pi-hole?")
    stage.sees("Pi-hole was removed.")
    stage.picture("removed")
    stage.use("Close")
    stage.sees("What this wizard will do")
    stage.picture("removed-notice")


def removal_fails(stage):
    """Pi-hole stays while the old DNS servers cannot be put back."""
    stage.begin("protected", "prompt cancel")
    stage.dashboard()
    stage.use("Settings")
    stage.use("Remove Pi-hole...")
    stage.use("Remove Pi-hole")
    stage.sees_start("Pi-hole was not removed because your DNS could not be restored: ")
    stage.picture("removal-failed")


def docker_is_gone(stage):
    """A docker that has gone is reported in a line that stays until it is dismissed."""
    stage.begin("protected", "fault docker vanish")
    stage.dashboard()
    stage.use("Follow")
    stage.sees("docker was not found.")
    stage.picture("notice")
    stage.use("Dismiss")
    stage.program.gone("docker was not found.")


SCENES = (update, update_fails, update_check_fails, backup, colima_at_login, removal, removal_fails, docker_is_gone)

if __name__ == "__main__":
    sys.exit(play(SCENES))
