"""Homebrew: what it has installed, and its lock."""

VERSION = "6.0.18"
FORMULAE = {"colima": ("0.10.3", 25, "18.1MB"), "docker": ("28.5.1", 21, "39.6MB"), "lima": ("2.2.0", 109, "205.3MB"),
            "docker-compose": ("2.40.0", 8, "66.7MB")}
TOOL_OF = {"colima": "colima", "docker": "docker"}


class Homebrew:
    """Which formulae are installed; one process at a time changes that."""

    def __init__(self, mac):
        self._mac = mac
        self.installed = []
        self.locked = False
        self.colima_service = False     # colima starts at login
        self.service = None             # the task that stands for the service's process
        self.service_waits = False      # that process has started colima and waits for a signal

    def add(self, formula):
        if formula not in self.installed:
            self.installed.append(formula)
        if formula in TOOL_OF:
            self._mac.install_tool(TOOL_OF[formula])

    def remove(self, formula):
        if formula in self.installed:
            self.installed.remove(formula)
        if formula in TOOL_OF:
            self._mac.remove_tool(TOOL_OF[formula])

    def end_service(self):
        """Ends the service's process; answers whether it then stops colima."""
        if self.service:
            self.service.cancel()
            self.service = None
        waited, self.service_waits = self.service_waits, False
        return waited

    def reset(self, present, formulae):
        """Homebrew itself is there or not, with these formulae."""
        for formula in list(self.installed):
            self.remove(formula)
        self.locked = self.colima_service = False
        self.end_service()
        (self._mac.install_tool if present else self._mac.remove_tool)("brew")
        for formula in formulae:
            self.add(formula)
