"""A mocked answer looks to the application as the same answer from a server; a failed request fails
with the words of its rule."""

import tempfile

from scripted_server import DATE, ScriptedServer
from traffic_support import *

HEADERS = {"Date": "Thu, 01 Jan 2026 00:00:00 GMT"}
PLAIN = {**HEADERS, "Content-Type": "text/plain; charset=utf-8", "X-One": "1",
         "Content-Length": "5"}
TEXT = {**HEADERS, "Content-Type": "text/plain"}
ECHO = {**HEADERS, "Content-Type": "application/json"}


def answer(status, headers, body):
    return {"statusCode": status, "responseHeaders": headers, "responseBody": body}


# Scenario -> the rules under which it must look as it does without any, by part of the URL.
ANSWERS = {
    "get": {"/plain": answer(200, PLAIN, "hello")},
    "get-empty": {"/status": answer(200, {**HEADERS, "Content-Length": "0"}, "")},
    "head": {"/plain": answer(200, PLAIN, "a response to this method has no body")},
    "204": {"/status": answer(204, HEADERS, "")},
    "404": {"/status": answer(404, {**TEXT, "Content-Length": "4"}, "gone")},
    "407": {"/status": answer(407, {**TEXT, "Content-Length": "3"}, "who")},
    "500": {"/status": answer(500, {**TEXT, "Content-Length": "4"}, "oops")},
    "derived-manager": {"/plain": answer(200, PLAIN, "hello")},
    "plainly-derived-manager": {"/plain": answer(200, PLAIN, "hello")},
    "synchronous": {"/plain": answer(200, PLAIN, "hello")},
    "late-connect": {"/plain": answer(200, PLAIN, "hello")},
    "never-read": {"/plain": answer(200, PLAIN, "hello")},
    "auto-delete": {"/plain": answer(200, PLAIN, "hello")},
    "other-thread": {"/plain": answer(200, PLAIN, "hello")},
    "disconnected": {"/plain": answer(200, PLAIN, "hello")},
    "abort-at-once": {"/plain": answer(200, PLAIN, "hello")},
    "abort-in-meta-data": {"/plain": answer(200, PLAIN, "hello")},
    "abort-in-ready-read": {"/plain": answer(200, PLAIN, "hello")},
    "abort-in-finished": {"/plain": answer(200, PLAIN, "hello")},
    "close-in-ready-read": {"/plain": answer(200, PLAIN, "hello")},
    "delete-at-once": {"/plain": answer(200, PLAIN, "hello")},
    "delete-in-meta-data": {"/plain": answer(200, PLAIN, "hello")},
    "delete-in-ready-read": {"/plain": answer(200, PLAIN, "hello")},
    "delete-in-error": {"/status": answer(404, {**TEXT, "Content-Length": "1"}, "x")},
    "delete-in-finished": {"/plain": answer(200, PLAIN, "hello")},
    "302-other-host-policy": {"/redirect": answer(
        302, {**HEADERS, "Location": "/plain", "Content-Length": "9"}, "elsewhere")},
    "305-other-host-policy": {"/status": answer(
        305, {**HEADERS, "Location": "/plain", "Content-Length": "0"}, "")},
    # Only the redirect is mocked: what it leads to comes from the server.
    "302": {"/redirect": answer(302, {**HEADERS, "Location": "/plain", "Content-Length": "9"},
                                "elsewhere")},
    "same-origin-redirect": {"/redirect": answer(
        302, {**HEADERS, "Location": "/plain", "Content-Length": "9"}, "elsewhere")},
    "user-verified-redirect": {"/redirect": answer(
        302, {**HEADERS, "Location": "/plain", "Content-Length": "9"}, "elsewhere")},
    "delete-manager-in-finished": {"/redirect": answer(
        302, {**HEADERS, "Location": "/plain", "Content-Length": "9"}, "elsewhere")},
    "303-post": {"/status": answer(303, {**HEADERS, "Location": "/plain", "Content-Length": "0"},
                                   "")},
    "redirect-loop": {"/loop": answer(302, {**HEADERS, "Location": "/loop", "Content-Length": "0"},
                                      "")},
    "redirect-to-nowhere": {"/status": answer(
        302, {**HEADERS, "Location": "ftp://nowhere.test/", "Content-Length": "0"}, "")},
    "redirect-to-refusal": {"/status": answer(
        302, {**HEADERS, "Location": "http://127.0.0.1:1/", "Content-Length": "0"}, "")},
}


