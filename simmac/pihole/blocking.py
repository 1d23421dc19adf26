"""Whether names are blocked now, and the timer that turns it round."""


class Blocking:
    """The blocking switch with its countdown, which runs in steps of a tenth of a second."""

    _STEP = 0.1

    def __init__(self, clock, on_change):
        self._clock = clock
        self._on_change = on_change
        self._enabled = True
        self._left: float | None = None
        self._stepped_at = 0.0

    def load(self, enabled: bool) -> None:
        """Takes the stored switch at a start; a timer is never stored."""
        self._enabled = enabled
        self._left = None

    @property
    def enabled(self) -> bool:
        self._catch_up()
        return self._enabled

    @property
    def timer(self) -> float | None:
        self._catch_up()
        return self._left

    def set(self, enabled: bool, seconds) -> None:
        """Switches; only a number above 0 starts a timer."""
        self._change(enabled)
        timed = isinstance(seconds, (int, float)) and not isinstance(seconds, bool) and seconds > 0
        self._left = seconds if timed else None
        self._stepped_at = self._clock.elapsed()

    def _change(self, enabled: bool) -> None:
        if enabled != self._enabled:
            self._enabled = enabled
            self._on_change(enabled)

    def _catch_up(self) -> None:
        while self._left is not None and self._clock.elapsed() - self._stepped_at >= self._STEP:
            self._stepped_at += self._STEP
            if self._left <= 0:
                self._left = None
                self._change(not self._enabled)
            else:
                self._left -= self._STEP
