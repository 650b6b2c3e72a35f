#!/usr/bin/env python3
"""What an application leaves behind that comes to a bad end, and that it comes to the same end."""

import copy
import itertools
import json
import os
import pathlib
import re
import signal
import unittest
from concurrent.futures import ThreadPoolExecutor

from runtime_support import BUILD, PRELOADED, Process, environment, main, wait_until

CRASH_HOST = BUILD / "bin/tarnix_crash_host"

# Signals whose cause stays: the handler leaves the thread where it was, so the host goes on crashing
# at the same instruction until somebody ends it.
PERSISTENT = {"segv": "SIGSEGV", "fpe": "SIGFPE", "ill": "SIGILL", "bus": "SIGBUS"}
FUNCTIONS = {
    "segv": "writeNowhere",
    "fpe": "divideByZero",
    "ill": "executeNonsense",
    "bus": "readBeyondTheFile",
}


class Crash(unittest.TestCase):
    numbers = itertools.count()

    def setUp(self):
        self.identifier = f"org.tarnix.crash{os.getpid()}.n{next(Crash.numbers)}"
        self.path = pathlib.Path(f"/tmp/tarnix_crash_{self.identifier.replace('.', '_')}.json")
        self.addCleanup(self.path.unlink, missing_ok=True)

    def check_each(self, cases, check):
        """`check(test, *case)`, each with a report of its own; a few at once, since hosts mostly wait."""

        def begin(case):
            test = copy.copy(self)
            test.setUp()
            return check(test, *case)

        with ThreadPoolExecutor(3) as pool:
            for case, result in [(case, pool.submit(begin, case)) for case in cases]:
                with self.subTest(case):
                    result.result()

    def start(self, *words, preload=PRELOADED):
        process = Process([CRASH_HOST, self.identifier, *words], env=environment(preload))
        self.addCleanup(process.__exit__)
        if preload is not None:
            self.assertIsNotNone(process.wait_for_error_line("Crash handler installed for"))
        process._process.stdin.write("go\n")
        process._process.stdin.flush()
        return process

    def report(self):
        self.assertTrue(wait_until(self.path.exists), "there is no report")
        return json.loads(self.path.read_text(encoding="utf-8"))

    def end_without_the_probe(self, *words):
        process = self.start(*words, preload=None)
        code = process.wait()
        for reader in process._readers:
            reader.join(5)
        return code, self.lines_of_the_host(process)

    def end_with_the_probe(self, *words):
        process = self.start(*words)
        code = process.wait()
        for reader in process._readers:
            reader.join(5)
        return code, self.lines_of_the_host(process)

    def lines_of_the_host(self, process):
        """Without those of the toolkit that depend on how far the first window had come."""
        chance = ("[TarnixProbe]", "QStandardPaths", "QBackingStore::flush()")
        return [line for line in process.error_lines if not any(word in line for word in chance)]

    def check_persistent(self, name, function, *words):
        process = self.start(*words)
        report = self.report()
        self.assertEqual(report["type"], "Signal")
        self.assertEqual(report["name"], name)
        self.assertEqual(report["reason"], f"Process received {name}")
        self.assertEqual(report["bundleId"], self.identifier)
        self.assertIn(function, report["stack"][0])
        first = self.path.stat().st_ino
        self.assertTrue(
            wait_until(lambda: self.path.exists() and self.path.stat().st_ino != first),
            "the report is not written again",
        )
        self.assertEqual(json.loads(self.path.read_text())["name"], name)
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(), -signal.SIGTERM)
        return report

    def check_exception(self, name, reason, *words):
        expected = self.end_without_the_probe(*words)
        self.assertEqual(expected[0], -signal.SIGABRT)
        self.assertEqual(self.end_with_the_probe(*words), expected)
        report = self.report()
        self.assertEqual(report["type"], "NSException")
        self.assertEqual(report["name"], name)
        self.assertEqual(report["reason"], reason)
        return report


