"""The start of a host: what it hands to its children, and what happens when a part is missing."""

import os
import pathlib
import shutil
import tempfile
import unittest

from loading_support import *

CANNOT_LOAD = "[TarnixProbe] Cannot load "


class Children(unittest.TestCase):
    """Children of a host are not probed; what else was to be preloaded into them still is."""

    def setUp(self):
        require(TOOLKIT_HOST)

    def child_environment(self, preload, **options):
        status, out, _ = run(
            [TOOLKIT_HOST, "0", 'printf %s "${LD_PRELOAD-unset}"'], preload, **options
        )
        self.assertEqual(status, 0)
        return out

    def test_own_entry_is_gone_and_others_stay_as_they_were(self):
        own = PRELOADED
        one, two = "libm.so.6", "/lib/x86_64-linux-gnu/libdl.so.2"
        require(two)
        for preload, expected in (
            (f"{own}", "unset"),
            (f" {own}: ", "unset"),
            (f"{own} {own}", "unset"),
            (f"{own}:{one}", f"{one}"),
            (f"{one}:{own}", f"{one}"),
            (f"{one} {own}", f"{one}"),
            (f"{one}:{own}:{two}", f"{one}:{two}"),
            (f"{one} {own}:{two}", f"{one} {two}"),
            (f"{one}  {two}:{own}", f"{one}  {two}"),
            (f"{own} {one}  {two}", f"{one}  {two}"),
        ):
            with self.subTest(preload):
                self.assertEqual(self.child_environment(preload), expected)

    def test_own_entry_is_known_by_a_link_a_relative_path_and_a_bare_name(self):
        with tempfile.TemporaryDirectory() as directory:
            link = pathlib.Path(directory) / "link.so"
            link.symlink_to(PRELOADED)
            self.assertEqual(self.child_environment(link), "unset")
        relative = os.path.relpath(PRELOADED, BUILD)
        self.assertEqual(self.child_environment(relative, cwd=BUILD), "unset")
        self.assertEqual(
            self.child_environment(
                None,
                env=environment("libtarnixprobe.so", LD_LIBRARY_PATH=str(LIBRARIES)),
            ),
            "unset",
        )

    def test_rest_of_the_environment_stays(self):
        command = "env | grep -v -e ^LD_PRELOAD= -e ^_= | sort"
        bare = run([TOOLKIT_HOST, "0", command])
        loaded = run([TOOLKIT_HOST, "0", command], PRELOADED)
        self.assertEqual(bare[1], loaded[1])


class MissingParts(unittest.TestCase):
    """A part that cannot be loaded costs one line."""

    def setUp(self):
        require(TOOLKIT_HOST)
        self.directory = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.directory)
        self.library = shutil.copy(PRELOADED, self.directory)

    def assert_goes_on_after_a_line_about(self, module):
        status, _, errors = run([TOOLKIT_HOST, "4", "true"], self.library)
        self.assertEqual(status, 4)
        lines = errors.splitlines()
        self.assertEqual(len(lines), 1, errors)
        self.assertTrue(lines[0].startswith(f"{CANNOT_LOAD}{module}: "), errors)
        self.assertIn(str(self.directory), lines[0])

    def test_core_is_missing(self):
        self.assert_goes_on_after_a_line_about("libtarnixprobe-core.so")

    def test_core_is_damaged(self):
        (self.directory / CORE.name).write_bytes(b"not a library")
        self.assert_goes_on_after_a_line_about("libtarnixprobe-core.so")

    def test_toolkit_module_is_missing(self):
        shutil.copy(CORE, self.directory)
        self.assert_goes_on_after_a_line_about("libtarnixprobe-qt6.so")

    def test_modules_are_found_beside_the_library_wherever_it_lies(self):
        # Through a link from elsewhere the line still names the folder of the real file.
        with tempfile.TemporaryDirectory() as elsewhere:
            link = pathlib.Path(elsewhere) / "probe.so"
            link.symlink_to(self.library)
            _, _, errors = run([TOOLKIT_HOST, "4", "true"], link)
            self.assertIn(f"{self.directory}/libtarnixprobe-core.so", errors)


class Bootstrap(unittest.TestCase):
    """With everything in place the probe starts itself before the host does anything."""

    def setUp(self):
        require(TOOLKIT_HOST, TOOLKIT)

    def test_fires_once_by_the_static_initialiser(self):
        _, _, errors = run([TOOLKIT_HOST, "0", "true"], PRELOADED)
        fired = [line for line in errors.splitlines() if "Bootstrap fired" in line]
        self.assertEqual(fired, ["[TarnixProbe] Bootstrap fired (C constructor)"])

    def test_exported_functions_are_called_by_name(self):
        # Another library in the process finds them, as a debugger would.
        source = r"""
#include <dlfcn.h>
__attribute__((destructor)) static void late(void) {
  void (*start)(void) = (void (*)(void))dlsym(RTLD_DEFAULT, "TarnixProbeBootstrap");
  void (*again)(const char*) = (void (*)(const char*))dlsym(RTLD_DEFAULT, "tarnixprobe_bootstrap");
  again("again");
  start();
}
"""
        compiler = shutil.which("cc")
        if compiler is None:
            self.skipTest("there is no compiler")
        with tempfile.TemporaryDirectory() as directory:
            caller = pathlib.Path(directory) / "caller.so"
            (pathlib.Path(directory) / "caller.c").write_text(source)
            status, _, errors = run(
                [compiler, "-shared", "-fPIC", "-o", caller, pathlib.Path(directory) / "caller.c"]
            )
            self.assertEqual(status, 0, errors)
            status, _, errors = run([TOOLKIT_HOST, "6", "true"], f"{PRELOADED}:{caller}")
        self.assertEqual(status, 6)
        self.assertEqual(errors.count("Bootstrap fired"), 1)
        self.assertEqual(errors.count("Swift entry reached"), 2)


if __name__ == "__main__":
    main()
