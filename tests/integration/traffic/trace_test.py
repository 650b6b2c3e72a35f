"""What an application sees of its own requests is the same with and without the probe.

The toolkit itself does not do everything in the same order each time. So each scenario runs without
the probe until it has shown what it can look like, and with the probe it must look like one of
these.
"""

import difflib
import tempfile

from scripted_server import ScriptedServer
from traffic_support import *

TRIES = 10
# Run by other tests: these take long.
LONG = {"gigabyte", "load"}
# Only for answers of rules: the toolkit's own replies do not survive it.
MOCKED = {"mocked-delete-everywhere"}


def without_chance_progress(trace):
    """Of reports that follow each other on how much of an upload has gone out, the last one stays.

    Where a body is cut that its device hands over bit by bit is a matter of how busy the machine is.
    """
    return [line for line, following in zip(trace, trace[1:] + [""])
            if not ("uploadProgress" in line and "uploadProgress" in following)]


# The toolkit's network thread is on its way already when the application lets go of a request at
# once. How far it gets before it hears of that is a matter of chance, one time in a hundred on a busy
# machine, without the probe just as with it: the signals of what it got to still arrive, and the
# request may have reached the server.
LET_GO_AT_ONCE = {"abort-at-once", "delete-at-once"}
LATE_SIGNALS = ("  socketStartedConnecting |", "  requestSent |", "  metaDataChanged |")


def without_late_signals(trace):
    """Of what follows an abort, only what the abort is answerable for."""
    lines, is_aborted, is_late = [], False, False
    for line in trace:
        if not line.startswith("    "):
            is_late = is_aborted and line.startswith(LATE_SIGNALS)
            is_aborted = is_aborted or line == "  aborted."
        # What is indented further belongs to the signal before it.
        if not is_late:
            lines.append(line)
    return lines


