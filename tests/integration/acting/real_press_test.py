"""A tap does what a press of the mouse does that comes through the display server: the same points
in the same order, in one start of an application each."""

import subprocess
import sys
import time
import unittest

import acting_support
from acting_support import Application, FOLDER, QML

sys.path.insert(0, str(FOLDER.parent / "overlay"))
sys.path.insert(0, str(FOLDER.parent / "loading"))

import quick_test  # noqa: E402
import widgets_test  # noqa: E402
from screen import Screen  # noqa: E402

# Two presses at one place within less are a double click.
BETWEEN_PRESSES = 0.6


class RealPressTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.screen = Screen(800, 800)
        cls.addClassCleanup(cls.screen.__exit__)

    def deeds_of(self, command, points, press):
        application = Application(command, QT_QPA_PLATFORM="xcb", DISPLAY=self.screen.display)
        try:
            application.find("Save")
            deeds = []
            for point in points:
                application.forget()
                press(application, *point)
                time.sleep(BETWEEN_PRESSES)
                deeds.append((point, application.did()))
            return deeds
        finally:
            application.close()

    def really_press(self, application, x, y):
        def run(*words):
            return subprocess.run(["xdotool", *map(str, words)], env=self.screen.environment(),
                                  check=True, capture_output=True, text=True).stdout
        window = run("search", "--onlyvisible", "--pid", application.pid).split()[-1]
        run("mousemove", "--window", window, round(x), round(y), "click", "1")

    def compare(self, command, points):
        real = self.deeds_of(command, points, self.really_press)
        tapped = self.deeds_of(command, points, lambda application, x, y: application.tap(x, y))
        self.assertEqual(tapped, real)
        # Presses that reach nothing at all would be equal too.
        self.assertGreater(sum(len(deeds) > 0 for _, deeds in real), len(points) / 2)

    def test_on_quick_controls(self):
        self.compare([QML, FOLDER / "controls.qml"], [tap[0] for tap in quick_test.TAPS])

    def test_on_quick_controls_upside_down(self):
        self.compare([QML, FOLDER / "controls.qml", "--", "--turned"],
                     [quick_test.Turned.place(*tap[0]) for tap in quick_test.TAPS])

    def test_on_widgets(self):
        self.compare([widgets_test.HOST], [tap[0] for tap in widgets_test.TAPS])


if __name__ == "__main__":
    acting_support.support.main()
