"""Who gets through to a host: its own user and root, and nobody else."""

import os
import socket
import subprocess
import sys
import unittest

from loading_support import *

# Connects as another user, and says whether it got an echo.
CLIENT = """
import os, socket, sys
os.setgroups([]); os.setgid(int(sys.argv[2])); os.setuid(int(sys.argv[2]))
peer = socket.create_connection((sys.argv[3], int(sys.argv[1])))
peer.settimeout(20)
try:
    peer.sendall(b"x")
    print("served" if peer.recv(1) == b"x" else "closed")
except ConnectionError:
    print("closed")
"""
ROOT, DAEMON, NOBODY = 0, 1, 65534


@unittest.skipUnless(os.geteuid() == 0, "only root can act as another user")
class OtherUsers(unittest.TestCase):
    def outcome(self, port, user, address):
        return subprocess.run(
            ["/usr/bin/python3", "-c", CLIENT, str(port), str(user), address],
            capture_output=True,
            text=True,
            timeout=PATIENCE,
        ).stdout.strip()

    def assert_outcomes(self, host_user, outcomes):
        with Process([SERVICE_HOST, "a host"], user=host_user, group=host_user) as host:
            port = int(host.wait_for_line("port ").split()[1])
            for address in ("127.0.0.1", "::1"):
                for user, expected in outcomes.items():
                    with self.subTest(address=address, user=user):
                        self.assertEqual(self.outcome(port, user, address), expected)

    def test_host_of_a_user_serves_that_user_and_root(self):
        self.assert_outcomes(NOBODY, {NOBODY: "served", ROOT: "served", DAEMON: "closed"})

    def test_host_of_root_serves_root_only(self):
        self.assert_outcomes(ROOT, {ROOT: "served", NOBODY: "closed"})

    def test_host_serves_its_user_after_strangers_were_sent_away(self):
        with Process([SERVICE_HOST, "a host"]) as host:
            port = int(host.wait_for_line("port ").split()[1])
            for _ in range(5):
                self.assertEqual(self.outcome(port, NOBODY, "127.0.0.1"), "closed")
            self.assertEqual(self.outcome(port, ROOT, "127.0.0.1"), "served")
            host.finish()
            self.assertTrue(host.wait_for_line("connection"))
            self.assertEqual(host.lines.count("connection"), 1)


if __name__ == "__main__":
    main()
