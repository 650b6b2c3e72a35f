"""What the loading tests share: where things lie, and how processes are started and ended."""

import os
import pathlib
import subprocess
import sys
import threading
import time
import unittest

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ.get("TARNIX_BUILD_DIR") or REPOSITORY / "build/release")
LIBRARIES = BUILD / "lib"
PRELOADED = LIBRARIES / "libtarnixprobe.so"
CORE = LIBRARIES / "libtarnixprobe-core.so"
TOOLKIT = LIBRARIES / "libtarnixprobe-qt6.so"
SERVICE_HOST = BUILD / "tests/integration/loading/service_host/tarnix_service_host"
TOOLKIT_HOST = BUILD / "bin/tarnix_toolkit_host"
QML_RUNTIME = pathlib.Path("/usr/lib/qt6/bin/qml")
SERVICE_TYPE = "_tarnix._tcp"

# Bounds what a test waits for; a machine that is busy with other builds needs much of it.
PATIENCE = 30.0


def environment(preload=None, **changes):
    """The environment of a process under test; `preload` is the whole of LD_PRELOAD."""
    result = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    result["QT_QPA_PLATFORM"] = "offscreen"
    result["XDG_RUNTIME_DIR"] = result.get("XDG_RUNTIME_DIR", "/tmp")
    # The message bus and the sound server of the machine are no part of any test.
    result.setdefault("DBUS_SESSION_BUS_ADDRESS", "disabled:")
    if preload is not None:
        result["LD_PRELOAD"] = str(preload)
    result.update(changes)
    return result


def run(command, preload=None, **options):
    """Runs a command to its end; returns its exit code, standard output and standard error."""
    env = options.pop("env", None) or environment(preload)
    done = subprocess.run(
        [str(word) for word in command],
        env=env,
        stdin=subprocess.DEVNULL,
        capture_output=True,
        text=True,
        timeout=PATIENCE,
        **options,
    )
    return done.returncode, done.stdout, done.stderr


def wait_until(condition, patience=PATIENCE):
    """Polls; returns the first true value that `condition` has, or its last one."""
    deadline = time.monotonic() + patience
    while True:
        value = condition()
        if value or time.monotonic() > deadline:
            return value
        time.sleep(0.02)


class Process:
    """A process that runs beside the test, with every line that it wrote. Ended with the test."""

    def __init__(self, command, env=None, **options):
        self.lines = []
        self.error_lines = []
        self._process = subprocess.Popen(
            [str(word) for word in command],
            env=env or environment(),
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
            **options,
        )
        self.pid = self._process.pid
        self._readers = []
        for stream, lines in (
            (self._process.stdout, self.lines),
            (self._process.stderr, self.error_lines),
        ):
            reader = threading.Thread(target=self._read, args=(stream, lines), daemon=True)
            reader.start()
            self._readers.append(reader)

    @staticmethod
    def _read(stream, lines):
        for line in stream:
            lines.append(line.rstrip("\n"))

    def wait_for_line(self, start, patience=PATIENCE):
        """The first line of standard output that starts so, or None."""
        return wait_until(
            lambda: next((line for line in list(self.lines) if line.startswith(start)), None),
            patience,
        )

    def wait_for_error_line(self, start, patience=PATIENCE):
        return wait_until(
            lambda: next((line for line in list(self.error_lines) if start in line), None),
            patience,
        )

    def send_signal(self, number):
        self._process.send_signal(number)

    def finish(self):
        """Has a process end that ends with its standard input; returns the exit code."""
        self._process.stdin.close()
        return self.wait()

    def wait(self, patience=PATIENCE):
        code = self._process.wait(patience)
        self._join_readers()
        return code

    def _join_readers(self):
        # Bounded: a child of the process may still hold the other ends.
        for reader in self._readers:
            reader.join(1)

    def poll(self):
        return self._process.poll()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()
        self._join_readers()
        self._process.stdin.close()
        for stream, reader in zip((self._process.stdout, self._process.stderr), self._readers):
            if not reader.is_alive():
                stream.close()


def require(*paths):
    """Skips a test that needs a file which this machine does not have."""
    for path in paths:
        if not pathlib.Path(path).exists():
            raise unittest.SkipTest(f"{path} is not there")


def main():
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[1:])
