"""Where the development package of the web engine is not there, its part is left out and all else is
built as ever: configures the project as if it were not."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ.get("TARNIX_BUILD_DIR") or SOURCE / "build/release")
SAID = (
    "-- Without the console of web views: the development package of Qt 6 WebEngine is not there"
)


def run(*command):
    return subprocess.run(
        [str(word) for word in command], capture_output=True, text=True, check=True, timeout=240
    ).stdout


def cached(*names):
    """As the build under test was configured."""
    lines = (BUILD / "CMakeCache.txt").read_text().splitlines()
    return [f"-D{line}" for line in lines if line.split(":")[0] in names]


def commands_of(build):
    """What building would run, whichever folder it is in."""
    return {
        command.replace(str(build), "BUILD")
        for command in run("ninja", "-C", build, "-t", "commands").splitlines()
    }


class LeftOut(unittest.TestCase):
    def test_only_the_web_engines_part_is_left_out(self):
        with tempfile.TemporaryDirectory() as folder:
            output = run(
                "cmake", "-S", SOURCE, "-B", folder, "-G", "Ninja",
                "-DCMAKE_DISABLE_FIND_PACKAGE_Qt6WebEngineCore=ON",
                *cached("CMAKE_BUILD_TYPE", "CMAKE_CXX_COMPILER", "CMAKE_CXX_FLAGS",
                        "CMAKE_CXX_COMPILER_LAUNCHER", "CMAKE_EXPORT_COMPILE_COMMANDS"),
            )  # fmt: skip
            self.assertEqual(output.splitlines().count(SAID), 1, output)
            without = commands_of(folder)
            self.assertFalse([one for one in without if "libQt6WebEngine" in one])
            self.assertFalse([one for one in without if "platforms/qt6/webengine" in one])
            self.assertTrue([one for one in without if "platforms/qt6/quick" in one])
            tests = run("ctest", "--test-dir", folder, "-N")
            self.assertNotIn("webengine", tests)
            self.assertIn("screen.names", tests)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"] + sys.argv[1:])
