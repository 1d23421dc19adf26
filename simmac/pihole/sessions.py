"""The seats of the web API: who is logged in."""

import base64
import secrets
from dataclasses import asdict, dataclass


def _token() -> str:
    return base64.b64encode(secrets.token_bytes(16)).decode().rstrip("=") + "="


@dataclass
class Session:
    """One seat."""

    sid: str
    csrf: str
    login_at: float
    last_active: float
    valid_until: float
    remote: str
    user_agent: str | None

    def renew(self, now: float, validity: int) -> None:
        self.last_active = now
        self.valid_until = now + validity


class Sessions:
    """A fixed number of numbered seats; a seat that ran out is taken back when somebody else logs in."""

    def __init__(self, clock, knobs):
        self._clock = clock
        self._knobs = knobs
        self._seats: dict[int, Session] = {}

    def open(self, remote: str, user_agent: str | None) -> Session | None:
        """A new session in the first free seat; None when all are taken."""
        now = self._clock.now()
        self._seats = {seat: held for seat, held in self._seats.items() if held.valid_until >= now}
        free = (seat for seat in range(self._knobs.seats) if seat not in self._seats)
        seat = next(free, None)
        if seat is None:
            return None
        session = Session(_token(), _token(), now, now, now + self._knobs.session_seconds, remote, user_agent)
        self._seats[seat] = session
        return session

    def find(self, sid: str | None) -> Session | None:
        """The session of an id, renewed."""
        session = next((held for held in self._seats.values() if held.sid == sid), None)
        if session:
            session.renew(self._clock.now(), self._knobs.session_seconds)
        return session

    def taken(self) -> int:
        """How many seats are taken."""
        return len(self._seats)

    def close(self, session: Session) -> None:
        self._seats = {seat: held for seat, held in self._seats.items() if held is not session}

    def close_seat(self, seat: int) -> bool:
        return self._seats.pop(seat, None) is not None

    def clear(self) -> None:
        self._seats.clear()

    def listing(self, current: Session | None) -> list[dict]:
        return [{"id": seat, "current_session": held is current, "valid": held.valid_until >= self._clock.now(),
                 "tls": {"login": False, "mixed": False}, "login_at": int(held.login_at),
                 "last_active": int(held.last_active), "valid_until": int(held.valid_until),
                 "remote_addr": held.remote, "user_agent": held.user_agent, "x_forwarded_for": None,
                 "app": False, "cli": False} for seat, held in sorted(self._seats.items())]

    def dump(self) -> dict:
        return {str(seat): asdict(held) for seat, held in self._seats.items()}

    def load(self, stored: dict) -> None:
        self._seats = {int(seat): Session(**held) for seat, held in stored.items()}
