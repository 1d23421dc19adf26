"""Starts a program COUNT times, one after another, once for each line on standard input."""

import subprocess
import sys


def main():
    count, command = int(sys.argv[1]), sys.argv[2:]
    for _ in sys.stdin:
        good = sum(subprocess.run(command, capture_output=True, check=False).returncode == 0 for _ in range(count))
        print(good, flush=True)


if __name__ == "__main__":
    main()
