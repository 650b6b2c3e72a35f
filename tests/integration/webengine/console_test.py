"""The consoles of web views: captured, and for the application what they were without the probe."""

import http.server
import json
import pathlib
import sys
import tempfile
import threading
from concurrent.futures import ThreadPoolExecutor

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "traffic"))

from loading_support import *  # noqa: E402,F403
from traffic_support import Companion, probe_port  # noqa: E402
from web_engine_support import (  # noqa: E402
    PART,
    PATIENCE_WITH_PAGES,
    TARNIX,
    host_environment,
    maps_of,
)

CONSOLE_HOST = BUILD / "bin/tarnix_console_host"
QML = pathlib.Path(__file__).resolve().parent / "console.qml"

CALLS = """<!doctype html><head><script>console.log("first line", {b: 1}, [2], null, undefined)
</script></head><body><script>
console.info("info"); console.error("error", new Error("x").message);
  console.warn("warn");
console.debug("debug");
console.log(); console.log("%s and %d", "text", 5); console.log("twice"); console.log("twice");
eval("\\n\\nconsole.log('evaluated')"); eval("console.log('named')\\n//# sourceURL=named.js");
new Function("console.log('function')")();
[1].forEach(console.log);
setTimeout(console.log, 1, "timer"); Promise.resolve("promise").then(console.log);
(async () => { await 0; console.log("awaited"); })();
document.body.addEventListener("click", console.log); document.body.click();
var ring = {}; ring.self = ring; console.log(ring);
var bare = Object.create(null); bare.self = bare; console.log("bare", bare);
console.log(Symbol("s"), 10n, function f() {}, -0, NaN);
console.table([1]); console.group("group"); console.log("in group"); console.groupEnd();
console.assert(false, "assertion"); console.count(); console.dir({});
console.log(typeof window.webkit, console.log.name, console.log.length, Error.stackTraceLimit,
            "prepareStackTrace" in Error, new Error("s").stack.split("\\n").length,
            /native code/.test(console.log), Object.getOwnPropertyNames(console.log).join());
Error.prepareStackTrace = () => { window.asked = true; return "mine"; };
console.log("with own stacks", window.asked);
undefinedName.property;
</script></body>"""

FRAMES = """<!doctype html><script>console.log("outside")</script>
<iframe srcdoc="<script>console.log('srcdoc')</script>"></iframe>
<iframe sandbox="allow-scripts" srcdoc="<script>console.log('sandboxed')</script>"></iframe>
<iframe src="data:text/html,<script>console.log('data frame')</script>"></iframe>
<iframe src="http://localhost:%PORT%/inner"></iframe>"""

PAGES = {
    "/calls": ({}, CALLS),
    "/frames": ({}, FRAMES),
    "/inner": ({}, "<script>console.log('other site')</script>"),
    "/strict": ({"Content-Security-Policy":
                 "default-src 'none'; script-src 'nonce-n'; require-trusted-types-for 'script'"},
                "<script nonce=n>console.log('strict')</script><script>console.log('no')</script>"),
    "/silent": ({}, "<p>nothing"),
}


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    class Handler(http.server.BaseHTTPRequestHandler):
        def do_GET(self):
            headers, body = PAGES.get(self.path, ({}, ""))
            body = body.replace("%PORT%", str(self.server.server_port)).encode()
            self.send_response(200)
            for name, value in {"Content-Type": "text/html; charset=utf-8",
                                "Content-Length": str(len(body)), **headers}.items():
                self.send_header(name, value)
            self.end_headers()
            self.wfile.write(body)

        def log_message(self, *_):
            pass

    def __init__(self):
        super().__init__(("127.0.0.1", 0), self.Handler)
        threading.Thread(target=self.serve_forever, daemon=True).start()


def captured(host):
    """The captured entries, over the wire."""
    assert wait_until(lambda: any("Listener ready" in line for line in list(host.error_lines)),
                      PATIENCE_WITH_PAGES)
    companion = Companion(wait_until(lambda: probe_port(host.pid), PATIENCE_WITH_PAGES))
    try:
        companion.send("command.getWebViewConsole", {"limit": 200})
        while True:
            kind, payload = companion.messages.get(timeout=PATIENCE_WITH_PAGES)
            if kind == "response.webViewConsole":
                return payload["entries"]
    finally:
        companion.close()


def children_of(pid):
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                parent = int((entry / "stat").read_text().rsplit(")", 1)[1].split()[1])
            except OSError:
                continue
            if parent == pid:
                found += [int(entry.name)] + children_of(int(entry.name))
    return found


