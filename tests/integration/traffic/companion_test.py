"""The commands about traffic, on a QML application."""

import shutil
import signal
import tempfile

from scripted_server import ScriptedServer
from traffic_support import *
from x_server import XServer

QML_RUNTIME = pathlib.Path("/usr/lib/qt6/bin/qml")

# Asks the server again and again, in the ways of QML.
PAGE = """
import QtQuick
import QtQuick.Window
Window {
  visible: true; width: 300; height: 200
  property string base: Qt.application.arguments[Qt.application.arguments.length - 1]
  Text { id: label; text: "waiting" }
  Image { id: picture }
  Timer {
    interval: 100; running: true; repeat: true
    property int turn: 0
    onTriggered: {
      ++turn
      const request = new XMLHttpRequest()
      request.onreadystatechange = function() {
        if (request.readyState === XMLHttpRequest.DONE)
          label.text = request.status + " " + request.responseText
      }
      if (turn % 2) {
        request.open("GET", base + "/plain?turn=" + turn)
        request.send()
      } else {
        request.open("POST", base + "/echo?turn=" + turn)
        request.setRequestHeader("Content-Type", "text/plain")
        request.send("turn " + turn)
      }
      if (turn % 5 == 0)
        picture.source = base + "/status?code=404&turn=" + turn
    }
  }
}
"""

# Asks once in each way that QML has, its own threads included.
EVERY_WAY = """
import QtQuick
import QtQuick.Window
import QtQml.WorkerScript
Window {
  visible: true; width: 300; height: 200
  property string base: Qt.application.arguments[Qt.application.arguments.length - 1]
  property string loaded
  Text { text: loaded }
  Image { id: picture }
  FontLoader { id: font; onStatusChanged: if (status === FontLoader.Error) loaded += " font" }
  Loader { id: loader; onLoaded: loaded += " component" }
  WorkerScript {
    id: worker; source: "worker.mjs"; onMessage: (message) => loaded += " " + message.text
  }
  Timer {
    // Not before the probe is there.
    interval: 3000; running: true
    onTriggered: {
      picture.source = base + "/status?code=404&way=image"
      font.source = base + "/plain?way=font"
      loader.source = base + "/component?way=loader"
      worker.sendMessage({"url": base + "/plain?way=worker"})
      const request = new XMLHttpRequest()
      request.open("GET", base + "/plain?way=script")
      request.send()
    }
  }
}
"""
WORKER = """
WorkerScript.onMessage = function(message) {
  const request = new XMLHttpRequest()
  request.onreadystatechange = function() {
    if (request.readyState === XMLHttpRequest.DONE)
      WorkerScript.sendMessage({"text": "worker " + request.responseText})
  }
  request.open("GET", message.url)
  request.send()
}
"""

VALIDATOR = pathlib.Path(__file__).with_name("validate_har.js")
# Where Debian's packages for it are, whichever build of the interpreter runs.
MODULES = "/usr/share/nodejs"


def complaints_about(archive):
    """What the schemas of the archive format find wrong."""
    found = subprocess.run(["node", VALIDATOR, archive], capture_output=True, text=True,
                           timeout=TIME_LIMIT, env=dict(os.environ, NODE_PATH=MODULES))
    assert found.stderr == "", found.stderr
    assert (found.returncode == 0) == (found.stdout == ""), found
    return found.stdout


class WaysOfQml(unittest.TestCase):
    def test_are_all_seen(self):
        server = ScriptedServer()
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder) / "page.qml"
            page.write_text(EVERY_WAY, encoding="utf-8")
            (pathlib.Path(folder) / "worker.mjs").write_text(WORKER, encoding="utf-8")
            host = Process([QML_RUNTIME, page, "--", f"http://127.0.0.1:{server.port}"])
            try:
                companion = Companion(host.port())
                wait_for(lambda: {"font", "component", "hello"} <= self.words(host), "all answers")
                # A component from a server is looked for in a list of the server's first.
                wanted = [("/component?way=loader", 200), ("/plain?way=font", 200),
                          ("/plain?way=script", 200), ("/plain?way=worker", 200), ("/qmldir", 404),
                          ("/status?code=404&way=image", 404)]
                wait_for(lambda: len(companion.synced_exchanges()) >= len(wanted), "all exchanges")
                exchanges = companion.synced_exchanges()
                self.assertEqual(
                    sorted((exchange["url"].removeprefix(f"http://127.0.0.1:{server.port}"),
                            exchange["statusCode"]) for exchange in exchanges), wanted)
                seen = {exchange["url"].split("=")[-1]: exchange for exchange in exchanges}
                self.assertEqual(body_of(seen["worker"], "responseBody"), b"hello")
                companion.close()
            finally:
                host.kill()
                server.close()

    def words(self, host):
        shown = subprocess.run([TARNIX, "text", "--pid", str(host.pid)], capture_output=True,
                               text=True, timeout=TIME_LIMIT)
        return set(shown.stdout.split())


