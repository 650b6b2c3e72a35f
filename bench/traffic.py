#!/usr/bin/env python3
"""What an application pays for having its HTTP exchanges seen: the same application makes the same
exchanges without the probe, with it, with it and a companion that takes every event, and through a
scripting proxy, in turn and in one run. Prints medians, and the medians of the ratios of each turn.

Two runs of the very same program differ too, by where its memory and its threads happen to lie. So
the applications are started afresh a few times, and one of them runs twice: its second line says
how much a difference must be to be one. Beside the time stands the processor time of the whole
application, which other work on the machine disturbs less.

    traffic.py BUILD [ROUNDS]
"""

import json
import os
import pathlib
import shutil
import socket
import statistics
import subprocess
import sys
import tempfile
import time

BUILD = pathlib.Path(sys.argv[1]).resolve()
ROUNDS = int(sys.argv[2]) if len(sys.argv) > 2 else 21
START_LIMIT = 60
# How often the applications are started, with as many of the rounds each.
STARTS = 3
SMALL_COUNT = 1000
BULK_BYTES = 64 << 20
# The proxy holds all of a body before it hands it on.
PROXIED_BYTES = 8 << 20
STORED = 500


def wait_for(condition, what):
    end = time.monotonic() + START_LIMIT
    while time.monotonic() < end:
        if result := condition():
            return result
        time.sleep(0.05)
    sys.exit(f"{what} did not come up")


class Program:
    """Told what to do on standard input, tells the outcome on standard output."""

    def __init__(self, command, **variables):
        self.process = subprocess.Popen([str(word) for word in command], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                        text=True, env=dict(os.environ, **variables))

    def line(self):
        return self.process.stdout.readline().strip()

    def nanoseconds(self, words):
        self.process.stdin.write(words + "\n")
        self.process.stdin.flush()
        return int(self.line() or sys.exit(f"an application ended at \"{words}\""))

    def end(self):
        self.process.stdin.close()
        self.process.wait()


class Host(Program):
    def __init__(self, server, *arguments, with_probe=False):
        super().__init__([BUILD / "bin/bench_traffic_host", f"http://127.0.0.1:{server}",
                          *arguments], **({"LD_PRELOAD": str(BUILD / "lib/libtarnixprobe.so")}
                                          if with_probe else {}))
        assert self.line() == "ready"

    def processor_nanoseconds(self):
        """Of all threads that there are."""
        total = 0
        for statistic in pathlib.Path(f"/proc/{self.process.pid}/task").glob("*/schedstat"):
            try:
                total += int(statistic.read_text(encoding="ascii").split()[0])
            except OSError:
                pass  # The thread has ended.
        return total

    def port(self):
        def look():
            listed = subprocess.run([BUILD / "bin/tarnix", "list", "--json"], capture_output=True)
            hosts = json.loads(listed.stdout)["hosts"] if listed.stdout else []
            return next((host["port"] for host in hosts if host.get("pid") == self.process.pid), None)
        return wait_for(look, "a probe")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def answers(port):
    with socket.socket() as peer:
        return peer.connect_ex(("127.0.0.1", port)) == 0