def comparable(trace):
    """Without what a mocked answer cannot have or need not."""
    lines = []
    for line in trace:
        # The order of headers is not the rule's to say; the download buffer is the toolkit's own;
        # connecting again depends on how long a server keeps a connection.
        if line.startswith("    attribute 15 "):
            continue
        if "socketStartedConnecting" in line or "requestSent" in line:
            continue
        lines.append(line)
    groups, result = [], []
    for line in lines:
        if line.startswith("    "):
            groups.append(line)
        else:
            result += sorted(groups) + [line]
            groups = []
    return result + sorted(groups)


class Answers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = ScriptedServer()
        # Memory that was given back holds nothing that could still be taken for a reply.
        cls.host = TraceHost(cls.server, with_probe=True, MALLOC_PERTURB_="165")
        cls.companion = Companion(cls.host.port())
        cls.rules = []

    @classmethod
    def tearDownClass(cls):
        cls.companion.close()
        code = cls.host.end()
        cls.server.close()
        assert code == 0, code

    def tearDown(self):
        for kind, rule in self.rules:
            self.companion.send(f"command.remove{kind}Rule", {"ruleId": rule})
        self.companion.barrier()
        self.rules.clear()

    def add(self, kind, **rule):
        number = len(self.rules) + 1
        rule["ruleId"] = f"00000000-0000-4000-8000-{number:012}"
        self.companion.send(f"command.add{kind}Rule", rule)
        self.companion.barrier()
        self.rules.append((kind, rule["ruleId"]))

    def test_look_like_a_servers(self):
        self.maxDiff = None
        for scenario, rules in ANSWERS.items():
            with self.subTest(scenario):
                real = {tuple(comparable(self.host.trace(scenario))) for _ in range(3)}
                for pattern, rule in rules.items():
                    self.add("Mock", urlPattern=pattern, **rule)
                self.server.take_requests()
                mocked = tuple(comparable(self.host.trace(scenario)))
                reached = {request["target"] for request in self.server.take_requests()}
                self.tearDown()
                if mocked not in real:
                    self.assertEqual("\n".join(mocked), "\n".join(min(real)))
                for pattern in rules:
                    self.assertFalse([target for target in reached if pattern in target])

    def add_rules_for_every_signal(self):
        elsewhere = {**HEADERS, "Location": "/plain", "Content-Length": "9"}
        again = {**HEADERS, "Location": "/loop", "Content-Length": "0"}
        self.add("Mock", urlPattern="/plain", **answer(200, PLAIN, "hello"))
        self.add("Mock", urlPattern="/redirect", **answer(302, elsewhere, "elsewhere"))
        self.add("Mock", urlPattern="/loop", **answer(302, again, ""))
        self.add("Mock", urlPattern="/status", **answer(404, {**TEXT, "Content-Length": "4"}, "gone"))

    def test_take_what_is_done_in_their_signals_as_a_servers_do(self):
        for scenario in ("abort-everywhere", "loop-everywhere"):
            with self.subTest(scenario):
                real = [self.without_connecting(self.host.trace(scenario)) for _ in range(3)]
                self.add_rules_for_every_signal()
                self.server.take_requests()
                mocked = self.without_connecting(self.host.trace(scenario))
                self.assertEqual({request["target"] for request in self.server.take_requests()},
                                 {"/failing"}, "which no rule is for")
                self.tearDown()
                if mocked not in real:
                    self.assertEqual(mocked, real[0])

    def without_connecting(self, trace):
        """Whether there is a connection already is a matter of how long ago it was used."""
        return [line for line in trace if "socketStartedConnecting" not in line]

    def test_can_be_deleted_in_each_of_their_signals(self):
        self.add_rules_for_every_signal()
        self.add("Intercept", urlPattern="/failing", name="No")
        trace = self.host.trace("mocked-delete-everywhere")
        for line in trace:
            self.assertRegex(line, r": (done, gone|never sent, \d+)$")
        for path in ("/plain", "/redirect", "/loop", "/status?code=404&body=gone", "/failing"):
            self.assertIn(f"  deleted in finished of {path}: done, gone", trace)
        self.assertEqual(sum("done" in line for line in trace), 8 + 9 + 9 + 9 + 6)

    def test_go_with_their_manager_while_a_redirect_is_followed(self):
        self.add("Mock", urlPattern="/slow", **answer(302, {"Location": "/trickle"}, ""))
        trace = self.host.trace("delete-manager")
        self.assertIn("  redirected BASE/trickle", [line.split(" |")[0] for line in trace])
        self.assertEqual(trace[-2:], ["  destroyed", "  end (gone)"])

    def test_send_to_the_target_of_a_redirect_what_the_toolkit_would(self):
        for status, target, sent in ((303, "/plain", ("GET", 0)),
                                     (308, "/status?code=202", ("POST", 9))):
            with self.subTest(status):
                self.add("Mock", urlPattern="/echo", **answer(status, {"Location": target}, ""))
                self.server.take_requests()
                trace = self.host.trace("post")
                self.tearDown()
                request, = self.server.take_requests()
                self.assertEqual((request["method"], request["length"]), sent)
                self.assertEqual("Content-Type" in request["names"], status == 308)
                # The end of an upload is reported once, if it is still one.
                ends = [line for line in trace if "uploadProgress 0 of 0" in line]
                self.assertEqual(len(ends), 1 if status == 308 else 0)

    def test_hand_on_what_a_redirect_to_tls_asks(self):
        with tempfile.TemporaryDirectory() as folder:
            secure = ScriptedServer(make_certificate(folder))
        self.addCleanup(secure.close)
        self.add("Mock", urlPattern="/redirect", **answer(
            302, {"Location": f"https://127.0.0.1:{secure.port}/plain"}, ""))
        signals = [line.split(" |")[0].strip()
                   for line in self.host.trace("redirect-to-unknown-certificate")]
        self.assertIn("ignoreSslErrors", signals)
        self.assertIn("encrypted by shop.test", signals)
        self.assertTrue(any(line.startswith("body 5 ") for line in signals), signals)

    def test_keep_cookies(self):
        self.add("Mock", urlPattern="/cookie", **answer(
            200, {"Set-Cookie": "taste=sweet; Path=/", "Content-Type": "text/plain"}, "mocked"))
        trace = self.host.trace("cookies")
        self.assertTrue(any("cookie taste=sweet" in line for line in trace), trace)

    def test_carry_no_header_that_the_rule_does_not_have(self):
        self.add("Mock", urlPattern="/plain", responseBody="x", responseHeaders={})
        trace = self.host.trace("get")
        self.assertFalse([line for line in trace if "header " in line])
        self.assertTrue(any(line.startswith("  body 1 ") for line in trace))

    def test_are_json_by_default(self):
        self.add("Mock", urlPattern="/plain")
        trace = self.host.trace("get")
        self.assertIn("    header Content-Type: application/json", trace)
        self.assertTrue(any(line.startswith("  body 2 ") for line in trace))

    def test_fail_with_the_words_of_the_rule(self):
        self.add("Intercept", urlPattern="/plain", name="No network today")
        for scenario in ("get", "synchronous", "derived-manager", "other-thread"):
            with self.subTest(scenario):
                self.server.take_requests()
                trace = self.host.trace(scenario)
                text = 'error 99 "Request intercepted by rule: No network today"'
                end = [line for line in trace if line.startswith("  end")]
                self.assertTrue(end and text in end[0], trace)
                self.assertEqual(self.server.take_requests(), [])
        signals = [line.split(" |")[0].strip() for line in self.host.trace("get")
                   if not line.startswith("    ")]
        self.assertEqual(signals, [
            "made", "socketStartedConnecting", "errorOccurred 99", "downloadProgress 0 of 0",
            "readChannelFinished", "manager finished 99", "finished",
            "body 0 e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855", "end",
            "destroyed"])

    def test_are_recorded(self):
        self.companion.forget()
        self.add("Intercept", urlPattern="/plain", name="No")
        self.host.trace("get")
        exchange, = self.companion.exchanges(1)
        self.assertEqual(exchange["errorDescription"], "Request intercepted by rule: No")
        self.assertNotIn("statusCode", exchange)
        self.add("Mock", urlPattern="/plain", **answer(418, {"Content-Type": "a/b"}, "short"))
        self.host.trace("get")
        exchange, = self.companion.exchanges(1)
        self.assertEqual(exchange["statusCode"], 418)
        self.assertEqual(exchange["mimeType"], "a/b")
        self.assertEqual(body_of(exchange, "responseBody"), b"short")
        self.assertFalse(exchange["isMocked"])

    def test_choose_by_method(self):
        self.add("Mock", urlPattern="/echo", httpMethod="put", **answer(200, {}, "only put"))
        self.assertTrue(any("body 8 " in line for line in self.host.trace("put")))
        self.assertFalse(any("body 8 " in line for line in self.host.trace("post")))


if __name__ == "__main__":
    main()
