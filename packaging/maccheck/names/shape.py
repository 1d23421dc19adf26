"""What a declaration looks like, in words that both sides can be put into.

A shape is one word: "string", "number", "boolean", "void", "pointer", "object", "self", "Enum NAME", the name of a class or a
structure, or "calls(SHAPES)SHAPE" for a block or a function. A "?" behind it says that nil may be given.
"""

import re
from dataclasses import dataclass

NUMBERS = re.compile(r"(?:unsigned |signed )?(?:char|short|int|long|long long|float|double)|unsigned")
QUALIFIERS = re.compile(r"_Nonnull|_Nullable|_Null_unspecified|__kindof|__strong|__unsafe_unretained|\bconst\b|\bstruct\b")


@dataclass(frozen=True)
class Member:
    """A property or a method of a class, or a function: what it takes and what it gives."""

    takes: tuple = ()
    gives: str = "void"
    is_static: bool = False
    is_property: bool = False
    is_readonly: bool = False


def split(text):
    """The parts of a list between commas, brackets kept whole."""
    parts, depth = [""], 0
    for character in text.replace("=>", "\0"):
        depth += (character in "([{<") - (character in ")]}>")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.replace("\0", "=>").strip() for part in parts if part.strip()]


def of_c(qual, desugared=None, records=()):
    """The shape of a C or Objective-C type as the compiler spells it: as written, and with its names resolved."""
    nullable = "?" if "_Nullable" in qual.rsplit("*", 1)[-1] or re.search(r"\^\s*_Nullable", qual) else ""
    written = " ".join(QUALIFIERS.sub(" ", qual).split())
    plain = " ".join(QUALIFIERS.sub(" ", desugared or qual).split())
    if call := re.fullmatch(r"(.+?) ?\([\^*] *\)\((.*)\)", plain):
        takes = [of_c(part).rstrip("?") for part in split(call[2]) if part != "void"]
        return f"calls({','.join(takes)}){of_c(call[1])}{nullable}"
    if written.endswith("Ref") or re.match(r"id\b|ObjectType\b", plain) or written.startswith("dispatch_queue_t"):
        return "self" if written.startswith("instancetype") else f"object{nullable}"
    if plain.startswith("enum "):
        return f"Enum {plain[5:]}"
    if plain in ("bool", "BOOL"):
        return "boolean"
    if NUMBERS.fullmatch(plain):
        return "number"
    pointed = re.fullmatch(r"(NS\w+|SM\w+)(?:<.*>)? ?\*", plain)
    if pointed and pointed[1] not in records:
        return ("string" if pointed[1] == "NSString" else pointed[1]) + nullable
    if "*" in plain or "[" in plain:
        return "pointer"
    return plain


def of_script(text):
    """The shape of a type as the package spells it."""
    text = re.sub(r"/\*.*?\*/", "", text).strip()
    if call := re.fullmatch(r"\((.*?)\) => (.+)", text):
        takes = [of_script(part.split(":", 1)[1]).rstrip("?") for part in split(call[1])]
        gives, nullable = re.fullmatch(r"(.+?)( \| null)?", call[2]).groups()
        return f"calls({','.join(takes)}){of_script(gives)}{'?' if nullable else ''}"
    nullable = "?" if text.endswith("| null") else ""
    text = text.split(" | ")[0].strip()
    if enum := re.fullmatch(r"interop\.Enum<typeof (\w+)>", text):
        return f"Enum {enum[1]}"
    if text in ("interop.Pointer", "interop.PointerConvertible"):
        return "pointer"
    if text in ("interop.Object", "NSObject", "ObjectType"):
        return f"object{nullable}"
    if text == "this" or text.startswith("InstanceType<"):
        return "self"
    return re.sub(r"<.*>", "", text) + nullable
