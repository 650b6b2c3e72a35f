#!/usr/bin/env python3
"""A diverted standard error stream arrives as it does without the diversion: byte for byte, in
order, wherever it goes and however the process ends."""

import fcntl
import os
import pathlib
import pty
import signal
import subprocess
import tempfile
import termios
import threading
import time
import unittest

from runtime_support import PATIENCE, STREAM_HOST, keepers_of, main, wait_until


def start(output, *actions, stderr, **options):
    return subprocess.Popen(
        [str(STREAM_HOST), str(output), *actions],
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=stderr,
        **options,
    )


class StreamTest(unittest.TestCase):
    def setUp(self):
        self._directory = tempfile.TemporaryDirectory()
        self.directory = pathlib.Path(self._directory.name)
        self.addCleanup(self._directory.cleanup)
        self.observed = self.directory / "observed"

    def run_into_pipe(self, *actions, output=None, pause=0.0):
        """Exit code, standard output, standard error up to its end; read slowly with a pause."""
        read_end, write_end = os.pipe()
        process = start(output or self.observed, *actions, stderr=write_end)
        os.close(write_end)
        text = b""
        while True:
            piece = os.read(read_end, 4096)
            if not piece:
                break
            text += piece
            time.sleep(pause)
        os.close(read_end)
        out, _ = process.communicate(timeout=PATIENCE)
        return process.returncode, out, text

    def both(self, *actions, **options):
        """What comes of it with the diversion, having checked that the same comes without."""
        plain = self.run_into_pipe(*actions, output="plain", **options)
        diverted = self.run_into_pipe(*actions, **options)
        self.assertEqual(plain, diverted)
        return diverted


class Arrival(StreamTest):
    def test_bytes_arrive_as_they_are(self):
        odd = "caf\udce9 \udcff \u6f22"
        self.both(f"write={odd}", "part=no end", "part=ing", "write=")
        self.assertEqual(
            self.observed.read_bytes(), os.fsencode(odd) + b"\nno ending\n"
        )

    def test_every_line_of_four_threads_arrives_whole_and_in_its_thread_s_order(self):
        target = self.directory / "target"
        with open(target, "wb") as stream:
            process = start(self.observed, "threads=250000", stderr=stream)
            self.assertEqual(process.wait(120), 0)
            process.stdout.close()
        echo = target.read_bytes()
        self.assertEqual(echo, self.observed.read_bytes())
        lines = echo.decode().splitlines()
        self.assertEqual(len(lines), 1_000_000)
        nexts = [0] * 4
        for line in lines:
            words = line.split(" ", 3)
            thread, number = int(words[1]), int(words[2])
            self.assertEqual(number, nexts[thread])
            self.assertEqual(words[3], "of a host that writes a log")
            nexts[thread] += 1
        self.assertEqual(nexts, [250_000] * 4)

    def test_lines_of_the_probe_go_past_the_observer(self):
        _, _, text = self.run_into_pipe("own=installed", "write=mine")
        self.assertEqual(sorted(text.splitlines()), [b"[TarnixProbe] installed", b"mine"])
        self.assertEqual(self.observed.read_bytes(), b"mine\n")


