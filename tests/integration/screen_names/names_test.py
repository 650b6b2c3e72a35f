#!/usr/bin/env python3
"""The names of screens as a companion gets them, of programs of ours and of real applications, on a
display of the test's own. With TARNIX_SCREEN_PICTURES naming a folder, each is pictured there."""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

for folder in ("harness", "loading"):
    sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / folder))

from loading_support import (  # noqa: E402
    BUILD,
    PRELOADED,
    Process,
    environment,
    main,
    require,
    wait_until,
)
from x_server import XServer  # noqa: E402

HOST = BUILD / "bin/tarnix_screen_host"
TARNIX = BUILD / "bin/tarnix"
LIBRARY = BUILD / "tests/integration/screen_names/libtarnix_screen_library.so"
HERE = pathlib.Path(__file__).resolve().parent
PICTURES = os.environ.get("TARNIX_SCREEN_PICTURES")


class Screen(XServer):
    def key(self, name):
        self.tell("key", name)

    def picture(self, name):
        if PICTURES:
            subprocess.run(
                ["import", "-window", "root", f"{PICTURES}/{name}.png"],
                env=self.environment(),
                check=True,
            )


class Names(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for program in ("Xvfb", "xdotool"):
            if shutil.which(program) is None:
                raise unittest.SkipTest(f"{program} is not there")

    def setUp(self):
        self.screen = Screen(1000, 700)
        self.addCleanup(self.screen.close)
        self.pictures = 0

    def start(self, *command, preloaded=PRELOADED):
        # In memory: one of the applications fills a database when it starts for the first time, and
        # waits for the disk at each of its rows.
        memory = pathlib.Path("/dev/shm")
        folder = tempfile.TemporaryDirectory(dir=memory if os.access(memory, os.W_OK) else None)
        self.addCleanup(folder.cleanup)
        home = pathlib.Path(folder.name)
        for name in ("home", "runtime", "temporary"):
            (home / name).mkdir(mode=0o700)
        self.host = Process(
            command,
            env=environment(
                preloaded,
                QT_QPA_PLATFORM="xcb",
                DISPLAY=self.screen.display,
                QT_QUICK_BACKEND="software",
                QT_QUICK_CONTROLS_STYLE="Basic",
                LANG="C.UTF-8",
                HOME=str(home / "home"),
                XDG_RUNTIME_DIR=str(home / "runtime"),
                TMPDIR=str(home / "temporary"),
            ),
        )
        self.addCleanup(self.host.__exit__)
        self.assertTrue(self.host.wait_for_error_line("Listener ready"), self.host.error_lines)

    def act(self, words):
        done = len(self.host.lines)
        self.host._process.stdin.write(words + "\n")
        self.host._process.stdin.flush()
        self.assertTrue(wait_until(lambda: len(self.host.lines) > done))

    def name(self):
        answer = subprocess.run(
            [str(TARNIX), "sync", "--json", "--pid", str(self.host.pid)],
            capture_output=True,
            text=True,
            timeout=60,
        )
        return json.loads(answer.stdout)["currentScreen"] if answer.returncode == 0 else None

    def expect(self, name):
        last = None

        def is_there():
            nonlocal last
            last = self.name()
            return last == name

        self.assertTrue(wait_until(is_there), f'"{last}" instead of "{name}"')
        self.pictures += 1
        self.screen.picture(f"{self._testMethodName}-{self.pictures}-{name.replace(' ', '_')}")

    def test_tabs_stacks_and_dialogs_of_widgets(self):
        self.start(HOST)
        self.expect("Inbox Page")
        self.act("page 1")
        self.expect("Message")
        self.act("tab 1")
        self.expect("User Profile Detail")
        self.act("tab 3")
        self.expect("Report")
        self.act("tab 2")
        self.expect("Main Window")
        self.act("dialog")
        self.expect("Login")
        self.act("close")
        self.expect("Main Window")
        self.act("tab 0")
        self.expect("Message")
        self.act("box")
        self.assertTrue(
            wait_until(lambda: "Really quit?" in self.html()), "the message box is not there"
        )
        self.expect("Message")
        self.act("close")
        self.act("page 0")
        self.expect("Inbox Page")

    def tap(self, label):
        """Taps what is labelled so, once it is there."""
        last = None

        def is_done():
            nonlocal last
            last = subprocess.run(
                [str(TARNIX), "tap", "--text", label, "--pid", str(self.host.pid)],
                capture_output=True,
                text=True,
                timeout=60,
            )
            return last.returncode == 0

        self.assertTrue(wait_until(is_done), last.stderr)

    def html(self):
        return subprocess.run(
            [str(TARNIX), "html", "--pid", str(self.host.pid)],
            capture_output=True,
            text=True,
            timeout=60,
        ).stdout

    def test_an_application_installed_among_the_libraries(self):
        if os.geteuid() != 0:
            self.skipTest("only root can put files there for a while")
        # In mounts of its own: nothing is written to this machine's folder.
        self.start(
            "unshare",
            "--mount",
            "sh",
            "-c",
            f"mount -t tmpfs none /usr/lib/sysusers.d && cd /usr/lib/sysusers.d && cp {HOST} . && "
            f"cp {LIBRARY} . && LD_LIBRARY_PATH=$PWD LD_PRELOAD={PRELOADED} "
            "exec ./tarnix_screen_host",
        )
        self.expect("Inbox Page")
        self.act("tab 3")
        self.expect("Report")
        self.act("tab 2")
        self.expect("Main Window")

    def test_a_program_of_python(self):
        python = "/usr/bin/python3"
        found = subprocess.run([python, "-c", "import PyQt6.QtWidgets"], capture_output=True)
        if found.returncode != 0:
            self.skipTest("the toolkit's bindings are not there")
        # Python loads the toolkit long after its start. This has it there from the start on.
        self.start(python, HERE / "python_window.py", preloaded=f"{PRELOADED}:libQt6Gui.so.6")
        self.expect("Note Page")
        self.act("search")
        self.expect("Search Dialog")
        self.act("close")
        self.expect("Note Page")
        for word in ("box", "plain"):
            self.act(word)
            self.assertTrue(wait_until(lambda: f"This is a {word}" in self.html()))
            self.expect("Note Page")
            self.act("close")
        self.act("page 1")
        self.expect("Notes Window")
        self.act("page 0")
        self.expect("Note Page")

    def test_the_html_bears_the_name(self):
        self.start(HOST)
        self.expect("Inbox Page")
        self.assertIn("<title>Inbox Page</title>", self.html())

    def test_a_stack_view_and_its_dialog(self):
        self.start(HOST, HERE / "stack.qml")
        self.expect("Catalogue")
        self.act("file")
        self.expect("ContentView")
        self.act("basket")
        self.expect("Basket")
        self.act("ask")
        self.expect("Really pay?")
        self.act("answer")
        self.expect("Basket")
        self.act("menu")
        self.assertTrue(wait_until(lambda: "Two" in self.html()), "the menu is not there")
        self.expect("Basket")
        self.act("choose")
        self.act("pop")
        self.expect("ContentView")
        self.act("pop")
        self.expect("Catalogue")

    def test_a_swipe_view_tabs_and_pages_exchanged_by_hand(self):
        self.start(HOST, HERE / "swipe.qml")
        self.expect("Rain")
        self.act("tab 1")
        self.expect("Wind")
        self.act("swipe 1")
        self.expect("Tomorrow")
        self.act("swipe 2")
        self.expect("HourlyView")
        self.act("exchange 1")
        self.expect("WeeklyView")
        self.act("exchange 0")
        self.expect("HourlyView")
        self.act("swipe 0")
        self.expect("Wind")

    def test_windows_in_a_window_and_boxes_of_tools(self):
        self.start(HOST)
        self.act("tab 4")
        self.act("sheet 0")
        self.expect("Chart Sheet")
        self.act("sheet 1")
        self.expect("Table Sheet")
        self.act("sheet 0")
        self.expect("Chart Sheet")
        self.act("tab 5")
        self.expect("Brush Tools")
        self.act("tool 1")
        self.expect("Colour Tools")
        self.act("tab 4")
        self.expect("Chart Sheet")

    def test_a_wizard(self):
        self.start(HOST)
        self.expect("Inbox Page")
        self.act("wizard")
        self.expect("Welcome Page")
        self.act("next")
        self.expect("Password")
        self.act("back")
        self.expect("Welcome Page")
        self.act("close")
        self.expect("Inbox Page")

    def test_a_scene_in_a_widget(self):
        self.start(HOST)
        self.expect("Inbox Page")
        self.act("scene")
        self.expect("HourlyView")
        self.act("exchange 1")
        self.expect("WeeklyView")
        self.act("exchange 0")
        self.expect("HourlyView")
        self.act("tab 1")
        self.expect("User Profile Detail")

    def test_a_board_game(self):
        require("/usr/games/pentobi")
        self.start("/usr/games/pentobi")
        self.expect("GameViewDesktop")
        self.tap("Settings")
        self.expect("ComputerDialog")
        self.tap("Cancel")
        self.expect("GameViewDesktop")
        self.tap("menu desktop")
        self.tap("Help")
        self.expect("GameViewDesktop")
        self.tap("About Pentobi")
        self.expect("AboutDialog")
        self.tap("Close")
        self.expect("GameViewDesktop")
        self.tap("menu desktop")
        self.tap("Game")
        self.tap("Game Info")
        self.expect("GameInfoDialog")

    def test_a_typing_tutor(self):
        require("/usr/bin/tipp10")
        self.start("/usr/bin/tipp10")
        self.expect("Illustration Dialog")
        self.tap("Launch TIPP10")
        self.expect("Start Widget")
        self.tap("File")
        self.expect("Start Widget")
        self.tap("Settings")
        self.expect("Settings")
        self.tap("Cancel")
        self.expect("Start Widget")
        self.tap("Start Training")
        self.expect("Training Widget")
        self.tap("Cancel")
        self.expect("Start Widget")

    def test_a_text_editor(self):
        require("/usr/bin/focuswriter")
        self.start("/usr/bin/focuswriter")
        self.expect("Document")
        self.screen.key("ctrl+f")
        self.expect("Find Dialog")
        self.screen.key("Escape")
        self.expect("Document")

    def test_a_dialog_of_the_toolkit_in_a_text_editor(self):
        require("/usr/bin/focuswriter")
        self.start("/usr/bin/focuswriter")
        self.expect("Document")
        self.screen.key("ctrl+o")
        self.assertTrue(
            wait_until(lambda: "File name" in self.html()), "the dialog for files is not there"
        )
        self.expect("Document")
        self.screen.key("Escape")
        self.assertTrue(wait_until(lambda: "File name" not in self.html()))
        self.expect("Document")


if __name__ == "__main__":
    main()
