"""What the tests of traffic share: a host with and without the probe, and a companion."""

import base64
import json
import os
import pathlib
import queue
import socket
import struct
import subprocess
import sys
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "harness"))

from probe_port import probe_port  # noqa: E402

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ.get("TARNIX_BUILD_DIR") or REPOSITORY / "build/release")
LIBRARY = BUILD / "lib" / "libtarnixprobe.so"
TARNIX = BUILD / "bin" / "tarnix"
TRACE_HOST = BUILD / "bin" / "tarnix_trace_host"
# Machines that run tests are busy.
TIME_LIMIT = 60


def wait_for(condition, what, limit=TIME_LIMIT):
    end = time.monotonic() + limit
    while time.monotonic() < end:
        if result := condition():
            return result
        time.sleep(0.02)
    raise AssertionError(f"{what} did not happen within {limit} s")


def environment(with_probe):
    variables = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    variables.setdefault("XDG_RUNTIME_DIR", "/tmp")
    variables.setdefault("DBUS_SESSION_BUS_ADDRESS", "disabled:")
    variables.pop("LD_PRELOAD", None)
    if with_probe:
        variables["LD_PRELOAD"] = str(LIBRARY)
    return variables


class Process:
    """A program under test, its lines on standard error gathered as they come."""

    def __init__(self, command, with_probe=True, variables=None, **options):
        self.process = subprocess.Popen(
            [str(word) for word in command],
            env={**environment(with_probe), **(variables or {})}, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)
        self.errors = []
        self.reader = threading.Thread(target=self.read_errors, daemon=True)
        self.reader.start()

    def read_errors(self):
        for line in self.process.stderr:
            self.errors.append(line.decode("utf-8", "replace").rstrip("\n"))

    @property
    def pid(self):
        return self.process.pid

    def port(self):
        """Where its probe listens, once it does."""
        def look():
            assert self.process.poll() is None, self.errors
            if not any("Listener ready" in line for line in self.errors):
                return None
            return probe_port(self.pid)
        return wait_for(look, "a listening probe")

    def end(self):
        self.process.stdin.close()
        code = self.process.wait(TIME_LIMIT)
        self.reader.join(TIME_LIMIT)
        self.process.stdout.close()
        self.process.stderr.close()
        return code

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.reader.join(TIME_LIMIT)
        for stream in (self.process.stdin, self.process.stdout, self.process.stderr):
            stream.close()


class TraceHost(Process):
    def __init__(self, server, with_probe, **variables):
        super().__init__([TRACE_HOST, f"http://127.0.0.1:{server.port}"], with_probe, variables)
        self.scenarios = self.read_block("== ready")

    def read_block(self, last):
        lines = []
        for line in self.process.stdout:
            line = line.decode().rstrip("\n")
            if line == last:
                return lines
            lines.append(line)
        raise AssertionError(f"the host ended: {self.errors[-20:]}")

    def trace(self, scenario):
        self.process.stdin.write(scenario.encode() + b"\n")
        self.process.stdin.flush()
        return self.read_block("== done")


class Companion:
    """A companion that keeps all that it is sent."""

    def __init__(self, port):
        self.port = port
        self.messages = queue.Queue()
        self.connect()

    def connect(self):
        # A probe that replaces a companion may drop the new one once too.
        for _ in range(20):
            self.socket = socket.create_connection(("127.0.0.1", self.port), timeout=TIME_LIMIT)
            try:
                self.sync = self.read()
                # An event may come first while the probe has not noticed the end of the companion
                # that this one replaces.
                while self.sync[0] != "sync.full":
                    self.sync = self.read()
                threading.Thread(target=self.receive, args=(self.socket,), daemon=True).start()
                return
            except OSError:
                self.socket.close()
                time.sleep(0.05)
        raise AssertionError("dropped again and again")

    def read_exactly(self, size):
        data = b""
        while len(data) < size:
            piece = self.socket.recv(min(size - len(data), 1 << 20))
            if not piece:
                raise OSError("closed")
            data += piece
        return data

    def read(self):
        size, = struct.unpack(">I", self.read_exactly(4))
        envelope = json.loads(self.read_exactly(size))
        payload = base64.b64decode(envelope["payload"])
        return envelope["type"], json.loads(payload) if payload else None

    def receive(self, from_socket):
        try:
            while self.socket is from_socket:
                self.messages.put(self.read())
        except (OSError, ValueError):
            pass

    def send(self, type, payload):
        body = json.dumps({"type": type, "timestamp": 0.0, "payload": base64.b64encode(
            json.dumps(payload).encode()).decode()}).encode()
        self.socket.sendall(struct.pack(">I", len(body)) + body)

    def exchanges(self, count):
        """The next so many exchanges, as events."""
        found = []
        end = time.monotonic() + TIME_LIMIT
        while len(found) < count:
            type, payload = self.messages.get(timeout=max(end - time.monotonic(), 0.01))
            if type == "event.httpRequest":
                found.append(payload)
        return found

    def received_exchanges(self):
        """Those that are here already and have not been taken."""
        found = []
        while not self.messages.empty():
            type, payload = self.messages.get()
            if type == "event.httpRequest":
                found.append(payload)
        return found

    def forget(self):
        while not self.messages.empty():
            self.messages.get()

    def synced_exchanges(self):
        """What the probe has kept; takes a new connection."""
        self.close()
        self.connect()
        return self.sync[1]["httpRequests"]

    def barrier(self):
        """Returns once everything that was sent before has been carried out."""
        self.send("command.screenHTML", {})
        while self.messages.get(timeout=TIME_LIMIT)[0] != "response.screenHTML":
            pass

    def close(self):
        closing, self.socket = self.socket, None
        closing.close()


def make_certificate(folder):
    """A key and a certificate for it that nobody has reason to trust, in one file."""
    path = pathlib.Path(folder) / "certificate.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                    "-subj", "/CN=shop.test", "-addext", "subjectAltName=IP:127.0.0.1",
                    "-keyout", path, "-out", pathlib.Path(folder) / "public.pem"],
                   check=True, capture_output=True, timeout=TIME_LIMIT)
    path.write_bytes(path.read_bytes() + (pathlib.Path(folder) / "public.pem").read_bytes())
    return path


def body_of(exchange, name):
    return base64.b64decode(exchange[name]) if name in exchange else None


def main():
    unittest.main(verbosity=2)
