"""The servers from which block lists come, as far as a list run meets them."""

from dataclasses import dataclass, field

from . import names
from .gravity import DEFAULT_LIST

WORDS = {"not-found": "Not found", "refused": "Connection Refused", "error": "Internal Server Error"}
PAGE = ["<html><body>please", "log", "in</body></html>"]   # what a network's log-in page is split into


@dataclass
class Source:
    """What one address gives: names, or a failure by its word, "page" or "empty"."""

    names: list = field(default_factory=list)
    abp: list = field(default_factory=list)
    trouble: str = ""
    seconds: float = 0.0   # that it takes
    dated: bool = False    # tells by itself that nothing changed


class ListServer:
    """Knows the default list from the beginning; every other address refuses the connection until it is told."""

    def __init__(self):
        self.sources = {}
        self.reset()

    def reset(self) -> None:
        self.sources = {DEFAULT_LIST: Source(sorted(names.BLOCKED), dated=True)}

    def fetch(self, address: str, fate: str) -> Source:
        """What comes from there; a fate other than "good" meets all but local files."""
        if fate != "good" and not address.startswith("file:"):
            return Source(trouble=fate)
        return self.sources.get(address) or Source(trouble="refused")
