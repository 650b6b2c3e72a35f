#!/usr/bin/env python3
"""How long an application takes to react to a tap, against a click of `xdotool`; how long a picture
of it takes, against `import`; and how long each command holds its main thread. All on the same
application in the same run, with 100, 1,000 and 10,000 elements. Then a tap against an action over
the accessibility bus, on widgets: Quick controls do nothing with such an action.

    acting.py BUILD_FOLDER [ELEMENTS...]

Needs a display and a session bus. Prints one line a number of elements for each of the three, and
one for each kind of widget.
"""

import os
import pathlib
import re
import statistics
import subprocess
import sys
import time

BENCH = pathlib.Path(__file__).resolve().parent
os.environ["TARNIX_BUILD_DIR"] = str(pathlib.Path(sys.argv[1]).resolve())
BUILD = pathlib.Path(os.environ["TARNIX_BUILD_DIR"])
sys.path.insert(0, str(BENCH.parent / "tests/integration/acting"))

from acting_support import Application, QML  # noqa: E402

REACTIONS = 5
PICTURES = 4
QUESTIONS = 4
# Until what the last command shows over the application has ended.
REST = 1
# No reaction takes longer, however many others use the machine.
PATIENCE = 30


def run(*words):
    return subprocess.run(list(map(str, words)), check=True, capture_output=True, text=True).stdout


def median(measure, count):
    """In milliseconds."""
    times = []
    for _ in range(count):
        time.sleep(REST)
        begin = time.perf_counter()
        end = measure()
        times.append(((end or time.perf_counter()) - begin) * 1000)
    return statistics.median(times)


def time_of_deed(application, deed, act):
    """When the application said `deed` after `act`."""
    seen = len(application.errors)
    act()
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if any(line.endswith(deed) for line in list(application.errors)[seen:]):
            return time.perf_counter()
        time.sleep(0.0002)
    raise SystemExit("no reaction")


class Host(Application):
    def __init__(self, count):
        super().__init__([QML, BENCH / "many_items.qml", "--", count], QT_QPA_PLATFORM="xcb",
                         DISPLAY=os.environ["DISPLAY"])
        elements = self.wait_for_elements(count)
        # Two places in turn: two presses at one are a double click.
        self.places = [elements[0][1:3], elements[-1][1:3]]
        self.turn = 0
        self.window = run("xdotool", "search", "--onlyvisible", "--pid", self.pid).split()[-1]

    def wait_for_elements(self, count):
        end = time.monotonic() + 120
        while time.monotonic() < end:
            elements = self.screen()
            if len(elements) >= count:
                return elements
            time.sleep(0.2)
        raise SystemExit(f"{count} elements did not come up")

    def reaction(self, press):
        """When the application said that it was clicked."""
        self.turn += 1
        return time_of_deed(self, "clicked",
                            lambda: press(*self.places[self.turn % 2]))

    def send_tap(self, x, y):
        self.companion.send("command.tap", {"x": x, "y": y})

    def click(self, x, y):
        run("xdotool", "mousemove", "--window", self.window, x, y, "click", "1")

    def main_thread_time(self):
        """Of the processor, in milliseconds."""
        text = pathlib.Path(f"/proc/{self.pid}/task/{self.pid}/schedstat").read_text()
        return int(re.match(r"\d+", text)[0]) / 1e6

    def hold(self, command, payload):
        """Of the main thread by one command, with the frames that it shows meanwhile."""
        times = []
        for _ in range(QUESTIONS):
            time.sleep(REST)
            before = self.main_thread_time()
            self.ask(command, payload)
            times.append(self.main_thread_time() - before)
        return statistics.median(times)


def measure(count):
    host = Host(count)
    try:
        # Clicks first: after a tap the pointer is elsewhere for the application.
        click = median(lambda: host.reaction(host.click), REACTIONS)
        tap = median(lambda: host.reaction(host.send_tap), REACTIONS)
        print(f"{count:6} elements   tap to reaction {tap:7.2f} ms   xdotool {click:7.2f} ms   "
              f"{click / tap:.1f} times faster", flush=True)
        while not host.companion.messages.empty():
            host.companion.messages.get()
        picture = median(lambda: host.picture() and None, PICTURES)
        grabbed = median(lambda: run("import", "-silent", "-window", host.window,
                                     f"png:{host.home.name}/grabbed.png") and None, PICTURES)
        print(f"                  screenshot {picture:12.2f} ms   import {grabbed:8.2f} ms   "
              f"{grabbed / picture:.1f} times faster", flush=True)
        holds = [f"{name} {host.hold(command, payload):.2f} ms" for name, command, payload in [
            ("tap", "command.tap", dict(zip("xy", host.places[0]))),
            ("html", "command.screenHTML", {}), ("find", "command.findElement", {"text": "7"}),
            ("snapshot", "command.requestSnapshot", {}),
            ("audit", "command.accessibilityAudit", {})]]
        print(f"                  main thread held by {', '.join(holds)}", flush=True)
    finally:
        host.close()


def measure_against_the_bus(label, deed):
    """One of the widgets that say what is done to them."""
    host = Application([BUILD / "bin/tarnix_acting_host"], QT_QPA_PLATFORM="xcb",
                       DISPLAY=os.environ["DISPLAY"], QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    try:
        x, y = host.find(label)
        presser = subprocess.Popen(
            [BUILD / "bin/bench_accessibility_press", "tarnix_acting_host", label],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        try:
            if presser.stdout.readline() != b"ready\n":
                raise SystemExit(f"{label} is not on the accessibility bus")

            def press():
                presser.stdin.write(b"\n")
                presser.stdin.flush()

            def tap():
                host.companion.send("command.tap", {"x": x, "y": y})
            pressed = median(lambda: time_of_deed(host, deed, press), REACTIONS)
            tapped = median(lambda: time_of_deed(host, deed, tap), REACTIONS)
        finally:
            presser.stdin.close()
            presser.wait()
        print(f"{label:>8}          tap to reaction {tapped:7.2f} ms   accessibility bus "
              f"{pressed:7.2f} ms   {pressed / tapped:.1f} times faster", flush=True)
    finally:
        host.close()


def main():
    for count in map(int, sys.argv[2:] or (100, 1000, 10_000)):
        measure(count)
    measure_against_the_bus("Check", ("check true", "check false"))
    # The toolkit shows a button as pressed for a tenth of a second before it acts on this.
    measure_against_the_bus("Save", "save clicked")


main()
