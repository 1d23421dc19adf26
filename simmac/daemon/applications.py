"""The applications in /Applications."""

import os
import shutil

from daemon.network import write_whole

NAMES = {
    "com.apple.Safari": "Safari", "com.google.Chrome": "Google Chrome", "com.microsoft.edgemac": "Microsoft Edge",
    "com.brave.Browser": "Brave Browser", "org.mozilla.firefox": "Firefox",
}


class Applications:
    """Which applications are installed, by bundle identifier."""

    def __init__(self, mac):
        self._mac = mac
        self.installed = {}

    def reset(self):
        """Only what macOS brings."""
        for bundle in list(self.installed):
            self.remove(bundle)
        self.add("com.apple.Safari")

    def add(self, bundle, name=None):
        """Puts an application with this identifier into /Applications."""
        name = name or NAMES.get(bundle) or bundle.rsplit(".", 1)[-1]
        contents = f"{self._mac.path('/Applications')}/{name}.app/Contents"
        os.makedirs(contents, exist_ok=True)
        write_whole(f"{contents}/Info.plist", info_plist(bundle, name))
        self.installed[bundle] = name

    def remove(self, bundle):
        """Takes an application away; answers whether it was there."""
        name = self.installed.pop(bundle, None)
        if name is not None:
            shutil.rmtree(f"{self._mac.path('/Applications')}/{name}.app", ignore_errors=True)
        return name is not None


def info_plist(bundle, name):
    """The property list by which macOS knows an application."""
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n'
            f"\t<key>CFBundleIdentifier</key>\n\t<string>{bundle}</string>\n"
            f"\t<key>CFBundleName</key>\n\t<string>{name}</string>\n</dict>\n</plist>\n")
