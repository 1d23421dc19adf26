"""The web API: which address answers what."""

import re
import time

from . import pages, teleporter
from .answers import Turn
from .http import ALLOW, Request, Response
from .info_api import InfoApi
from .lists_api import ListsApi
from .login import BadBody, answer, error, json_body
from .queries_api import QueriesApi
from .rules_api import RulesApi
from .statistics_api import StatisticsApi


class WebApi:
    """Finds the part that answers a request, once it is clear who asks."""

    def __init__(self, pihole):
        self._pihole = pihole
        self.requests = 0   # to the API since the last reset, log-ins left out
        self._open = {("GET", "/api/info/login"): self._info_login, ("GET", "/api/info/client"): self._info_client}
        statistics = StatisticsApi(pihole)
        parts = (statistics, QueriesApi(pihole), RulesApi(pihole), ListsApi(pihole), InfoApi(pihole, statistics), self)
        self._routes = [(method, re.compile(path), handler) for part in parts for method, path, handler in part.routes()]

    def routes(self):
        return [("GET", "/api/dns/blocking", self._blocking), ("POST", "/api/dns/blocking", self._set_blocking),
                ("GET", "/api/teleporter", self._download), ("POST", "/api/teleporter", self._upload),
                ("POST", "/api/action/restartdns", self._restart), ("GET", "/api/auth/sessions", self._sessions),
                ("DELETE", r"/api/auth/session/(\d+)", self._close_seat),
                ("GET", "/api/config/webserver/session", self._session_settings)]

    async def handle(self, request: Request) -> Response:
        began = time.perf_counter()
        path = request.path.rstrip("/") or "/"
        method = "GET" if request.method == "HEAD" else request.method

        def took() -> float:
            return time.perf_counter() - began

        if path.startswith("/admin/api"):
            hint = "The API is hosted at pi.hole/api, not pi.hole/admin/api"
            return error(400, "bad_request", "Bad request", hint, took)
        if not path.startswith("/api"):
            return pages.answer(request.path, request.header("Host"))
        return await self._api(method, path, request, took)

    async def _api(self, method: str, path: str, request: Request, took) -> Response:
        login = self._pihole.login
        try:
            if path == "/api/auth" and method == "POST":
                return await login.log_in(request, took)
        except BadBody as bad:
            return error(400, "bad_request", bad.message, bad.hint, took)
        if path == "/api/auth" and method in ("GET", "DELETE"):
            return login.status(request, took) if method == "GET" else login.log_out(request, took)
        if (method, path) in self._open:
            return answer(200, {**self._open[method, path](request), "took": took()}, ALLOW)
        for wanted, pattern, handler in self._routes:
            if wanted == method and (found := pattern.fullmatch(path)):
                return self._closed(request, took, handler, found.groups())
        return error(404, "not_found", "Not found", request.path, took)

    def _closed(self, request: Request, took, handler, parts) -> Response:
        """What only somebody with a session may ask."""
        self.requests += 1
        login = self._pihole.login
        asker = login.identify(request)
        if not asker.welcome:
            return error(401, "unauthorized", "Unauthorized", None, took)
        turn = Turn(request, asker, took, login.cookie(None if asker.free else asker.session))
        try:
            return handler(turn, *parts)
        except BadBody as bad:
            return turn.refuse(bad.message, bad.hint)

    @staticmethod
    def _info_login(_) -> dict:
        return {"dns": True, "https_port": 0}

    @staticmethod
    def _info_client(request: Request) -> dict:
        headers = [{"name": name, "value": value} for name, value in request.headers]
        return {"remote_addr": request.remote, "http_version": "1.1", "method": request.method, "headers": headers}

    def _blocking(self, turn) -> Response:
        blocking = self._pihole.blocking
        word = "enabled" if blocking.enabled else "disabled"
        return turn.good({"blocking": word, "timer": blocking.timer})

    def _set_blocking(self, turn) -> Response:
        body = json_body(turn.request)
        if not isinstance(body.get("blocking"), bool):
            return turn.refuse('No "blocking" boolean in body data', key="body_error")
        self._pihole.blocking.set(body["blocking"], body.get("timer"))
        return self._blocking(turn)

    def _download(self, _) -> Response:
        headers = [("Content-Disposition", f'attachment; filename="{teleporter.file_name()}"'), *ALLOW]
        archive = teleporter.make(self._pihole.store.settings_text(), self._pihole.gravity.dump())
        others = {"page": b"<html>Sign in first.</html>", "empty": b""}
        archive = others.get(self._pihole.knobs.archive, archive)
        return Response(200, archive, "application/zip", headers=headers)

    def _upload(self, turn) -> Response:
        try:
            name, data = teleporter.uploaded_file(turn.request.header("Content-Type"), turn.request.body)
            files, settings, database = teleporter.read(name, data)
        except teleporter.Refused as refused:
            return turn.refuse(refused.message, refused.hint)
        if files:
            self._pihole.take_in(settings, database)
        return turn.good({"files": files})

    def _restart(self, turn) -> Response:
        self._pihole.restart_soon()
        return turn.good({"status": "success"})

    def _sessions(self, turn) -> Response:
        return turn.good({"sessions": self._pihole.sessions.listing(turn.asker.session)})

    def _close_seat(self, turn, seat: str) -> Response:
        if not self._pihole.sessions.close_seat(int(seat)):
            return error(404, "not_found", "Session ID not found", seat, turn.took, turn.cookie)
        return Response(204, content_type="application/json; charset=utf-8", headers=turn.cookie)

    def _session_settings(self, turn) -> Response:
        session = {"timeout": self._pihole.knobs.session_seconds, "restore": True}
        return turn.good({"config": {"webserver": {"session": session}}})
