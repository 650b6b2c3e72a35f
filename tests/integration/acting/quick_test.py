"""Touches, swipes and typed text on each kind of Quick control: it reacts once, or not at all."""

import time
import unittest

import acting_support
from acting_support import Application, FOLDER, QML

SIZE = (640, 700)


class Upright:
    """Where the ground of the controls stands in the window."""
    arguments = []

    @staticmethod
    def place(x, y):
        return x, y


class Turned(Upright):
    arguments = ["--turned"]

    @staticmethod
    def place(x, y):
        return SIZE[0] - x, SIZE[1] - y


class Small(Upright):
    arguments = ["--small"]

    @staticmethod
    def place(x, y):
        return SIZE[0] / 2 + (x - SIZE[0] / 2) / 2, SIZE[1] / 2 + (y - SIZE[1] / 2) / 2


TAPS = [
    ((70, 30), True, "Tapped control: Save", ["save clicked"]),
    ((70, 30), True, "Tapped control: Save", ["save clicked"]),
    ((200, 30), False, "No tappable element at", []),
    ((300, 24), True, "Tapped control: Check", ["check true"]),
    ((430, 24), True, "Tapped control: Switch", ["switch true"]),
    ((40, 72), True, "Tapped control: Radio", ["radio true"]),
    ((240, 72), True, "Tapped control: ", ["slider 50"]),
    ((490, 66), True, "Tapped control: 0", ["spin 1"]),
    ((240, 120), True, "Tapped control: Second", ["tab second"]),
    ((370, 130), True, "Triggered tap gesture on: ", ["tap handler"]),
    ((450, 140), True, "Tapped control: ", ["area 20 30"]),
    ((480, 130), True, "Tapped control: ", ["area 50 20"]),
    ((580, 130), False, "No tappable element at", []),
    ((50, 178), True, "Tapped control: see link", ["link there"]),
    ((15, 178), False, "No tappable element at", []),
    ((100, 340), True, "Tapped control: Row 0", ["row 0"]),
    ((100, 560), True, "Tapped control: ", ["turned"]),
    ((66, 526), False, "No tappable element at", []),
    ((270, 540), True, "Tapped control: ", ["flipped 10"]),
    ((210, 540), False, "No tappable element at", []),
    ((340, 540), True, "Tapped control: Cut", ["cut clicked"]),
    ((420, 540), False, "No tappable element at", []),
    ((70, 660), True, "Tapped control: MouseArea", ["ground"]),
    # The second Wednesday.
    ((200, 628), True, "Tapped control: MonthGrid", ["day 4"]),
    ((330, 665), True, "Triggered tap gesture on: ", ["chosen 1"]),
    ((400, 665), False, "No tappable element at", []),
]


