"""What the programs did, in the words in which docs/TRUST.md allows it."""

import dataclasses
import re

import trace

HOME = "/Users/ada"
# The played tools' way to those who play them, and the real programs behind two of them.
STAGE = "/run/simmac/tools.sock"
BEHIND = "/run/host/"
TRIED_IN_VAIN = {"mkdir": ("EEXIST", "ENOENT"), "mkdirat": ("EEXIST", "ENOENT"), "unlink": ("ENOENT",), "unlinkat": ("ENOENT",),
                 "link": ("EEXIST",), "linkat": ("EEXIST",), "open": ("ENOENT",), "openat": ("ENOENT",)}
MAY_WRITE = re.compile(r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC")
SOCKET_KINDS = {"SOCK_STREAM": "tcp", "SOCK_DGRAM": "udp", "SOCK_SEQPACKET": "seqpacket", "SOCK_RAW": "raw"}
IP = re.compile(r'sin6?_port=htons\((\d+)\).*?(?:inet_addr\("([^"]*)"\)|inet_pton\(AF_INET6, "([^"]*)")')
FROM_NAMELESS = re.compile(r'"/proc/self/fd/\d+"')


@dataclasses.dataclass(frozen=True)
class Act:
    """One thing that a program did: the table in which it is allowed, who did it, and what."""

    table: str
    who: str
    what: str


def line(words):
    """A command line; an argument that holds blanks, or nothing, is in guillemets."""
    return " ".join(word if word and " " not in word else f"«{word}»" for word in map(short, words))


def short(path):
    """A path as a person writes it."""
    return "~" + path[len(HOME):] if path == HOME or path.startswith(HOME + "/") else path


class Watch:
    """Reads a trace and gathers what was done, and what was handed out."""

    def __init__(self, path):
        self.tree = trace.Tree()
        self.acts = {}        # in the order in which they were first seen, with how often
        self.programs = []
        self.handed_out = []  # (who, where, text): whatever left a program
        self._kinds = {}      # sockets by program and number
        for call in trace.calls(path):
            self._take(call)

    def _take(self, call):
        program = self.tree.follow(call)
        who = self.tree.of(call.process)
        if program:
            self._note_program(program)
        elif call.name == "socket":
            self._kinds[id(who), call.result.split("<")[0]] = call.words  # a number can be used again
        elif call.name in ("connect", "bind", "listen"):
            self._note_socket(call, who)
        elif call.name in ("write", "writev", "pwrite64", "pwritev", "sendto", "sendmsg", "sendmmsg"):
            self._note_bytes(call, who)
        elif call.name not in trace.NEW_TASK:
            self._note_file(call, who)

    def _note(self, table, who, what):
        act = Act(table, who.name, what)
        self.acts[act] = self.acts.get(act, 0) + 1

    def _note_program(self, program):
        if program is self.tree.root or program.path.startswith(BEHIND):
            return
        self.programs.append(program)
        self._note("Programs", program.parent, line([program.path, *program.arguments[1:]]))
        own = self.tree.root.environment
        for name, value in program.environment.items():
            if own.get(name) != value:
                self._note("Environment", program, f"{name}={short(value)}")

    def _note_socket(self, call, who):
        words = trace.readable(call.words)
        number = call.words.split("<")[0].split(",")[0]
        made = self._kinds.get((id(who), number), "")
        verb = {"connect": "", "bind": "bind ", "listen": "listen "}[call.name]
        if call.name == "listen":
            self._note("Sockets", who, f"listen {self._kinds.get((id(who), number, 'to'), words)}")
        elif "AF_UNIX" in words:
            path = re.search(r'sun_path=@?"([^"]*)"', words)
            if path and path[1] != STAGE:
                self._note("Sockets", who, f"{verb}unix {short(path[1])}")
                self._kinds[id(who), number, "to"] = f"unix {short(path[1])}"
        elif found := IP.search(words):
            kind = next((kind for name, kind in SOCKET_KINDS.items() if name in made), "unknown")
            self._note("Sockets", who, f"{verb}{kind} {found[2] or found[3]}:{found[1]}")
            self._kinds[id(who), number, "to"] = f"{kind} {found[2] or found[3]}:{found[1]}"
        else:
            family = re.search(r"sa_family=(\w+)", words)
            self._note("Sockets", who, f"{verb}{family[1] if family else words}")

    def _note_bytes(self, call, who):
        target = re.match(r"(\d+)<([^>]*)>", call.words)
        if not target:
            return
        place = trace.readable(target[2])
        if place.startswith(("anon_inode", "pipe:")) and len(call.words) < 200:
            return
        if place.startswith("socket:"):
            place = self._kinds.get((id(who), target[1], "to"), "socket")
            found = IP.search(trace.readable(call.words)) if "sin_port" in call.words or "sin6_port" in call.words else None
            if found:
                place = f"udp {found[2] or found[3]}:{found[1]}"
                self._note("Sockets", who, place)
        for text in trace.TEXT.findall(call.words):
            raw = bytes.fromhex(text.replace("\\x", ""))
            self.handed_out.append((who.name, short(place), raw))
            if place.startswith("udp") and place.endswith(":53") or place.startswith("tcp") and place.endswith(":53"):
                for name in question(raw, place.startswith("tcp")):
                    self._note("Names", who, f"{name} at {place.split()[1]}")

    def _note_file(self, call, who):
        if call.failed(*TRIED_IN_VAIN.get(call.name, ("no such error",))):
            return
        words = trace.readable(call.words)
        texts = [short(text) for text in call.texts()]
        if call.name in ("open", "openat", "openat2", "creat"):
            flags = trace.TEXT.sub("", call.words)
            if call.name != "creat" and not MAY_WRITE.search(flags):
                return
            mode = re.search(r", (0\d+)$", flags)
            nameless = "O_TMPFILE" in flags
            verb = "nameless file in" if nameless else "create" if "O_CREAT" in flags or call.name == "creat" else "open"
            self._note("Files", who, " ".join([verb, *texts[:1], *([mode[1]] if mode else [])]))
        elif FROM_NAMELESS.search(words):
            self._note("Files", who, f"name it {texts[-1]}")
        elif call.name == "fchmod":
            self._note("Files", who, f"mode {short(re.search(r'<(.*?)>', words)[1])} {words.split()[-1]}")
        elif call.name in ("chmod", "fchmodat", "mkdir", "mkdirat"):
            mode = re.findall(r"\b0\d+\b", trace.TEXT.sub("", call.words))[0]
            self._note("Files", who, f"{'folder' if 'mkdir' in call.name else 'mode'} {texts[-1]} {mode}")
        else:
            verb = "remove" if call.name in ("unlink", "unlinkat", "rmdir") else re.sub(r"(at2?|at)$", "", call.name)
            self._note("Files", who, f"{verb} {' to '.join(texts)}")


def question(message, with_length):
    """The name that a DNS question asks for; nothing where the bytes are no question."""
    body = message[2:] if with_length else message
    if len(body) < 17 or body[2] & 0x80 or body[4:6] != b"\0\1":
        return []
    labels, place = [], 12
    while place < len(body) and body[place]:
        labels.append(body[place + 1:place + 1 + body[place]].decode("ascii", "replace"))
        place += 1 + body[place]
    return [".".join(labels)]
