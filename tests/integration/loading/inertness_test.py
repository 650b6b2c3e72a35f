"""Processes that are no hosts do not notice the preloaded library."""

import os
import pathlib
import shutil
import stat
import subprocess
import tempfile
import unittest

from loading_support import *


class Inertness(unittest.TestCase):
    def assert_same(self, command, **options):
        bare = run(command, **options)
        loaded = run(command, PRELOADED, **options)
        self.assertEqual(bare, loaded)

    def test_plain_programs_behave_as_without(self):
        for command in (
            ["true"],
            ["false"],
            ["ls", "/"],
            ["ls", "/nowhere"],
            ["sh", "-c", "echo out; echo err >&2; exit 7"],
            ["sh", "-c", "kill -TERM $$"],
        ):
            with self.subTest(command):
                self.assert_same(command)

    def test_brings_no_library_into_them(self):
        _, maps, _ = run(["cat", "/proc/self/maps"], PRELOADED)
        self.assertIn("libtarnixprobe.so", maps)
        for name in ("libtarnixprobe-", "libstdc++", "libicu", "libavahi", "libQt6"):
            self.assertNotIn(name, maps)

    def test_leaves_their_environment_alone(self):
        _, value, _ = run(["sh", "-c", 'printf %s "$LD_PRELOAD"'], PRELOADED)
        self.assertEqual(value, str(PRELOADED))

    def test_starts_no_thread_in_them(self):
        _, threads, _ = run(["sh", "-c", "ls /proc/$$/task | wc -l"], PRELOADED)
        self.assertEqual(threads.strip(), "1")

    def test_needs_only_the_c_library(self):
        _, text, _ = run(["readelf", "-d", PRELOADED])
        needed = [line for line in text.splitlines() if "(NEEDED)" in line]
        self.assertEqual(len(needed), 1, needed)
        self.assertIn("[libc.so.6]", needed[0])

    def test_toolkit_without_windows_is_no_host(self):
        # The toolkit's command line tools link its core library only.
        tool = pathlib.Path("/usr/lib/qt6/libexec/moc")
        require(tool)
        self.assert_same([tool, "--version"])

    def test_web_engine_helpers_are_no_hosts(self):
        require(TOOLKIT_HOST)
        with tempfile.TemporaryDirectory() as directory:
            helper = pathlib.Path(directory) / "QtWebEngineProcess"
            shutil.copy(TOOLKIT_HOST, helper)
            self.assertEqual(run([helper, "3"], PRELOADED), (3, "", ""))

    @unittest.skipUnless(os.geteuid() == 0, "only root makes set-user-ID programs")
    def test_set_user_id_programs_are_left_alone(self):
        require(TOOLKIT_HOST)
        directory = pathlib.Path(tempfile.mkdtemp(dir="/tmp"))
        try:
            directory.chmod(0o755)
            program = directory / "program"
            shutil.copy(TOOLKIT_HOST, program)
            program.chmod(0o4755)
            result = run([program, "5"], PRELOADED, user=65534, group=65534)
            self.assertEqual(result, (5, "", ""))
        finally:
            shutil.rmtree(directory)

    @unittest.skipUnless(os.geteuid() == 0, "only root makes set-user-ID programs")
    def test_set_user_id_programs_are_left_alone_where_the_loader_lets_the_library_in(self):
        """The loader takes a library by name from a system directory, if that has the same mark."""
        require(TOOLKIT_HOST)
        script = r"""
set -e
mount -t tmpfs none /mnt
mkdir /mnt/upper /mnt/work
mount -t overlay overlay -o lowerdir=/usr/lib,upperdir=/mnt/upper,workdir=/mnt/work /usr/lib
cp "$1"/libtarnixprobe*.so /usr/lib/
chmod 4755 /usr/lib/libtarnixprobe*.so
cp "$2" /mnt/program
chmod 4755 /mnt/program
chmod 755 /mnt
cd /
export LD_PRELOAD=libtarnixprobe.so
exec setpriv --reuid=65534 --regid=65534 --clear-groups \
  /mnt/program 5 --is-loaded
"""
        probe = subprocess.run(
            ["unshare", "-m", "sh", "-c", script.split("cp ")[0]], capture_output=True
        )
        if probe.returncode != 0:
            self.skipTest("this kernel lays no file system over another")
        done = subprocess.run(
            ["unshare", "-m", "sh", "-c", script, "sh", LIBRARIES, TOOLKIT_HOST],
            capture_output=True,
            text=True,
            env=environment(),
            timeout=PATIENCE,
        )
        self.assertEqual((done.returncode, done.stdout, done.stderr), (5, "loaded\n", ""))


if __name__ == "__main__":
    main()
