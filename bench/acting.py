#!/usr/bin/env python3
"""How long an application takes to react to a tap, against a click of `xdotool`; how long a picture
of it takes, against `import`; and how long each command holds its main thread. All on the same
application in the same run, with 100, 1,000 and 10,000 elements; the holds with 1,000 widgets, too.
Then a tap against an action over the accessibility bus, on widgets: Quick controls do nothing with
such an action.

The taps follow each other while the effect of the last one is still shown, as they do when a
companion is at work. The clicks come before, over an application at rest.

The hold is processor time of the main thread from the start of a command's handler to the return to
the event loop: the application itself times each event that its loop hands out. What the toolkit
and the application do with the press that a tap sends happens inside, and is told apart: it is what
a click costs, too. Frames that show an effect are events of their own, and no part of it. The
numbers of elements are those in the answers; `type` looks for a focus that is nowhere. While the
scene is drawn for a screenshot the main thread waits, which is no processor time of its own: the
line of pictures has it.

    acting.py BUILD_FOLDER [ELEMENTS...]

Needs a display and a session bus. Prints some lines a number of elements, and one for each kind of
widget.
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

from acting_support import Application  # noqa: E402

REACTIONS = 9
PICTURES = 4
QUESTIONS = 15
# Long enough for what a press changes to be drawn.
REST = 1
REST_OF_QUESTIONS = 0.2
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
    def __init__(self, count, shown=BENCH / "many_items.qml"):
        super().__init__([BUILD / "bin/bench_watched_host", shown, count], QT_QPA_PLATFORM="xcb",
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

    def place(self):
        self.turn += 1
        return self.places[self.turn % 2]

    def reaction(self, press):
        """When the application said that it was clicked."""
        return time_of_deed(self, "clicked", lambda: press(*self.place()))

    def send_tap(self, x, y):
        self.companion.send("command.tap", {"x": x, "y": y})

    def click(self, x, y):
        run("xdotool", "mousemove", "--window", self.window, x, y, "click", "1")

    def times(self):
        """Of the main thread since the last time: held, in the application's own, for windows."""
        known = len(self.all_times())
        self.process.stdin.write(b"\n")
        self.process.stdin.flush()
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if found := self.all_times()[known:]:
                return [float(word) for word in found[0].split()[1::2]]
            time.sleep(0.001)
        raise SystemExit("the application does not tell its times")

    def all_times(self):
        return [line for line in list(self.errors) if re.match(r"held [\d.]+ reaction", line)]

    def times_of(self, act):
        """And what was answered."""
        time.sleep(REST_OF_QUESTIONS)
        self.times()
        answer = act()
        return self.times(), answer


def medians(rows):
    return [statistics.median(column) for column in zip(*rows)]


def size_of(answer):
    """How many elements it holds."""
    lists = [len(value) for value in answer.values() if isinstance(value, list)]
    return max([answer.get("elementCount", 0), *lists])


def print_holds(host):
    commands = {
        "html": lambda: host.ask("command.screenHTML", {}),
        "text": lambda: host.ask("command.screenText", {}),
        "find": lambda: host.ask("command.findElement", {"text": "7"}),
        "audit": lambda: host.ask("command.accessibilityAudit", {}),
        "snapshot": lambda: host.ask("command.requestSnapshot", {}),
        "type": lambda: host.type("a"),
        "tap": lambda: host.tap(*host.place()),
        "swipe": lambda: host.swipe(500, 500, 500, 100),
        "screenshot": lambda: host.ask("command.requestScreenshot", {})}
    measured = {name: [] for name in commands}
    sizes = {}
    # In turns, so that what disturbs the machine for a moment disturbs a few of each; the first
    # turn warms up.
    for turn in range(QUESTIONS + 1):
        for name, act in commands.items():
            times, answer = host.times_of(act)
            sizes[name] = size_of(answer)
            if turn > 0:
                measured[name].append(times)
    holds = {name: medians(rows) for name, rows in measured.items()}
    print("                  main thread held by " + ", ".join(
        f"{name} {held:.2f} ms" + (f" ({sizes[name]:,} elements)" if sizes[name] else "")
        for name, (held, _, _) in holds.items()), flush=True)
    return holds


def measure(count):
    host = Host(count)
    try:
        # Clicks first: after a tap the pointer is elsewhere for the application.
        click = median(lambda: host.reaction(host.click), REACTIONS)
        _, _, clicked = medians(host.times_of(lambda: host.reaction(host.click))[0]
                                for _ in range(QUESTIONS))
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
        held = print_holds(host)
        print(f"                  and by the application's part of a tap {held['tap'][1]:.2f} ms, "
              f"of a click of xdotool {clicked:.2f} ms", flush=True)
    finally:
        host.close()


def measure_widgets(count):
    host = Host(count, "widgets")
    try:
        print(f"{count:6} widgets", flush=True)
        print_holds(host)
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
    measure_widgets(1000)
    measure_against_the_bus("Check", ("check true", "check false"))
    # The toolkit shows a button as pressed for a tenth of a second before it acts on this.
    measure_against_the_bus("Save", "save clicked")


main()
