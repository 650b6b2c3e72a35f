"""Hosts are found by DNS service discovery on the loopback interface, and nowhere else.

Runs in network and mount namespaces of its own, in which it may run an mDNS daemon.
"""

import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from loading_support import *
from mdns_browser import Browser

IN_NAMESPACE = "TARNIX_TEST_IN_NAMESPACE"
NO_BUS = "unix:path=/nowhere/bus"
BUS_CONFIGURATION = """<busconfig>
  <type>system</type>
  <listen>unix:path={path}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>
"""
NOT_ADVERTISED = "[TarnixProbe] Not advertised: "
DAEMON_HOST = "tarnixtest"
DAEMON_CONFIGURATION = "[server]\nhost-name={host}\n{extra}\n[publish]\npublish-workstation=no\n"
# Ethernet's number for all protocols.
ALL_PROTOCOLS = 3
MDNS_PORT = 5353
NETWORK_SETTINGS = pathlib.Path("/proc/sys/net")
PORT_RANGE = "ipv4/ip_local_port_range"


class Capture:
    """Every packet that an interface sends or gets."""

    def __init__(self, interface):
        self._socket = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(ALL_PROTOCOLS))
        self._socket.bind((interface, 0))
        self._socket.settimeout(0.1)
        self.packets = []
        self._is_open = True
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    def _read(self):
        while self._is_open:
            try:
                self.packets.append(self._socket.recv(65536))
            except TimeoutError:
                pass

    def close(self):
        self._is_open = False
        self._thread.join()
        self._socket.close()


class Discovery(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        made = subprocess.run(
            ["ip", "link", "add", "outside", "type", "veth", "peer", "name", "beyond"],
            capture_output=True,
        )
        cls.has_outside = made.returncode == 0
        if cls.has_outside:
            subprocess.run(["ip", "link", "set", "beyond", "up"], check=True)
            subprocess.run(["ip", "link", "set", "outside", "up"], check=True)
            subprocess.run(["ip", "address", "add", "10.77.0.1/24", "dev", "outside"], check=True)

    def setUp(self):
        self.processes = []
        self.directory = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.directory)
        self.addCleanup(self.end_processes)
        self.capture = Capture("outside") if self.has_outside else None
        self.browser = Browser(SERVICE_TYPE)
        self.addCleanup(self.browser.close)

    def tearDown(self):
        self.end_processes()
        if self.capture:
            self.capture.close()
            about_us = [p for p in self.capture.packets if b"tarnix" in p.replace(
                DAEMON_HOST.encode(), b"") or b"my device" in p]
            self.assertEqual(about_us, [], "the announcement left the machine")

    def end_processes(self):
        for process in reversed(self.processes):
            process.__exit__()
        self.processes.clear()

    def begin(self, command, **options):
        process = Process(command, **options)
        self.processes.append(process)
        return process

    def begin_host(self, name="my device", bus=NO_BUS):
        host = self.begin(
            [SERVICE_HOST, name], env=environment(DBUS_SYSTEM_BUS_ADDRESS=str(bus))
        )
        host.port = int(host.wait_for_line("port ").split()[1])
        return host

    def begin_bus(self):
        require("/usr/bin/dbus-daemon")
        path = self.directory / "bus"
        configuration = self.directory / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(path=path))
        self.begin(["dbus-daemon", f"--config-file={configuration}", "--nofork"])
        self.assertTrue(wait_until(path.exists))
        return f"unix:path={path}"

    def begin_daemon(self, bus, extra=""):
        require("/usr/sbin/avahi-daemon")
        configuration = self.directory / "avahi.conf"
        configuration.write_text(DAEMON_CONFIGURATION.format(host=DAEMON_HOST, extra=extra))
        daemon = self.begin(
            ["/usr/sbin/avahi-daemon", "--file", configuration]
            + ["--no-drop-root", "--no-chroot", "--no-rlimits", "--no-proc-title"],
            env=environment(DBUS_SYSTEM_BUS_ADDRESS=bus),
        )
        self.assertTrue(daemon.wait_for_error_line("Server startup complete"), daemon.error_lines)
        return daemon

    def assert_no_descriptor_is_inherited(self, host):
        for entry in pathlib.Path(f"/proc/{host.pid}/fdinfo").iterdir():
            flags = next(
                int(line.split()[1], 8)
                for line in entry.read_text().splitlines()
                if line.startswith("flags:")
            )
            if int(entry.name) > 2:
                target = os.readlink(f"/proc/{host.pid}/fd/{entry.name}")
                self.assertTrue(flags & os.O_CLOEXEC, f"{entry.name}: {target}")

    def assert_found(self, expected, patience=30.0):
        """`expected` maps service names to (port, whether the daemon announces it)."""

        def seen(services):
            return {
                name: (port, host == f"{DAEMON_HOST}.local")
                for name, (port, host) in services.items()
            }

        self.browser.wait_until(lambda services: seen(services) == expected, patience)
        self.assertEqual(seen(self.browser.services), expected)


