"""The time that sessions, timers and the query log go by; it can be moved forward."""

import time


class Clock:
    """Wall time and elapsed time, both moved forward by the same offset."""

    def __init__(self):
        self._offset = 0.0

    def now(self) -> float:
        return time.time() + self._offset

    def elapsed(self) -> float:
        return time.monotonic() + self._offset

    @property
    def advanced(self) -> float:
        """By how much it was moved forward."""
        return self._offset

    def advance(self, seconds: float) -> None:
        self._offset += seconds

    def reset(self) -> None:
        """As the machine's own clock says."""
        self._offset = 0.0