class Destinations(StreamTest):
    def test_slow_reader(self):
        _, _, text = self.both("lines=8000", pause=0.002)
        self.assertEqual(len(text.splitlines()), 8000)

    def test_file_that_is_appended_to(self):
        target = self.directory / "target"
        target.write_bytes(b"before\n")
        with open(target, "ab") as stream:
            process = start(self.observed, "lines=3", stderr=stream)
            process.communicate(timeout=PATIENCE)
        lines = target.read_bytes().splitlines()
        self.assertEqual(lines[0], b"before")
        self.assertEqual(len(lines), 4)

    def test_file_that_standard_output_goes_to_as_well(self):
        count = 20_000
        target = self.directory / "target"
        with open(target, "wb") as stream:
            command = [str(STREAM_HOST), str(self.observed), f"outputs={count}"]
            subprocess.run(command, stdout=stream, stderr=stream, check=True, timeout=PATIENCE)
        expected = [
            f"{name} {number} of a host that writes a log"
            for name in ("error", "output")
            for number in range(count)
        ]
        # Each line whole, and those of one stream in their order.
        self.assertEqual(
            sorted(target.read_text().splitlines(), key=lambda line: line.split()[0]), expected
        )

    def test_terminal(self):
        ours, theirs = pty.openpty()
        text = b""
        process = start(self.observed, "write=to a terminal", "part=prompt> ", stderr=theirs)
        os.close(theirs)
        try:
            while True:
                text += os.read(ours, 1024)
        except OSError:
            pass  # How a terminal tells that nobody writes to it any more.
        process.communicate(timeout=PATIENCE)
        os.close(ours)
        self.assertEqual(process.returncode, 0)
        self.assertEqual(text, b"to a terminal\r\nprompt> ")

    def test_full_disk(self):
        with open("/dev/full", "wb") as stream:
            process = start(self.observed, "lines=1000", "return=3", stderr=stream)
            process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 3)
        self.assertEqual(len(self.observed.read_bytes().splitlines()), 1000)

    def test_nobody_reads_any_more(self):
        read_end, write_end = os.pipe()
        os.close(read_end)
        process = start(
            self.observed, "own=line", "lines=1000", "own=line", "return=4", stderr=write_end
        )
        os.close(write_end)
        process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 4)
        self.assertEqual(len(self.observed.read_bytes().splitlines()), 1000)

    def test_reader_that_goes_away_in_the_middle(self):
        read_end, write_end = os.pipe()
        process = start(self.observed, "lines=20000", "return=5", stderr=write_end)
        os.close(write_end)
        os.read(read_end, 100)
        os.close(read_end)
        process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 5)
        self.assertEqual(len(self.observed.read_bytes().splitlines()), 20_000)

    def test_no_destination_at_all(self):
        process = subprocess.run(
            ["/bin/sh", "-c", f'exec "{STREAM_HOST}" "{self.observed}" write=x return=6 2>&-'],
            timeout=PATIENCE,
        )
        self.assertEqual(process.returncode, 6)
        self.assertEqual(self.observed.read_bytes(), b"x\n")

    def test_descriptor_2_that_is_a_file_of_the_host_s_is_left_alone(self):
        path = self.directory / "database"
        process = subprocess.run(
            ["/bin/sh", "-c", f'exec "{STREAM_HOST}" "{self.observed}" write=x 2<>"{path}"'],
            stdout=subprocess.PIPE,
            timeout=PATIENCE,
        )
        self.assertEqual(process.stdout, b"not diverted\n")
        self.assertEqual(path.read_bytes(), b"x\n")

    def test_destination_that_does_not_wait(self):
        read_end, write_end = os.pipe()
        os.set_blocking(write_end, False)
        process = start(self.observed, "lines=100", "sleep=100", "return=0", stderr=write_end)
        text = b""
        os.close(write_end)
        while piece := os.read(read_end, 512):
            text += piece
        os.close(read_end)
        process.communicate(timeout=PATIENCE)
        self.assertEqual(text, self.observed.read_bytes())
        self.assertEqual(len(text.splitlines()), 100)

    def test_destination_that_stops_does_not_hold_up_the_end(self):
        read_end, write_end = os.pipe()
        process = start(self.observed, "lines=4000", "return=7", stderr=write_end)
        os.close(write_end)
        self.assertEqual(process.wait(PATIENCE), 7)
        process.stdout.close()
        # What did not fit is not lost: the keeper has it.
        text = b""
        while piece := os.read(read_end, 65536):
            text += piece
        os.close(read_end)
        expected = [b"line %d of a host that writes a log" % number for number in range(4000)]
        self.assertEqual(text.splitlines(), expected)


