"""Traffic under load: rules that change while they are searched, a companion that comes and goes,
and bodies that are larger than anybody should keep."""

from scripted_server import ScriptedServer
from traffic_support import *


def peak_memory(pid):
    """Of a process, in kB."""
    with open(f"/proc/{pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM"))


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

    def test_a_thread_that_makes_requests_while_all_begins_and_companions_come_and_go(self):
        host = self.start(TRACE_HOST_STEADY_REQUESTS="400")
        port = host.port()
        for _ in range(8):
            companion = Companion(port)
            time.sleep(0.15)
            companion.close()
        companion = Companion(port)
        wait_for(lambda: any("number=400" in exchange["url"]
                             for exchange in companion.synced_exchanges()), "the last request")
        numbers = [int(exchange["url"].split("=")[-1]) for exchange in companion.synced_exchanges()
                   if "number=" in exchange["url"]]
        # From the moment at which the probe was there: every request, once, in its order.
        self.assertEqual(numbers, list(range(numbers[0], 401)))
        companion.close()
        self.assertEqual(host.end(), 0)

    def test_events_come_in_order_and_without_gaps_to_who_is_there(self):
        host = self.start(TRACE_HOST_STEADY_REQUESTS="400")
        companion = Companion(host.port())
        known = [exchange["url"] for exchange in companion.sync[1]["httpRequests"]]
        events = []
        while not events or "number=400" not in events[-1]:
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
