"""An X server of a test's own, and the pictures of it that a person would see."""

import concurrent.futures
import functools
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "harness"))

from loading_support import wait_until  # noqa: E402
from x_server import XServer  # noqa: E402


class Picture:
    """Pixels of three bytes, in rows from the top."""

    def __init__(self, width, height, pixels):
        self.width = width
        self.height = height
        self.pixels = pixels

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.pixels[start : start + 3])

    @staticmethod
    def read(source, environment=None):
        """From a file, or what `import` shows when `source` is its arguments."""
        command = ["convert", source] if isinstance(source, str) else source
        data = subprocess.run(
            [*command, "-depth", "8", "ppm:-"], env=environment, capture_output=True, check=True
        ).stdout
        magic, width, height, most, pixels = data.split(maxsplit=4)
        # What follows the header may begin with what looks like a blank.
        pixels = data[len(data) - 3 * int(width) * int(height) :]
        assert magic == b"P6" and most == b"255"
        return Picture(int(width), int(height), pixels)

    def write(self, path):
        header = f"P6\n{self.width} {self.height}\n255\n".encode()
        subprocess.run(
            ["convert", "ppm:-", "-strip", str(path)],
            input=header + self.pixels,
            check=True,
        )

    def corner(self, width, height):
        """The upper left part."""
        rows = range(0, 3 * self.width * height, 3 * self.width)
        return Picture(
            width, height, b"".join(self.pixels[row : row + 3 * width] for row in rows)
        )

    def difference(self, other, tolerance):
        """The part of all pixels of which a colour differs by more than this."""
        if (self.width, self.height) != (other.width, other.height):
            return 1.0
        differing = 0
        for mine, others in self.differing_pixels(other):
            if any(abs(a - b) > tolerance for a, b in zip(mine, others)):
                differing += 1
        return differing / (self.width * self.height)

    def differing_pixels(self, other):
        """Pairs of pixels, of two pictures of one size. Most rows are the same."""
        length = 3 * self.width
        for row in range(0, len(self.pixels), length):
            mine = self.pixels[row : row + length]
            others = other.pixels[row : row + length]
            if mine != others:
                for start in range(0, length, 3):
                    if mine[start : start + 3] != others[start : start + 3]:
                        yield mine[start : start + 3], others[start : start + 3]


class Screen(XServer):
    def picture(self, window="root"):
        return Picture.read(
            ["import", "-silent", "-window", str(window)], self.environment()
        )

    def click(self, x, y):
        self.tell("mousemove", x, y, "click", 1)

    def wait_for_rest(self, window="root"):
        """The picture once it has not changed for a moment."""
        last = [self.picture(window)]

        def rests():
            now = self.picture(window)
            is_same = now.pixels == last[0].pixels
            last[0] = now
            return is_same

        wait_until(rests)
        return last[0]


def each(*cases, **screen):
    """Of a check, which gets a case and a screen of its own: the test that awaits it in all cases."""
    def of(check):
        @functools.wraps(check)
        def test(self):
            for case in cases:
                with self.subTest(case=case):
                    self.running[check.__name__, case].result()

        def run(self, case):
            with Screen(**screen) as own:
                check(self, case, own)

        test.run_case, test.cases = run, cases
        return test
    return of


class SideBySide(unittest.TestCase):
    """All cases of all checks begin when the first is asked for. They wait most of the time: for
    frames, and for effects to end."""

    @classmethod
    def setUpClass(cls):
        cls.pool = concurrent.futures.ThreadPoolExecutor(4)
        cls.running = {
            (name, case): cls.pool.submit(test.run_case, cls(name), case)
            for name, test in vars(cls).items() if hasattr(test, "run_case")
            for case in test.cases
        }

    @classmethod
    def tearDownClass(cls):
        cls.pool.shutdown(cancel_futures=True)