class Responder(Discovery):
    """Without a daemon the host announces itself."""

    def tearDown(self):
        super().tearDown()
        if self.capture:
            group = socket.inet_aton("224.0.0.251")
            self.assertEqual([p for p in self.capture.packets if group in p], [])

    def test_programs_that_the_host_runs_get_none_of_its_descriptors(self):
        host = self.begin_host()
        self.assert_found({"my device": (host.port, False)})
        self.assert_no_descriptor_is_inherited(host)

    def test_host_is_found_and_gone_when_it_ends(self):
        host = self.begin_host()
        self.assert_found({"my device": (host.port, False)})
        target = self.browser.services["my device"][1]
        self.assertTrue(self.browser.wait_until(lambda _: target in self.browser.addresses))
        self.assertEqual(self.browser.addresses[target], "127.0.0.1")
        self.assertEqual(host.finish(), 0)
        self.assert_found({})
        self.assertEqual(host.error_lines, [])

    def test_two_hosts_of_one_name_are_both_found(self):
        one = self.begin_host()
        self.assert_found({"my device": (one.port, False)})
        two = self.begin_host()
        self.assert_found({"my device": (one.port, False), "my device #2": (two.port, False)})
        one.finish()
        self.assert_found({"my device #2": (two.port, False)})

    def test_two_hosts_that_start_together_are_both_found(self):
        ports = {self.begin_host().port, self.begin_host().port}
        self.browser.wait_until(lambda services: {s[0] for s in services.values()} == ports)
        self.assertEqual(set(self.browser.services), {"my device", "my device #2"})

    def test_name_is_any_text_and_cut_to_what_fits(self):
        # Sixty-three bytes end inside of a character here.
        host = self.begin_host("B\u00fcro \U0001f5a5.xy " + "\u00e9" * 60)
        expected = "B\u00fcro \U0001f5a5.xy " + "\u00e9" * 24
        self.assert_found({expected: (host.port, False)})

    def test_bus_without_daemon_makes_no_difference(self):
        host = self.begin_host(bus=self.begin_bus())
        self.assert_found({"my device": (host.port, False)})

    def test_bus_that_never_answers_delays_nothing(self):
        path = self.directory / "silent"
        with socket.socket(socket.AF_UNIX) as silent:
            silent.bind(str(path))
            silent.listen()
            began = time.monotonic()
            host = self.begin_host(bus=f"unix:path={path}")
            with socket.create_connection(("127.0.0.1", host.port)) as peer:
                peer.settimeout(PATIENCE)
                peer.sendall(b"x")
                self.assertEqual(peer.recv(1), b"x")
            self.assertEqual(host.finish(), 0)
            self.assertLess(time.monotonic() - began, 5)

    def test_forked_child_keeps_no_announcement_alive(self):
        host = self.begin(
            [SERVICE_HOST, "my device", "fork"], env=environment(DBUS_SYSTEM_BUS_ADDRESS=NO_BUS)
        )
        host.port = int(host.wait_for_line("port ").split()[1])
        self.assertTrue(host.wait_for_line("child lives"))
        child = int(wait_until(
            lambda: next((l.split()[1] for l in list(host.lines)
                          if l.startswith("child ") and l != "child lives"), None)))
        try:
            self.assert_found({"my device": (host.port, False)})
            sockets = subprocess.run(
                ["ss", "--udp", "--all", "--numeric", "--processes"], capture_output=True, text=True
            ).stdout
            self.assertIn(f"pid={host.pid},", sockets)
            self.assertNotIn(f"pid={child},", sockets)
        finally:
            os.kill(child, signal.SIGKILL)

    def assert_serves_after_a_line(self, host, reason):
        line = host.wait_for_error_line(NOT_ADVERTISED)
        self.assertIsNotNone(line)
        self.assertTrue(line.startswith(NOT_ADVERTISED), line)
        self.assertIn(reason, line)
        with socket.create_connection(("127.0.0.1", host.port)) as peer:
            peer.settimeout(PATIENCE)
            peer.sendall(b"x")
            self.assertEqual(peer.recv(1), b"x")
        self.assertEqual(host.finish(), 0)
        self.assertEqual(host.error_lines, [line])

    def test_host_that_finds_the_port_taken_says_so_and_serves(self):
        self.browser.close()
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as jealous:
            jealous.bind(("", MDNS_PORT))
            self.assert_serves_after_a_line(self.begin_host(), "mDNS responder: ")

    def test_host_without_the_modules_says_so_and_serves(self):
        alone = shutil.copy(SERVICE_HOST, self.directory)
        host = self.begin([alone, "my device"], env=environment(DBUS_SYSTEM_BUS_ADDRESS=NO_BUS))
        host.port = int(host.wait_for_line("port ").split()[1])
        self.assert_serves_after_a_line(host, str(self.directory))


    def test_sequence_of_random_numbers_stays_the_hosts(self):
        source = "import ctypes; c = ctypes.CDLL(None); c.srand(1); print(c.rand())"
        expected = subprocess.run(
            [sys.executable, "-c", source], capture_output=True, text=True
        ).stdout.strip()
        host = self.begin(
            [SERVICE_HOST, "my device", "random"], env=environment(DBUS_SYSTEM_BUS_ADDRESS=NO_BUS)
        )
        host.port = int(host.wait_for_line("port ").split()[1])
        self.assert_found({"my device": (host.port, False)})
        host.finish()
        self.assertEqual(host.wait_for_line("random "), f"random {expected}")

    def test_host_that_uses_the_daemons_library_itself_is_not_disturbed(self):
        """That library has a function that goes by the name of one of the responder's."""
        library = next(pathlib.Path("/usr/lib").glob("*/libavahi-client.so.3"), None)
        if library is None:
            self.skipTest("the library is not installed")
        host = self.begin(
            [SERVICE_HOST, "my device"], env=environment(library, DBUS_SYSTEM_BUS_ADDRESS=NO_BUS)
        )
        host.port = int(host.wait_for_line("port ").split()[1])
        self.assert_found({"my device": (host.port, False)})
        self.assertEqual(host.finish(), 0)
        self.assertEqual(host.error_lines, [])
        self.assert_found({})

    def test_announced_host_sleeps_when_nothing_happens(self):
        host = self.begin_host()
        self.assert_found({"my device": (host.port, False)})
        self.browser.close()
        self.assert_idle(host)

    def assert_idle(self, host):
        def wake_ups():
            return sum(
                int(line.split()[1])
                for task in pathlib.Path(f"/proc/{host.pid}/task").iterdir()
                for line in (task / "status").read_text().splitlines()
                if line.startswith("voluntary_ctxt_switches")
            )

        # The second announcement and the answers to the browser are over by then.
        time.sleep(4)
        before = wake_ups()
        time.sleep(5)
        self.assertLessEqual(wake_ups() - before, 2)


