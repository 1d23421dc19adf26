"""Compares what we declare of Apple's frameworks with what the package knows of them."""

import re
from dataclasses import dataclass, field


@dataclass
class Findings:
    wrong: list = field(default_factory=list)      # sentences
    unknown: set = field(default_factory=set)      # names that the package does not have
    valueless: set = field(default_factory=set)    # constants that it has without their value


def script_name(selector):
    """How the package writes a selector: its parts run together, each but the first with a capital."""
    first, *rest = [part for part in selector.split(":") if part]
    return first + "".join(part[0].upper() + part[1:] for part in rest)


def alike(ours, theirs):
    """Whether two shapes may be the same thing: the package knows no type of a plain object, and blurs Core Foundation's."""
    bare, other = ours.rstrip("?"), theirs.rstrip("?")
    if bare == "object":
        return other in ("object", "pointer")
    calls = re.compile(r"calls\((.*?)\)(.*)")
    if (one := calls.fullmatch(bare)) and (two := calls.fullmatch(other)):
        # Arguments of callbacks come as pointers there.
        return one[1].count(",") == two[1].count(",") and bool(one[1]) == bool(two[1])
    return bare == other


def check_call(name, ours, theirs, said):
    """A method or a function: number, shapes and nullability of what it takes, and the shape of what it gives."""
    if len(ours.takes) != len(theirs.takes):
        said.append(f"{name} takes {len(ours.takes)} arguments here and {len(theirs.takes)} at Apple")
        return
    for number, (mine, other) in enumerate(zip(ours.takes, theirs.takes), 1):
        if not alike(mine, other):
            said.append(f"{name}: argument {number} is {mine} here and {other} at Apple")
        # Only of Objective-C's objects does the package say whether nil is allowed.
        elif mine.endswith("?") != other.endswith("?") and ":" in name and other != "pointer":
            said.append(f"{name}: argument {number} is {mine} here and {other} at Apple: nil")
    # The package takes every maker of objects for one that subclasses inherit.
    makes_own = theirs.gives == "self" and name.startswith(f"+[{ours.gives.rstrip('?')} ")
    if not makes_own and not alike(ours.gives, theirs.gives):
        said.append(f"{name} gives {ours.gives} here and {theirs.gives} at Apple")


def check_property(name, ours, theirs, setter, said):
    if not theirs.is_property:
        said.append(f"{name} is a property here and a method at Apple")
    elif not alike(ours.gives, theirs.gives):
        said.append(f"{name} is {ours.gives} here and {theirs.gives} at Apple")
    elif ours.is_readonly != theirs.is_readonly:
        said.append(f"{name}: readonly differs")
    elif not ours.is_readonly and setter and ours.gives.endswith("?") != setter.takes[0].endswith("?"):
        said.append(f"{name} is {ours.gives} here and {setter.takes[0]} at Apple: nil")


def check_classes(ours, package, found):
    for owner, members in ours.classes.items():
        if owner not in package.members:
            found.unknown.add(owner)
            continue
        if owner in ours.parents and not package.extends(owner, ours.parents[owner]):
            found.wrong.append(f"{owner} extends {ours.parents[owner]} here, but not at Apple")
        for (name, is_static), mine in members.items():
            full = f"{'+' if is_static else '-'}[{owner} {name}]" if not mine.is_property else f"{owner}.{name}"
            other = package.member(owner, script_name(name), is_static)
            if other is None:
                found.unknown.add(full)
            elif mine.is_property:
                setter = package.member(owner, "set" + name[0].upper() + name[1:], is_static)
                check_property(full, mine, other, setter, found.wrong)
            elif other.is_property:
                found.wrong.append(f"{full} is a method here and a property at Apple")
            else:
                check_call(full, mine, other, found.wrong)


def check_enums(ours, package, found):
    for owner, values in ours.enums.items():
        known = package.enums.get(owner)
        if known is None:
            found.unknown.add(owner)
            continue
        for name, value in values.items():
            # The package leaves out what all values of an enumeration have in common.
            short = max((key for key in known if key in name), key=len, default=None)
            if short is None:
                found.unknown.add(name)
            elif known[short] != value:
                found.wrong.append(f"{name} is {value} here and {known[short]} at Apple")


def check_rest(ours, package, found):
    for name, mine in ours.functions.items():
        if name not in package.functions:
            found.unknown.add(name)
        else:
            check_call(name, mine, package.functions[name], found.wrong)
    for name, (shape, value) in ours.constants.items():
        if name not in package.constants:
            found.unknown.add(name)
            continue
        if not alike(shape, package.constants[name]):
            found.wrong.append(f"{name} is {shape} here and {package.constants[name]} at Apple")
        if value is not None:
            found.valueless.add(name)
    for name, fields in ours.structures.items():
        if name not in package.fields:
            found.unknown.add(name)
        elif fields != package.fields[name]:
            found.wrong.append(f"{name} has the fields {fields} here and {package.fields[name]} at Apple")


def compare(ours, package):
    found = Findings()
    check_classes(ours, package, found)
    check_enums(ours, package, found)
    check_rest(ours, package, found)
    return found
