"""What Docker's health check has found out about a container."""

import math
import time

_FAILURES = 3   # so many checks one after the other make it unhealthy


class Health:
    """One check at the end of each interval: an answered one makes it healthy, three that are not unhealthy."""

    def __init__(self, interval, answers_after):
        self._interval = max(interval, 0.001)
        self._began = time.monotonic()
        self._answers_from = self._began + answers_after
        self._checks = 0
        self._failures = 0
        self._word = "starting"

    def found_healthy(self):
        """A check that was made at once."""
        self._failures, self._word = 0, "healthy"

    def freeze(self):
        """From now on no check is answered."""
        self._catch_up()
        self._answers_from = math.inf

    def thaw(self):
        """From now on checks are answered."""
        self._catch_up()
        self._answers_from = time.monotonic()

    @property
    def word(self):
        """Docker's word for it: starting, healthy or unhealthy."""
        self._catch_up()
        return self._word

    def _catch_up(self):
        """Makes the checks whose time has come; those before the last few change nothing."""
        due = int((time.monotonic() - self._began) / self._interval)
        self._checks = max(self._checks, due - _FAILURES - 1)
        while self._checks < due:
            self._checks += 1
            self._check(self._began + self._checks * self._interval)

    def _check(self, moment):
        if moment >= self._answers_from:
            self.found_healthy()
            return
        self._failures += 1
        if self._failures >= _FAILURES:
            self._word = "unhealthy"