class WaysOut(StreamTest):
    def test_every_way_out_keeps_every_line(self):
        for way in ("return=3", "exit=3", "quick_exit=3", "_exit=3", "kill=9", "kill=15", "kill=6"):
            with self.subTest(way):
                _, _, text = self.both("lines=2000", way)
                self.assertEqual(len(text.splitlines()), 2000)

    def test_lines_are_there_when_the_process_is_gone(self):
        for way in ("return=0", "exit=0", "quick_exit=0"):
            with self.subTest(way):
                target = self.directory / "target"
                with open(target, "wb") as stream:
                    process = start(self.observed, "lines=5000", way, stderr=stream)
                    process.wait(PATIENCE)
                    process.stdout.close()
                self.assertEqual(len(target.read_bytes().splitlines()), 5000)

    def test_earlier_exit_handlers_write_after_what_was_written_before(self):
        _, _, text = self.both("late=last", "lines=500", "return=0")
        self.assertEqual(text.splitlines()[-1], b"last")

    def test_the_keeper_goes_with_the_process(self):
        process = start(self.observed, "write=x", "sleep=60000", stderr=subprocess.PIPE)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        self.assertEqual(process.stderr.readline(), b"x\n")
        self.assertTrue(wait_until(lambda: len(keepers_of(process.pid)) == 1))
        process.kill()
        process.wait(PATIENCE)
        self.assertTrue(wait_until(lambda: not keepers_of(process.pid)))


class WhatTheHostDoes(StreamTest):
    def test_closing_the_stream_ends_it_for_the_reader(self):
        for actions in (("close",), ("redirect=/dev/null",)):
            with self.subTest(actions):
                read_end, write_end = os.pipe()
                process = start(
                    self.observed, "lines=100", *actions, "write=x", "sleep=60000", stderr=write_end
                )
                os.close(write_end)
                text = b""
                while piece := os.read(read_end, 4096):
                    text += piece
                os.close(read_end)
                self.assertIsNone(process.poll(), "the end came from the process's own end")
                self.assertEqual(len(text.splitlines()), 100)
                process.kill()
                process.communicate(timeout=PATIENCE)

    def test_redirecting_leaves_the_new_place_alone(self):
        target = self.directory / "target"
        code, _, text = self.run_into_pipe("write=a", f"redirect={target}", "write=b", "return=2")
        self.assertEqual((code, text, target.read_bytes()), (2, b"a\n", b"b\n"))
        self.assertEqual(self.observed.read_bytes(), b"a\n")

    def test_executing_another_program(self):
        _, _, text = self.both("lines=500", "exec=echo from the shell >&2; exit 8")
        self.assertEqual(text.splitlines()[-1], b"from the shell")

    def test_children_write_in_order_while_the_host_lives(self):
        self.both("write=a", "child=echo b >&2", "sleep=300", "write=c", "return=0")
        self.both("write=a", "spawn=echo b >&2", "sleep=300", "write=c", "return=0")

    def test_children_outlive_the_host(self):
        script = "sleep 0.3; echo late >&2 && echo later >&2 && echo alive"
        for way in ("child", "spawn"):
            for end in ("return=0", "_exit=0", "kill=9"):
                with self.subTest(way=way, end=end):
                    _, out, text = self.both(f"{way}={script}", "write=early", end)
                    self.assertEqual((out, text), (b"alive\n", b"early\nlate\nlater\n"))

    def test_a_forked_child_without_a_program_outlives_the_host(self):
        _, _, text = self.both("forked=from the child", "write=early", "return=0")
        self.assertEqual(text, b"early\nfrom the child\n")

    def test_there_is_no_child_that_wait_knows_of(self):
        _, out, _ = self.both("wait", "return=0")
        self.assertEqual(out, b"no children\n")

    def test_the_host_s_own_descriptors_are_not_kept_open_by_the_keeper(self):
        read_end, write_end = os.pipe()
        process = start(
            self.observed,
            "child=sleep 2 >/dev/null",
            "return=0",
            stderr=subprocess.DEVNULL,
            pass_fds=(write_end,),
        )
        os.close(write_end)
        process.wait(timeout=PATIENCE)
        process.stdout.close()
        keepers = keepers_of(process.pid)
        for keeper in keepers:
            links = {os.readlink(f"/proc/{keeper}/fd/{fd}") for fd in os.listdir(f"/proc/{keeper}/fd")}
            self.assertEqual(len([link for link in links if link.startswith("/dev/null")]), 1)
            self.assertEqual(os.readlink(f"/proc/{keeper}/cwd"), "/")
            self.assertEqual(pathlib.Path(f"/proc/{keeper}/environ").read_bytes(), b"")
        self.assertEqual(len(keepers), 1)
        os.close(read_end)


if __name__ == "__main__":
    main()
