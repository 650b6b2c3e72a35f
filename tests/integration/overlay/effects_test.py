#!/usr/bin/env python3
"""Each effect over widgets and over Quick, as a person sees it, and what the application must not
notice of it.

With TARNIX_UPDATE_PICTURES set, the pictures that are compared with are taken anew: look at each.
"""

import itertools
import os
import pathlib
import shutil
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))

from loading_support import BUILD, PATIENCE, Process, environment, wait_until  # noqa: E402
from screen import Picture, SideBySide, each  # noqa: E402

HOST = BUILD / "bin/tarnix_effects_host"
PICTURES = pathlib.Path(__file__).resolve().parent / "pictures"

KINDS = ("widgets", "quick")

# In seconds after the effect began.
MOMENTS = {
    "tap": (0.1, 0.3, 0.5),
    "swipe": (0.175, 0.4, 0.65),
    "type": (0.075, 0.3, 0.675),
    "scan": (0.1, 0.4, 0.8),
    "capture": (0.04, 0.08, 0.2),
    "data": (0.2, 0.45, 0.7),
    "verify": (0.08, 0.5, 1.0),
    "fail": (0.08, 0.5, 1.0),
    "environment": (0.05, 0.6, 1.1),
}

# A colour may differ by so much, and so many pixels by more: letters are drawn a little otherwise
# from one machine to the next. An effect that is missing or misplaced is several times that.
COLOUR_TOLERANCE = 24
PIXEL_TOLERANCE = 0.002


