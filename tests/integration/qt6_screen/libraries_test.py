"""Reading a host's screen brings no library of the toolkit into it that it did not have."""

import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))

from loading_support import *

TARNIX = BUILD / "bin/tarnix"
GALLERY = BUILD / "bin/widget_gallery"
PARTS = {
    "libQt6Widgets.so.6": "libtarnixprobe-qt6-widgets.so",
    "libQt6Quick.so.6": "libtarnixprobe-qt6-quick.so",
}


def mapped_libraries(pid):
    names = set()
    with open(f"/proc/{pid}/maps") as maps:
        for line in maps:
            fields = line.split(maxsplit=5)
            if len(fields) == 6:
                names.add(pathlib.Path(fields[5].strip()).name)
    return names


def toolkit_libraries(libraries):
    """By what they are known as, without the minor version."""
    return {name.split(".so")[0] + ".so.6" for name in libraries if name.startswith("libQt6")}


def settled_libraries(pid):
    """Once no more come: applications load parts of themselves while they start."""
    seen = []

    def is_settled():
        seen.append(mapped_libraries(pid))
        return len(seen) > 50 and seen[-1] == seen[-50]

    wait_until(is_settled)
    return seen[-1]


def alone(folder, preload=None):
    """Some applications look in these places for one of their kind that runs already."""
    os.chmod(folder, 0o700)
    places = dict.fromkeys(("HOME", "TMPDIR", "XDG_RUNTIME_DIR"), folder)
    return environment(preload, QT_QUICK_BACKEND="software", **places)


class Libraries(unittest.TestCase):
    def assert_brings_nothing(self, command):
        with tempfile.TemporaryDirectory() as home:
            env = alone(home)
            with Process(command, env) as bare:
                expected = toolkit_libraries(settled_libraries(bare.pid))
        with tempfile.TemporaryDirectory() as home:
            env = alone(home, PRELOADED)
            with Process(command, env) as probed:
                self.assertTrue(probed.wait_for_error_line("Server started for"))
                settled_libraries(probed.pid)
                status, out, err = run([TARNIX, "html", "--pid", probed.pid])
                self.assertEqual(status, 0, err)
                self.assertIn("<html>", out)
                libraries = mapped_libraries(probed.pid)
        self.assertEqual(toolkit_libraries(libraries), expected)
        for library, part in PARTS.items():
            self.assertEqual(part in libraries, library in expected, part)
        return expected

    def test_an_application_of_widgets(self):
        require("/usr/bin/focuswriter", TARNIX)
        expected = self.assert_brings_nothing(["/usr/bin/focuswriter"])
        self.assertNotIn("libQt6Quick.so.6", expected)

    def test_an_application_of_quick(self):
        require("/usr/games/pentobi", TARNIX)
        self.assert_brings_nothing(["/usr/games/pentobi"])

    def test_quick_inside_widgets(self):
        require(GALLERY, TARNIX)
        self.assert_brings_nothing([GALLERY, "quick"])


if __name__ == "__main__":
    main()
