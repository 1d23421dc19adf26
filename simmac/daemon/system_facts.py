"""What the Mac says about itself: processor, macOS version, and whether port 53 may be bound."""

from daemon.network import write_whole

ARM64 = "/System/Library/CoreServices/hw.optional.arm64"
VERSION = "/System/Library/CoreServices/SystemVersion.plist"
BUILDS = {11: "20G1427", 12: "21H1320", 13: "22G931", 14: "23H311", 15: "24G231"}


class SystemFacts:
    """Facts that are in files of the system folder."""

    def __init__(self, mac):
        self._mac = mac
        self.at_reset = {"arm64": True, "macos": "14.5", "port 53": False}   # what a reset goes back to
        self.opened = []     # every address or application that `open` was asked for

    def reset(self):
        """Back to what this Mac was made as."""
        self.opened = []
        self.set_arm64(self.at_reset["arm64"])
        self.set_macos(self.at_reset["macos"])
        self.port_53_granted = self.at_reset["port 53"]

    def set_arm64(self, value):
        """Apple silicon, or an Intel Mac."""
        self.arm64 = value
        write_whole(self._mac.path(ARM64), "1\n" if value else "0\n")

    def set_macos(self, version):
        """The macOS version, for example 14.5."""
        self.macos = version
        write_whole(self._mac.path(VERSION), version_plist(version, self.build()))

    def build(self):
        """The build that belongs to the version."""
        return BUILDS.get(int(self.macos.split(".")[0]), "25A354")


def version_plist(version, build):
    """The property list in which macOS tells its version."""
    keys = (("ProductBuildVersion", build), ("ProductCopyright", "1983-2026 Apple Inc."),
            ("ProductName", "macOS"), ("ProductUserVisibleVersion", version), ("ProductVersion", version))
    rows = "".join(f"\t<key>{key}</key>\n\t<string>{value}</string>\n" for key, value in keys)
    return ('<?xml version="1.0" encoding="UTF-8"?>\n'
            '<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">\n'
            f'<plist version="1.0">\n<dict>\n{rows}</dict>\n</plist>\n')
