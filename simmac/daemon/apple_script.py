"""The little AppleScript that osascript understands here: `do shell script "..." [with administrator privileges]`."""

import re

STATEMENT = re.compile(r'\s*do\s+shell\s+script\s+"((?:[^"\\]|\\.)*)"(\s+with\s+administrator\s+privileges)?\s*',
                       re.DOTALL)
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\"}


class SyntaxProblem(Exception):
    """Why a text is no script; `place` is where osascript points to."""

    def __init__(self, text, place):
        super().__init__(text)
        self.place = place


def parse(source):
    """The shell script in it, and whether it wants administrator rights."""
    match = STATEMENT.fullmatch(source)
    if match is None:
        if source.count('"') % 2:
            raise SyntaxProblem("Expected \"\"\" but found end of script. (-2741)", f"{len(source)}:{len(source)}")
        raise SyntaxProblem("Expected end of line but found identifier. (-2741)", f"0:{len(source)}")
    return _unescape(match[1]), match[2] is not None


def _unescape(text):
    def plain(match):
        if match[1] not in ESCAPES:
            raise SyntaxProblem("Expected \"\"\" but found unknown token. (-2741)", f"{match.start()}:{match.end()}")
        return ESCAPES[match[1]]
    return re.sub(r"\\(.)", plain, text, flags=re.DOTALL)
