"""The few pages of the admin interface that a browser meets before it is logged in."""

from .http import ALLOW, Response

_HTML = "text/html; charset=utf-8"

_PAGE = """<!doctype html>
<html lang="en">
<head><meta charset="utf-8"><title>{title}</title>
<style>body {{ font-family: sans-serif; margin: 4em auto; max-width: 24em }}</style></head>
<body class="login-page">
<h1>{title}</h1>
<p>{text}</p>
</body>
</html>
"""

_LOGIN = """<!doctype html>
<html lang="en">
<head><meta charset="utf-8"><title>Pi-hole pihole</title>
<style>body { font-family: sans-serif; margin: 4em auto; max-width: 24em }</style></head>
<body class="login-page">
<h1>Pi-hole</h1>
<form id="loginform">
<label>Password <input type="password" name="current-password" required></label>
<button type="submit">Log in</button>
</form>
</body>
</html>
"""


def _redirect(status: int, to: str, cached: bool) -> Response:
    return Response(status, first=[("Location", to)], headers=ALLOW, cached=cached)


def _error(status: int, title: str, text: str) -> Response:
    return Response(status, _PAGE.format(title=title, text=text).encode(), _HTML, close=True)


def answer(path: str, host: str | None) -> Response:
    """What a page's address answers."""
    if path == "/admin" or (path == "/" and host == "pi.hole"):
        return _redirect(308, "/admin/", True)
    if path == "/admin/":
        return _redirect(302, "/admin/login", False)
    if path == "/admin/login":
        return Response(200, _LOGIN.encode(), _HTML, headers=ALLOW, close=True)
    if path == "/":
        return _error(403, "403", 'Nothing to see here. The dashboard is at <a href="/admin/">/admin</a>.')
    return _error(404, "404", 'There is no such page. The dashboard is at <a href="/admin/">/admin</a>.')
