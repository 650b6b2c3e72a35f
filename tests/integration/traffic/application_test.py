"""A real application that fetches: Debian's package browser, which shows a picture of the package
that is chosen.

It asks a server on the network, through the proxy that its environment names: that is a server
here. What it browses are two packages of the test's own, in a mount namespace of the test's own.
"""

import http.server
import shutil
import struct
import sys
import tempfile
import zlib

from traffic_support import *

sys.path.append(str(pathlib.Path(__file__).parents[1] / "screen_reading"))
from png_picture import Picture  # noqa: E402

RED, BLUE = (255, 0, 0), (0, 0, 255)
PICTURE_OF_CLOCK = "http://screenshots.debian.net/screenshot/kitchen-clock"
PICTURE_OF_LIST = "http://screenshots.debian.net/screenshot/shopping-list"

PACKAGES = """\
Package: {name}
Status: install ok installed
Priority: optional
Section: utils
Installed-Size: 1
Maintainer: Nobody <nobody@example.org>
Architecture: all
Version: 1.0
Description: something for the kitchen
 {text}

"""

# Covers what the package tools keep, and the application's plugins but the two that are wanted.
# Nobody outside the namespace sees any of it.
START = """
set -e
mount -t tmpfs none /var/cache
mount -t tmpfs none /var/lib
mkdir -p /var/lib/plugins /var/lib/apt/lists
cp /usr/lib/packagesearch/libaptplugin.so /usr/lib/packagesearch/libscreenshotplugin.so \\
  /var/lib/plugins
mount --bind /var/lib/plugins /usr/lib/packagesearch
update-apt-xapian-index --force --quiet >&2
exec packagesearch
"""


def png(colour, width=60, height=40):
    def chunk(kind, content):
        return (struct.pack(">I", len(content)) + kind + content +
                struct.pack(">I", zlib.crc32(kind + content)))
    rows = (b"\0" + bytes(colour) * width) * height
    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def picture_in_text(colour, width=60, height=40):
    """The body of a mock is text: this is a picture format that is text too."""
    return f"P3 {width} {height} 255\n" + (" ".join(map(str, colour)) + "\n") * (width * height)


class PictureServer:
    """A proxy that answers by itself, with a picture whatever it is asked for."""

    def __init__(self):
        self.requests = requests = []

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def do_GET(self):
                requests.append(self.path)
                body = png(RED)
                self.send_response(200)
                self.send_header("Content-Type", "image/png")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.port = self.server.server_port
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()


