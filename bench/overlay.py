#!/usr/bin/env python3
"""What each frame of an effect costs the application that it is shown over, in a window of 1080 x
2340: processor time of all its threads, against the same frames while the application draws its
whole window anew for each.

    overlay.py BUILD_FOLDER

Needs a display. Prints one line an effect; each has the orb with it, which `environment` is alone.
What goes through OpenGL is drawn by whatever the display has for it: by the processor itself, and
counted here, where that is a driver in software.
"""

import os
import subprocess
import sys

FRAMES = {
    "tap": 39,
    "swipe": 48,
    "type": 48,
    "scan": 54,
    "capture": 20,
    "data": 60,
    "verify": 69,
    "environment": 60,
}


class Host:
    def __init__(self, build, kind, renderer):
        environment = {**os.environ, "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": renderer}
        self._process = subprocess.Popen(
            [os.path.join(build, "bin/tarnix_effects_host"), kind],
            env=environment,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        )
        self._wait_for("ready")

    def _wait_for(self, start):
        for line in self._process.stdout:
            if line.startswith(start):
                return line[len(start) :].strip()
        sys.exit("the application ended")

    def ask(self, command):
        self._process.stdin.write(command + "\n")
        self._process.stdin.flush()
        return self._wait_for("ok")

    def end(self):
        self._process.stdin.close()
        self._process.wait()


def measure(build, kind, renderer, name):
    host = Host(build, kind, renderer)
    host.ask("size 1080 2340")
    idle = float(host.ask("pace 60"))
    redrawn = float(host.ask("repaint 60"))
    print(f"{name}: idle {idle:.2f} ms a frame, redrawn as a whole {redrawn:.2f} ms")
    for effect, frames in FRAMES.items():
        host.ask("show " + effect)
        cost = float(host.ask(f"pace {frames}"))
        print(f"  {effect:12} {cost:6.2f} ms a frame, {(cost - idle) / (redrawn - idle):5.2f} of redrawing")
    # The orb goes three seconds after the last effect.
    host.ask("pace 240")
    after = float(host.ask("pace 60"))
    print(f"  {'afterwards':12} {after:6.2f} ms a frame, {after - idle:+.2f} ms against before")
    host.end()


def main():
    build = sys.argv[1]
    measure(build, "widgets", "software", "widgets")
    measure(build, "quick", "software", "Quick, drawn in software")
    measure(build, "quick", "rhi", "Quick, drawn through OpenGL")


main()
