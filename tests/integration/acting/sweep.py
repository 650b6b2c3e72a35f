"""Taps what an application's screen names, each element in a fresh start of the application, and
tells which of them reacted.

    sweep.py [--all] [APPLICATION...]

Without --all each application gets a share of the time that a test has, and of its elements as many
as fit into that, spread over the screen. Fails where an answer was not true: something changed
although the tap was refused, or nothing did although a control of that name was said to be tapped.
"""

import hashlib
import math
import pathlib
import sys
import time

import acting_support
from acting_support import Application


class Start:
    """How to bring an application to a screen that is worth a sweep."""

    def __init__(self, program, files=None, taps=()):
        self.program = program
        self.files = files
        self.taps = taps

    def application(self):
        application = Application([self.program], self.files)
        try:
            application.settled_screen()
            for label in self.taps:
                application.tap_label(label)
                application.settled_screen()
            return application
        except BaseException:
            application.close()
            raise


# With whole paths: root has no games in its path.
APPLICATIONS = {
    "pentobi": Start("/usr/games/pentobi"),
    # Shows its bars only to a mouse that comes near, unless told otherwise. The lower one has a
    # clock, which changes without a tap.
    "focuswriter": Start("/usr/bin/focuswriter", {
        ".config/GottCode/FocusWriter.conf":
            "[View]\nAlwaysShowHeader=true\n"}),
    "tipp10": Start("/usr/bin/tipp10", taps=["Launch TIPP10"]),
}
# Of one application, in seconds.
SHARE = 20
# Longer than a caret takes to go and to come back.
WATCH = 1.2
# A reaction shows within this.
PATIENCE = 2.5
# What a screen names that people only read.
READ_ONLY = {"p", "h2", "img", "span", "nav"}


class Changes:
    """Tells whether a screen looks as it did before, where a caret may have been on or off."""

    def __init__(self, application):
        self.application = application
        self.texts = set()
        self.pictures = set()
        end = time.monotonic() + WATCH
        while time.monotonic() < end:
            text, picture = self.look()
            self.texts.add(text)
            self.pictures.add(picture)
            time.sleep(0.1)

    def look(self):
        text = self.application.ask("command.screenHTML", {})["html"]
        picture = self.application.picture()
        return text, hashlib.sha256(picture).hexdigest()

    def wait(self):
        """What is seen of a reaction; nothing when there is none."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if self.application.process.poll() is not None:
                return "the application ended"
            try:
                text, picture = self.look()
            except Exception:
                # A host that ends closes the connection, a little before it is gone.
                self.application.process.wait(acting_support.PATIENCE)
                continue
            if text not in self.texts:
                return "another screen"
            if picture not in self.pictures:
                return "another picture"
        return None


class Tap:
    """What became of the element of this index."""

    def __init__(self, start, index):
        application = start.application()
        try:
            elements = application.screen()
            self.element_count = len(elements)
            if index >= len(elements):
                self.kind = "gone"
                self.line = f"{'gone':9} element {index}"
                return
            label, x, y, tag = elements[index]
            line = application.ask("command.screenHTML", {})["html"].splitlines()[index + 1]
            changes = Changes(application)
            answer = application.try_tap(x, y)
            effect = changes.wait()
            self.kind = self.judge(label, tag, ' v="1"' in line, answer, effect)
            message = answer["message"][:70] if answer else "ended before it answered"
            self.line = (f"{self.kind:9} {tag:6} {label[:40]!r} at {x},{y}: {message}; "
                         f"{effect or 'nothing seen'}")
        finally:
            application.close()

    @staticmethod
    def judge(label, tag, is_on, answer, effect):
        if answer is None or answer["success"] and effect:
            return "reacted"
        if not answer["success"]:
            # A finger reaches nothing there: something to be read, or disabled.
            return "refused" if effect is None else "UNTRUE"
        if not answer["message"].partition(": ")[2].startswith(label.removesuffix("...")):
            # It is disabled or only read, and what lies behind took the touch.
            return "behind"
        # What is chosen already stays as it is, and so does a text where the caret goes to.
        return "idle" if is_on or tag in READ_ONLY or tag == "input" else "UNTRUE"


def tap_of(start, index):
    """Once more where the answer did not fit: a slow start may still bring up a window while the tap
    is on its way. What is not true of the tap itself is not true the second time either."""
    tap = Tap(start, index)
    return Tap(start, index) if tap.kind == "UNTRUE" else tap


def spread(count):
    """All indices, such that any first few of them lie far apart."""
    step = max(1, round(count * (math.sqrt(5) - 1) / 2))
    while math.gcd(step, count) != 1:
        step += 1
    return [index * step % count for index in range(count)]


def sweep(name, is_complete=False):
    """What became of the elements of that application."""
    start = APPLICATIONS[name]
    end = math.inf if is_complete else time.monotonic() + SHARE
    taps = [tap_of(start, 0)]
    print(f"== {name}, {taps[0].element_count} elements\n{taps[0].line}", flush=True)
    for index in spread(taps[0].element_count):
        if time.monotonic() > end:
            break
        if index != 0:
            taps.append(tap_of(start, index))
            print(taps[-1].line, flush=True)
    counts = {kind: sum(tap.kind == kind for tap in taps) for kind in {tap.kind for tap in taps}}
    print(f"== {name}: {counts} of {len(taps)} tapped", flush=True)
    return taps


def main():
    names = [word for word in sys.argv[1:] if not word.startswith("-")]
    is_complete = "--all" in sys.argv
    is_true = True
    has_reacted = False
    for name in names or APPLICATIONS:
        if not pathlib.Path(APPLICATIONS[name].program).exists():
            raise SystemExit(f"{name} is not installed")
        taps = sweep(name, is_complete)
        is_true = is_true and all(tap.kind != "UNTRUE" for tap in taps)
        # A screen on which nothing reacts was not the application's. Of a few elements all may be
        # disabled.
        reacts = any(tap.kind == "reacted" for tap in taps)
        has_reacted = has_reacted or reacts
        is_true = is_true and (reacts or not is_complete)
    sys.exit(0 if is_true and has_reacted else 1)


if __name__ == "__main__":
    main()
