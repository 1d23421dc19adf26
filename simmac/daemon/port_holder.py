"""A process that holds one port until it is ended: `python3 -m daemon.port_holder PORT tcp|udp NAME ADDRESS`."""

import signal
import socket
import sys

from daemon import privileges


def main():
    """Binds, gives up its rights, says "holding", and waits for the end."""
    port, protocol, name, address = int(sys.argv[1]), sys.argv[2], sys.argv[3], sys.argv[4]
    holder = socket.socket(socket.AF_INET, socket.SOCK_STREAM if protocol == "tcp" else socket.SOCK_DGRAM)
    try:
        holder.bind((address, port))
        if protocol == "tcp":
            holder.listen()
    except OSError as error:
        print(f"{protocol} port {port} cannot be taken: {error.strerror}.", flush=True)
        return 1
    privileges.set_name(name)
    privileges.drop_all()
    print("holding", flush=True)
    signal.pause()
    return 0


if __name__ == "__main__":
    sys.exit(main())