class Table:
    """What `words` take each host, in turn; the first host is the one to compare with."""

    def __init__(self, title, words, show, rounds=ROUNDS):
        self.title, self.words, self.show = title, words, show
        self.rounds = max(1, rounds // STARTS)
        self.times, self.work = {}, {}

    def measure(self, hosts):
        """Every host in every round, the order turned by one each time."""
        names = list(hosts)
        for turn in range(self.rounds):
            for name in names[turn % len(names):] + names[:turn % len(names)]:
                before = hosts[name].processor_nanoseconds()
                self.times.setdefault(name, []).append(hosts[name].nanoseconds(self.words))
                self.work.setdefault(name, []).append(
                    hosts[name].processor_nanoseconds() - before)

    def print(self):
        print(f"\n{self.title}, medians of {self.rounds * STARTS} rounds")

        def ratio(values, name):
            base = values[next(iter(values))]
            return statistics.median(one / other for one, other in zip(values[name], base))
        for name, times in self.times.items():
            print(f"  {name:32} {self.show(statistics.median(times)):>16}   "
                  f"{ratio(self.times, name):6.3f} x the time   "
                  f"{ratio(self.work, name):6.3f} x the processor time")


def receive(port, request=b"", size=None):
    """Seconds until so many bytes are there; without a size, as many as the first four tell."""
    buffer = bytearray(1 << 20)

    def read(count):
        got = peer.recv_into(buffer, min(count, len(buffer)))
        if got == 0:
            raise ConnectionError("closed")
        return got

    # A probe may drop a companion that replaces another; it comes again.
    for _ in range(20):
        begin = time.perf_counter()
        try:
            with socket.create_connection(("127.0.0.1", port), START_LIMIT) as peer:
                peer.sendall(request)
                expected = size
                if expected is None:
                    head = b""
                    while len(head) < 4:
                        head += bytes(buffer[:read(4 - len(head))])
                    expected = int.from_bytes(head, "big")
                left = expected
                while left > 0:
                    left -= read(left)
                return time.perf_counter() - begin, expected
        except ConnectionError:
            time.sleep(0.1)
    sys.exit("dropped again and again")


def measure_full_sync(host, server):
    host.nanoseconds(f"post /record {STORED}")
    probe = host.port()
    receive(probe)
    times, copies = [], []
    for _ in range(ROUNDS):
        seconds, size = receive(probe)
        times.append(seconds)
        copies.append(receive(server, b"GET /bulk/%d HTTP/1.1\r\n\r\n" % size, size)[0])
    ratio = statistics.median(one / base for one, base in zip(times, copies))
    print(f"\na full sync of the {STORED} largest records, {size / 1e6:.0f} MB, medians of {ROUNDS}")
    print(f"  the same bytes through a socket  {statistics.median(copies) * 1000:13.1f} ms")
    print(f"  connecting to the probe          {statistics.median(times) * 1000:13.1f} ms   "
          f"{ratio:6.3f} x the time; bound: 3")


class Applications:
    """One start of everything that is compared."""

    def __init__(self, port):
        self.folder = tempfile.TemporaryDirectory()
        self.hosts = {"without the probe": Host(port), "the same once more": Host(port),
                      "with the probe": Host(port, with_probe=True),
                      "with the probe and a companion": Host(port, with_probe=True)}
        self.mocked = Host(port, with_probe=True)
        self.running = [*self.hosts.values(), self.mocked]
        watched = self.hosts["with the probe and a companion"]
        watched.port()
        self.watch = subprocess.Popen(
            [BUILD / "bin/tarnix", "watch", "--json", "--pid", str(watched.process.pid)],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.mocked.port()
        subprocess.run([BUILD / "bin/tarnix", "mock", "add", "/mocked", "--pid",
                        str(self.mocked.process.pid)], stdout=subprocess.DEVNULL, check=True)
        self.proxy = self.proxied = None
        if shutil.which("mitmdump"):
            self.start_proxy(port)
        self.hosts["with the probe"].port()
        for host in self.running:
            # As in an application that has run for a while: the store of the probe is full.
            host.nanoseconds(f"get /small {SMALL_COUNT}")

    def start_proxy(self, port):
        proxy_port = free_port()
        body = pathlib.Path(self.folder.name) / "mocked"
        body.write_text("{}", encoding="ascii")
        self.proxy = subprocess.Popen(
            ["mitmdump", "-q", "--listen-host", "127.0.0.1", "-p", str(proxy_port), "--set",
             f"confdir={self.folder.name}", "--map-local", f"|/mocked|{body}"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: answers(proxy_port), "the proxy")
        self.proxied = Host(port, proxy_port)
        self.running.append(self.proxied)

    def with_proxied(self, hosts):
        return {**hosts, "through mitmproxy": self.proxied} if self.proxied else hosts

    def end(self):
        self.watch.terminate()
        self.watch.wait()
        if self.proxy:
            self.proxy.terminate()
            self.proxy.wait()
        for program in self.running:
            program.end()
        self.folder.cleanup()


def main():
    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    server = Program([BUILD / "bin/bench_traffic_server"])
    port = int(server.line())
    small = Table(f"a small exchange ({SMALL_COUNT} a round); bound with the probe: 1.10",
                  f"get /small {SMALL_COUNT}", lambda time: f"{time / 1000:.1f} us")
    # Apart from the others: what runs longest between two measures decides what is still cached.
    relayed = Table("the same beside a proxy", f"get /small {SMALL_COUNT}",
                    lambda time: f"{time / 1000:.1f} us", STARTS)
    bulk = Table("a bulk download of 64 MiB; bound with the probe: 1.03", f"bulk {BULK_BYTES}",
                 lambda time: f"{BULK_BYTES / time * 1000:.0f} MB/s", 3 * ROUNDS)
    proxied = Table("a bulk download of 8 MiB", f"bulk {PROXIED_BYTES}",
                    lambda time: f"{PROXIED_BYTES / time * 1000:.0f} MB/s", STARTS)
    answered = Table("answers, one request after the other", f"get /mocked {SMALL_COUNT}",
                     lambda time: f"{1e9 / time:.0f} a second")
    for start in range(STARTS):
        applications = Applications(port)
        bare = applications.hosts["without the probe"]
        try:
            small.measure(applications.hosts)
            if applications.proxied:
                relayed.measure(applications.with_proxied({"without the probe": bare}))
            bulk.measure(applications.hosts)
            if applications.proxied:
                proxied.measure(applications.with_proxied({"without the probe": bare}))
            answered.measure(applications.with_proxied(
                {"by the server, no probe": bare, "by a mock": applications.mocked}))
            if start == STARTS - 1:
                for table in (small, relayed, bulk, proxied, answered):
                    if table.times:
                        table.print()
                measure_full_sync(applications.hosts["with the probe"], port)
        finally:
            applications.end()
    server.end()


if __name__ == "__main__":
    main()