class Traces(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = ScriptedServer()
        with tempfile.TemporaryDirectory() as folder:
            cls.secure = ScriptedServer(make_certificate(folder))
        address = f"https://127.0.0.1:{cls.secure.port}"
        cls.bare = TraceHost(cls.server, with_probe=False, TRACE_HOST_SECURE=address)
        cls.probed = TraceHost(cls.server, with_probe=True, TRACE_HOST_SECURE=address)
        cls.companion = Companion(cls.probed.port())

    @classmethod
    def tearDownClass(cls):
        cls.companion.close()
        codes = [cls.bare.end(), cls.probed.end()]
        cls.server.close()
        cls.secure.close()
        assert codes == [0, 0], codes

    def traces(self, host, scenario):
        self.server.take_requests()
        trace = host.trace(scenario)
        self.assertNotIn("  TOO LATE", trace, scenario)
        if scenario in LET_GO_AT_ONCE:
            self.server.take_requests()
            trace = without_late_signals(trace)
        # What reached the server belongs to it; the port of a client does not, and which of
        # several connections is first is a matter of chance.
        reached = sorted(json.dumps({key: value for key, value in request.items()})
                         for request in self.server.take_requests() + self.secure.take_requests())
        return "\n".join(without_chance_progress(trace) + reached)

    def test_is_the_same(self):
        for scenario in sorted(set(self.bare.scenarios) - LONG - MOCKED):
            with self.subTest(scenario):
                known = {self.traces(self.bare, scenario)}
                for _ in range(TRIES):
                    seen = self.traces(self.probed, scenario)
                    if seen in known:
                        break
                    known.add(self.traces(self.bare, scenario))
                else:
                    self.fail("\n".join(difflib.unified_diff(
                        min(known).splitlines(), seen.splitlines(), "bare", "probed", lineterm="")))

    def test_says_nothing_that_the_bare_host_does_not_say(self):
        for scenario in ("get", "post", "reset", "abort-in-ready-read", "upload-pipe"):
            self.bare.trace(scenario)
            self.probed.trace(scenario)
        time.sleep(0.2)
        def own(lines):
            return {line for line in lines if "[TarnixProbe]" not in line}
        self.assertLessEqual(own(self.probed.errors), own(self.bare.errors))


# Scenario -> what is recorded of each exchange: method, status, request body, response body.
# Bodies are a length, or the text itself.
RECORDS = {
    "get": [("GET", 200, None, "hello")],
    "get-empty": [("GET", 200, None, None)],
    "head": [("HEAD", 200, None, None)],
    "post": [("POST", 201, "some text", 109)],
    "post-nothing": [("POST", 201, None, 109)],
    "put": [("PUT", 201, "x", 108)],
    "delete": [("DELETE", 201, None, 111)],
    "custom": [("PATCH", 201, "patch", 110)],
    "derived-manager": [("GET", 200, None, "hello")],
    "plainly-derived-manager": [("GET", 200, None, "hello")],
    "chunked": [("GET", 200, None, "one two three")],
    "gzip": [("GET", 200, None, 4096)],
    "partial-reads": [("GET", 200, None, 3000)],
    "large": [("GET", 200, None, 4096)],
    "large-partial": [("GET", 200, None, 4096)],
    "large-unread": [("GET", 200, None, 4096)],
    "trickle": [("GET", 200, None, "0.1.2.3.4.5.6.7.8.9.")],
    "trickle-read": [("GET", 200, None, "0.1.2.3.4.5.6.7.8.9.")],
    "204": [("GET", 204, None, None)],
    "404": [("GET", 404, None, "gone")],
    "500": [("GET", 500, None, "oops")],
    "401": [("GET", 401, None, "who are you")],
    "authentication": [("GET", 200, None, "welcome")],
    "302": [("GET", 200, None, "hello")],
    "303-post": [("POST", 200, "once", "hello")],
    "302-other-host-policy": [("GET", 302, None, "elsewhere")],
    "cookies": [("GET", 200, None, "none"), ("GET", 200, None, "taste=sweet")],
    "cache": [("GET", 200, None, "cache me")] * 3,
    "refused": [("GET", None, None, None)],
    "reset": [("GET", 200, None, 500)],
    "synchronous": [("GET", 200, None, "hello")],
    "synchronous-post": [("POST", 201, "sync", 109)],
    "synchronous-refused": [("GET", None, None, None)],
    "late-connect": [("GET", 200, None, "hello")],
    "never-read": [("GET", 200, None, "hello")],
    "disconnected": [("GET", 200, None, "hello")],
    "upload-memory": [("POST", 201, 65536, 113)],
    "upload-file": [("POST", 201, 65536, 113)],
    "upload-file-from-the-middle": [("POST", 201, 64537, 113)],
    "upload-late-device": [("POST", 201, 65536, 113)],
    "upload-pipe": [("POST", 201, 65536, 113)],
    "upload-multipart": [("POST", 201, 65536, 114)],
    "abort-while-waiting": [("GET", None, None, None)],
    "delete-in-ready-read": [("GET", 200, None, "hello")],
    "other-thread": [("GET", 200, None, "hello")],
    "unknown-scheme": [],
    "data-scheme": [],
    "file-scheme": [],
}


class Records(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = ScriptedServer()
        cls.host = TraceHost(cls.server, with_probe=True)
        cls.companion = Companion(cls.host.port())

    @classmethod
    def tearDownClass(cls):
        cls.companion.close()
        cls.host.end()
        cls.server.close()

    def exchanges_of(self, scenario, count):
        self.companion.forget()
        self.host.trace(scenario)
        # Behind all of them comes one that is known.
        self.host.trace("accepted")
        found = []
        while not found or found[-1].get("statusCode") != 202:
            found += self.companion.exchanges(1)
        self.assertEqual(len(found) - 1, count, [exchange["url"] for exchange in found])
        return found[:-1]

    def assert_body(self, exchange, name, expected):
        body = body_of(exchange, name)
        if isinstance(expected, int):
            self.assertEqual(len(body or b""), expected, name)
        else:
            self.assertEqual(body, expected and expected.encode(), name)

    def test_are_right(self):
        for scenario, expected in RECORDS.items():
            with self.subTest(scenario):
                exchanges = self.exchanges_of(scenario, len(expected))
                for exchange, (method, status, request, response) in zip(exchanges, expected):
                    self.assertEqual(exchange["method"], method)
                    self.assertEqual(exchange.get("statusCode"), status)
                    self.assert_body(exchange, "requestBody", request)
                    self.assert_body(exchange, "responseBody", response)
                    self.assertEqual(exchange["source"], "URLSession")
                    self.assertGreaterEqual(exchange["duration"], 0)
                    self.assertEqual((exchange["isMocked"], exchange["isIntercepted"],
                                      exchange["isEnvironmentRewritten"]), (False, False, False))

    def test_tell_why_there_was_no_response(self):
        for scenario, error in (("refused", "Connection refused"),
                                ("no-such-host", "Host nowhere.invalid not found"),
                                ("timeout", "Operation canceled"),
                                ("abort-while-waiting", "Operation canceled"),
                                ("delete-at-once", "Operation canceled"),
                                ("redirect-loop", "Too many redirects")):
            with self.subTest(scenario):
                exchange, = self.exchanges_of(scenario, 1)
                self.assertEqual(exchange.get("errorDescription"), error)

    def test_count_no_status_as_a_failure(self):
        for scenario in ("404", "500", "401", "get"):
            exchange, = self.exchanges_of(scenario, 1)
            self.assertNotIn("errorDescription", exchange)

    def test_hold_the_headers_of_both_sides(self):
        exchange, = self.exchanges_of("derived-manager", 1)
        self.assertEqual(exchange["requestHeaders"], {"X-Own": "yes"})
        self.assertEqual(exchange["responseHeaders"], {
            "Date": "Thu, 01 Jan 2026 00:00:00 GMT", "Content-Length": "5", "X-One": "1",
            "Content-Type": "text/plain; charset=utf-8"})
        self.assertEqual(exchange["mimeType"], "text/plain")
        self.assertEqual(exchange["host"], "127.0.0.1")
        self.assertEqual(exchange["path"], "/plain")

    def test_hold_the_beginning_of_what_was_sent(self):
        pattern = "".join(chr(ord("a") + index % 23) for index in range(65537)).encode()
        for scenario in ("upload-memory", "upload-file", "upload-late-device", "upload-pipe"):
            with self.subTest(scenario):
                exchange, = self.exchanges_of(scenario, 1)
                self.assertEqual(body_of(exchange, "requestBody"), pattern[:65536])

    def test_hold_as_much_of_a_pipe_as_was_in_it(self):
        exchange, = self.exchanges_of("upload-pipe-as-file", 1)
        pattern = "".join(chr(ord("a") + index % 23) for index in range(65537)).encode()
        self.assertTrue(pattern.startswith(body_of(exchange, "requestBody") or b""))
        self.assertEqual(exchange["statusCode"], 201)

    def test_lose_nothing_of_a_hundred_at_once(self):
        before = len(self.companion.synced_exchanges())
        self.host.trace("parallel")
        after = self.companion.synced_exchanges()
        self.assertEqual(min(len(after) - before, 100), min(500 - before, 100))
        self.assertEqual({exchange["url"].split("=")[-1] for exchange in after[-100:]},
                         {str(number * 100) for number in range(100)})


if __name__ == "__main__":
    main()
