"""The consoles of web views in applications as the distribution ships them: an editor that shows
what it edits as a page, and a designer of forms of which one holds a page."""

import json
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))

from loading_support import *  # noqa: E402,F403
from web_engine_support import (  # noqa: E402
    PART,
    PATIENCE_WITH_PAGES,
    TARNIX,
    host_environment,
    maps_of,
)

EDITOR = pathlib.Path("/usr/bin/retext")
DESIGNER = pathlib.Path("/usr/lib/qt6/bin/designer")
DESIGNER_PLUGIN = next(
    pathlib.Path("/usr/lib").glob("*/qt6/plugins/designer/libqwebengineview.so"),
    pathlib.Path("/usr/lib/qt6/plugins/designer/libqwebengineview.so"))
# A Python program loads the toolkit long after its start. This has it there from the start on.
TOOLKIT_LIBRARY = "libQt6Gui.so.6"

SPEAKING = """<script>
console.log("first line", {b: 1}, [2], null, undefined);
console.info("not captured"); console.error("an error"); console.warn("a warning");
console.debug("a detail"); throw new Error("thrown");
</script>"""

SPOKEN = [("log", 'first line {"b":1} [2] null undefined'), ("error", "an error"),
          ("warn", "a warning"), ("debug", "a detail")]

FORM = """<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
<property name="geometry"><rect><x>0</x><y>0</y><width>400</width><height>300</height></rect>
</property><property name="windowTitle"><string>Form</string></property>
<layout class="QVBoxLayout">
<item><widget class="QLabel" name="label"><property name="text">
<string>Above the page</string></property></widget></item>
<item><widget class="QWebEngineView" name="view"><property name="url"><url>
<string>%ADDRESS%</string></url></property></widget></item>
</layout></widget>
<customwidgets><customwidget><class>QWebEngineView</class><extends>QWidget</extends>
<header location="global">QtWebEngineWidgets/QWebEngineView</header></customwidget></customwidgets>
</ui>
"""


class Applications(unittest.TestCase):
    def setUp(self):
        require(TARNIX)
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.home = self.folder / "home"
        self.home.mkdir(mode=0o700)

    def start(self, command, *libraries):
        variables = host_environment(str(self.home), True)
        variables["LD_PRELOAD"] = ":".join([variables["LD_PRELOAD"], *libraries])
        variables["XDG_CONFIG_HOME"] = str(self.home)
        host = Process(command, variables)
        self.addCleanup(host.__exit__)
        self.assertTrue(host.wait_for_error_line("Listener ready", PATIENCE_WITH_PAGES),
                        host.error_lines[-5:])
        return host

    def ask(self, host, *words):
        code, output, errors = run([TARNIX, *words, "--pid", host.pid])
        self.assertEqual(code, 0, errors)
        return output

    def expect_spoken(self, host, spoken, address):
        """Exactly these lines were captured, in this order and of this page."""
        last = []

        def are_there():
            nonlocal last
            last = json.loads(self.ask(host, "console", "--json"))["entries"]
            return len(last) >= len(spoken)

        wait_until(are_there, PATIENCE_WITH_PAGES)
        self.assertEqual([(line["level"], line["message"]) for line in last], spoken)
        self.assertEqual({line["url"] for line in last}, {address})
        self.assertIn(PART, maps_of(host.pid))

    def test_an_editor_with_a_preview(self):
        require(EDITOR)
        settings = self.home / "ReText project"
        settings.mkdir()
        (settings / "ReText.conf").write_text("[General]\nuseWebEngine=true\n")
        notes = self.folder / "notes.md"
        notes.write_text(f"# Notes\n\n{SPEAKING}\n")
        host = self.start([EDITOR, "--preview", notes], TOOLKIT_LIBRARY)
        self.expect_spoken(host, SPOKEN, notes.as_uri())
        self.assertEqual(json.loads(self.ask(host, "sync", "--json"))["currentScreen"],
                         "Re Text Tab")
        labels = self.ask(host, "text").splitlines()
        for label in ("Preview", "notes", "Formatting"):
            self.assertIn(label, labels)
        # The application itself hears its page as before: each line once, from where it was said.
        heard = [line for line in list(host.lines) if line.startswith("level=")]
        self.assertEqual(len(heard), len(SPOKEN) + 2, heard)
        self.assertIn("message='first line [object Object] 2 null undefined'", heard[0])
        self.assertTrue(all(f"sourceId='{notes.as_uri()}'" in line for line in heard), heard)

        # It loads its page anew when the document has changed.
        notes.write_text("<script>console.log('second page')</script>\n")
        self.expect_spoken(host, SPOKEN + [("log", "second page")], notes.as_uri())
        self.assertEqual(self.ask(host, "console", "--limit", "1").splitlines()[0].split()[1:4],
                         ["log", "second", "page"])

    def test_a_form_with_a_page(self):
        require(DESIGNER, DESIGNER_PLUGIN)
        page = self.folder / "page.html"
        page.write_text(SPEAKING)
        form = self.folder / "form.ui"
        form.write_text(FORM.replace("%ADDRESS%", page.as_uri()))
        host = self.start([DESIGNER, form])
        self.expect_spoken(host, SPOKEN, page.as_uri())
        self.assertEqual(json.loads(self.ask(host, "sync", "--json"))["currentScreen"],
                         "Docked Main Window")
        labels = self.ask(host, "text").splitlines()
        for label in ("Above the page", "Widget Box", "QWebEngineView", "Form - form.ui"):
            self.assertIn(label, labels)
        heard = [line for line in list(host.error_lines) if line.startswith("js: ")]
        self.assertEqual(heard, ["js: an error", "js: a warning", "js: Uncaught Error: thrown"])


if __name__ == "__main__":
    main()