class QuickTest(unittest.TestCase):
    def start(self, ground=Upright, **variables):
        application = Application([QML, FOLDER / "controls.qml", "--", *ground.arguments],
                                  **variables)
        self.addCleanup(application.close)
        application.find("Save")
        return application

    def tap_all(self, ground, **variables):
        application = self.start(ground, **variables)
        for point, success, message, deeds in TAPS:
            with self.subTest(point=point):
                application.forget()
                answer = application.tap(*ground.place(*point))
                self.assertEqual((answer["success"], answer["message"][:len(message)]),
                                 (success, message), answer)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_a_tap_makes_each_control_react_once(self):
        self.tap_all(Upright)

    def test_at_twice_the_scale(self):
        self.tap_all(Upright, QT_SCALE_FACTOR="2")

    def test_upside_down(self):
        self.tap_all(Turned)

    def test_at_half_the_size(self):
        self.tap_all(Small)

    def test_popups_and_dialogs(self):
        self.open_popups_and_dialogs()

    def test_popups_and_dialogs_at_twice_the_scale(self):
        self.open_popups_and_dialogs(QT_SCALE_FACTOR="2")

    def open_popups_and_dialogs(self, **variables):
        application = self.start(**variables)
        for labels, deeds in [(["One", "Three"], ["combo 2"]), (["Menu", "Entry"], ["entry"]),
                              (["Menu", "Grey"], [])]:
            with self.subTest(labels=labels):
                application.forget()
                for label in labels:
                    application.tap_label(label)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)
        # The menu is still open: a touch beside it closes it.
        application.tap(300, 690)
        acting_support.support.wait_for(
            lambda: "Entry" not in [label for label, *_ in application.screen()], "a closed menu")
        application.forget()
        application.tap_label("Dialog")
        application.find("Inside")
        self.assertFalse(application.tap(70, 30)["success"], "behind a modal dialog")
        application.tap_label("Inside")
        application.tap_label("OK")
        expected = ["inside clicked", "accepted"]
        self.assertEqual(application.wait_for_deeds(expected), expected)

    def test_text_is_typed_as_an_input_method_does(self):
        application = self.start()
        for point, text, message, deeds in [
                ((100, 220), "héllo 👩‍🚀 你好 مرحبا", "Typed 16 characters",
                 ["field focus", "edited héllo 👩‍🚀 你好 مرحبا"]),
                ((280, 220), "abcdefgh", "Typed 8 characters", ["short abcde"]),
                ((410, 220), "12x", "Typed 3 characters", []),
                ((410, 220), "12", "Typed 2 characters", ["number 12"]),
                ((483, 220), "12", "Typed 2 characters", ["mask 12-"]),
                # Behind all places of the mask.
                ((580, 220), "34", "Typed 2 characters", ["mask 12-34"]),
                ((100, 270), "no", "First responder doesn't accept text input", []),
                ((320, 280), "a\nb", "Typed 3 characters", ["area text a|b"]),
                ((480, 270), "aB1", "Typed 3 characters via UIKeyInput",
                 ["key a", "key B", "key 1"])]:
            with self.subTest(text=text, point=point):
                application.forget()
                self.assertTrue(application.tap(*point)["success"])
                self.assertEqual(application.type(text)["message"], message)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_nothing_is_typed_without_a_focus(self):
        self.assertEqual(self.start().type("a"),
                         {"success": False, "message": "No text field is focused"})

    def test_a_swipe_scrolls_what_lies_under_its_start(self):
        self.swipe_all()

    def test_a_swipe_goes_as_far_at_twice_the_scale(self):
        self.swipe_all(QT_SCALE_FACTOR="2")

    def swipe_all(self, **variables):
        application = self.start(**variables)
        for way, message, deeds in [
                ((100, 460, 100, 360), "Scrolled by (0,100)", ["list at 100"]),
                ((100, 360, 100, 9000), "Scrolled by (0,-8640)", ["list at 0"]),
                ((300, 460, 200, 360), "Scrolled by (100,100)", ["flick at 100 100"]),
                ((600, 400, 450, 400), "Scrolled by (150,0)", ["page 1"]),
                ((300, 20, 300, 0), "No scrollable view found at (300,20)", [])]:
            with self.subTest(way=way):
                application.forget()
                self.assertEqual(application.swipe(*way)["message"], message)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_two_swipes_go_twice_as_far(self):
        application = self.start()
        application.swipe(100, 460, 100, 360)
        application.swipe(100, 460, 100, 360)
        self.assertEqual(application.wait_for_deeds(["list at 200"]), ["list at 200"])

    def test_a_busy_application_answers_when_it_is_free(self):
        application = self.start()
        # The reaction holds the main thread; the tap is answered after it.
        begin = time.monotonic()
        application.tap_label("Busy")
        self.assertGreater(time.monotonic() - begin, 1)
        self.assertTrue(application.tap_label("Save")["success"])
        self.assertEqual(application.wait_for_deeds(["busy", "save clicked"]),
                         ["busy", "save clicked"])

    def test_a_window_that_closes_on_a_tap_does_no_harm(self):
        application = self.start()
        x, y = application.find("Close")
        # The application ends with its window, maybe before the answer is out.
        application.companion.send("command.tap", {"x": x, "y": y})
        self.assertEqual(application.process.wait(acting_support.PATIENCE), 0)


if __name__ == "__main__":
    acting_support.support.main()
