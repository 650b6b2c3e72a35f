"""The end of a host: its exit code and signals are its own, at whatever moment it ends."""

import os
import pathlib
import re
import signal
import socket
import tempfile
import time
import unittest
from concurrent.futures import ThreadPoolExecutor

from loading_support import *

CHILD_LINE = re.compile(r"child \d+")
QUITTING = """
import QtQuick
Window {
    width: 100; height: 100; visible: true
    Timer { interval: %d; running: true; onTriggered: Qt.exit(%d) }
}
"""


def port_of(pid):
    """The port that a process listens on at 127.0.0.1, or None."""
    try:
        links = list(pathlib.Path(f"/proc/{pid}/fd").iterdir())
        inodes = {m.group(1) for l in links if (m := re.match(r"socket:\[(\d+)\]", str(l.readlink())))}
    except OSError:
        return None
    for line in pathlib.Path(f"/proc/{pid}/net/tcp").read_text().splitlines()[1:]:
        columns = line.split()
        if columns[3] == "0A" and columns[9] in inodes and columns[1].startswith("0100007F"):
            return int(columns[1].split(":")[1], 16)
    return None


class ExitOfServiceHost(unittest.TestCase):
    """Without a toolkit: the server thread beside a host that exits."""

    def test_exit_code_is_the_hosts_fifty_times(self):
        for turn in range(50):
            code = turn % 5
            status, _, errors = run([SERVICE_HOST, "exit test", f"exit={code}"])
            self.assertEqual((status, errors), (code, ""))

    def test_exit_does_not_wait_for_peers(self):
        with Process([SERVICE_HOST, "exit test"]) as host:
            port = int(host.wait_for_line("port ").split()[1])
            peer = socket.create_connection(("127.0.0.1", port))
            self.assertTrue(host.wait_for_line("connection"))
            began = time.monotonic()
            self.assertEqual(host.finish(), 0)
            self.assertLess(time.monotonic() - began, 3)
            peer.settimeout(PATIENCE)
            self.assertEqual(peer.recv(1), b"")
            peer.close()


class ForkedChild(unittest.TestCase):
    """A child that goes on without exec serves nobody and holds nothing."""

    def test_child_holds_neither_port_nor_peer(self):
        with Process([SERVICE_HOST, "fork test", "fork"]) as host:
            port = int(host.wait_for_line("port ").split()[1])
            peer = socket.create_connection(("127.0.0.1", port))
            self.assertTrue(host.wait_for_line("connection"))
            self.assertTrue(host.wait_for_line("child lives"))
            line = wait_until(lambda: next(filter(CHILD_LINE.fullmatch, list(host.lines)), None))
            child = int(line.split()[1])
            try:
                # What the child did to its listener did not touch the host's.
                with socket.create_connection(("127.0.0.1", port)) as second:
                    second.settimeout(PATIENCE)
                    second.sendall(b"x")
                    self.assertEqual(second.recv(1), b"x")
                self.assertIsNone(port_of(child))
                host.send_signal(signal.SIGKILL)
                host.wait()
                peer.settimeout(PATIENCE)
                self.assertEqual(peer.recv(1), b"")
                with self.assertRaises(ConnectionRefusedError):
                    socket.create_connection(("127.0.0.1", port))
            finally:
                os.kill(child, signal.SIGKILL)
                peer.close()


class ExitOfHost(unittest.TestCase):
    def setUp(self):
        require(QML_RUNTIME, TOOLKIT)
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)

    def scene(self, delay, code):
        path = self.directory / f"quit-{delay}-{code}.qml"
        path.write_text(QUITTING % (delay, code))
        return path

    def test_exit_code_is_the_hosts_at_any_moment(self):
        # Before, around and after the moment at which the server starts.
        def end(turn):
            scene = self.scene((turn * 37) % 900, turn % 7)
            return run([QML_RUNTIME, scene], PRELOADED)

        # A few at once: hosts mostly wait.
        with ThreadPoolExecutor(3) as pool:
            for turn, (status, _, errors) in enumerate(pool.map(end, range(50))):
                self.assertEqual(status, turn % 7, errors)
                self.assertIn("[TarnixProbe] Injected into", errors)

    def test_exit_with_a_companion_connected(self):
        with Process([QML_RUNTIME, self.scene(3000, 9)], environment(PRELOADED)) as host:
            port = wait_until(lambda: port_of(host.pid))
            with socket.create_connection(("127.0.0.1", port)) as peer:
                peer.settimeout(PATIENCE)
                self.assertTrue(peer.recv(4))
                self.assertEqual(host.wait(), 9)

    def test_signals_end_a_host_as_without(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGKILL):
            with Process([QML_RUNTIME, self.scene(60000, 0)], environment(PRELOADED)) as host:
                self.assertTrue(wait_until(lambda: port_of(host.pid)))
                host.send_signal(number)
                self.assertEqual(host.wait(), -number)

    def test_serves_both_loopback_addresses_at_one_port(self):
        with Process([QML_RUNTIME, self.scene(60000, 0)], environment(PRELOADED)) as host:
            port = wait_until(lambda: port_of(host.pid))
            socket.create_connection(("127.0.0.1", port)).close()
            socket.create_connection(("::1", port)).close()


if __name__ == "__main__":
    main()
