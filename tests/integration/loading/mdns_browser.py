"""A small mDNS browser for one service type on the loopback interface."""

import socket
import struct
import time

GROUP, PORT = "224.0.0.251", 5353
LOOPBACK = "127.0.0.1"
A, PTR, SRV = 1, 12, 33


def _encode_name(name):
    return b"".join(bytes([len(p)]) + p.encode() for p in name.split(".")) + b"\0"


def _read_name(packet, offset):
    """The labels at an offset, and the offset after them."""
    labels, end = [], None
    for _ in range(128):
        length = packet[offset]
        if length & 0xC0 == 0xC0:
            end = end or offset + 2
            offset = struct.unpack_from(">H", packet, offset)[0] & 0x3FFF
        elif length == 0:
            break
        else:
            labels.append(packet[offset + 1 : offset + 1 + length].decode())
            offset += 1 + length
    return labels, end or offset + 1


def records(packet):
    """The records of a response, as (labels, type, time to live, data)."""
    _, flags, questions, *counts = struct.unpack_from(">6H", packet)
    if not flags & 0x8000:
        return
    offset = 12
    for _ in range(questions):
        _, offset = _read_name(packet, offset)
        offset += 4
    for _ in range(sum(counts)):
        labels, offset = _read_name(packet, offset)
        kind, _, ttl, size = struct.unpack_from(">HHIH", packet, offset)
        offset += 10
        if kind == PTR:
            yield labels, kind, ttl, _read_name(packet, offset)[0]
        elif kind == SRV:
            port = struct.unpack_from(">H", packet, offset + 4)[0]
            yield labels, kind, ttl, (port, ".".join(_read_name(packet, offset + 6)[0]))
        elif kind == A:
            yield labels, kind, ttl, socket.inet_ntoa(packet[offset : offset + 4])
        offset += size


class Browser:
    def __init__(self, service_type):
        self._type = service_type + ".local"
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        for option in (socket.SO_REUSEADDR, socket.SO_REUSEPORT):
            self._socket.setsockopt(socket.SOL_SOCKET, option, 1)
        self._socket.bind(("", PORT))
        loopback = socket.inet_aton(LOOPBACK)
        self._socket.setsockopt(
            socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP, socket.inet_aton(GROUP) + loopback
        )
        self._socket.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_IF, loopback)
        self._socket.settimeout(0.1)
        # Service names to (port, host).
        self.services = {}
        # Host names to addresses.
        self.addresses = {}

    def _ask(self):
        question = struct.pack(">6H", 0, 0, 1, 0, 0, 0) + _encode_name(self._type)
        self._socket.sendto(question + struct.pack(">2H", PTR, 1), (GROUP, PORT))

    def _listen(self):
        try:
            packet = self._socket.recv(9000)
        except TimeoutError:
            return
        for labels, kind, ttl, data in records(packet):
            name = labels[0]
            if kind == A:
                self.addresses[".".join(labels)] = data
            elif kind == PTR and ".".join(labels) == self._type and ttl == 0:
                self.services.pop(data[0], None)
            elif kind == SRV and ".".join(labels[1:]) == self._type and ttl > 0:
                self.services[name] = data

    def wait_until(self, condition, patience=30.0):
        """Browses until `condition(services)` holds; returns whether it does."""
        deadline = time.monotonic() + patience
        next_question = 0.0
        while not condition(self.services):
            now = time.monotonic()
            if now > deadline:
                return False
            if now >= next_question:
                self._ask()
                next_question = now + 1.0
            self._listen()
        return True

    def close(self):
        self._socket.close()
