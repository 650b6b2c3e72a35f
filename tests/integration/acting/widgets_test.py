"""Touches, swipes and typed text on each kind of widget: it reacts once, or not at all."""

import unittest

import acting_support
from acting_support import Application

HOST = acting_support.support.BUILD / "bin" / "tarnix_acting_host"
QML = acting_support.QML

TAPS = [
    ((70, 55), True, "Tapped control: Save", ["save clicked"]),
    ((70, 55), True, "Tapped control: Save", ["save clicked"]),
    ((200, 55), False, "No tappable element at", []),
    ((290, 55), True, "Tapped control: Check", ["check true"]),
    # The box stretches over empty ground that does not belong to it for a finger.
    ((385, 55), False, "No tappable element at", []),
    ((420, 55), True, "Tapped control: Radio", ["radio true"]),
    ((150, 95), True, "Tapped control: ", ["slider"]),
    ((312, 88), True, "Tapped control: 0", ["spin 1"]),
    ((235, 133), True, "Tapped control: ", ["tab 1"]),
    ((359, 129), True, "Tapped control: Group", ["group false"]),
    ((400, 160), False, "No tappable element at", []),
    ((535, 135), True, "Tapped control: see the linked page", ["link there"]),
    ((470, 135), False, "No tappable element at", []),
    ((480, 250), True, "Tapped control: ", ["canvas 50 30"]),
    ((78, 312), True, "Tapped control: QListWidget", ["list Row 1"]),
    ((241, 353), True, "Tapped control: QTableWidget", ["cell 1 0"]),
    ((475, 330), True, "Tapped control: QTreeWidget", ["tree Leaf"]),
    ((480, 420), False, "No tappable element at", []),
]


class WidgetsTest(unittest.TestCase):
    def start(self, *arguments, **variables):
        application = Application([HOST, *arguments], **variables)
        self.addCleanup(application.close)
        application.find("Save")
        return application

    def tap_all(self, application):
        for point, success, message, deeds in TAPS:
            with self.subTest(point=point):
                application.forget()
                answer = application.tap(*point)
                self.assertEqual((answer["success"], answer["message"][:len(message)]),
                                 (success, message), answer)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_a_tap_makes_each_widget_react_once(self):
        self.tap_all(self.start())

    def test_at_twice_the_scale(self):
        self.tap_all(self.start(QT_SCALE_FACTOR="2"))

    def test_in_a_modal_dialog(self):
        self.tap_all(self.start("--dialog"))

    def test_popups_menus_and_loops_of_the_hosts_own(self):
        self.open_popups_and_menus()

    def test_popups_and_menus_at_twice_the_scale(self):
        self.open_popups_and_menus(QT_SCALE_FACTOR="2")

    def open_popups_and_menus(self, **variables):
        application = self.start(**variables)
        for labels, deeds in [(["One", "Three"], ["combo 2"]), (["Pop", "Choice"], ["choice"]),
                              (["File", "Open"], ["open"]), (["File", "More", "Inner"], ["inner"]),
                              (["Modal", "Done"], ["modal opened", "modal accepted"]),
                              (["Save"], ["save clicked"])]:
            with self.subTest(labels=labels):
                application.forget()
                for label in labels:
                    self.assertTrue(application.tap_label(label)["success"])
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_an_open_menu_takes_a_touch_beside_it(self):
        application = self.start()
        application.tap_label("Pop")
        self.assertFalse(application.tap_label("Grey")["success"])
        self.assertEqual(application.tap(70, 55)["message"], "Tapped control: QMenu")
        self.assertEqual(application.wait_for_deeds([]), [])
        application.tap(70, 55)
        self.assertEqual(application.wait_for_deeds(["save clicked"]), ["save clicked"])

    def test_text_is_typed_as_an_input_method_does(self):
        application = self.start()
        for point, text, message, deeds in [
                ((100, 195), "héllo 👩‍🚀 你好 مرحبا", "Typed 16 characters",
                 ["plain héllo 👩‍🚀 你好 مرحبا"]),
                ((250, 195), "abcdefgh", "Typed 8 characters", ["short abcde"]),
                ((350, 195), "12x", "Typed 3 characters", []),
                ((350, 195), "12", "Typed 2 characters", ["number 12"]),
                ((443, 195), "12", "Typed 2 characters", ["mask 12-"]),
                # Behind all places of the mask.
                ((510, 195), "34", "Typed 2 characters", ["mask 12-34"]),
                ((570, 195), "no", "First responder doesn't accept text input", []),
                ((100, 250), "a\nb", "Typed 3 characters", ["text a|b"]),
                ((300, 250), "rich", "Typed 4 characters", ["rich rich"]),
                ((480, 250), "aB1é", "Typed 4 characters via UIKeyInput",
                 ["canvas 50 30", "key a", "key B", "key 1", "key é"])]:
            with self.subTest(text=text, point=point):
                application.forget()
                self.assertTrue(application.tap(*point)["success"])
                self.assertEqual(application.type(text)["message"], message)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_a_swipe_scrolls_what_lies_under_its_start(self):
        self.swipe_all(self.start())

    def test_a_swipe_goes_as_far_at_twice_the_scale(self):
        self.swipe_all(self.start(QT_SCALE_FACTOR="2"))

    def test_a_swipe_scrolls_in_a_modal_dialog(self):
        self.swipe_all(self.start("--dialog"))

    def swipe_all(self, application):
        for way, message, deeds in [
                ((50, 400, 50, 300), "Scrolled by (0,100)", ["list at 100"]),
                ((50, 300, 50, 9000), "Scrolled by (0,-8700)", ["list at 0"]),
                ((250, 400, 250, 310), "Scrolled by (0,90)", ["table at 3"]),
                ((50, 500, 50, 400), "Scrolled by (0,100)", ["area at 100"]),
                ((70, 55, 70, 20), "No scrollable view found at (70,55)", [])]:
            with self.subTest(way=way):
                application.forget()
                self.assertEqual(application.swipe(*way)["message"], message)
                self.assertEqual(application.wait_for_deeds(deeds), deeds)
        # Where the element is reported is where it is tapped, also after the scrolling.
        application.forget()
        application.tap_label("Deep")
        self.assertEqual(application.wait_for_deeds(["deep clicked"]), ["deep clicked"])

    def test_a_window_that_closes_on_the_press_does_no_harm(self):
        application = self.start()
        x, y = application.find("Close")
        # The application ends with its window, maybe before the answer is out.
        application.companion.send("command.tap", {"x": x, "y": y})
        self.assertEqual(application.process.wait(acting_support.PATIENCE), 0)


if __name__ == "__main__":
    acting_support.support.main()
