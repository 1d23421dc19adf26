"""What the package says that Apple's own headers declare: TypeScript files that were generated from them."""

import re

from names.shape import Member, of_script, split

HEAD = re.compile(r"declare (?:abstract )?(?:class|interface) (\w+)(?:<[^{]*?>)?(?: extends ([\w, <>]+?))?(?: implements ([\w, <>]+?))? \{")
METHOD = re.compile(r"(static )?([\w$]+)(?:<.*?>)?\((.*)\): (.+);")
PROPERTY = re.compile(r"(static )?(readonly )?([\w$]+)\??: (.+);")
ACCESSOR = re.compile(r"(static )?(get|set) ([\w$]+)\((.*?)\)(?:: (.+))?;?")
FUNCTION = re.compile(r"declare function (\w+)\((.*)\): (.+);")
CONSTANT = re.compile(r"declare const (\w+): (.+);")
ENUM = re.compile(r"declare const (\w+): \{")


def shapes(parameters):
    """The shapes of `name: type, name: type`."""
    return tuple(of_script(part.split(":", 1)[1]) for part in split(parameters) if not part.startswith("this:"))


class Package:
    """The declarations of the package, read from the files of some frameworks."""

    def __init__(self, folder, frameworks):
        self.members, self.parents, self.fields = {}, {}, {}
        self.functions, self.constants, self.enums = {}, {}, {}
        for framework in frameworks:
            self._read((folder / f"{framework}.d.ts").read_text(encoding="utf-8").splitlines())

    def _read(self, lines):
        inside = None  # where the lines of a block go
        for line in lines:
            if line.startswith("}"):
                inside = None
            elif inside is not None:
                inside(line.strip())
            elif head := HEAD.match(line):
                inside = self._open(head)
            elif enum := ENUM.match(line):
                inside = self._values(self.enums.setdefault(enum[1], {}))
            elif function := FUNCTION.match(line):
                self.functions[function[1]] = Member(takes=shapes(function[2]), gives=of_script(function[3]))
            elif constant := CONSTANT.match(line):
                self.constants[constant[1]] = of_script(constant[2])

    def _open(self, head):
        name = head[1]
        parents = [re.sub(r"<.*", "", parent).strip() for group in head.groups()[1:] if group for parent in split(group)]
        self.parents.setdefault(name, []).extend(parents)
        members, fields = self.members.setdefault(name, {}), self.fields.setdefault(name, [])
        return lambda line: self._member(line, members, fields)

    @staticmethod
    def _values(values):
        def read(line):
            if found := re.match(r"(\w+): (-?\d+),", line):
                values[found[1]] = int(found[2])
        return read

    @staticmethod
    def _member(line, members, fields):
        if accessor := ACCESSOR.fullmatch(line):
            key = (accessor[3], bool(accessor[1]))
            if accessor[2] == "get":
                members[key] = Member(gives=of_script(accessor[5]), is_static=key[1], is_property=True, is_readonly=True)
            elif key in members:
                members[key] = Member(gives=members[key].gives, is_static=key[1], is_property=True)
        elif method := METHOD.fullmatch(line):
            members[method[2], bool(method[1])] = Member(
                takes=shapes(method[3]), gives=of_script(method[4]), is_static=bool(method[1]))
        elif found := PROPERTY.fullmatch(line):
            members[found[3], bool(found[1])] = Member(
                gives=of_script(found[4]), is_static=bool(found[1]), is_property=True, is_readonly=bool(found[2]))
            fields.append(found[3])

    def extends(self, of_class, other):
        """Whether a class extends another, through however many between them."""
        return any(parent == other or self.extends(parent, other) for parent in self.parents.get(of_class, ()) if parent != of_class)

    def member(self, of_class, name, is_static, seen=()):
        """A member of a class, of those it inherits from, or of a protocol that one of them follows."""
        if of_class in seen:
            return None
        found = self.members.get(of_class, {}).get((name, is_static))
        for parent in self.parents.get(of_class, ()):
            found = found or self.member(parent, name, is_static, (*seen, of_class))
        return found
