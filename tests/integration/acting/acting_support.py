"""What the tests of touch and keys share: an application that says what happens to it, and a
companion that acts on it."""

import html
import os
import pathlib
import re
import sys
import tempfile
import time

FOLDER = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(FOLDER.parent / "traffic"))

import traffic_support as support  # noqa: E402

QML = "/usr/lib/qt6/bin/qml"
PATIENCE = support.TIME_LIMIT
# Long enough for a second reaction to a tap to show.
REST = 0.3


class Application(support.Process):
    """Started in a home of its own. Lines that begin with "did: " say what happened to it."""

    def __init__(self, command, **variables):
        self.home = tempfile.TemporaryDirectory(prefix="tarnix-acting-")
        variables = dict(variables, HOME=self.home.name, XDG_RUNTIME_DIR=self.home.name,
                         QT_LOGGING_RULES="qml.info=true;js.info=true;default.info=true")
        before = {name: os.environ.get(name) for name in variables}
        os.environ.update(variables)
        try:
            super().__init__(command)
        finally:
            for name, value in before.items():
                if value is None:
                    del os.environ[name]
                else:
                    os.environ[name] = value
        self.companion = support.Companion(self.port())

    def did(self):
        return [match[1] for line in list(self.errors)
                if (match := re.search(r"did: (.*)", line))]

    def forget(self):
        self.errors.clear()

    def ask(self, command, payload, patience=PATIENCE):
        kind = command.split(".")[1]
        self.companion.send(command, payload)
        end = time.monotonic() + patience
        while True:
            type, answer = self.companion.messages.get(timeout=max(0.01, end - time.monotonic()))
            if type == "response." + kind:
                return answer

    def tap(self, x, y, **options):
        return self.ask("command.tap", {"x": round(x), "y": round(y)}, **options)

    def swipe(self, x1, y1, x2, y2):
        return self.ask("command.swipe", {"x1": x1, "y1": y1, "x2": x2, "y2": y2})

    def type(self, text):
        return self.ask("command.typeText", {"text": text})

    def screen(self):
        """Label, centre and tag of each element."""
        found = []
        for line in self.ask("command.screenHTML", {})["html"].splitlines():
            if match := re.match(r'<(\w+).* id=\d+ c="(-?\d+),(-?\d+)"', line):
                label = re.search(r'(?:alt|label|placeholder)="([^"]*)">$', line)
                label = label or re.search(r">([^<]*)</\w+>$", line)
                found.append((html.unescape(label[1]) if label else "", int(match[2]),
                              int(match[3]), match[1]))
        return found

    def find(self, label):
        return support.wait_for(
            lambda: next(((x, y) for name, x, y, _ in self.screen() if name == label), None),
            f"{label} on the screen")

    def tap_label(self, label):
        return self.tap(*self.find(label))

    def wait_for_deeds(self, expected):
        support.wait_for(lambda: len(self.did()) >= len(expected), f"{expected}, not {self.did()},",
                         limit=PATIENCE)
        time.sleep(REST)
        return self.did()

    def close(self):
        self.kill()
        self.home.cleanup()
