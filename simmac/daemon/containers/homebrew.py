"""Homebrew: what it has installed, and its lock."""

VERSION = "4.6.17"
FORMULAE = {"colima": ("0.9.1", 25, "18.1MB"), "docker": ("28.5.1", 21, "39.6MB"), "lima": ("1.2.1", 109, "205.3MB"),
            "docker-compose": ("2.40.0", 8, "66.7MB")}
TOOL_OF = {"colima": "colima", "docker": "docker"}


class Homebrew:
    """Which formulae are installed; one process at a time changes that."""

    def __init__(self, mac):
        self._mac = mac
        self.installed = []
        self.locked = False
        self.colima_service = False     # colima starts at login
        self.launch = None              # the task in which the service is starting colima

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

    def stop_launch(self):
        """The service does not go on starting colima."""
        if self.launch:
            self.launch.cancel()
            self.launch = None

    def reset(self, present, formulae):
        """Homebrew itself is there or not, with these formulae."""
        for formula in list(self.installed):
            self.remove(formula)
        self.locked = self.colima_service = False
        self.stop_launch()
        (self._mac.install_tool if present else self._mac.remove_tool)("brew")
        for formula in formulae:
            self.add(formula)
