"""Cuts MEBIBYTES of text into lines the way a Python program would, once for each line on standard input."""

import codecs
import sys

LINE = "dnsmasq[53]: query[A] example.com from 127.0.0.1 and more words\n".encode()
CHUNK = 65536


def cut(chunks):
    """Counts the lines of a stream; a line may end in the next chunk."""
    count, rest = 0, ""
    decoder = codecs.getincrementaldecoder("utf-8")("replace")
    for chunk in chunks:
        lines = (rest + decoder.decode(chunk)).splitlines(keepends=True)
        rest = lines.pop() if lines and not lines[-1].endswith("\n") else ""
        count += len(lines)
    return count


def main():
    size = int(sys.argv[1]) * 1024 * 1024
    data = LINE * (size // len(LINE))
    chunks = [data[i:i + CHUNK] for i in range(0, len(data), CHUNK)]
    for _ in sys.stdin:
        print(cut(chunks), flush=True)


if __name__ == "__main__":
    main()