class DeepLinks(unittest.TestCase):
    """Go to the application where it takes them, to the desktop otherwise."""

    def setUp(self):
        self.server = ScriptedServer()
        self.folder = tempfile.TemporaryDirectory()
        self.opened = pathlib.Path(self.folder.name) / "opened"
        # What stands for the desktop.
        desktop = pathlib.Path(self.folder.name) / "xdg-open"
        desktop.write_text(f'#!/bin/sh\necho "$1" >> {self.opened}\n', encoding="ascii")
        desktop.chmod(0o755)
        # Without a display there is no desktop for the toolkit.
        self.screen = XServer()
        self.host = TraceHost(self.server, with_probe=True, QT_QPA_PLATFORM="xcb",
                              DISPLAY=self.screen.display,
                              PATH=f"{self.folder.name}:{os.environ['PATH']}")
        self.host.port()

    def tearDown(self):
        self.host.kill()
        self.screen.close()
        self.server.close()
        self.folder.cleanup()

    def open(self, url):
        done = subprocess.run([TARNIX, "open", url, "--pid", str(self.host.pid)],
                              capture_output=True, text=True, timeout=TIME_LIMIT)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def test_of_the_application_go_to_its_handler(self):
        self.open("shop://item/42?from=mail%20box#top")
        self.open("SHOP://item/43")
        wait_for(lambda: len(self.host.trace("opened")) == 2, "both links")
        self.assertEqual(self.host.trace("opened"),
                         ["  shop://item/42?from=mail%20box#top", "  shop://item/43"])
        self.assertFalse(self.opened.exists())

    def test_of_others_go_to_the_desktop(self):
        self.open("other://item/42?from=mail%20box#top")
        wait_for(self.opened.exists, "the desktop's part")
        wait_for(self.opened.read_text, "what the desktop was given")
        self.assertEqual(self.opened.read_text(), "other://item/42?from=mail%20box#top\n")
        self.assertEqual(self.host.trace("opened"), [])


