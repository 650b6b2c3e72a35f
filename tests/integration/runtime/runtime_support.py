"""What the tests of the runtime captures share."""

import os
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))

from loading_support import (  # noqa: E402,F401
    BUILD,
    PATIENCE,
    PRELOADED,
    Process,
    environment,
    wait_until,
)

STREAM_HOST = BUILD / "tests/integration/runtime/hosts/tarnix_stream_host"


def keepers_of(pid):
    """The processes that look after the stream of the process with this number."""
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            words = (entry / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if words[0].endswith(b"tarnixprobe-keeper") and words[1:2] == [str(pid).encode()]:
            found.append(int(entry.name))
    return found


def main():
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[1:])