class PackageBrowser(unittest.TestCase):
    def setUp(self):
        self.assertTrue(shutil.which("packagesearch"), "the application under test is there")
        self.server = PictureServer()
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name)
        for name in ("home", "runtime", "lists/partial", "state", "cache/archives/partial"):
            (self.root / name).mkdir(parents=True, mode=0o700)
        (self.root / "status").write_text(
            PACKAGES.format(name="kitchen-clock", text="Rings when the cake is done.") +
            PACKAGES.format(name="shopping-list", text="What is missing in the kitchen."),
            encoding="ascii")
        (self.root / "apt.conf").write_text(f"""
            Dir::State "{self.root}/state";
            Dir::State::status "{self.root}/status";
            Dir::State::lists "{self.root}/lists";
            Dir::Cache "{self.root}/cache";
            Dir::Etc::sourcelist "/dev/null";
            Dir::Etc::sourceparts "/dev/null";
            """, encoding="ascii")
        self.hosts = []

    def tearDown(self):
        for host in self.hosts:
            host.kill()
        self.server.close()
        self.folder.cleanup()

    def start(self, proxy_port):
        host = Process(["env", f"HOME={self.root}/home", f"XDG_RUNTIME_DIR={self.root}/runtime",
                        f"APT_CONFIG={self.root}/apt.conf", "PATH=/usr/sbin:/usr/bin:/sbin:/bin",
                        f"http_proxy=http://127.0.0.1:{proxy_port}",
                        "unshare", "--mount", *([] if os.geteuid() == 0 else ["--map-root-user"]),
                        "sh", "-c", START])
        self.hosts.append(host)
        host.port()
        self.host = host
        wait_for(lambda: 'v="kitchen-clock"' in self.screen(), "the first package")

    def tarnix(self, *words):
        done = subprocess.run([TARNIX, *words, "--pid", str(self.host.pid)], capture_output=True,
                              text=True, timeout=TIME_LIMIT)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def screen(self):
        return self.tarnix("html")

    def show_picture_again(self):
        """Leaves the page with the picture and comes back, whereupon it is fetched anew."""
        self.tarnix("tap", "--text", "Details")
        self.tarnix("tap", "--text", "Screenshot")

    def choose(self, package):
        box = next(view for view in json.loads(self.tarnix("snapshot", "--json"))["elements"]
                   if view.get("identifier") == "_pPackageSelection")
        # Where its arrow is: the rest of it can be typed into.
        self.tarnix("tap", str(box["x"] + box["width"] - 10), str(box["y"] + box["height"] // 2))
        wait_for(lambda: package in self.screen(), "the list of packages")
        self.tarnix("tap", "--text", package)

    def shows(self, colour):
        path = self.root / "screen.png"
        self.tarnix("screenshot", str(path))
        return Picture(path.read_bytes()).box_of(colour) is not None

    def exchanges(self):
        return json.loads(self.tarnix("sync", "--json"))["httpRequests"]

    def watched(self, count, *options):
        lines = self.tarnix("watch", "--all", "--no-log", "--count", str(count), *options)
        return lines.splitlines()

    def test_is_watched_and_its_pictures_are_replaced(self):
        self.start(self.server.port)
        self.tarnix("tap", "--text", "Screenshot")
        wait_for(lambda: self.shows(RED), "the server's picture")
        exchange = json.loads(self.watched(1, "--json")[0])
        self.assertEqual(self.server.requests, [PICTURE_OF_CLOCK])
        self.assertEqual(
            [exchange[name] for name in ("method", "url", "host", "path", "statusCode", "mimeType")],
            ["GET", PICTURE_OF_CLOCK, "screenshots.debian.net", "/screenshot/kitchen-clock", 200,
             "image/png"])
        self.assertEqual(body_of(exchange, "responseBody"), png(RED))
        self.assertEqual(exchange["responseHeaders"]["Content-Length"], str(len(png(RED))))
        self.assertRegex(self.watched(1)[0],
                         r"  GET +200 +\d+ ms +\d+ B  screenshots\.debian\.net/screenshot/kitchen-")

        blue = self.root / "blue.ppm"
        blue.write_text(picture_in_text(BLUE), encoding="ascii")
        rule = self.tarnix("mock", "add", "/screenshot/kitchen-clock", "--body", f"@{blue}",
                           "--header", "Content-Type: image/x-portable-pixmap").strip()
        self.show_picture_again()
        wait_for(lambda: self.shows(BLUE), "the mock's picture")
        self.assertFalse(self.shows(RED))
        # The rule is for one package: the other one's picture comes from the server.
        self.choose("shopping-list")
        wait_for(lambda: self.shows(RED), "the other package's picture")
        self.choose("kitchen-clock")
        wait_for(lambda: self.shows(BLUE), "the mock's picture again")

        self.tarnix("mock", "remove", rule)
        self.show_picture_again()
        wait_for(lambda: self.shows(RED), "the server's picture, now that the rule is gone")
        self.assertEqual(self.server.requests,
                         [PICTURE_OF_CLOCK, PICTURE_OF_LIST, PICTURE_OF_CLOCK])
        self.assertEqual([(exchange["url"], exchange["mimeType"]) for exchange in self.exchanges()],
                         [(PICTURE_OF_CLOCK, "image/png"),
                          (PICTURE_OF_CLOCK, "image/x-portable-pixmap"),
                          (PICTURE_OF_LIST, "image/png"),
                          (PICTURE_OF_CLOCK, "image/x-portable-pixmap"),
                          (PICTURE_OF_CLOCK, "image/png")])
        archive = json.loads(self.tarnix("har", "-"))["log"]["entries"]
        self.assertEqual([entry["request"]["url"] for entry in archive],
                         [exchange["url"] for exchange in self.exchanges()])
        self.assertEqual(archive[0]["response"]["content"]["mimeType"], "image/png")

    def test_shows_an_intercepted_request_as_it_shows_a_failed_one(self):
        def page(html):
            return [line for line in html.splitlines() if "screenshot" in line.lower()]

        listener = socket.create_server(("127.0.0.1", 0))
        nobody_there = listener.getsockname()[1]
        listener.close()
        self.start(nobody_there)
        self.tarnix("tap", "--text", "Screenshot")
        wait_for(self.exchanges, "the exchange that the network fails")
        failed = page(self.screen())
        self.assertEqual(self.exchanges()[0].get("errorDescription"), "Connection refused")
        self.hosts.pop().kill()

        self.start(self.server.port)
        rule = self.tarnix("intercept", "add", "screenshots.debian.net", "--rule-name",
                           "No pictures").strip()
        self.tarnix("tap", "--text", "Screenshot")
        wait_for(self.exchanges, "the exchange that the rule fails")
        intercepted = page(self.screen())
        self.assertEqual(self.exchanges()[0]["errorDescription"],
                         "Request intercepted by rule: No pictures")
        self.assertNotIn("statusCode", self.exchanges()[0])
        self.assertEqual(self.server.requests, [])
        self.assertEqual(intercepted, failed)
        self.assertIn("Establishing connection, please wait...", "\n".join(intercepted))
        self.assertFalse(self.shows(RED))
        self.tarnix("intercept", "remove", rule)
        self.show_picture_again()
        wait_for(lambda: self.shows(RED), "the picture, now that the rule is gone")


if __name__ == "__main__":
    main()
