"""What an application's screen is said to be, against pictures of it."""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from png_picture import Picture

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "harness"))

from probe_port import probe_port  # noqa: E402

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ.get("TARNIX_BUILD_DIR") or REPOSITORY / "build/release")
TARNIX = BUILD / "bin" / "tarnix"
MARKS_HOST = BUILD / "bin" / "tarnix_marks_host"
QML_RUNTIME = "/usr/lib/qt6/bin/qml"
HERE = pathlib.Path(__file__).parent
# Where the pictures stay, for somebody to look at.
PICTURES = os.environ.get("TARNIX_PICTURES")
# Machines that run tests are busy.
TIME_LIMIT = 90
NO_ANSWER = 6
NEGATIVE = 8


class Host:
    """An application with the probe in it, in a home of its own."""

    def __init__(self, command, **variables):
        self.home = tempfile.mkdtemp(prefix="tarnix-home-")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8",
                           HOME=self.home, XDG_RUNTIME_DIR=self.home, XDG_CONFIG_HOME=self.home,
                           TMPDIR=self.home,
                           QT_QUICK_CONTROLS_STYLE="Basic",
                           DBUS_SESSION_BUS_ADDRESS="disabled:", **variables)
        environment["LD_PRELOAD"] = str(BUILD / "lib" / "libtarnixprobe.so")
        self.process = subprocess.Popen([str(word) for word in command], env=environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.PIPE)
        self.lines = []
        self.reader = threading.Thread(target=self.read_lines, daemon=True)
        self.reader.start()

    def read_lines(self):
        for line in self.process.stderr:
            self.lines.append(line.decode("utf-8", "replace").rstrip("\n"))

    def __enter__(self):
        def look():
            assert self.process.poll() is None, self.lines
            return any("Listener ready" in line for line in self.lines) and probe_port(self.process.pid)
        try:
            self.port = wait_for(look, "a listening probe")
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.reader.join(TIME_LIMIT)
        self.process.stderr.close()
        shutil.rmtree(self.home, ignore_errors=True)

    def run(self, *arguments, timeout=TIME_LIMIT):
        return subprocess.run([TARNIX, *arguments, "--port", str(self.port), "--timeout",
                               str(timeout)], capture_output=True, timeout=TIME_LIMIT * 2)

    def ask(self, *arguments):
        result = self.run(*arguments, "--json")
        assert result.returncode in (0, NEGATIVE), result.stderr
        return json.loads(result.stdout)

    def picture(self, name):
        result = self.run("screenshot", "-")
        assert result.returncode == 0, result.stderr
        if PICTURES:
            pathlib.Path(PICTURES, name + ".png").write_bytes(result.stdout)
        return Picture(result.stdout)

    def views(self):
        return self.ask("snapshot")["elements"]


def wait_for(condition, what, limit=TIME_LIMIT):
    end = time.monotonic() + limit
    while time.monotonic() < end:
        if result := condition():
            return result
        time.sleep(0.05)
    raise AssertionError(f"{what} did not happen within {limit} s")


