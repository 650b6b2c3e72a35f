"""A tap does what a press of the mouse does that comes through the display server: the same points
in the same order, in one start of an application each."""

import math
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
NEAR = 20


class RealPressTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.screen = Screen(800, 800)
        cls.addClassCleanup(cls.screen.__exit__)

    def deeds_of(self, command, points, press, wait):
        """`wait` is told how many presses were before."""
        application = Application(command, QT_QPA_PLATFORM="xcb", DISPLAY=self.screen.display)
        try:
            application.find("Save")
            deeds = []
            for point in points:
                application.forget()
                press(application, *point)
                wait(application, len(deeds))
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
        tapped = self.deeds_of(command, points,
                               lambda application, x, y: application.tap(x, y),
                               lambda application, _: time.sleep(acting_support.REST))

        def wait(application, index):
            """Until it did what the tap made it do, and what it did beyond that shows."""
            begin = time.monotonic()
            try:
                application.wait_for_deeds(tapped[index][1])
            except AssertionError:
                return  # What it did instead is compared.
            following = points[min(index + 1, len(points) - 1)]
            is_near = math.dist(points[index], following) < NEAR
            rest = BETWEEN_PRESSES if is_near else acting_support.REST_OF_SCREEN
            time.sleep(max(0, begin + rest - time.monotonic()))
        real = self.deeds_of(command, points, self.really_press, wait)
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
