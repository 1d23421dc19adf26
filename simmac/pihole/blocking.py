"""Whether names are blocked now, and the timer that turns it round."""

import asyncio
import math


class Blocking:
    """The blocking switch with its countdown: sleeps of a tenth of a second, which are counted. While the process
    stands still, none passes."""

    _STEP = 0.1

    def __init__(self, clock, on_change):
        self._clock = clock
        self._on_change = on_change
        self._enabled = True
        self._left: float | None = None
        self._advanced = 0.0    # how far the clock had been moved forward at the last step
        self._steps = None      # the task that counts

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
        self._left = seconds if timed and math.isfinite(seconds) else None
        self._advanced = self._clock.advanced
        if self._steps:
            self._steps.cancel()
        self._steps = asyncio.get_running_loop().create_task(self._count()) if self._left is not None else None

    def _change(self, enabled: bool) -> None:
        if enabled != self._enabled:
            self._enabled = enabled
            self._on_change(enabled)

    async def _count(self) -> None:
        while self._left is not None:
            await asyncio.sleep(self._STEP)
            self._step()

    def _catch_up(self) -> None:
        """Takes the steps by which the clock was moved forward."""
        while self._left is not None and self._clock.advanced - self._advanced >= self._STEP:
            self._advanced += self._STEP
            self._step()

    def _step(self) -> None:
        if self._left is not None and self._left <= 0:
            self._left = None
            self._change(not self._enabled)
        elif self._left is not None:
            self._left -= self._STEP
