"""Figures and widgets in a scene, and disabled items of views: read where they are seen, and tapped
with the effect that a person's finger has."""

import unittest

from acting_support import Application, support

HOST = support.BUILD / "bin" / "tarnix_scene_host"


class SceneTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.application = Application([HOST])
        cls.addClassCleanup(cls.application.close)
        cls.application.find("Inside")

    def setUp(self):
        self.application.forget()

    def tap(self, label, message, deeds):
        answer = self.application.tap_label(label)
        self.assertEqual(answer["message"][:len(message)], message)
        self.expect(deeds)

    def expect(self, deeds):
        # What is there so far, so that a test of many taps is a short one.
        support.wait_for(lambda: len(self.application.did()) >= len(deeds), deeds)
        self.assertEqual(self.application.did(), deeds)

    def test_figures_and_widgets_are_read_where_they_are_seen(self):
        elements = {label: (tag, x, y) for label, x, y, tag in self.application.screen()}
        self.assertEqual(elements["Plain words"][0], "p")
        self.assertEqual(elements["Knight"][0], "button")
        self.assertEqual(elements["Own words"][0], "button")
        self.assertEqual(elements["Ornament"][0], "span")
        self.assertEqual(elements["Field"][0], "input")
        self.assertNotIn("Hidden", elements)
        # The scene is drawn from the middle of its view, one and a half times as large.
        left, top = 10 + 300 - 285, 10 + 300 - 285
        self.assertAlmostEqual(elements["Knight"][1], left + 45, delta=3)
        self.assertAlmostEqual(elements["Knight"][2], top + 90, delta=3)
        # Turned to the right: what is on its right in the form is below.
        self.assertAlmostEqual(elements["Inside"][1], left + (300 - 25) * 1.5, delta=3)
        self.assertAlmostEqual(elements["Inside"][2], top + (100 + 50) * 1.5, delta=3)
        self.assertAlmostEqual(elements["Off"][2], top + (100 + 140) * 1.5, delta=3)

    def test_the_snapshot_has_the_widgets_of_a_scene(self):
        elements = self.application.ask("command.requestSnapshot", {})["elements"]
        button = next(element for element in elements if element.get("label") == "Inside")
        self.assertEqual((button["type"], button["interactive"]), ("Button", True))
        self.assertEqual((button["width"], button["height"]), (45, 120))

    def test_figures_react_when_they_take_presses(self):
        self.tap("Knight", "Tapped control: ", ["piece"])
        self.application.forget()
        self.assertEqual(self.application.type("k")["message"],
                         "Typed 1 characters via UIKeyInput")
        self.expect(["key k"])
        self.application.forget()
        self.tap("Own words", "Tapped control: ", ["word"])
        self.application.forget()
        self.tap("Ornament", "No tappable element at", [])

    def test_widgets_in_a_scene_react_by_name(self):
        self.tap("Inside", "Tapped control: Inside", ["inside clicked"])
        self.application.forget()
        self.tap("Off", "No tappable element at", [])
        self.tap("Field", "Tapped control: Field", [])
        self.assertEqual(self.application.type("hé")["message"], "Typed 2 characters")
        self.expect(["field hé"])
        self.application.forget()
        self.application.tap_label("One")
        self.tap("Two", "Tapped control: ", ["combo 1"])

    def test_a_list_in_a_scene_scrolls(self):
        x, y = self.application.find("Row 1")
        answer = self.application.swipe(x, y, x, y - 60)
        self.assertEqual(answer["message"], "Scrolled by (0,60)")
        self.expect(["list at 60"])

    def test_buttons_that_a_window_inside_a_window_paints(self):
        self.tap("Minimize", "Tapped control: Inner", ["small"])
        self.application.forget()
        self.tap("Restore", "Tapped control: Inner", ["not small"])

    def test_signs_and_colours_of_the_toolkits_own(self):
        self.tap("Clear", "Tapped control: Clear", ["search "])
        self.application.forget()
        self.application.tap_label("Press shortcut")
        self.assertEqual(self.application.type("k")["message"],
                         "Typed 1 characters via UIKeyInput")
        self.assertIn(' v="K', self.application.ask("command.screenHTML", {})["html"])
        self.application.tap_label("Colour")
        x, y = self.application.find("Basic colors")
        self.assertTrue(self.application.tap(x, y + 40)["success"])
        support.wait_for(lambda: "colour" in self.application.did(), "a colour")
        self.application.tap_label("Cancel")
        self.application.find("Inside")

    def test_links_in_a_text_are_followed(self):
        self.tap("the first", "Tapped control: ", ["followed one"])
        self.application.forget()
        self.tap("the second", "Tapped control: ", ["followed two"])
        self.application.forget()
        self.tap("licence", "Tapped control: By somebody, see licence", ["link #law"])

    def test_a_popup_with_a_field_gets_what_is_typed(self):
        self.application.tap_label("Open popup")
        self.application.tap_label("Rename")
        self.assertEqual(self.application.type("né")["message"], "Typed 2 characters")
        self.expect(["renamed né"])
        self.application.tap_label("Rename it")

    def test_what_shows_a_hand_takes_presses(self):
        self.tap("Filtered", "Tapped control: Filtered", ["filtered"])

    def test_boxes_without_a_text_are_called_after_their_column(self):
        boxes = [element for element in self.application.screen()
                 if element[0] == "Visible" and element[3] == "button"]
        self.assertEqual(len(boxes), 3)
        # Where they are said to be is where they are checked.
        _, x, y, _ = boxes[2]
        self.application.tap(x, y)
        support.wait_for(lambda: "box 2 2" in self.application.did(), "a checked box")

    def test_disabled_items_are_read_and_do_nothing(self):
        self.tap("Layer 1", "No tappable element at", [])
        self.tap("Layer 2", "Tapped control: QTableWidget", ["chosen"])
        self.application.forget()
        self.tap("Locked", "No tappable element at", [])
        # Beside its text a disabled row is unfolded like any other.
        _, y = self.application.find("Locked")
        self.assertTrue(self.application.tap(620 + 11, y)["success"])
        self.expect(["unfolded"])
        self.application.forget()
        self.tap("Leaf", "No tappable element at", [])


if __name__ == "__main__":
    support.main()
