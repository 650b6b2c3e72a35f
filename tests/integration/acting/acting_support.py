"""What the tests of touch and keys share: an application that says what happens to it, and a
companion that acts on it."""

import base64
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
# Long enough for a second reaction to a tap to show, which comes with the lifting of the finger.
REST = 0.12
# Long enough for the next piece of a screen that comes up to show.
REST_OF_SCREEN = 0.3


class Application(support.Process):
    """Started in a home of its own. Lines that begin with "did: " say what happened to it."""

    def __init__(self, command, files=None, **variables):
        """`files`: what stands in its home before, as texts by their paths."""
        # In memory: some applications write a data base at their first start, line by line.
        memory = "/dev/shm"
        self.home = tempfile.TemporaryDirectory(
            prefix="tarnix-acting-", dir=memory if os.access(memory, os.W_OK) else None)
        for path, text in (files or {}).items():
            file = pathlib.Path(self.home.name, path)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text, encoding="utf-8")
        # Some applications hand their work to one that runs already, which they meet in the folder
        # for temporary files.
        super().__init__(command, variables=dict(
            variables, HOME=self.home.name, XDG_RUNTIME_DIR=self.home.name, TMPDIR=self.home.name,
            QT_LOGGING_RULES="qml.info=true;js.info=true;default.info=true"))
        try:
            self.companion = support.Companion(self.port())
        except BaseException:
            self.kill()
            raise

    def did(self):
        return [match[1] for line in list(self.errors)
                if (match := re.search(r"did: (.*)", line))]

    def forget(self):
        self.errors.clear()

    def ask(self, command, payload, patience=PATIENCE):
        # Two answers are called otherwise than what they answer.
        kind = re.sub("^request(.)", lambda match: match[1].lower(), command.split(".")[1])
        self.companion.send(command, payload)
        end = time.monotonic() + patience
        while True:
            type, answer = self.companion.messages.get(timeout=max(0.01, end - time.monotonic()))
            if type == "response." + kind:
                return answer

    def tap(self, x, y, **options):
        return self.ask("command.tap", {"x": round(x), "y": round(y)}, **options)

    def try_tap(self, x, y):
        """The answer; nothing where the application ended with the tap."""
        try:
            return self.tap(x, y)
        except Exception:
            if self.process.poll() is None:
                self.process.wait(PATIENCE)
            return None

    def picture(self):
        """Of the window, as a PNG file."""
        return base64.b64decode(self.ask("command.requestScreenshot", {})["base64PNG"])

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

    def settled_screen(self):
        """Once it has come up: what a first start shows comes in pieces."""
        seen = []

        def rests():
            seen.append(self.screen())
            time.sleep(REST_OF_SCREEN)
            return len(seen) > 2 and seen[-1] and seen[-1] == seen[-2] == seen[-3]
        support.wait_for(rests, "a screen that rests")
        return seen[-1]

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
        self.companion.socket.close()
        self.kill()
        self.home.cleanup()
