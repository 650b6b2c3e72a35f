#!/usr/bin/env python3
"""A real application writes a million lines while a companion watches: its stream is whole, the
probe keeps the newest lines, and what the companion gets is in order."""

import json
import pathlib
import subprocess
import tempfile
import unittest

from runtime_support import BUILD, PRELOADED, Process, environment, main, wait_until

WRITER = BUILD / "bin/tarnix_log_writer"
TARNIX = BUILD / "bin/tarnix"
LINES = 1_000_000
THREADS = 4


class LogCapture(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.log = pathlib.Path(directory.name) / "log"
        self.events = pathlib.Path(directory.name) / "events"

    def start(self):
        with open(self.log, "wb") as stream:
            self.host = subprocess.Popen(
                [str(WRITER)],
                env=environment(PRELOADED),
                stdin=subprocess.PIPE,
                stdout=subprocess.PIPE,
                stderr=stream,
                text=True,
            )
        self.addCleanup(self.end)
        self.assertTrue(wait_until(lambda: b"Listener ready" in self.log.read_bytes()))
        self.assertEqual(self.host.stdout.readline(), "ready\n")

    def end(self):
        self.host.kill()
        self.host.communicate()

    def write(self, threads, lines):
        self.host.stdin.write(f"{threads} {lines}\n")
        self.host.stdin.flush()
        self.assertGreater(int(self.host.stdout.readline()), 0)

    def lines(self):
        return [
            line for line in self.log.read_text().splitlines() if "bench.writer" in line
        ]

    def tarnix(self, *words, **options):
        return subprocess.run(
            [str(TARNIX), *words, "--pid", str(self.host.pid)],
            capture_output=True,
            text=True,
            timeout=60,
            check=True,
            **options,
        ).stdout

    def test_a_million_lines_from_four_threads(self):
        self.start()
        with open(self.events, "wb") as stream:
            follower = subprocess.Popen(
                [str(TARNIX), "logs", "--follow", "--json", "--pid", str(self.host.pid)],
                stdout=stream,
                stderr=subprocess.DEVNULL,
            )
        self.addCleanup(follower.wait)
        self.addCleanup(follower.kill)
        self.assertTrue(wait_until(lambda: b"Connection ready" in self.log.read_bytes()))
        self.write(THREADS, LINES)
        self.assertTrue(wait_until(lambda: len(self.lines()) >= LINES))
        lines = self.lines()

        # Whole and unmixed: each thread numbers its lines from 0.
        share = LINES // THREADS
        numbers = sorted(int(line.removeprefix("[info] bench.writer: line ").removesuffix(" of a log")) for line in lines)
        self.assertEqual(numbers, [number for number in range(share) for _ in range(THREADS)])

        messages = [line.split(": ", 1)[1] for line in lines]
        follower.kill()
        follower.wait()
        kept = [entry["message"] for entry in json.loads(self.tarnix("sync", "--json"))["logEntries"]]
        self.assertEqual(kept, messages[-500:])

        events = [json.loads(line) for line in self.events.read_text().splitlines() if line.endswith("}")]
        self.assertGreaterEqual(len(events), 64)
        self.assertTrue(all(event["category"] == "bench.writer" for event in events))
        self.assertTrue(all(event["level"] == "INFO" for event in events))
        rest = iter(messages)
        for event in events:
            self.assertIn(event["message"], rest, "an event is out of order")
        self.assertEqual(len({event["id"] for event in events}), len(events))

    def test_lines_at_the_pace_of_a_person_all_arrive(self):
        self.start()
        self.write(1, 50)
        self.assertEqual(len(self.tarnix("logs", "--text", "of a log").splitlines()), 50)
        with open(self.events, "wb") as stream:
            follower = subprocess.Popen(
                [str(TARNIX), "logs", "--follow", "--json", "--count", "80", "--pid", str(self.host.pid)],
                stdout=stream,
                stderr=subprocess.DEVNULL,
            )
        self.addCleanup(follower.wait)
        self.addCleanup(follower.kill)
        self.assertTrue(wait_until(lambda: self.log.read_bytes().count(b"Connection ready") >= 2))
        for _ in range(3):
            self.write(1, 10)
        self.assertEqual(follower.wait(30), 0)
        messages = [json.loads(line)["message"] for line in self.events.read_text().splitlines()]
        self.assertEqual(messages, [line.split(": ", 1)[1] for line in self.lines()])


if __name__ == "__main__":
    main()
