"""What the parts of the web API share when they answer."""

from dataclasses import dataclass

from .http import ALLOW, Request, Response
from .login import Asker, answer, error


@dataclass
class Turn:
    """One request of somebody who may ask, while it is answered."""

    request: Request
    asker: Asker
    took: object          # a function: seconds so far
    cookie: list

    def good(self, body: dict, headers=None) -> Response:
        """200; headers replace the usual ones."""
        usual = self.cookie + ALLOW
        return answer(200, {**body, "took": self.took()}, usual if headers is None else headers)

    def with_status(self, status: int, body: dict, headers=None) -> Response:
        return answer(status, {**body, "took": self.took()}, self.cookie if headers is None else headers)

    def refuse(self, message: str, hint: str | None = None, key: str = "bad_request", headers=None,
               status: int = 400) -> Response:
        """An error, by which the session is renewed all the same."""
        return error(status, key, message, hint, self.took, self.cookie if headers is None else headers)

    def no_database(self, headers=None) -> Response:
        """What everything says that needs the lists when there are none."""
        return self.refuse("Could not read domains from database table", "Database not available", "database_error",
                           headers)

    def number(self, name: str, default=None):
        """A number of the query; the default when it is missing or none."""
        try:
            value = float(self.request.query[name])
        except (KeyError, ValueError):
            return default
        return int(value) if value.is_integer() and "." not in self.request.query[name] else value

    def switch(self, name: str) -> bool:
        """Whether the query says true."""
        return self.request.query.get(name) == "true"
