"""Where a probe listens. `tarnix list` tells it too, but asks the network for a second first."""

import pathlib
import re

LOOPBACK = {"tcp": "0100007F", "tcp6": "00000000000000000000000001000000"}
LISTENING = "0A"


def listening_ports(pid, table):
    """Of the sockets of a process on that family's loopback address."""
    process = pathlib.Path("/proc", str(pid))
    inodes = set()
    for link in process.glob("fd/*"):
        try:
            if match := re.match(r"socket:\[(\d+)\]", str(link.readlink())):
                inodes.add(match[1])
        except OSError:
            pass  # It has been closed.
    ports = set()
    try:
        lines = (process / "net" / table).read_text(encoding="ascii").splitlines()[1:]
    except OSError:
        return ports  # The process has ended, or the machine has no such addresses.
    for line in lines:
        words = line.split()
        address, port = words[1].split(":")
        if (address, words[3]) == (LOOPBACK[table], LISTENING) and words[9] in inodes:
            ports.add(int(port, 16))
    return ports


def probe_port(pid):
    """None while there is none. An application's own listeners are mostly of one family alone."""
    ipv4 = listening_ports(pid, "tcp")
    return min(ipv4 & listening_ports(pid, "tcp6") or ipv4, default=None)
