"""The administrator prompt and the user in front of it."""

ANSWERS = ("accept", "cancel", "refuse", "hang")


class Prompt:
    """How the user answers the administrator prompt, and how often it was shown."""

    def __init__(self):
        self.reset()

    def reset(self):
        """The user accepts, and has seen no prompt yet."""
        self.answer = "accept"
        self.language = "en"
        self.count = 0
        self.shown = []      # what each prompt wanted to run
        self.tokens = set()  # secrets of the scripts that run below an accepted prompt
        self._next = []      # answers for the next prompts, before the usual one

    def say(self, answer, once=False):
        """Decides the answer from now on, or only for the next prompt."""
        if once:
            self._next.append(answer)
        else:
            self.answer, self._next = answer, []

    def ask(self, script):
        """Shows a prompt and gives the user's answer to it."""
        self.count += 1
        self.shown.append(script)
        return self._next.pop(0) if self._next else self.answer

    def covers(self, env):
        """Whether a program with this environment runs below an accepted prompt."""
        return env.get("SIMMAC_ADMIN") in self.tokens
