"""What the declarations in frameworks/ say, as the compiler reads them."""

import json
import subprocess
from dataclasses import dataclass, field

from names.shape import Member, of_c

UMBRELLAS = ("AppKit/AppKit.h", "Security/Security.h", "ServiceManagement/ServiceManagement.h",
             "SystemConfiguration/SystemConfiguration.h")


@dataclass
class Declarations:
    """Everything that is declared, by its name."""

    classes: dict = field(default_factory=dict)    # name -> {(selector or property, is_static): Member}
    parents: dict = field(default_factory=dict)    # class -> the class that it extends
    structures: dict = field(default_factory=dict)  # name -> field names
    functions: dict = field(default_factory=dict)
    constants: dict = field(default_factory=dict)  # name -> (shape, value or None)
    enums: dict = field(default_factory=dict)      # name -> {value name: value}
    spelled: dict = field(default_factory=dict)    # every typedef of the system -> what it stands for
    records: dict = field(default_factory=dict)    # every structure -> field names


def typed(node, found, key="type"):
    return of_c(node[key]["qualType"], node[key].get("desugaredQualType"), found.records)


def arguments(node, found):
    return tuple(typed(inner, found) for inner in node.get("inner", ()) if inner["kind"] == "ParmVarDecl")


def constant_value(node):
    """The number behind the first expression that the compiler has worked out."""
    for inner in node.get("inner", ()):
        if "value" in inner:
            return int(inner["value"], 0) if isinstance(inner["value"], str) else inner["value"]
        if (value := constant_value(inner)) is not None:
            return value
    return None


def read_class(node, found):
    members = found.classes.setdefault(node.get("interface", node)["name"], {})
    if "super" in node:
        found.parents[node["name"]] = node["super"]["name"]
    for inner in node.get("inner", ()):
        if inner["kind"] == "ObjCPropertyDecl":
            shape = typed(inner, found)
            if inner.get("null_resettable"):
                shape = shape.rstrip("?") + "?"
            members[inner["name"], bool(inner.get("class"))] = Member(
                gives=shape, is_static=bool(inner.get("class")), is_property=True, is_readonly=bool(inner.get("readonly")))
        elif inner["kind"] == "ObjCMethodDecl" and not inner.get("isImplicit"):
            members[inner["name"], not inner["instance"]] = Member(
                takes=arguments(inner, found), gives=typed(inner, found, "returnType"), is_static=not inner["instance"])


def read_enum(node, found):
    value = -1
    for inner in node.get("inner", ()):
        if inner["kind"] != "EnumConstantDecl":
            continue
        given = constant_value(inner)
        value = value + 1 if given is None else given
        if node.get("name"):
            found.enums.setdefault(node["name"], {})[inner["name"]] = value
        else:
            found.constants[inner["name"]] = ("number", value)


def read_node(node, found):
    kind, name = node["kind"], node.get("name")
    if kind in ("ObjCInterfaceDecl", "ObjCCategoryDecl", "ObjCProtocolDecl"):
        read_class(node, found)
    elif kind == "FunctionDecl":
        gives = node["type"]["qualType"].split(" (", 1)[0]
        found.functions[name] = Member(takes=arguments(node, found), gives=of_c(gives, found.spelled.get(gives)))
    elif kind == "VarDecl":
        found.constants[name] = (typed(node, found), constant_value(node))
    elif kind == "EnumDecl":
        read_enum(node, found)
    elif kind in ("RecordDecl", "TypedefDecl") and name in found.records:
        found.structures[name] = found.records[name]


def located(nodes):
    """The top-level nodes with the file of each; the compiler names a file only where it changes."""
    current = [""]

    def follow(value):
        if isinstance(value, dict):
            if "file" in value:
                current[0] = value["file"]
            for key, inner in value.items():
                if key != "includedFrom":
                    follow(inner)
        elif isinstance(value, list):
            for inner in value:
                follow(inner)

    for node in nodes:
        follow(node.get("loc"))
        yield current[0], node
        follow({key: value for key, value in node.items() if key != "loc"})


def read_names(nodes, found):
    """Typedefs and structures of all headers; a structure without a name has that of the typedef behind it."""
    fields = []
    for node in nodes:
        if node["kind"] == "RecordDecl" and node.get("completeDefinition"):
            fields = [inner.get("name") for inner in node.get("inner", ()) if inner["kind"] == "FieldDecl"]
            if node.get("name"):
                found.records[node["name"]] = fields
        elif node["kind"] == "TypedefDecl":
            written = node["type"]
            found.spelled[node["name"]] = written.get("desugaredQualType", written["qualType"])
            if written["qualType"] == f"struct {node['name']}":
                found.records.setdefault(node["name"], fields)


def read(frameworks, headers):
    """The declarations under `frameworks`, compiled with the system headers in `headers`."""
    resources = subprocess.run(["clang-19", "-print-resource-dir"], check=True, capture_output=True, text=True).stdout.strip()
    command = ["clang-19", "--target=arm64-apple-macos13.0", "-nostdinc", "-isystem", f"{resources}/include",
               "-isystem", f"{headers}/include", "-iframework", str(frameworks), "-fblocks", "-x", "objective-c",
               "-fsyntax-only", "-Xclang", "-ast-dump=json", "-"]
    source = "".join(f"#import <{umbrella}>\n" for umbrella in UMBRELLAS)
    tree = json.loads(subprocess.run(command, check=True, capture_output=True, text=True, input=source).stdout)
    found = Declarations()
    read_names(tree["inner"], found)
    for file, node in located(tree["inner"]):
        if file.startswith(str(frameworks)):
            read_node(node, found)
    return found