class Daemon(Discovery):
    """Where an mDNS daemon runs, it announces the host."""

    def test_signals_of_the_host_stay_as_they_were(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        status = pathlib.Path(f"/proc/{host.pid}/status").read_text()
        for mask in ("SigIgn", "SigCgt"):
            value = next(line.split()[1] for line in status.splitlines() if line.startswith(mask))
            self.assertEqual(int(value, 16) & (1 << (signal.SIGPIPE - 1)), 0, mask)

    def test_host_is_found_and_gone_when_it_ends(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        host.send_signal(signal.SIGKILL)
        host.wait()
        self.assert_found({})
        self.assertEqual(host.error_lines, [])

    def test_programs_that_the_host_runs_get_none_of_its_descriptors(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        self.assert_no_descriptor_is_inherited(host)

    def test_two_hosts_of_one_name_are_both_found(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        one = self.begin_host(bus=bus)
        self.assert_found({"my device": (one.port, True)})
        two = self.begin_host(bus=bus)
        self.assert_found({"my device": (one.port, True), "my device #2": (two.port, True)})

    def test_hosts_with_and_without_daemon_are_both_found(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        one = self.begin_host(bus=bus)
        self.assert_found({"my device": (one.port, True)})
        two = self.begin_host()
        self.assert_found({"my device": (one.port, True), "my device #2": (two.port, False)})

    def test_host_is_announced_again_by_a_daemon_that_was_restarted(self):
        bus = self.begin_bus()
        daemon = self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        daemon.send_signal(signal.SIGTERM)
        daemon.wait()
        self.assert_found({})
        self.begin_daemon(bus)
        self.assert_found({"my device": (host.port, True)})

    def test_host_announces_itself_when_the_daemon_stays_away(self):
        bus = self.begin_bus()
        daemon = self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        daemon.send_signal(signal.SIGTERM)
        daemon.wait()
        self.assert_found({})
        self.assert_found({"my device": (host.port, False)})

    def test_host_announces_itself_when_the_bus_breaks(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, True)})
        self.processes[0].send_signal(signal.SIGKILL)
        self.assert_found({"my device": (host.port, False)})
        self.assertIsNone(host.poll())

    def test_host_announces_itself_where_the_daemon_leaves_loopback_out(self):
        bus = self.begin_bus()
        self.begin_daemon(bus, "deny-interfaces=lo")
        host = self.begin_host(bus=bus)
        self.assert_found({"my device": (host.port, False)})


class RealHosts(Discovery):
    """Two applications that nobody here wrote, side by side."""

    APPLICATIONS = ("/usr/games/pentobi", "/usr/bin/focuswriter")

    def assert_both_found(self, bus, by_daemon):
        require(TOOLKIT, *self.APPLICATIONS)
        for application in self.APPLICATIONS:
            self.begin(
                [application],
                env=environment(
                    PRELOADED,
                    DBUS_SYSTEM_BUS_ADDRESS=bus,
                    HOME=str(self.directory),
                    XDG_RUNTIME_DIR=str(self.directory),
                    TMPDIR=str(self.directory),
                ),
            )
        device = socket.gethostname()
        names = {device, f"{device} #2"}
        self.assertTrue(
            self.browser.wait_until(lambda services: set(services) == names),
            self.browser.services,
        )
        ports = {port for port, _ in self.browser.services.values()}
        self.assertEqual(len(ports), 2)
        for port, host in self.browser.services.values():
            self.assertEqual(host == f"{DAEMON_HOST}.local", by_daemon)
            with socket.create_connection(("127.0.0.1", port)) as companion:
                companion.settimeout(PATIENCE)
                size = int.from_bytes(companion.recv(4, socket.MSG_WAITALL), "big")
                message = companion.recv(size, socket.MSG_WAITALL)
                self.assertIn(b'"sync.full"', message)

    def test_both_are_found_without_a_daemon(self):
        self.assert_both_found(NO_BUS, by_daemon=False)

    def test_both_are_found_through_a_daemon(self):
        bus = self.begin_bus()
        self.begin_daemon(bus)
        self.assert_both_found(bus, by_daemon=True)


class AddressFamilies(Discovery):
    """What a machine's network is like decides where a host listens."""

    PORTS = range(47000, 47020)

    def tearDown(self):
        for name, value in (("ipv6/conf/lo/disable_ipv6", "0"), (PORT_RANGE, "32768 60999")):
            (NETWORK_SETTINGS / name).write_text(value)
        super().tearDown()

    def echoes(self, address, port):
        try:
            with socket.create_connection((address, port)) as peer:
                peer.settimeout(PATIENCE)
                peer.sendall(b"x")
                return peer.recv(1) == b"x"
        except OSError:
            return False

    def families(self, host):
        return [address for address in ("127.0.0.1", "::1") if self.echoes(address, host.port)]

    def take_ipv6_ports(self, ports):
        for port in ports:
            taken = socket.socket(socket.AF_INET6, socket.SOCK_STREAM)
            taken.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 1)
            taken.bind(("::1", port))
            self.addCleanup(taken.close)

    def test_machine_without_ipv6_is_served_by_ipv4(self):
        (NETWORK_SETTINGS / "ipv6/conf/lo/disable_ipv6").write_text("1")
        self.assertEqual(self.families(self.begin_host()), ["127.0.0.1"])

    def test_port_is_one_that_both_families_have_free(self):
        (NETWORK_SETTINGS / PORT_RANGE).write_text(f"{self.PORTS[0]} {self.PORTS[-1]}")
        self.take_ipv6_ports(self.PORTS[::2])
        for _ in range(4):
            host = self.begin_host()
            self.assertIn(host.port, self.PORTS)
            self.assertEqual(self.families(host), ["127.0.0.1", "::1"])

    def test_machine_without_a_common_port_is_served_by_ipv4(self):
        (NETWORK_SETTINGS / PORT_RANGE).write_text(f"{self.PORTS[0]} {self.PORTS[-1]}")
        self.take_ipv6_ports(self.PORTS)
        host = self.begin_host()
        self.assertIn(host.port, self.PORTS)
        # Peers need ports too.
        (NETWORK_SETTINGS / PORT_RANGE).write_text("32768 60999")
        self.assertEqual(self.families(host), ["127.0.0.1"])


if __name__ == "__main__":
    if IN_NAMESPACE not in os.environ:
        options = ["--net", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
        if subprocess.run(["unshare", *options, "true"], capture_output=True).returncode != 0:
            print("no namespaces here")
            sys.exit(77)
        os.environ[IN_NAMESPACE] = "1"
        os.execvp("unshare", ["unshare", *options, sys.executable, *sys.argv])
    os.makedirs("/run/avahi-daemon", exist_ok=True)
    subprocess.run(["mount", "-t", "tmpfs", "none", "/run/avahi-daemon"], check=True)
    main()
