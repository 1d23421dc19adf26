"""The web API: which address answers what."""

import re
import time

from . import names, pages, teleporter
from .http import ALLOW, Request, Response
from .login import Asker, BadBody, answer, error, json_body


class WebApi:
    """Routes requests and answers them from the parts of a Pi-hole."""

    def __init__(self, pihole):
        self._pihole = pihole
        self._open = {("GET", "/api/info/login"): self._info_login, ("GET", "/api/info/client"): self._info_client}
        self._closed = {("GET", "/api/stats/summary"): self._summary, ("GET", "/api/dns/blocking"): self._blocking,
                        ("POST", "/api/dns/blocking"): self._set_blocking, ("GET", "/api/queries"): self._queries,
                        ("GET", "/api/teleporter"): self._download, ("POST", "/api/teleporter"): self._upload,
                        ("GET", "/api/auth/sessions"): self._sessions, ("GET", "/api/info/version"): self._version,
                        ("GET", "/api/info/messages"): self._messages,
                        ("GET", "/api/config/webserver/session"): self._session_settings}

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
        try:
            return await self._api(method, path, request, took)
        except BadBody as bad:
            return error(400, "bad_request", bad.message, bad.hint, took)

    async def _api(self, method: str, path: str, request: Request, took) -> Response:
        login = self._pihole.login
        if path == "/api/auth" and method == "POST":
            return await login.log_in(request, took)
        if path == "/api/auth" and method in ("GET", "DELETE"):
            return login.status(request, took) if method == "GET" else login.log_out(request, took)
        if (method, path) in self._open:
            return answer(200, {**self._open[method, path](request), "took": took()}, ALLOW)
        seat = re.fullmatch(r"/api/auth/session/(\d+)", path)
        handler = self._closed.get((method, path))
        if not handler and not (seat and method == "DELETE"):
            return error(404, "not_found", "Not found", request.path, took)
        asker = login.identify(request)
        if not asker.welcome:
            return error(401, "unauthorized", "Unauthorized", None, took)
        return self._close_seat(int(seat[1]), asker, took) if seat else handler(request, asker, took)

    def _cookie(self, asker: Asker) -> list:
        return self._pihole.login.cookie(None if asker.free else asker.session)

    def _good(self, body: dict, asker: Asker, took) -> Response:
        return answer(200, {**body, "took": took()}, self._cookie(asker) + ALLOW)

    @staticmethod
    def _info_login(_) -> dict:
        return {"dns": True, "https_port": 0}

    @staticmethod
    def _info_client(request: Request) -> dict:
        headers = [{"name": name, "value": value} for name, value in request.headers]
        return {"remote_addr": request.remote, "http_version": "1.1", "method": request.method, "headers": headers}

    def _summary(self, _, asker, took) -> Response:
        log = self._pihole.log
        clients = log.clients()
        return self._good({"queries": log.counters(), "clients": {"active": clients, "total": clients},
                           "gravity": {"domains_being_blocked": len(names.BLOCKED),
                                       "last_update": int(self._pihole.gravity_at)}}, asker, took)

    def _blocking(self, _, asker, took) -> Response:
        blocking = self._pihole.blocking
        word = "enabled" if blocking.enabled else "disabled"
        return self._good({"blocking": word, "timer": blocking.timer}, asker, took)

    def _set_blocking(self, request, asker, took) -> Response:
        body = json_body(request)
        if not isinstance(body.get("blocking"), bool):
            return error(400, "body_error", 'No "blocking" boolean in body data', None, took, self._cookie(asker))
        self._pihole.blocking.set(body["blocking"], body.get("timer"))
        return self._blocking(request, asker, took)

    def _queries(self, request, asker, took) -> Response:
        listed = self._pihole.log.listed()
        wanted = [entry for entry in listed if request.query.get("domain", entry.domain) == entry.domain]
        length = _integer(request.query.get("length"), 100)
        shown = wanted if length < 0 else wanted[:length]
        return self._good({"queries": [entry.as_json() for entry in shown],
                           "cursor": listed[0].id if listed else None, "recordsTotal": len(listed),
                           "recordsFiltered": len(wanted), "draw": 0}, asker, took)

    def _download(self, *_) -> Response:
        headers = [("Content-Disposition", f'attachment; filename="{teleporter.file_name()}"'), *ALLOW]
        archive = teleporter.make(self._pihole.store.settings_text())
        return Response(200, archive, "application/zip", headers=headers)

    def _upload(self, request, asker, took) -> Response:
        try:
            name, data = teleporter.uploaded_file(request.header("Content-Type"), request.body)
            files, settings = teleporter.read(name, data)
        except teleporter.Refused as refused:
            return error(400, "bad_request", refused.message, refused.hint, took, self._cookie(asker))
        if files:
            self._pihole.take_in(settings)
        return self._good({"files": files}, asker, took)

    def _sessions(self, _, asker, took) -> Response:
        return self._good({"sessions": self._pihole.sessions.listing(asker.session)}, asker, took)

    def _close_seat(self, seat: int, asker: Asker, took) -> Response:
        if not self._pihole.sessions.close_seat(seat):
            return error(404, "not_found", "Session ID not found", str(seat), took, self._cookie(asker))
        return Response(204, content_type="application/json; charset=utf-8", headers=self._cookie(asker))

    def _version(self, _, asker, took) -> Response:
        return error(500, "internal_error", "Failed to read /etc/pihole/versions", None, took, self._cookie(asker))

    def _messages(self, _, asker, took) -> Response:
        return self._good({"messages": []}, asker, took)

    def _session_settings(self, _, asker, took) -> Response:
        session = {"timeout": self._pihole.knobs.session_seconds, "restore": True}
        return self._good({"config": {"webserver": {"session": session}}}, asker, took)


def _integer(text: str | None, default: int) -> int:
    try:
        return default if text is None else int(text)
    except ValueError:
        return default
