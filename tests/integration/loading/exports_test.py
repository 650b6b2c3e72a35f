"""Every library that we load into hosts exports what it must, and nothing else."""

import re
import unittest

from loading_support import *

EXPORTS = {
    # pthread_create gives threads a stack on which their crash can be reported; the mangled ones
    # stand in front of the toolkit's URL loading.
    "libtarnixprobe.so": {
        "tarnixprobe_bootstrap", "TarnixProbeBootstrap", "pthread_create",
        "_ZN21QNetworkAccessManagerC1EP7QObject", "_ZN21QNetworkAccessManagerC2EP7QObject",
        "_ZN21QNetworkAccessManager13createRequestENS_9OperationERK15QNetworkRequestP9QIODevice",
        # These tell when web views are coming.
        "_Z17qmlRegisterModulePKcii",
        "_ZN14QWebEnginePageC1EP7QObject", "_ZN14QWebEnginePageC2EP7QObject",
        "_ZN14QWebEnginePageC1EP17QWebEngineProfileP7QObject",
        "_ZN14QWebEnginePageC2EP17QWebEngineProfileP7QObject",
        # These tell when the picture of a window changes.
        "_ZN13QBackingStore10beginPaintERK7QRegion", "_ZN13QBackingStore8endPaintEv",
        "_ZN13QBackingStore6resizeERK5QSize", "_ZN13QBackingStore6scrollERK7QRegionii"},
    "libtarnixprobe-core.so": {"tarnixprobe_core"},
    "libtarnixprobe-dnssd.so": {"tarnixprobe_advertise"},
    # The second one keeps the host's sequence of random numbers its own.
    "libtarnixprobe-mdns.so": {"tarnixprobe_advertise", "rand"},
    "libtarnixprobe-qt6.so": {"tarnixprobe_host_module"},
}
# Modules for parts of a toolkit: one entry each.
PART_EXPORT = re.compile(r"tarnixprobe_\w+")


class Exports(unittest.TestCase):
    def test_nothing_but_the_entries(self):
        libraries = sorted(LIBRARIES.glob("libtarnixprobe*.so"))
        self.assertGreaterEqual(len(libraries), 4)
        for library in libraries:
            with self.subTest(library.name):
                _, text, _ = run(["nm", "--dynamic", "--defined-only", library])
                names = {line.split()[-1].split("@")[0] for line in text.splitlines()}
                if library.name in EXPORTS:
                    self.assertEqual(names, EXPORTS[library.name])
                else:
                    self.assertEqual(len(names), 1, names)
                    self.assertRegex(next(iter(names)), PART_EXPORT)

    def test_no_writable_code_and_no_late_binding(self):
        for library in LIBRARIES.glob("libtarnixprobe*.so"):
            with self.subTest(library.name):
                _, dynamic, _ = run(["readelf", "--dynamic", library])
                self.assertNotIn("TEXTREL", dynamic)
                self.assertRegex(dynamic, r"FLAGS_1.*NOW")


if __name__ == "__main__":
    main()