class Signals(Crash):
    def test_each_of_the_faults(self):
        def check(test, end, name):
            report = test.check_persistent(name, FUNCTIONS[end], end)
            test.assertRegex(report["stack"][0], r"crash_host\.cpp:\d+")
            test.assertTrue(any(" main " in frame or " main + " in frame for frame in report["stack"]))

        self.check_each(PERSISTENT.items(), check)

    def test_each_of_the_faults_in_a_slot_in_other_threads_and_in_a_destructor_at_exit(self):
        def check(test, place, end):
            report = test.check_persistent(PERSISTENT[end], FUNCTIONS[end], end, place)
            in_destructor = any("~EndsBadly" in frame for frame in report["stack"])
            test.assertEqual(in_destructor, place == "exit")

        places = ("slot", "thread", "qthread", "exit")
        self.check_each(itertools.product(places, PERSISTENT), check)

    def test_a_call_of_nothing_names_the_caller(self):
        process = self.start("call")
        report = self.report()
        self.assertIn(" 0x0000000000000000 ?", report["stack"][0])
        self.assertIn("callNothing", report["stack"][1])
        self.assertTrue(any(" main " in frame or " main + " in frame for frame in report["stack"]))
        process.send_signal(signal.SIGKILL)

    def test_a_stack_that_overflows(self):
        def check(test, place):
            report = test.check_persistent("SIGSEGV", "overflow(int)", "overflow", place)
            test.assertTrue(all("overflow(int)" in frame for frame in report["stack"][1:100]))

        self.check_each((("main",), ("thread",), ("qthread",)), check)

    def test_an_abort_ends_the_host_as_before(self):
        def check(test, *words):
            expected = test.end_without_the_probe(*words)
            test.assertEqual(expected[0], -signal.SIGABRT)
            test.assertEqual(test.end_with_the_probe(*words), expected)
            report = test.report()
            test.assertEqual(report["type"], "Signal")
            test.assertEqual(report["name"], "SIGABRT")

        self.check_each((("abort",), ("abort", "thread"), ("abort", "exit"), ("terminate",)), check)

    def test_an_abort_of_the_allocator(self):
        expected = self.end_without_the_probe("heap", "thread")
        self.assertEqual(expected[0], -signal.SIGABRT)
        self.assertEqual(self.end_with_the_probe("heap", "thread"), expected)
        self.assertTrue(any("corruptTheHeap" in frame for frame in self.report()["stack"]))

    def test_a_signal_without_a_cause_leaves_the_host_alive(self):
        process = self.start("raise")
        self.assertIsNotNone(process.wait_for_line("alive"))
        self.assertEqual(process.wait(), 0)
        self.assertEqual(self.report()["name"], "SIGFPE")

    def test_a_child_ends_as_before_and_leaves_nothing(self):
        ends = {end: getattr(signal, name) for end, name in PERSISTENT.items()}
        ends |= {"abort": signal.SIGABRT, "overflow": signal.SIGSEGV, "exception": signal.SIGABRT}

        def check(test, place, end):
            test.assertEqual(test.end_with_the_probe(end, place)[0], ends[end])
            test.assertFalse(test.path.exists())
            test.assertFalse(pathlib.Path("/tmp/tarnix_crash_no identifier.json").exists())

        self.check_each(itertools.product(("child", "program"), ends), check)


class Exceptions(Crash):
    def test_type_and_reason(self):
        report = self.check_exception("shop::PaymentRefused", "card expired", "exception")
        self.assertTrue(any("refusePayment" in frame for frame in report["stack"]))
        self.assertEqual(report["screen"], "Unknown")
        self.assertEqual(report["lastRequest"], "none")
        self.assertRegex(report["timestamp"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        self.assertEqual(
            list(report),
            ["type", "name", "reason", "stack", "screen", "lastRequest", "bundleId", "timestamp"],
        )

    def test_exceptions_without_words(self):
        self.check_exception("shop::EmptyBasket", "Unknown", "empty")
        self.check_exception("char const*", "just text", "text")

    def test_of_several_threads_at_once(self):
        def check(test, *words):
            test.assertEqual(test.end_with_the_probe(*words)[0], -signal.SIGABRT)
            report = test.report()
            test.assertEqual((report["type"], report["name"]), ("NSException", "shop::PaymentRefused"))

        self.check_each((("exceptions",),) * 3, check)

    def test_a_fault_of_the_runtime_on_its_way_out(self):
        expected = self.end_without_the_probe("speechless")
        self.assertEqual(expected[0], -signal.SIGSEGV)
        self.assertEqual(self.end_with_the_probe("speechless"), expected)
        report = self.report()
        self.assertEqual((report["name"], report["reason"]), ("shop::Speechless", "Unknown"))

    def test_in_other_places(self):
        def check(test, *words):
            test.check_exception("shop::PaymentRefused", "card expired", *words)

        places = (("exception", place) for place in ("slot", "thread", "qthread", "exit"))
        self.check_each((*places, ("noexcept",)), check)


class Reports(Crash):
    def test_is_never_seen_half(self):
        process = self.start("segv", "thread")
        self.report()
        seen = set()
        texts = 0

        def look():
            nonlocal texts
            self.assertEqual(json.loads(self.path.read_text(encoding="utf-8"))["name"], "SIGSEGV")
            texts += 1
            seen.add(self.path.stat().st_ino)
            return len(seen) >= 4

        self.assertTrue(wait_until(look), "the report is not written again")
        self.assertGreater(texts, 4)
        process.send_signal(signal.SIGKILL)
        process.wait()
        look()

    def test_is_written_for_people_and_replaces_what_stands_there(self):
        self.path.symlink_to("/tmp/tarnix_crash_victim")
        self.end_with_the_probe("abort")
        self.report()
        self.assertFalse(self.path.is_symlink())
        self.assertEqual(self.path.stat().st_mode & 0o7777, 0o600)
        self.assertFalse(os.path.lexists("/tmp/tarnix_crash_victim"))
        self.assertTrue(self.path.read_text().startswith('{\n  "type": "Signal",\n'))
        self.assertEqual(re.findall(r"\.json\..*", " ".join(os.listdir("/tmp"))), [])


if __name__ == "__main__":
    main()
