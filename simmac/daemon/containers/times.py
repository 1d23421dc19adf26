"""How long it takes until a Pi-hole in a container answers, is healthy, has ended."""

from daemon.mac import at_speed

# Seconds, measured with the real one in a real engine.
_TRUE = {
    "first-boot": 1.7,   # until DNS answers when its volume was empty
    "lonely-boot": 42.0, # the same, when it waits for an internet that is not there
    "boot": 1.1,         # until DNS answers at a later start
    "web": 0.3,          # from then until the web API answers
    "health": 30.0,      # from one health check to the next, and until the first
    "stop": 3.0,         # from the request until the container has ended
    "restart": 0.65,     # the resolver's restart after an import
    "settle": 0.1,       # blocked names get through after a start
    "effect": 0.08,      # until an allowed or denied name is
    "own-questions": 1.0,   # until it asks for the name of a new client
    "pace": 1.0,         # of a list run, against a real one
    "patience": 10.0,    # until `docker stop` kills
}
_FIRST = ("first-boot", "lonely-boot")
_KNOBS = ("restart", "settle", "effect", "own-questions", "pace")   # those that the stand-in itself keeps to


class Times:
    """True ones, or as fast as the Mac is; each can be set by itself."""

    PACES = ("real", "fast", "auto")
    OWN = tuple(name for name in _TRUE if name not in _FIRST)

    def __init__(self, mac):
        self._mac = mac
        self._set = {}
        self.pace = "auto"   # real, fast, or as the Mac's own speed

    def of(self, name):
        """Seconds."""
        told = self._set.get("boot" if name in _FIRST else name)
        if told is not None:
            return told
        return at_speed(self._mac.speed if self.pace == "auto" else self.pace, _TRUE[name])

    def set(self, name, seconds):
        """Sets one to its own number of seconds."""
        self._set[name] = seconds

    def knobs(self):
        """Those that the stand-in is told when it starts."""
        return {name.replace("-", "_"): self.of(name) for name in _KNOBS}
