"""Touches, swipes and typed text on web pages, in Quick and in widgets."""

import os
import threading
import unittest

import acting_support
from acting_support import Application, FOLDER, QML

# A browser of widgets: it says on standard output what its pages say.
HOST = acting_support.support.BUILD / "bin" / "tarnix_console_host"
ENGINE = {"QT_QUICK_BACKEND": "software", "QTWEBENGINE_CHROMIUM_FLAGS": "--disable-gpu"}
if os.geteuid() == 0:
    ENGINE["QTWEBENGINE_DISABLE_SANDBOX"] = "1"


class WebTest(unittest.TestCase):
    def act_on_the_page(self, application):
        self.addCleanup(application.close)
        self.assertEqual(application.wait_for_deeds(["load"]), ["load"])
        for act, message, deeds in [
                (lambda: application.tap(220, 28), "Tapped control: WebEngineView",
                 ["went to #there"]),
                (lambda: application.tap(200, 110), "Tapped control: WebEngineView", []),
                (lambda: application.type("héllo 你好"), "Typed 8 characters",
                 ["typed héllo 你好"]),
                (lambda: application.swipe(50, 90, 50, 50), "Scrolled by (0,40)",
                 ["at 0, box at 40"]),
                (lambda: application.swipe(250, 250, 250, 50), "Scrolled by (0,200)",
                 ["at 200, box at 40"]),
                (lambda: application.swipe(250, 50, 250, 100), "Scrolled by (0,-50)",
                 ["at 150, box at 40"])]:
            with self.subTest(message=message):
                application.forget()
                answer = act()
                self.assertEqual(answer, {"success": True, "message": message})
                self.assertEqual(application.wait_for_deeds(deeds), deeds)

    def test_in_quick(self):
        self.act_on_the_page(Application([QML, FOLDER / "web.qml"], **ENGINE))

    def test_in_widgets(self):
        application = Application([HOST], **ENGINE)

        def listen():
            for line in application.process.stdout:
                application.errors.append(line.decode("utf-8", "replace").split("|")[2]
                                          if line.startswith(b"console|") else "")
        threading.Thread(target=listen, daemon=True).start()
        application.process.stdin.write(f"stored {(FOLDER / 'scrolling.html').as_uri()}\n".encode())
        application.process.stdin.flush()
        self.act_on_the_page(application)


if __name__ == "__main__":
    acting_support.support.main()
