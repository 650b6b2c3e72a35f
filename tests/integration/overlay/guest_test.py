#!/usr/bin/env python3
"""Real applications with the probe in them, while effects run: what the companion reads of them and
does to them is what it is without effects, and nothing is left of them."""

import base64
import pathlib
import shutil
import sys
import time
import unittest

FOLDER = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(FOLDER.parent / "acting"))
sys.path.insert(0, str(FOLDER.parent / "loading"))

from acting_support import FOLDER as ACTING, QML, Application, support  # noqa: E402
from screen import Picture, SideBySide, each  # noqa: E402

WIDGETS = [support.BUILD / "bin/tarnix_acting_host"]
QUICK = [QML, ACTING / "controls.qml"]

# A button "Save" that says so when it is clicked, one that opens a dialog, one that closes.
PLACES = {
    "widgets": {"save": (70, 55), "dialog": (570, 55), "close": (575, 615)},
    "quick": {"save": (70, 30), "dialog": (590, 540), "close": (500, 660)},
}
KINDS = {"widgets": WIDGETS, "quick": QUICK}

# Of the orb, after the last effect, and of its fade.
ORB_STAYS = 3.5


class Guest(Application):
    """On a screen of its own."""

    def __init__(self, screen, kind, **variables):
        super().__init__([*KINDS[kind], "-platform", "xcb"], DISPLAY=screen.display,
                         QT_QUICK_BACKEND="software", **variables)
        support.wait_for(lambda: any(screen.picture().pixels), "a window on the screen")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def show(self, category, **fields):
        self.companion.send("command.showOverlay", dict(fields, category=category))

    def show_all(self):
        """One of each that the companion can ask for by itself; all run at once."""
        for category in ("scan", "data", "verify", "environment", "capture"):
            self.show(category, detail="at work")

    def ask(self, command, payload, **options):
        # Two of them are answered by another name.
        kind = command.split(".")[1].replace("requestS", "s")
        if kind == command.split(".")[1]:
            return super().ask(command, payload, **options)
        self.companion.send(command, payload)
        while True:
            answered, answer = self.companion.messages.get(timeout=support.TIME_LIMIT)
            if answered == "response." + kind:
                return answer

    def readings(self):
        return {
            "screen": self.ask("command.screenHTML", {})["html"],
            "text": self.ask("command.screenText", {})["lines"],
            "views": self.ask("command.requestSnapshot", {})["elements"],
            "issues": self.ask("command.accessibilityAudit", {})["issues"],
            "found": self.ask("command.findElement", {"text": "Save"})["results"],
        }

    def picture(self):
        file = pathlib.Path(self.home.name) / "picture.png"
        file.write_bytes(base64.b64decode(
            self.ask("command.requestScreenshot", {})["base64PNG"]))
        return Picture.read(str(file))

    def resident_memory(self):
        status = pathlib.Path(f"/proc/{self.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0]) * 1024

    def wait_for_clicks(self, count):
        support.wait_for(lambda: self.did().count("save clicked") == count, f"click {count}")


SIZE = {"width": 1400, "height": 1500}


class GuestTest(SideBySide):
    @each(*((kind, factor) for kind in KINDS for factor in (1, 2)), **SIZE)
    def test_what_is_read_has_no_effects_in_it(self, case, screen):
        kind, factor = case
        with Guest(screen, kind, QT_SCALE_FACTOR=str(factor)) as guest:
            guest.find("Save")
            # What the question showed has gone.
            time.sleep(ORB_STAYS + 1)
            plain = screen.wait_for_rest()
            before = guest.readings()
            picture = guest.picture()
            self.assertGreater(picture.width, 600 * factor)
            for _ in range(5):
                guest.show_all()
                time.sleep(0.15)
                during = guest.readings()
                for name, reading in before.items():
                    self.assertEqual(during[name], reading, name)
                taken = guest.picture()
                seen = screen.picture()
                self.assertTrue(is_same(taken, picture))
            self.assertFalse(is_same(seen, plain), "effects can be seen")
            support.wait_for(lambda: is_same(screen.picture(), plain), "the picture of before")

    @each(1, 2, **SIZE)
    def test_a_picture_shows_what_was_scrolled_where_it_is_seen(self, factor, screen):
        with Guest(screen, "widgets", QT_SCALE_FACTOR=str(factor)) as guest:
            guest.find("Save")
            for x, y, to in ((50, 400, 370), (250, 400, 310), (50, 500, 460)):
                self.assertTrue(guest.swipe(x, y, x, to)["success"])
            time.sleep(ORB_STAYS + 1)
            seen = screen.wait_for_rest()
            taken = guest.picture()
            # What the toolkit paints as a whole differs by a pixel or two of a line's end from what
            # it scrolls and paints the rest of.
            self.assertLess(taken.difference(seen.corner(taken.width, taken.height), 0), 1e-5)

    @each(*((kind, factor) for kind in KINDS for factor in (1, 2)), **SIZE)
    def test_taps_land_through_effects(self, case, screen):
        kind, factor = case
        with Guest(screen, kind, QT_SCALE_FACTOR=str(factor)) as guest:
            guest.find("Save")
            x, y = PLACES[kind]["save"]
            # The second one goes through the ring of the first.
            for count in (1, 2):
                guest.show_all()
                self.assertTrue(guest.tap(x, y)["success"])
                guest.wait_for_clicks(count)
            # A person's own, at the same place.
            guest.show_all()
            screen.click(x * factor, y * factor)
            guest.wait_for_clicks(3)

    @each("widgets", **SIZE)
    def test_typing_goes_on_where_it_was(self, kind, screen):
        with Guest(screen, kind) as guest:
            guest.find("Save")
            guest.tap(100, 195)
            guest.show_all()
            self.assertTrue(guest.type("a")["success"])
            guest.show_all()
            self.assertTrue(guest.type("b")["success"])
            support.wait_for(lambda: "plain ab" in guest.did(), "both letters")

    @each(*KINDS, **SIZE)
    def test_a_dialog_that_opens_meanwhile_is_drawn_over_and_works(self, kind, screen):
        with Guest(screen, kind) as guest:
            guest.find("Save")
            guest.show_all()
            guest.tap(*PLACES[kind]["dialog"])
            label = "Done" if kind == "widgets" else "Inside"
            place = guest.find(label)
            time.sleep(ORB_STAYS + 1)
            plain = screen.wait_for_rest()
            self.wait_for_badge(guest, plain, screen)
            guest.tap(*place)
            deed = "modal accepted" if kind == "widgets" else "inside clicked"
            support.wait_for(lambda: deed in guest.did(), deed)

    def wait_for_badge(self, guest, plain, screen):
        """Until the badge of what has passed is seen, whose green nothing else has."""
        def count():
            # It is there for a second alone, and a busy machine looks less often than that.
            guest.show("verify", passed=True)
            guest.companion.barrier()
            time.sleep(0.3)
            return sum(
                1 for now, _ in screen.picture().differing_pixels(plain)
                if now[1] > 180 and now[0] < 100 and now[2] < 130
            )

        support.wait_for(lambda: count() > 500, "the badge")

    @each(*KINDS, **SIZE)
    def test_a_window_that_closes_in_the_middle_ends_as_it_would(self, kind, screen):
        with Guest(screen, kind) as guest:
            guest.find("Save")
            for _ in range(3):
                guest.show_all()
            # No answer need come of an application that ends with the tap.
            x, y = PLACES[kind]["close"]
            guest.companion.send("command.tap", {"x": x, "y": y})
            self.assertEqual(guest.process.wait(support.TIME_LIMIT), 0)

    @each(*KINDS, **SIZE)
    def test_a_thousand_effects_leave_nothing_and_rest_costs_what_it_did(self, kind, screen):
        with Guest(screen, kind) as guest:
            guest.find("Save")
            time.sleep(ORB_STAYS + 1)
            plain = screen.wait_for_rest()
            wake_ups_before = wake_ups(guest.pid)
            memory = 0
            for number in range(200):
                guest.show_all()
                time.sleep(0.02)
                if number == 50:
                    guest.companion.barrier()
                    memory = guest.resident_memory()
            guest.companion.barrier()
            support.wait_for(lambda: is_same(screen.picture(), plain), "the picture of before")
            self.assertLess(guest.resident_memory() - memory, 6 * 1024 * 1024)
            # Sixty frames in each of these seconds would be 180.
            self.assertLess(wake_ups(guest.pid), wake_ups_before + 30)


def is_same(picture, other):
    # The edges of turned figures differ by the last bit with what is drawn anew beside them.
    return picture.difference(other, 2) == 0


def wake_ups(pid, seconds=3):
    """How often the main thread of a process went to sleep in some seconds."""
    def count():
        status = pathlib.Path(f"/proc/{pid}/task/{pid}/status").read_text()
        return int(status.split("\nvoluntary_ctxt_switches:")[1].split()[0])

    start = count()
    time.sleep(seconds)
    return count() - start


if __name__ == "__main__":
    if not all(shutil.which(tool) for tool in ("Xvfb", "import", "convert", "xdotool")):
        print("needs Xvfb, imagemagick and xdotool")
        sys.exit(77)
    support.main()