class Host:
    """Ended with the block."""

    def __init__(self, screen, kind, **variables):
        self._process = Process(
            [HOST, kind],
            env=environment(
                DISPLAY=screen.display, QT_QPA_PLATFORM="xcb", QT_QUICK_BACKEND="software",
                LANG="C.UTF-8", **variables,
            ),
        )
        self._answers = 0
        ready = self._process.wait_for_line("ready ")
        assert ready, self._process.error_lines
        self.window = int(ready.split()[1])
        self.pid = self._process.pid

    def ask(self, command):
        self._process._process.stdin.write(command + "\n")
        self._process._process.stdin.flush()
        self._answers += 1
        wanted = self._answers
        answers = wait_until(
            lambda: [line for line in list(self._process.lines) if line.startswith("ok")][
                wanted - 1 : wanted
            ],
            2 * PATIENCE,
        )
        assert answers, (command, self._process.error_lines)
        return answers[0][3:]

    def resident_memory(self):
        status = pathlib.Path(f"/proc/{self.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0]) * 1024

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.__exit__()


class EffectsTest(SideBySide):
    def picture_like(self, path, window, screen):
        """The window once it looks like the picture; as it came to rest when it never does."""
        deadline = time.monotonic() + PATIENCE
        while True:
            seen = screen.wait_for_rest(window)
            # A busy machine may rest between two frames, before it draws the one that was asked for.
            if (
                os.environ.get("TARNIX_UPDATE_PICTURES")
                or time.monotonic() > deadline
                or seen.difference(Picture.read(str(path)), COLOUR_TOLERANCE) < PIXEL_TOLERANCE
            ):
                return seen

    def assert_goes(self, host, screen, before, frame, tolerance):
        """All that is shown, with the frames after this one: the orb three seconds after the last
        effect."""
        frames = itertools.count(frame + 1)

        def has_gone():
            host.ask(f"frame {next(frames)}")
            return screen.picture(host.window).difference(before, tolerance) == 0

        self.assertTrue(wait_until(has_gone), "the picture of before")

    @each(*((kind, effect) for kind in KINDS for effect in MOMENTS))
    def test_each_effect_looks_as_it_did_when_somebody_looked(self, case, screen):
        kind, effect = case
        with Host(screen, kind) as host:
            before = screen.wait_for_rest(host.window)
            host.ask("show " + effect)
            host.ask("frame 0")
            for number, moment in enumerate(MOMENTS[effect], 1):
                host.ask(f"frame {moment}")
                path = PICTURES / f"{kind}_{effect}_{number}.png"
                seen = self.picture_like(path, host.window, screen)
                if os.environ.get("TARNIX_UPDATE_PICTURES"):
                    seen.write(path)
                self.assertGreater(
                    seen.difference(before, COLOUR_TOLERANCE), PIXEL_TOLERANCE, path.name
                )
                self.assertLess(
                    seen.difference(Picture.read(str(path)), COLOUR_TOLERANCE),
                    PIXEL_TOLERANCE,
                    path.name,
                )

    @each("1", "1.25")
    def test_a_window_that_was_not_painted_yet_is_drawn_over_once_it_is(self, factor, screen):
        with Host(screen, "widgets", QT_SCALE_FACTOR=factor) as host:
            host.ask("show verify")
            host.ask("frame 0")
            red, green, blue = bytes.fromhex(host.ask("open 0.5")[1:])
            self.assertTrue(green > 180 and red < 120 and blue < 150, "the badge's ground")

    @each("composed", "native", "translucent", "scrolled")
    def test_what_comes_to_the_screen_in_a_way_of_its_own_is_drawn_over(self, kind, screen):
        with Host(screen, kind) as host:
            before = screen.wait_for_rest(host.window)
            state = host.ask("state")
            host.ask("show verify")
            for frame in (0, 0.2, 0.5):
                host.ask(f"frame {frame}")

            def has_badge():
                # Whose green nothing else has.
                return sum(
                    1 for now, _ in screen.picture(host.window).differing_pixels(before)
                    if now[1] > 180 and now[0] < 120 and now[2] < 150
                ) > 1000

            self.assertTrue(wait_until(has_badge), "the badge of what has passed")
            self.assertEqual(host.ask("state"), state)

            self.assert_goes(host, screen, before, 1, 2)

    @each(*KINDS)
    def test_the_application_does_not_notice(self, kind, screen):
        with Host(screen, kind) as host:
            before = host.ask("state")
            self.assertIn("focus=1", before)
            self.assertIn("hit=1", before)
            base = 0
            for effect in MOMENTS:
                host.ask("show " + effect)
                host.ask(f"frame {base}")
                host.ask(f"frame {base + 0.1}")
                self.assertEqual(host.ask("state"), before, effect)
                base += 5

    @each(*KINDS)
    def test_a_tap_through_a_running_effect_lands(self, kind, screen):
        with Host(screen, kind) as host:
            host.ask("show tap")
            host.ask("show capture")
            host.ask("frame 0")
            host.ask("frame 0.08")
            # The middle of the ring, and the orb.
            for clicks, (x, y) in enumerate(((200, 150), (200, 260)), 1):
                screen.click(x, y)
                self.assertTrue(wait_until(lambda: host.ask("click") == str(clicks)))

    @each(*KINDS)
    def test_the_orb_follows_the_size_of_the_window(self, kind, screen):
        with Host(screen, kind) as host:
            host.ask("show environment")
            host.ask("frame 0")
            host.ask("frame 0.3")
            host.ask("size 500 400")
            host.ask("frame 0.4")
            seen = screen.wait_for_rest(host.window)
            self.assertEqual((seen.width, seen.height), (500, 400))
            # Its dark ground, right of the text; beside it none.
            self.assertLess(max(seen.at(300, 370)), 120)
            self.assertGreater(min(seen.at(172, 370)), 150)

    @each(*KINDS)
    def test_nothing_is_done_at_rest(self, kind, screen):
        with Host(screen, kind) as host:
            idle = "drawn=0 frames=0 over=nothing"
            screen.wait_for_rest(host.window)
            self.assertEqual(host.ask("rest 500"), idle)
            for effect in MOMENTS:
                host.ask("show " + effect)
            host.ask("frame 0")
            host.ask("frame 0.3")
            self.assertRegex(host.ask("rest 10"), "frames=1 over=something")
            host.ask("frame 2")
            # The orb goes three seconds after the last of them.
            time.sleep(3.5)
            for step in range(3, 6):
                host.ask(f"frame {step}")
            self.assertEqual(host.ask("rest 500"), idle)

    @each(*KINDS)
    def test_a_thousand_effects_leave_nothing(self, kind, screen):
        with Host(screen, kind) as host:
            before = host.ask("state")
            picture = screen.wait_for_rest(host.window)
            memory = 0
            for round_number in range(125):
                for effect in MOMENTS:
                    if effect != "environment":
                        host.ask("show " + effect)
                host.ask(f"frame {round_number * 2}")
                if round_number == 25:
                    memory = host.resident_memory()
            for step in range(1, 4):
                host.ask(f"frame {248 + step}")

            self.assert_goes(host, screen, picture, 260, 8)
            self.assertEqual(host.ask("state"), before)
            self.assertLess(host.resident_memory() - memory, 4 * 1024 * 1024)


if __name__ == "__main__":
    if not all(shutil.which(tool) for tool in ("Xvfb", "import", "convert", "xdotool")):
        print("needs Xvfb, imagemagick and xdotool")
        sys.exit(77)
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[1:])
