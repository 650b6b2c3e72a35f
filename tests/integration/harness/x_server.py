"""An X server of a test's own, without a window manager."""

import os
import subprocess


class XServer:
    """Ended with the block, or closed. `display` is its name."""

    def __init__(self, width=800, height=600):
        reading, writing = os.pipe()
        # It stays as it is when the last of its applications has gone, for the next one.
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24"]
            + ["-nolisten", "tcp", "-noreset"],
            pass_fds=[writing],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(writing)
        # It writes its number once it is ready.
        with os.fdopen(reading) as number:
            self.display = ":" + number.readline().strip()

    def environment(self, **changes):
        return {**os.environ, "DISPLAY": self.display, **changes}

    def tell(self, *words):
        """Has `xdotool` do that."""
        subprocess.run(["xdotool", *map(str, words)], env=self.environment(), check=True)

    def close(self):
        self._server.terminate()
        self._server.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()
