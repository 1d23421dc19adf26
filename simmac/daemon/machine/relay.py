"""One of Lima's forwarding processes: `python3 -m daemon.machine.relay NAME`, run in the network of Colima's machine.

On standard input, a socket, come the Mac's sockets, each with a line of JSON that says which address of the machine it
leads to; a number alone lets that one go. Each is answered with a line.
"""

import json
import selectors
import socket
import sys

from daemon import privileges

_BLOCK = 65536
_CLIENTS = 256        # senders of datagrams that are remembered
_LONGEST_QUEUE = 2**20


class Stream:
    """One direction of a connection: what was read here is written there."""

    def __init__(self, relay, source, target):
        self._relay, self._source, self._target = relay, source, target
        self._waiting = b""
        self.other = None      # the other direction
        self._ended = False    # nothing more comes
        self.done = False

    def readable(self):
        """Reads what there is and passes it on."""
        try:
            data = self._source.recv(_BLOCK)
        except BlockingIOError:
            return
        except OSError:
            data = b""
        if not data:
            self._ended = True
        self._waiting += data
        self.writable()

    def writable(self):
        """Writes as much as goes; the end is passed on after the last byte."""
        try:
            while self._waiting:
                self._waiting = self._waiting[self._target.send(self._waiting):]
        except BlockingIOError:
            pass
        except OSError:
            self._waiting, self._ended = b"", True
        if self._ended and not self._waiting and not self.done:
            self.done = True
            try:
                self._target.shutdown(socket.SHUT_WR)
            except OSError:
                pass
        self._relay.settle(self._source, self._target)

    def wants_to_read(self):
        return not self._ended and len(self._waiting) < _LONGEST_QUEUE

    def wants_to_write(self):
        return bool(self._waiting)


class Relay:
    """All that this process forwards."""

    def __init__(self, orders):
        self._orders = orders
        self._poll = selectors.DefaultSelector()
        self._ways = {}      # number to the Mac's socket
        self._streams = {}   # socket to the directions that read from it and write to it
        self._senders = {}   # (socket, address) to a socket of the machine
        self._watch(orders, self._obey)

    def run(self):
        """Forwards until the orders end."""
        while True:
            for key, events in self._poll.select():
                if key.fileobj.fileno() >= 0:
                    key.data(events)

    def _watch(self, handle, action, events=selectors.EVENT_READ):
        handle.setblocking(False)
        self._poll.register(handle, events, action)

    def _drop(self, handle):
        self._poll.unregister(handle)
        handle.close()

    def _obey(self, _events):
        data, descriptors, _, _ = socket.recv_fds(self._orders, _BLOCK, 1)
        if not data:
            sys.exit(0)
        order = json.loads(data)
        if descriptors:
            self._open(order, socket.socket(fileno=descriptors[0]))
        else:
            self._close(order["number"])
        self._orders.send(b"done")

    def _open(self, order, handle):
        place = (order["address"], order["port"])
        self._ways[order["number"]] = handle
        if handle.type == socket.SOCK_STREAM:
            self._watch(handle, lambda _: self._accept(handle, place))
        else:
            self._watch(handle, lambda _: self._datagram(handle, place))

    def _close(self, number):
        handle = self._ways.pop(number)
        for key in [each for each in self._senders if each[0] is handle]:
            self._drop(self._senders.pop(key))
        self._drop(handle)

    # -- connections ------------------------------------------------------------------------------------------------

    def _accept(self, handle, place):
        try:
            here, _ = handle.accept()
        except OSError:
            return
        there = socket.socket()
        try:
            there.connect(place)     # in this machine it is refused or taken at once
        except OSError:
            here.close()
            there.close()
            return
        inward, outward = Stream(self, here, there), Stream(self, there, here)
        inward.other, outward.other = outward, inward
        for handle, reads, writes in ((here, inward, outward), (there, outward, inward)):
            self._streams[handle] = (reads, writes)
            self._watch(handle, self._mover(reads, writes))

    @staticmethod
    def _mover(reads, writes):
        def move(events):
            if events & selectors.EVENT_WRITE:
                writes.writable()
            if events & selectors.EVENT_READ:
                reads.readable()
        return move

    def settle(self, source, target):
        """Watches both ends for what they can still do; lets them go when nothing is left."""
        if source not in self._streams:
            return
        reads, writes = self._streams[source]
        if reads.done and writes.done:
            for handle in (source, target):
                del self._streams[handle]
                self._forget(handle)
            return
        for handle in (source, target):
            reads, writes = self._streams[handle]
            self._follow(handle, (selectors.EVENT_READ if reads.wants_to_read() else 0) |
                         (selectors.EVENT_WRITE if writes.wants_to_write() else 0), self._mover(reads, writes))

    def _follow(self, handle, events, action):
        known = handle in self._poll.get_map()
        if events and known:
            self._poll.modify(handle, events, action)
        elif events:
            self._poll.register(handle, events, action)
        elif known:
            self._poll.unregister(handle)

    def _forget(self, handle):
        if handle in self._poll.get_map():
            self._poll.unregister(handle)
        handle.close()

    # -- datagrams --------------------------------------------------------------------------------------------------

    def _datagram(self, handle, place):
        try:
            data, sender = handle.recvfrom(_BLOCK)
            self._machine_socket(handle, sender, place).send(data)
        except OSError:
            pass   # nobody listens there: the question gets no answer

    def _machine_socket(self, handle, sender, place):
        key = (handle, sender)
        if key not in self._senders:
            if len(self._senders) >= _CLIENTS:
                self._drop(self._senders.pop(next(iter(self._senders))))
            there = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
            there.connect(place)
            self._senders[key] = there
            self._watch(there, lambda _: self._answer(handle, sender, there))
        return self._senders[key]

    @staticmethod
    def _answer(handle, sender, there):
        try:
            handle.sendto(there.recv(_BLOCK), sender)
        except OSError:
            pass


def main():
    """Takes its name, gives up its rights, and forwards."""
    privileges.set_name(sys.argv[1])
    privileges.drop_all()
    Relay(socket.socket(fileno=0)).run()


if __name__ == "__main__":
    main()
