"""What was run: every call of a tool, in the order in which the calls came."""

import time


class Journal:
    """Keeps one entry for each call of a tool until it is cleared."""

    def __init__(self):
        self._entries = []
        self._next_id = 1

    def begin(self, call):
        """Notes that a call began; the answer is handed to `end`."""
        entry = {
            "id": self._next_id, "tool": call.tool, "argv": call.argv, "cwd": call.cwd, "pid": call.pid,
            "admin": call.admin, "env": call.env, "start": time.time(), "end": None, "status": None,
        }
        self._next_id += 1
        self._entries.append(entry)
        return entry

    def end(self, entry, status):
        """Notes how a call ended: a number, or a word such as "cancelled" or "signal 9"."""
        entry["end"] = time.time()
        entry["status"] = status

    def entries(self, tool=None):
        """All entries, or those of one tool."""
        return [entry for entry in self._entries if tool in (None, entry["tool"])]

    def clear(self):
        """Forgets everything."""
        self._entries = []
