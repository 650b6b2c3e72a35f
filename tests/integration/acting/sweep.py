"""Taps every element that an application's screen names, each in a fresh start, and tells which of
them reacted. Not a test: what an application does with a tap is its own affair; a person looks into
each line that says "nothing seen".

    sweep.py [APPLICATION...]
"""

import hashlib
import sys
import time

import acting_support
from acting_support import Application

APPLICATIONS = ["pentobi", "focuswriter", "tipp10"]
# Caret and spinners change a picture by themselves; a reaction shows within this.
PATIENCE = 2.0


def start(name):
    program = f"/usr/games/{name}" if name == "pentobi" else f"/usr/bin/{name}"
    application = Application([program])
    # What a first start shows comes in pieces.
    before = None
    for _ in range(50):
        time.sleep(0.2)
        now = application.screen()
        if now and now == before:
            return application
        before = now
    return application


def seen(application):
    """The screen as text, and a digest of its picture."""
    picture = application.ask("command.requestScreenshot", {}, patience=20)
    return application.screen(), hashlib.sha256(repr(picture).encode()).hexdigest()


def effect_of_tap(name, index):
    application = start(name)
    try:
        elements = application.screen()
        if index >= len(elements):
            return None
        label, x, y, tag = elements[index]
        text, picture = seen(application)
        answer = application.tap(x, y, patience=20)
        end = time.monotonic() + PATIENCE
        effect = "nothing seen"
        while time.monotonic() < end and effect == "nothing seen":
            if application.process.poll() is not None:
                effect = "the application ended"
                break
            new_text, new_picture = seen(application)
            if new_text != text:
                effect = "another screen"
            elif new_picture != picture:
                effect = "another picture"
        return label, tag, (x, y), answer, effect
    except Exception as error:  # A host that ends closes the connection.
        if application.process.poll() is None:
            raise
        return label, tag, (x, y), {"success": True, "message": repr(error)}, "the application ended"
    finally:
        application.close()


def main():
    for name in sys.argv[1:] or APPLICATIONS:
        print(f"== {name}", flush=True)
        counts = {}
        index = 0
        while (found := effect_of_tap(name, index)) is not None:
            label, tag, point, answer, effect = found
            kind = ("reacted" if effect != "nothing seen" else "silent") if answer["success"] else \
                ("refused" if effect == "nothing seen" else "refused, but changed")
            counts[kind] = counts.get(kind, 0) + 1
            print(f"{kind:22} {tag:7} {point!s:12} {label!r}: {answer['message']}; {effect}",
                  flush=True)
            index += 1
        print(f"== {name}: {counts}", flush=True)


if __name__ == "__main__":
    main()
