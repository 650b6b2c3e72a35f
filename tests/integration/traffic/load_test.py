"""Traffic under load: rules that change while they are searched, a companion that comes and goes,
and bodies that are larger than anybody should keep."""

import urllib.parse

from scripted_server import ScriptedServer
from traffic_support import *


def peak_memory(pid):
    """Of a process, in kB."""
    with open(f"/proc/{pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM"))


def numbers_in(url):
    """Of which thread a steady request is, and which one of it."""
    arguments = urllib.parse.parse_qs(urllib.parse.urlsplit(url).query)
    return int(arguments["thread"][0]), int(arguments["number"][0])


class SeenNumbers:
    """What companions are told of steady requests: for each thread, the numbers in their order."""

    def __init__(self, test):
        self.test = test
        self.numbers = {}

    def by_thread(self, exchanges):
        found = {}
        for exchange in exchanges:
            thread, number = numbers_in(exchange["url"])
            found.setdefault(thread, []).append(number)
        for numbers in found.values():
            self.test.assertEqual(numbers, list(range(numbers[0], numbers[0] + len(numbers))),
                                  "each once and in its order")
        return found

    def check(self, exchanges):
        """Of a companion that was replaced: all of it has come to the others too."""
        for thread, numbers in self.by_thread(exchanges).items():
            self.test.assertLessEqual(set(numbers), set(self.numbers[thread]))

    def add(self, exchanges):
        """Of a sync, or of the events that follow it."""
        for thread, numbers in self.by_thread(exchanges).items():
            known = self.numbers.setdefault(thread, [])
            if known:
                self.test.assertLessEqual(numbers[0], known[-1] + 1, "nothing is left out")
            known += [number for number in numbers if not known or number > known[-1]]


class Load(unittest.TestCase):
    def setUp(self):
        self.server = ScriptedServer()
        self.hosts = []

    def tearDown(self):
        for host in self.hosts:
            host.kill()
        self.server.close()

    def start(self, with_probe=True, **variables):
        self.hosts.append(TraceHost(self.server, with_probe, **variables))
        return self.hosts[-1]

    def test_a_thousand_rules_and_requests_while_a_companion_adds_and_removes(self):
        host = self.start()
        companion = Companion(host.port())
        for number in range(1000):
            companion.send("command.addMockRule", {
                "urlPattern": f"/never/{number}$", "matchMode": "regex" if number % 2 else "prefix"})
        companion.barrier()
        is_over = threading.Event()
        changes = 0

        def change():
            nonlocal changes
            while not is_over.is_set():
                kind = ("Mock", "Intercept")[changes % 2]
                rule = f"00000000-0000-4000-8000-{changes:012}"
                companion.send(f"command.add{kind}Rule", {"urlPattern": "/passing", "ruleId": rule})
                companion.send(f"command.remove{kind}Rule", {"ruleId": rule})
                changes += 1
                time.sleep(0.002)

        changer = threading.Thread(target=change)
        changer.start()
        trace = host.trace("load")
        is_over.set()
        changer.join()
        self.assertEqual(trace, ["  wrong 0"])
        self.assertGreater(changes, 50)
        companion.barrier()
        self.assertEqual(len(companion.synced_exchanges()), 500, "the newest of a thousand")
        companion.close()
        self.assertEqual(host.end(), 0)

    def test_threads_that_make_requests_while_all_begins_and_companions_come_and_go(self):
        # Endless as far as this test is concerned: they are told to stop.
        host = self.start(TRACE_HOST_STEADY_REQUESTS="1000000", TRACE_HOST_STEADY_THREADS="3")
        port = host.port()
        seen = SeenNumbers(self)
        companions = []
        for turn in range(12):
            companion = Companion(port)
            seen.add(companion.sync[1]["httpRequests"])
            events = companion.exchanges(5)
            if turn % 3 == 0:
                # The next one replaces it.
                companions.append((companion, events))
                continue
            if turn % 3 == 1:
                # Gone without a word.
                companion.socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER,
                                            struct.pack("ii", 1, 0))
            companion.close()
            seen.add(events)
        self.assertEqual(host.trace("stop-steady"), [])
        last = Companion(port)
        seen.add(last.sync[1]["httpRequests"])
        for companion, events in companions:
            seen.check(events + companion.received_exchanges())
            companion.close()
        last.close()
        made = {}
        for request in self.server.take_requests():
            thread, number = numbers_in(request["target"])
            made.setdefault(thread, []).append(number)
        self.assertEqual(sorted(seen.numbers), [0, 1, 2])
        for thread, numbers in seen.numbers.items():
            # From the first that was seen on: all that the server was asked for.
            self.assertEqual(numbers, [number for number in made[thread] if number >= numbers[0]])
            self.assertGreater(numbers[0], 1, "the probe is not there from the beginning")
            self.assertGreater(len(numbers), 20, "requests went on while companions came and went")
        self.assertEqual(host.end(), 0)

    def test_events_come_in_order_and_without_gaps_to_who_is_there(self):
        host = self.start(TRACE_HOST_STEADY_REQUESTS="400")
        companion = Companion(host.port())
        known = [exchange["url"] for exchange in companion.sync[1]["httpRequests"]]
        events = []
        while not events or not events[-1].endswith("number=400"):
            events.append(companion.exchanges(1)[0]["url"])
        numbers = [int(url.split("=")[-1]) for url in events]
        self.assertEqual(numbers, list(range(numbers[0], 401)))
        if known:
            # What the sync has is not what the events begin with, or is told twice at most.
            self.assertGreaterEqual(int(known[-1].split("=")[-1]), numbers[0] - 1)
        companion.close()
        self.assertEqual(host.end(), 0)

    def test_a_gigabyte_leaves_the_memory_of_the_host_as_it_is(self):
        peaks = []
        for with_probe in (False, True):
            host = self.start(with_probe)
            if with_probe:
                host.port()
            before = peak_memory(host.pid)
            self.assertEqual(host.trace("gigabyte"), ["  received 1073741824"])
            peaks.append(peak_memory(host.pid) - before)
            self.assertEqual(host.end(), 0)
        bare, probed = peaks
        self.assertLess(probed, bare + 16_000, "kB more than without the probe")


if __name__ == "__main__":
    main()
