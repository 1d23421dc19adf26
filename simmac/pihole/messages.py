"""What Pi-hole wants its user to know."""

import html

_LOAD_AFTER = 20   # seconds after the start: then the load is looked at for the first time


class Messages:
    """Numbered messages; those about lists are renewed by each list run."""

    def __init__(self, clock):
        self._clock = clock
        self._next_id = 1
        self._messages = []
        self._load_due = None

    def started(self) -> None:
        self._load_due = self._clock.elapsed() + _LOAD_AFTER

    def clear(self) -> None:
        self._messages.clear()
        self._next_id = 1

    def all(self) -> list[dict]:
        if self._load_due is not None and self._clock.elapsed() >= self._load_due:
            self._load_due = None
            self._tell_load()
        return self._messages

    def delete(self, number: int) -> bool:
        """Answers whether it was there."""
        before = len(self.all())
        self._messages = [each for each in self._messages if each["id"] != number]
        return len(self._messages) < before

    def lists_failed(self, lists: list) -> None:
        """The lists that could not be fetched in the last run."""
        self._messages = [each for each in self.all() if each["type"] != "LIST"]
        for each in lists:
            address = html.escape(each.address)
            self._add("LIST", f"List with ID {each.id} ({each.address}) was inaccessible during last gravity run",
                      f'<a href="groups/lists?listid={each.id}">List with ID <strong>{each.id}</strong> '
                      f"(<code>{address}</code>)</a> was inaccessible during last gravity run")

    def restored(self, backup_time: str) -> None:
        self._add("GRAVITY_RESTORED", "Gravity database restore successful",
                  'Gravity database damaged, restore attempt <strong class="log-green">successful</strong><br>The gravity '
                  f"database was restored using the automatic backup created on {backup_time}<br><br>Please check your "
                  "filesystem for corruption, and your disk space for availability.")

    def _tell_load(self) -> None:
        text = "Long-term load (15min avg) larger than number of processors: "
        self._add("LOAD", text + "4.2 > 2", text + "<strong>4.2 &gt; 2</strong><br>This may slow down DNS resolution and "
                  "can cause bottlenecks.")

    def _add(self, kind: str, plain: str, rich: str) -> None:
        self._messages.append({"id": self._next_id, "timestamp": int(self._clock.now()), "type": kind, "plain": plain,
                               "html": rich})
        self._next_id += 1
