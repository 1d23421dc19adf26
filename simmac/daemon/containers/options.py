"""Command-line options as Docker's and Colima's clients read them."""


class BadOption(Exception):
    """An option that the command does not have, or one without its value."""


class Options:
    """What a command line said: switches, values (a list each), and the words that are left."""

    def __init__(self):
        self.switches = set()
        self.values = {}
        self.words = []

    def value(self, name, default=None):
        return self.values.get(name, [default])[-1]

    def all(self, name):
        return self.values.get(name, [])


def read(args, switches=(), values=(), stop_at_word=False):
    """Reads options by their names ("-d", "--detach"); aliases are written "-d|--detach" and kept under the last."""
    aliases = {alias: names.split("|")[-1] for names in (*switches, *values) for alias in names.split("|")}
    valued = {alias for names in values for alias in names.split("|")}
    result, rest = Options(), list(args)
    while rest:
        word = rest.pop(0)
        if word == "--" or not word.startswith("-") or word == "-":
            result.words.append(word)
            if stop_at_word or word == "--":
                result.words += rest
                break
        elif word.startswith("--") or word in aliases:
            _long(word, rest, aliases, valued, result)
        else:
            _short(word, rest, aliases, valued, result)
    return result


def _long(word, rest, aliases, valued, result):
    name, equals, value = word.partition("=")
    if name not in aliases:
        raise BadOption(f"unknown flag: {name}" if name.startswith("--") else _unknown_short(name[1], name))
    if name not in valued:
        if value != "false":
            result.switches.add(aliases[name])
        return
    if not equals:
        if not rest:
            missing = f"{name}" if name.startswith("--") else f"'{name[1]}' in {name}"
            raise BadOption(f"flag needs an argument: {missing}")
        value = rest.pop(0)
    result.values.setdefault(aliases[name], []).append(value)


def _short(word, rest, aliases, valued, result):
    letters = word[1:]
    while letters:
        name, letters = "-" + letters[0], letters[1:]
        if name not in aliases:
            raise BadOption(_unknown_short(name[1], word))
        if name in valued:
            _long(name, [letters.removeprefix("=")] if letters else rest, aliases, valued, result)
            return
        result.switches.add(aliases[name])


def _unknown_short(letter, word):
    return f"unknown shorthand flag: '{letter}' in {word}"