class Console(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = Server()

    @classmethod
    def tearDownClass(cls):
        cls.server.shutdown()
        cls.server.server_close()

    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.page = self.folder / "page.html"
        self.page.write_text(CALLS)

    def addresses(self):
        base = f"http://127.0.0.1:{self.server.server_port}"
        data = "data:text/html,<script>console.log('data')</script>"
        return [f"{base}/calls", f"{base}/strict", f"{base}/frames", data.replace(" ", "%20"),
                self.page.as_uri(), f"{base}/silent"]

    def trace_of_widgets(self, profile, with_probe):
        """What the application heard, a list a page; and what was captured."""
        home = self.folder / f"home-{profile}-{with_probe}"
        home.mkdir(mode=0o700)
        entries = None
        with Process([CONSOLE_HOST], host_environment(str(home), with_probe)) as host:
            traces = []
            for address in self.addresses():
                start = len(host.lines)
                host._process.stdin.write(f"{profile} {address}\n")
                host._process.stdin.flush()
                self.assertTrue(
                    wait_until(lambda: any(line.startswith("loaded|")
                                           for line in host.lines[start:]), PATIENCE_WITH_PAGES),
                    host.error_lines[-5:])
                traces.append(host.lines[start:])
            if with_probe:
                entries = captured(host)
                self.check_processes(host.pid)
            self.assertEqual(host.finish(), 0)
        return traces, entries

    def trace_of_quick(self, profile, with_probe):
        home = self.folder / f"home-quick-{profile}-{with_probe}"
        home.mkdir(mode=0o700)
        entries = None
        command = [QML_RUNTIME, QML, "--", profile, *self.addresses()]
        with Process(command, host_environment(str(home), with_probe)) as host:
            self.assertTrue(host.wait_for_error_line("done|", PATIENCE_WITH_PAGES * 2),
                            host.error_lines[-5:])
            lines = [line.removeprefix("qml: ") for line in list(host.error_lines)
                     if line.startswith("qml: ")]
            if with_probe:
                entries = captured(host)
                self.check_processes(host.pid)
        traces = [[]]
        for line in lines:
            traces[-1].append(line)
            if line.startswith("loaded|"):
                traces.append([])
        return traces, entries

    def check_processes(self, pid):
        """The part is in the host, and nothing of ours in its helpers."""
        self.assertIn(PART, maps_of(pid))
        helpers = [child for child in children_of(pid)
                   if "QtWebEngineProcess" in pathlib.Path(f"/proc/{child}/cmdline").read_text()]
        self.assertTrue(helpers)
        for helper in helpers:
            self.assertNotIn("libtarnixprobe-", maps_of(helper))
            environ = pathlib.Path(f"/proc/{helper}/environ").read_text()
            self.assertNotIn("libtarnixprobe.so", environ)

    def assert_same(self, bare, probed):
        self.assertEqual(len(bare), len(probed))
        for without, with_probe in zip(bare, probed):
            # Frames of several processes speak in any order.
            if any("outside" in line for line in without):
                without, with_probe = sorted(without), sorted(with_probe)
            self.assertEqual(with_probe, without)
        self.assertTrue(any("first line [object Object] 2 null undefined" in line
                            for trace in probed for line in trace))

    def assert_captured(self, entries):
        messages = [entry["message"] for entry in entries]
        for message in ('first line {"b":1} [2] null undefined', "error x", "warn", "debug", "",
                        "%s and %d text 5", "twice", "evaluated", "named", "function", "timer",
                        "promise", "awaited", "[object Object]", "bare [object Object]",
                        "Symbol(s) 10 function f() {} 0 NaN", "in group", "with own stacks undefined",
                        "strict", "outside", "srcdoc", "sandboxed", "data frame", "other site",
                        "data"):
            self.assertIn(message, messages)
        self.assertNotIn("info", messages)
        self.assertNotIn("no", messages)
        first = next(entry for entry in entries if entry["message"].startswith("first line"))
        self.assertEqual(first["level"], "log")
        self.assertEqual(first["url"], self.addresses()[0])
        self.assertLess(abs(first["timestamp"] - time.time()), 600)

    def compare(self, trace, profile):
        # At once, since both mostly wait.
        with ThreadPoolExecutor(2) as pool:
            (bare, _), (probed, entries) = pool.map(trace, (profile, profile), (False, True))
        self.assert_same(bare, probed)
        self.assert_captured(entries)

    def test_widgets_stored_profile(self):
        require(CONSOLE_HOST, TARNIX)
        self.compare(self.trace_of_widgets, "stored")

    def test_widgets_off_the_record(self):
        require(CONSOLE_HOST, TARNIX)
        self.compare(self.trace_of_widgets, "hidden")

    def test_quick_default_profile(self):
        require(QML_RUNTIME, TARNIX)
        self.compare(self.trace_of_quick, "default")

    def test_quick_off_the_record(self):
        require(QML_RUNTIME, TARNIX)
        self.compare(self.trace_of_quick, "hidden")

    def test_applications_without_web_views_do_not_get_the_part(self):
        require(QML_RUNTIME)
        page = self.folder / "plain.qml"
        page.write_text("import QtQuick\nimport QtQuick.Window\nWindow { visible: true }\n")
        with Process([QML_RUNTIME, page], host_environment(str(self.folder), True)) as host:
            self.assertTrue(host.wait_for_error_line("WebViewConsoleCapture installed"))
            maps = maps_of(host.pid)
            self.assertIn("libtarnixprobe-qt6.so", maps)
            self.assertNotIn(PART, maps)
            self.assertNotIn("libQt6WebEngine", maps)


if __name__ == "__main__":
    main()
