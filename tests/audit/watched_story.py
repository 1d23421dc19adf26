"""The tour's story and a stretch of polling, with the program under strace. Runs inside a simulated Mac; leaves in its folder
what the judge reads: the trace, what stood on the screen, what the tools were given, and which files are left."""

import json
import os
import pathlib
import stat
import sys
import time

sys.path[:0] = [str(pathlib.Path(__file__).parent.parent / "tour")]

import hands  # noqa: E402
import story  # noqa: E402
import trace  # noqa: E402
import tree  # noqa: E402
from screen import NotOnScreen  # noqa: E402
from stage import Stage, ctl, failed  # noqa: E402

PLACES = ("/Users", "/tmp", "/var", "/run/user", "/Applications", "/opt", "/etc")
PASSWORD_FILE = "/Users/ada/Library/Application Support/Corvane/pihole.env"
PASS_LIMIT = 60
END_LIMIT = 30


def files():
    """Every file of the Mac that a program could have left, with its mode."""
    found = {}
    for place in PLACES:
        for folder, folders, names in os.walk(place):
            for name in folders + names:
                path = f"{folder}/{name}"
                try:
                    found[path] = oct(stat.S_IMODE(os.lstat(path).st_mode))
                except OSError:
                    pass   # gone meanwhile
    return found


def files_with(secrets):
    """The files that hold one of these texts."""
    found = []
    for path in files():
        if os.path.isfile(path) and not os.path.islink(path):
            try:
                content = pathlib.Path(path).read_bytes()
            except OSError:
                continue
            found += [(path, name) for name, secret in secrets.items() if secret.encode() in content]
    return found


def passes():
    """How often Docker was asked for the container, which every look at the status does."""
    return sum("inspect" in call["argv"] for call in ctl("journal", "docker"))


def wait_for(what, condition, limit):
    """Waits for something that is not on the screen."""
    deadline = time.monotonic() + limit
    while not condition():
        if time.monotonic() > deadline:
            raise NotOnScreen(what)
        time.sleep(0.2)


def poll(stage, count):
    """Leaves the program alone until it has looked this often by itself."""
    for _ in range(count):
        before = passes()
        wait_for("a look at the status by itself", lambda: passes() > before, PASS_LIMIT)  # noqa: B023
    story.tick(f"{count} looks at the status without anybody's doing")


def tell(stage, polls):
    """The story with a rest before its last chapter; answers with everything that was to be read meanwhile."""
    said = set()
    for chapter in story.CHAPTERS[:-1]:
        chapter(stage)
        said.update(stage.program.texts())
    poll(stage, polls)
    said.update(stage.program.texts())
    password = pathlib.Path(PASSWORD_FILE).read_text(encoding="utf-8").split("=", 1)[1].strip().strip("'\"")
    story.CHAPTERS[-1](stage)
    return sorted(said), password


def main():
    program, folder, polls = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
    traced = folder / "traced"
    words = " ".join(f"'{word}'" for word in trace.command(str(folder / "trace"), program))
    traced.write_text(f"#!/bin/sh\nexec {words}\n", encoding="ascii")
    traced.chmod(0o755)
    tree.start_accessibility()
    before = files()
    stage = Stage(str(traced), folder, hands.Mouse)
    stage.open()
    try:
        said, password = tell(stage, polls)
        wait_for("the end of the trace", lambda: "exited with" in (folder / "trace").read_text(errors="replace")[-4000:]
                 or not watchers(), END_LIMIT)
    except NotOnScreen as problem:
        failed(stage, problem)
        return 1
    evidence = {"said": said, "password": password, "printed": stage.complaints(), "journal": ctl("journal"),
                "new": {path: mode for path, mode in files().items() if path not in before},
                "holding": files_with({"password": password})}
    (folder / "evidence.json").write_text(json.dumps(evidence), encoding="ascii")
    return 0


def watchers():
    """Whether strace still runs."""
    names = (pathlib.Path(each, "comm") for each in pathlib.Path("/proc").glob("[0-9]*"))
    return any(name.exists() and name.read_text().strip() == "strace" for name in names)


if __name__ == "__main__":
    sys.exit(main())
