"""What can be set about the stand-in while it runs."""

from dataclasses import asdict, dataclass, fields


@dataclass
class Knobs:
    """Settings of the play itself; none of them exists in a real Pi-hole's configuration."""

    block_mode: str = "zero"        # zero | nxdomain | nodata | ip | ip-nodata-aaaa
    udp: str = "on"                 # on | drop (arrives, no answer) | closed (nobody listens)
    tcp: str = "on"                 # on | drop | closed
    silent: bool = False            # neither DNS nor web answer
    web: str = "on"                 # on | hang | drop
    internet: bool = True           # whether the upstream can be reached
    log_delay: float = -1.0         # seconds until a query shows in the log; below 0 the real 0.1 to 1.0
    settle: float = 0.1             # seconds after a start in which blocked names get their real address
    restart: float = 0.5            # seconds that a restart of the resolver takes
    login_seconds: float = 0.05     # what checking a password costs
    login_limit: int = 3            # login attempts within one clock second
    question_limit: int = 1000      # DNS questions of one client within 60 seconds
    session_seconds: int = 1800     # validity of a session
    seats: int = 16                 # sessions at one time
    upstream: str = "on"            # on | silent (what it is asked is lost on the way)
    privacy: int = 0                # level 0 to 3: what the query log may hold
    effect: float = 0.08            # seconds until a changed rule works
    own_questions: float = 1.0      # seconds until Pi-hole asks for the names of its clients; below 0 never
    list_server: str = "good"       # what lists come to: good | not-found | refused | error | empty | page (a log-in one)
    archive: str = "good"           # what a backup is: good | page (some proxy's, with status 200) | empty
    totp: int = 0                   # the token that a login needs beside the password; 0: none
    versions: bool = True           # whether it knows its own versions
    pace: float = 1.0               # how long a list run takes, against a real one

    def set(self, name: str, value) -> None:
        """Sets one by name, keeping its type; ValueError says what is wrong."""
        kinds = {field.name: field.type for field in fields(self)}
        if name not in kinds:
            raise ValueError(f"There is no setting {name}.")
        setattr(self, name, _typed(name, kinds[name], value))

    def as_dict(self) -> dict:
        return asdict(self)


_CHOICES = {"block_mode": ("zero", "nxdomain", "nodata", "ip", "ip-nodata-aaaa"), "upstream": ("on", "silent"),
            "list_server": ("good", "not-found", "refused", "error", "empty", "page"),
            "archive": ("good", "page", "empty"), "privacy": (0, 1, 2, 3), "udp": ("on", "drop", "closed"),
            "tcp": ("on", "drop", "closed"), "web": ("on", "hang", "drop")}


def _typed(name, kind, value):
    if kind is bool:
        if str(value).lower() in ("true", "on", "yes", "1"):
            return True
        if str(value).lower() in ("false", "off", "no", "0"):
            return False
        raise ValueError(f"{name} is on or off, not {value}.")
    try:
        typed = kind(value)
    except (TypeError, ValueError) as error:
        raise ValueError(f"{name} is a number, not {value}.") from error
    if name in _CHOICES and typed not in _CHOICES[name]:
        raise ValueError(f"{name} is one of {', '.join(map(str, _CHOICES[name]))}, not {value}.")
    return typed