class Commands(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = ScriptedServer()
        cls.folder = tempfile.TemporaryDirectory()
        cls.page = pathlib.Path(cls.folder.name) / "page.qml"
        cls.page.write_text(PAGE, encoding="utf-8")
        # A name that no other application on this machine has.
        cls.runtime = pathlib.Path(cls.folder.name) / f"traffic-page-{os.getpid()}"
        shutil.copy(QML_RUNTIME, cls.runtime)
        cls.host = cls.start()
        cls.port = cls.host.port()

    @classmethod
    def tearDownClass(cls):
        cls.host.kill()
        cls.server.close()
        cls.folder.cleanup()

    @classmethod
    def start(cls):
        return Process([cls.runtime, cls.page, "--", f"http://127.0.0.1:{cls.server.port}"])

    def tarnix(self, *words, code=0):
        done = subprocess.run([TARNIX, *words, "--pid", str(self.host.pid)], capture_output=True,
                              text=True, timeout=TIME_LIMIT)
        self.assertEqual(done.returncode, code, done.stderr)
        return done.stdout

    def watched(self, *options):
        lines = self.tarnix("watch", "--no-log", "--json", *options).splitlines()
        return [json.loads(line) for line in lines]

    def label(self):
        return self.tarnix("html")

    def test_watch_shows_a_line_an_exchange(self):
        lines = self.tarnix("watch", "--no-log", "--count", "4").splitlines()
        self.assertEqual(len(lines), 4)
        for line in lines:
            self.assertRegex(line, r"^\d\d:\d\d:\d\d\.\d{3}  (GET|POST) +(200|201|404) +\d+ ms +"
                                   r"\d+ B  127\.0\.0\.1/(plain|echo|status)\?")

    def test_watch_filters(self):
        for exchange in self.watched("--count", "3", "--only-method", "post"):
            self.assertEqual(exchange["method"], "POST")
        for exchange in self.watched("--count", "2", "--only-status", "4xx"):
            self.assertEqual(exchange["statusCode"], 404)
        for exchange in self.watched("--count", "2", "--only-host", "0.0.1", "--only-status", "200"):
            self.assertEqual(exchange["statusCode"], 200)
        self.tarnix("watch", "--only-status", "wrong", code=2)

    def test_watch_shows_bodies(self):
        text = self.tarnix("watch", "--no-log", "--body", "--count", "1", "--only-method", "POST")
        self.assertRegex(text, r"\n  request\n(.*\n)*    turn \d+\n  response\n")
        self.assertIn('    {"method": "POST"', text)

    def test_watch_begins_with_what_was_there_when_asked(self):
        wait_for(lambda: "turn=9" in self.tarnix("sync", "--all"), "ten turns")
        first = self.watched("--all", "--count", "1")[0]
        self.assertIn("turn=", first["url"])

    def test_watch_survives_other_commands_and_a_new_start(self):
        watch = subprocess.Popen([TARNIX, "watch", "--no-log", "--json", "--name",
                                  self.runtime.name],
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        try:
            seen = [json.loads(watch.stdout.readline())["id"] for _ in range(2)]
            self.tarnix("clear")
            seen += [json.loads(watch.stdout.readline())["id"] for _ in range(3)]
            type(self).host.kill()
            type(self).host = self.start()
            seen += [json.loads(watch.stdout.readline())["id"] for _ in range(3)]
            self.assertEqual(len(set(seen)), len(seen), "each once")
        finally:
            watch.send_signal(signal.SIGINT)
            watch.communicate(timeout=TIME_LIMIT)

    def test_mock_turns_a_screen_and_back(self):
        rule = self.tarnix("mock", "add", "/plain", "--status", "503", "--body", "down for repair",
                           "--header", "Content-Type: text/plain").strip()
        wait_for(lambda: "503 down for repair" in self.label(), "the mocked screen")
        mocked = self.watched("--count", "1", "--only-status", "503")[0]
        self.assertEqual(mocked["responseHeaders"], {"Content-Type": "text/plain"})
        self.tarnix("mock", "remove", rule)
        wait_for(lambda: "200 hello" in self.label(), "the screen as it was")

    def test_mock_takes_its_body_from_a_file(self):
        body = pathlib.Path(self.folder.name) / "body.json"
        body.write_text('{"from": "a file"}', encoding="utf-8")
        rule = json.loads(self.tarnix("mock", "add", "/echo", "--method", "post", "--body",
                                      f"@{body}", "--json"))["ruleId"]
        self.assertEqual(body_of(self.watched("--count", "1", "--only-method", "POST")[-1],
                                 "responseBody"), body.read_bytes())
        self.tarnix("mock", "remove", rule)
        self.tarnix("mock", "add", "x", "--body", "@/nonexistent", code=1)
        body.write_bytes(b"\xff\xd8 a picture")
        self.tarnix("mock", "add", "x", "--body", f"@{body}", code=1)
        self.tarnix("mock", "add", "x", "--header", "no colon", code=2)

    def test_intercept_fails_requests_and_stops(self):
        rule = self.tarnix("intercept", "add", r"turn=\d+$", "--match", "regex", "--rule-name",
                           "No way").strip()
        failed = self.watched("--count", "1", "--only-status", "error")[0]
        self.assertEqual(failed["errorDescription"], "Request intercepted by rule: No way")
        self.tarnix("intercept", "remove", rule)
        self.assertTrue(self.watched("--count", "2", "--only-status", "2xx"))

    def test_remove_wants_an_identifier(self):
        self.tarnix("mock", "remove", "first", code=2)
        self.tarnix("intercept", "remove", "", code=2)

    def test_clear_forgets(self):
        wait_for(lambda: len(json.loads(self.tarnix("sync", "--json"))["httpRequests"]) > 15,
                 "enough exchanges")
        self.tarnix("clear")
        self.assertLess(len(json.loads(self.tarnix("sync", "--json"))["httpRequests"]), 15)

    def test_open_refuses_what_is_no_url(self):
        for text in ("", "no url", "relative/path", "shop://%"):
            self.tarnix("open", text, code=2)

    def test_har_is_an_archive(self):
        wait_for(lambda: "404" in self.tarnix("sync", "--all"), "each kind of exchange")
        path = pathlib.Path(self.folder.name) / "traffic.har"
        self.assertRegex(self.tarnix("har", str(path)), r"^\d+ exchanges are in ")
        log = json.loads(path.read_text(encoding="utf-8"))["log"]
        self.assertEqual(log["version"], "1.2")
        self.assertEqual(log["creator"]["name"], "tarnix")
        statuses = {entry["response"]["status"] for entry in log["entries"]}
        self.assertLessEqual({200, 201, 404}, statuses)
        for entry in log["entries"]:
            self.assertRegex(entry["startedDateTime"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$")
            self.assertGreaterEqual(entry["time"], 0)
        self.assertEqual(complaints_about(path), "")
        self.assertEqual(json.loads(self.tarnix("har", "-"))["log"]["version"], "1.2")
        self.tarnix("har", "/nonexistent/file", code=1)
        written = json.loads(self.tarnix("har", str(path), "--json"))
        entries = json.loads(path.read_text())["log"]["entries"]
        self.assertEqual(written, {"file": str(path), "exchangeCount": len(entries)})

    def test_the_schemas_of_archives_find_what_is_wrong(self):
        path = pathlib.Path(self.folder.name) / "wrong.har"
        self.tarnix("har", str(path))
        archive = json.loads(path.read_text(encoding="utf-8"))
        del archive["log"]["creator"]["version"]
        path.write_text(json.dumps(archive), encoding="utf-8")
        self.assertIn(".log.creator should have required property 'version'",
                      complaints_about(path))


if __name__ == "__main__":
    main()
