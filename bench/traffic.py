#!/usr/bin/env python3
"""What an application pays for having its HTTP exchanges seen: the same application makes the same
exchanges without the probe, with it, with it and a companion that takes every event, and through a
scripting proxy, in turn and in one run. Prints medians, and the medians of the ratios of each turn.

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
SMALL_COUNT = 200
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

    def port(self):
        def look():
            listed = subprocess.run([BUILD / "bin/tarnix", "list", "--json"], capture_output=True)
            hosts = json.loads(listed.stdout)["hosts"] if listed.stdout else []
            return next((host["port"] for host in hosts if host["pid"] == self.process.pid), None)
        return wait_for(look, "a probe")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def answers(port):
    with socket.socket() as peer:
        return peer.connect_ex(("127.0.0.1", port)) == 0


def table(title, hosts, words, show, rounds=ROUNDS):
    """Every host in every round, the order turned by one each time."""
    print(f"\n{title}, medians of {rounds} rounds")
    times = {name: [] for name in hosts}
    names = list(hosts)
    for turn in range(rounds):
        for name in names[turn % len(names):] + names[:turn % len(names)]:
            times[name].append(hosts[name].nanoseconds(words))
    for name in hosts:
        ratio = statistics.median(one / base for one, base in zip(times[name], times[names[0]]))
        print(f"  {name:32} {show(statistics.median(times[name])):>16}   {ratio:6.3f} x the time")


def receive(port, request=b"", size=None):
    """Seconds until so many bytes are there; without a size, as many as the first four tell."""
    buffer = bytearray(1 << 20)
    begin = time.perf_counter()
    with socket.create_connection(("127.0.0.1", port)) as peer:
        peer.sendall(request)
        if size is None:
            head = b""
            while len(head) < 4:
                head += peer.recv(4 - len(head))
            size = int.from_bytes(head, "big")
        left = size
        while left > 0:
            left -= peer.recv_into(buffer, min(left, len(buffer)))
        return time.perf_counter() - begin, size


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


def main():
    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    running, folder = [], tempfile.TemporaryDirectory()
    server = Program([BUILD / "bin/bench_traffic_server"])
    running.append(server)
    port = int(server.line())
    hosts = {"without the probe": Host(port), "with the probe": Host(port, with_probe=True),
             "with the probe and a companion": Host(port, with_probe=True)}
    mocked = Host(port, with_probe=True)
    running += [*hosts.values(), mocked]
    watched = hosts["with the probe and a companion"]
    watched.port()
    watch = subprocess.Popen([BUILD / "bin/tarnix", "watch", "--json", "--pid",
                              str(watched.process.pid)], stdout=subprocess.DEVNULL,
                             stderr=subprocess.DEVNULL)
    mocked.port()
    subprocess.run([BUILD / "bin/tarnix", "mock", "add", "/mocked", "--pid",
                    str(mocked.process.pid)], stdout=subprocess.DEVNULL, check=True)
    proxy = None
    if shutil.which("mitmdump"):
        proxy_port = free_port()
        body = pathlib.Path(folder.name) / "mocked"
        body.write_text("{}", encoding="ascii")
        proxy = subprocess.Popen(
            ["mitmdump", "-q", "--listen-host", "127.0.0.1", "-p", str(proxy_port), "--set",
             f"confdir={folder.name}", "--map-local", f"|/mocked|{body}"], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: answers(proxy_port), "the proxy")
        hosts["through mitmproxy"] = Host(port, proxy_port)
        running.append(hosts["through mitmproxy"])
    try:
        hosts["with the probe"].port()
        for host in hosts.values():
            host.nanoseconds("get /small 50")
        table(f"a small exchange ({SMALL_COUNT} a round); bound with the probe: 1.10", hosts,
              f"get /small {SMALL_COUNT}", lambda time: f"{time / 1000:.1f} us")
        proxied = hosts.pop("through mitmproxy", None)
        table("a bulk download of 64 MiB; bound with the probe: 1.03", hosts,
              f"bulk {BULK_BYTES}", lambda time: f"{BULK_BYTES / time * 1000:.0f} MB/s")
        if proxied:
            table("a bulk download of 8 MiB",
                  {"without the probe": hosts["without the probe"], "through mitmproxy": proxied},
                  f"bulk {PROXIED_BYTES}", lambda time: f"{PROXIED_BYTES / time * 1000:.0f} MB/s",
                  3)
        answered = {"by the server, no probe": hosts["without the probe"], "by a mock": mocked}
        if proxied:
            answered["by mitmproxy"] = proxied
        table("answers, one request after the other", answered, f"get /mocked {SMALL_COUNT}",
              lambda time: f"{1e9 / time:.0f} a second")
        measure_full_sync(hosts["with the probe"], port)
    finally:
        watch.terminate()
        watch.wait()
        if proxy:
            proxy.terminate()
            proxy.wait()
        for program in running:
            program.end()
        folder.cleanup()


if __name__ == "__main__":
    main()
