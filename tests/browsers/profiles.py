"""Fresh profiles of real browsers, with one setting for secure DNS, and the command that opens such a profile."""

import json
import os
import subprocess

AUTHORITY = "/etc/ssl/certs/simulated-mac-root.pem"
CHROMIUM = "/usr/lib/chromium/chromium"
FIREFOX = "/usr/lib/firefox-esr/firefox-esr"
PROVIDER = "https://dns.google/dns-query"

# Everything that a browser would look up for itself at its start, and that has nothing to do with the page.
QUIET = ["--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"]


def chromium(folder, setting):
    """A profile of Chromium. The setting is "nothing", "automatic", "off" or "secure"."""
    os.makedirs(folder)
    if setting != "nothing":
        secure = {"mode": setting, "templates": PROVIDER + "{?dns}" if setting == "secure" else ""}
        with open(f"{folder}/Local State", "w", encoding="ascii") as file:
            json.dump({"dns_over_https": secure}, file)
    trust(f"{os.environ['HOME']}/.pki/nssdb")
    return [CHROMIUM, "--headless", "--no-sandbox", "--disable-gpu", *QUIET, f"--user-data-dir={folder}"]


def firefox(folder, setting):
    """A profile of Firefox. The setting is "nothing" or a value of network.trr.mode."""
    trust(folder)
    lines = ['user_pref("datareporting.policy.dataSubmissionEnabled", false);',
             'user_pref("browser.shell.checkDefaultBrowser", false);']
    if setting != "nothing":
        lines.append(f'user_pref("network.trr.mode", {setting});')
    with open(f"{folder}/user.js", "w", encoding="ascii") as file:
        file.write("\n".join(lines) + "\n")
    return [FIREFOX, "--headless", "--no-remote", "--profile", folder]


def trust(folder):
    """Lets a browser whose certificates are kept in this folder trust the authority of the simulated Mac."""
    os.makedirs(folder, exist_ok=True)
    for words in (["-N", "--empty-password"], ["-A", "-t", "C,,", "-n", "Simulated Mac Root", "-i", AUTHORITY]):
        subprocess.run(["certutil", "-d", f"sql:{folder}", *words], check=True, stdin=subprocess.DEVNULL)


BROWSERS = {"chromium": chromium, "firefox": firefox}
