"""Logging in and out, and telling who sent a request."""

import asyncio
import json
import re
from dataclasses import dataclass

from . import store
from .http import ALLOW, JSON_TYPE, Request, Response, dump
from .sessions import Session

_RATE_LIMIT_SECONDS = 0.25
_DELETED = ("Set-Cookie", "sid=deleted; SameSite=Lax; Path=/; Max-Age=-1; Expires=Thu, 01 Jan 1970 00:00:00 GMT;")


class BadBody(Exception):
    """A body that is not the JSON it should be: message and hint."""

    def __init__(self, message: str, hint: str | None = None):
        super().__init__(message)
        self.message = message
        self.hint = hint


@dataclass
class Asker:
    """Who sends a request: the id it brought, if any, and the session that belongs to it."""

    sid: str | None
    session: Session | None
    free: bool = False  # no password is set, so everybody may

    @property
    def welcome(self) -> bool:
        return self.free or self.session is not None


def json_body(request: Request, kind=dict):
    """The body's object, or array; an empty one when it is something else. BadBody when it is no JSON."""
    if not request.body:
        raise BadBody("No request body data")
    text = request.body.decode(errors="replace")
    try:
        value = json.loads(text)
    except json.JSONDecodeError as error:
        raise BadBody("Invalid request body data (no valid JSON), error at hint", text[_where(error):]) from error
    return value if isinstance(value, kind) else kind()


def _where(error: json.JSONDecodeError) -> int:
    """Where Pi-hole's own reader stops: behind the character at which a text should have begun."""
    late = error.msg.startswith(("Expecting property name", "Unterminated string"))
    return error.pos + 1 if late else error.pos


def _body_sid(request: Request) -> str | None:
    try:
        sid = json_body(request).get("sid")
    except BadBody:
        return None
    return sid if isinstance(sid, str) else None


def _cookie_sid(request: Request) -> str | None:
    found = re.search(r"(?:^|;\s*)sid=([^;]*)", request.header("Cookie") or "")
    return found[1] if found else None


class Login:
    """Knows the password, counts attempts, gives out and takes back seats."""

    def __init__(self, clock, knobs, sessions):
        self._clock = clock
        self._knobs = knobs
        self._sessions = sessions
        self._second = 0
        self._attempts = 0
        self._used_token = 0
        self.password_hash = ""

    def identify(self, request: Request, cookie_alone: bool = False) -> Asker:
        """Finds the session; a cookie counts only with its CSRF token, except for logging in itself."""
        sid = request.header("X-FTL-SID")
        for other in (request.header("sid"), request.query.get("sid"), _body_sid(request)):
            sid = other if sid is None else sid
        session = self._sessions.find(sid) if sid else None
        if sid is None and (sid := _cookie_sid(request)):
            session = self._sessions.find(sid)
            if session and not cookie_alone and request.header("X-CSRF-TOKEN") != session.csrf:
                session = None
        return Asker(sid, session, self.password_hash == "")

    def cookie(self, session: Session | None) -> list:
        if session is None:
            return []
        validity = self._knobs.session_seconds
        return [("Set-Cookie", f"sid={session.sid}; SameSite=Lax; Path=/; Max-Age={validity}; HttpOnly")]

    def status(self, request: Request, took) -> Response:
        asker = self.identify(request, cookie_alone=True)
        missing = "session unknown" if asker.sid else "no SID provided"
        return self._answer(asker, "correct password", missing, took)

    async def log_in(self, request: Request, took) -> Response:
        """Raises BadBody for a body without a password."""
        password = self._password(json_body(request))
        asker = self.identify(request, cookie_alone=True)
        if self.password_hash == "":
            return self._answer(asker, "", "", took, free="password incorrect" if password else "no password set")
        if not password:
            return self._answer(asker, "correct password", "password incorrect", took)
        if self._too_fast():
            await asyncio.sleep(_RATE_LIMIT_SECONDS)
            return error(429, "rate_limiting", "Rate-limiting login attempts", None, took)
        await asyncio.sleep(self._knobs.login_seconds)
        correct = store.matches(password, self.password_hash)
        if correct and self._knobs.totp and (refusal := self._second_factor(json_body(request), took)):
            return refusal
        return self._checked(request, asker, correct, took)

    def _second_factor(self, body: dict, took) -> Response | None:
        """What is answered when the token is missing, wrong or was used before."""
        if "totp" not in body:
            return error(400, "bad_request", "No 2FA token found in JSON payload", None, took)
        if body["totp"] != self._knobs.totp:
            return error(401, "unauthorized", "Invalid 2FA token", None, took)
        if self._used_token == self._knobs.totp:
            return error(401, "unauthorized", "Reused 2FA token", "wait for new token", took)
        self._used_token = self._knobs.totp
        return None

    def _checked(self, request: Request, asker: Asker, correct: bool, took) -> Response:
        if correct and asker.session is None:
            asker.session = self._sessions.open(request.remote, request.header("User-Agent"))
            if asker.session is None:
                return error(429, "api_seats_exceeded", "API seats exceeded", "increase webserver.api.max_sessions",
                             took)
        return self._answer(asker, "password correct" if correct else "password incorrect", "password incorrect", took)

    def log_out(self, request: Request, took) -> Response:
        asker = self.identify(request, cookie_alone=True)
        if asker.session:
            self._sessions.close(asker.session)
            return Response(204, content_type="text/html", headers=[_DELETED])
        missing = "session unknown" if asker.sid else "no SID provided"
        body = self._state(asker, "", missing, "no password set")
        return answer(401, {**body, "took": took()})

    @staticmethod
    def _password(body: dict) -> str:
        if "password" not in body:
            raise BadBody("No password found in JSON payload")
        if not isinstance(body["password"], str):
            raise BadBody("Field password has to be of type 'string'")
        return body["password"]

    def _too_fast(self) -> bool:
        second = int(self._clock.now())
        if second != self._second:
            self._second, self._attempts = second, 0
        self._attempts += 1
        return self._attempts > self._knobs.login_limit

    def _answer(self, asker: Asker, valid: str, invalid: str, took, free: str = "no password set") -> Response:
        body = {**self._state(asker, valid, invalid, free), "took": took()}
        if asker.welcome:
            return answer(200, body, self.cookie(None if asker.free else asker.session) + ALLOW)
        return answer(401, body, [_DELETED])

    def _state(self, asker: Asker, valid: str, invalid: str, free: str) -> dict:
        if asker.session and not asker.free:
            return {"session": {"valid": True, "totp": self._knobs.totp > 0, "sid": asker.session.sid, "csrf": asker.session.csrf,
                                "validity": self._knobs.session_seconds, "message": valid}}
        return {"session": {"valid": asker.free, "totp": self._knobs.totp > 0, "sid": None, "validity": -1,
                            "message": free if asker.free else invalid}}


def answer(status: int, body: dict, headers=()) -> Response:
    return Response(status, dump(body).encode(), JSON_TYPE, headers=list(headers))


def error(status: int, key: str, message: str, hint: str | None, took, headers=()) -> Response:
    return answer(status, {"error": {"key": key, "message": message, "hint": hint}, "took": took()}, headers)