class Marks(unittest.TestCase):
    """Frames against pixels."""

    def expect_marks(self, host, name, scale, size, count, cut=()):
        views = wait_for(lambda: [view for view in host.views()
                                  if view.get("identifier", "").startswith("mark ")], "marks")
        self.assertEqual(len(views), count)
        picture = host.picture(name)
        self.assertEqual((picture.width, picture.height), (size[0] * scale, size[1] * scale))
        for view in views:
            colour = view["identifier"].removeprefix("mark ")
            if colour in cut:
                continue
            box = picture.box_of(bytes.fromhex(colour[1:]))
            self.assertIsNotNone(box, colour)
            frame = (view["x"], view["y"], view["x"] + view["width"], view["y"] + view["height"])
            for said, seen in zip(frame, box):
                # What is said has its fractions cut off.
                self.assertLessEqual(abs(said * scale - seen), scale, (colour, frame, box))
        return views, picture

    def test_quick(self):
        for scale in (1, 2):
            with self.subTest(scale=scale), \
                    Host([QML_RUNTIME, HERE / "marks.qml"], QT_SCALE_FACTOR=str(scale)) as host:
                views, picture = self.expect_marks(host, f"quick-{scale}", scale, (400, 500), 7)
                self.check_kinds(host.views())
                self.check_rows(host, picture)

    def check_kinds(self, views):
        by_identifier = {view.get("identifier"): view for view in views}
        self.assertEqual(by_identifier["save"]["type"], "Button")
        self.assertTrue(by_identifier["save"]["interactive"])
        self.assertEqual(by_identifier["volume"]["type"], "Slider")
        self.assertEqual(by_identifier["price"]["type"], "PriceTag")
        by_label = {view.get("label"): view for view in views if view["type"] != "Label"}
        self.assertEqual(by_label["Sound"]["type"], "Switch")
        self.assertEqual(by_label["Wrap"]["type"], "Switch")
        self.assertEqual(by_label["Name"]["type"], "TextField")
        self.assertEqual(by_label["Row 1"]["type"], "Cell")
        self.assertEqual(sorted(view["y"] for view in views), [view["y"] for view in views])

    def check_rows(self, host, picture):
        lines = host.ask("text")["lines"]
        rows = [line for line in lines if line.startswith("Row ")]
        self.assertGreaterEqual(len(rows), 4)
        self.assertLess(len(rows), 50)
        found = host.ask("find", "row 2", "--exact")["results"]
        self.assertEqual(len(found), 1)
        self.assertEqual((found[0]["centerX"], found[0]["centerY"]), (110, 422))

    def test_widgets(self):
        for scale in (1, 2):
            with self.subTest(scale=scale), \
                    Host([MARKS_HOST, "marks"], QT_SCALE_FACTOR=str(scale)) as host:
                self.expect_marks(host, f"widgets-{scale}", scale, (400, 300), 4)
                kinds = {view.get("label"): view for view in host.views()}
                self.assertEqual(kinds["Save"]["type"], "Button")
                self.assertTrue(kinds["Save"]["interactive"])
                self.assertEqual(kinds["Total"]["type"], "Label")
                self.assertFalse(kinds["Total"]["interactive"])

    def test_scenes_inside_widgets(self):
        for scale in (1, 2):
            with self.subTest(scale=scale), \
                    Host([MARKS_HOST, "scenes"], QT_SCALE_FACTOR=str(scale)) as host:
                self.expect_marks(host, f"scenes-{scale}", scale, (400, 300), 6)

    def test_a_dialog_is_what_is_read(self):
        for scale in (1, 2):
            with self.subTest(scale=scale), \
                    Host([MARKS_HOST, "dialog"], QT_SCALE_FACTOR=str(scale)) as host:
                self.expect_marks(host, f"dialog-{scale}", scale, (200, 100), 1)

    def test_a_menu_is_in_the_picture(self):
        for scale in (1, 2):
            with self.subTest(scale=scale), \
                    Host([MARKS_HOST, "menu"], QT_SCALE_FACTOR=str(scale)) as host:
                cut = wait_for(lambda: host.ask("find", "Cut")["results"], "the menu")[0]
                picture = host.picture(f"menu-{scale}")
                self.assertEqual((picture.width, picture.height), (400 * scale, 300 * scale))
                self.assertEqual(
                    picture.pixel(cut["centerX"] * scale, cut["centerY"] * scale), (0x65, 0x43, 0x21))
                self.assertEqual(picture.pixel(0, 299 * scale), (255, 255, 255))


class Hosts(unittest.TestCase):
    def test_ten_thousand_rows(self):
        with Host([MARKS_HOST, "rows"]) as host:
            wait_for(lambda: host.ask("find", "Row 0", "--exact")["results"], "rows")
            lines = host.ask("text")["lines"]
            self.assertLess(len([line for line in lines if line.startswith("Row ")]), 100)
            self.assertTrue(host.views())
            host.picture("rows")

    def test_no_window(self):
        with Host([MARKS_HOST, "none"]) as host:
            self.assertEqual(host.views(), [])
            self.assertEqual(host.ask("text")["lines"], [])
            self.assertEqual(host.ask("audit")["issues"], [])
            self.assertEqual(host.run("find", "a").returncode, NEGATIVE)
            picture = host.run("screenshot", "-", timeout=1)
            self.assertEqual((picture.returncode, picture.stdout), (NO_ANSWER, b""))

    def test_a_busy_main_thread_is_said(self):
        with Host([MARKS_HOST, "busy"]) as host:
            def is_busy():
                result = host.run("text", timeout=1)
                return result.returncode == NO_ANSWER and result
            result = wait_for(is_busy, "a command that gets no answer")
            self.assertIn(b"busy", result.stderr)

    def test_windows_that_come_and_go(self):
        with Host([QML_RUNTIME, HERE / "opening.qml"]) as host:
            for _ in range(15):
                host.ask("snapshot")
                host.ask("text")
                host.ask("audit")
                # There may be no picture of a window that has just come.
                self.assertIn(host.run("screenshot", "-", timeout=5).returncode, (0, NO_ANSWER))
            self.assertIsNone(host.process.poll())


@unittest.skipUnless(shutil.which("pentobi", path="/usr/games:" + os.environ["PATH"]), "no pentobi")
class Pentobi(unittest.TestCase):
    def test_is_read(self):
        with Host(["/usr/games/pentobi"]) as host:
            wait_for(lambda: host.ask("text")["lines"], "text")
            views = host.views()
            self.assertTrue([view for view in views if view["interactive"]])
            for view in views:
                self.assertTrue(view["type"])
                self.assertNotIn("_QML", view["type"])
            picture = host.picture("pentobi")
            self.assertGreater(len(set(picture.rows)), 20, "nothing but one colour")
            host.ask("audit")


@unittest.skipUnless(shutil.which("focuswriter"), "no focuswriter")
class FocusWriter(unittest.TestCase):
    def test_is_read(self):
        with Host(["/usr/bin/focuswriter"]) as host:
            wait_for(lambda: [view for view in host.views() if view["type"] == "TextView"],
                     "the editor")
            picture = host.picture("focuswriter")
            self.assertGreater(len(set(picture.rows)), 5, "nothing but one colour")
            host.ask("audit")


if __name__ == "__main__":
    unittest.main(verbosity=2)
