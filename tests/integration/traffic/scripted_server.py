"""A small HTTP/1.1 server on loopback whose answers are the same in every run, byte for byte.

Answers are written whole, in one piece, so that how they are cut up on the way does not vary. What
a client sent can be asked for afterwards: `requests` holds one entry a request.
"""

import gzip
import hashlib
import json
import socket
import ssl
import struct
import threading
import time
import urllib.parse

DATE = b"Date: Thu, 01 Jan 2026 00:00:00 GMT\r\n"
REASONS = {200: "OK", 201: "Created", 202: "Accepted", 204: "No Content",
           301: "Moved Permanently", 302: "Found", 303: "See Other", 304: "Not Modified",
           305: "Use Proxy", 307: "Temporary Redirect", 308: "Permanent Redirect",
           400: "Bad Request", 401: "Unauthorized", 403: "Forbidden", 404: "Not Found",
           405: "Method Not Allowed", 407: "Proxy Authentication Required", 409: "Conflict",
           410: "Gone", 418: "I'm a teapot", 500: "Internal Server Error",
           501: "Not Implemented", 502: "Bad Gateway", 503: "Service Unavailable"}


def response(status, headers=(), body=b"", reason=None, length=True):
    head = f"HTTP/1.1 {status} {reason or REASONS[status]}\r\n".encode() + DATE
    for name, value in headers:
        head += f"{name}: {value}\r\n".encode()
    if length and status not in (204, 304):
        head += f"Content-Length: {len(body)}\r\n".encode()
    return head + b"\r\n" + body


class Connection(threading.Thread):
    def __init__(self, server, peer):
        super().__init__(daemon=True)
        self.server = server
        self.peer = peer
        peer.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)

    def run(self):
        try:
            if self.server.context is not None:
                self.peer = self.server.context.wrap_socket(self.peer, server_side=True)
            self.file = self.peer.makefile("rb")
            while self.serve_one():
                pass
        except (OSError, ValueError):
            pass
        finally:
            self.peer.close()

    def read_body(self, headers):
        if headers.get("transfer-encoding", "").lower() == "chunked":
            body = b""
            while True:
                size = int(self.file.readline().strip(), 16)
                chunk = self.file.read(size)
                self.file.readline()
                if size == 0:
                    return body
                body += chunk
        return self.file.read(int(headers.get("content-length", "0")))

    def serve_one(self):
        line = self.file.readline()
        if not line:
            return False
        method, target, _ = line.decode("latin-1").split(" ", 2)
        headers = {}
        names = []
        while (line := self.file.readline().strip()):
            name, _, value = line.decode("latin-1").partition(":")
            headers[name.strip().lower()] = value.strip()
            names.append(name.strip())
        body = self.read_body(headers)
        with self.server.lock:
            self.server.requests.append({
                "method": method, "target": target, "headers": headers, "names": names,
                "length": len(body), "sha256": hashlib.sha256(body).hexdigest(),
                "beginning": body[:64].decode("latin-1")})
        path, _, query = target.partition("?")
        arguments = dict(urllib.parse.parse_qsl(query))
        handler = getattr(self, "on_" + path.strip("/").split("/")[0].replace("-", "_"), None)
        if handler is None:
            self.peer.sendall(response(404, [("Content-Type", "text/plain")], b"no such page"))
            return True
        return handler(method, arguments, headers, body) is not False

    def on_plain(self, method, arguments, headers, body):
        text = b"" if method == "HEAD" else b"hello"
        head = [("Content-Type", "text/plain; charset=utf-8"), ("X-One", "1")]
        if method == "HEAD":
            head.append(("Content-Length", "5"))
        self.peer.sendall(response(200, head, text, length=method != "HEAD"))

    def on_bytes(self, method, arguments, headers, body):
        """`size` bytes whose values tell their places."""
        size = int(arguments["size"])
        piece = bytes(range(256)) * 256
        self.peer.sendall(b"HTTP/1.1 200 OK\r\n" + DATE +
                          b"Content-Type: application/octet-stream\r\n" +
                          f"Content-Length: {size}\r\n\r\n".encode())
        while size > 0:
            self.peer.sendall(piece[:size])
            size -= len(piece)

    def on_chunked(self, method, arguments, headers, body):
        text = b"".join(b"%x\r\n%s\r\n" % (len(part), part) for part in (b"one ", b"two ", b"three"))
        self.peer.sendall(response(200, [("Transfer-Encoding", "chunked")],
                                   text + b"0\r\n\r\n", length=False))

    def on_gzip(self, method, arguments, headers, body):
        text = gzip.compress(b"squeezed " * 1000, mtime=0)
        self.peer.sendall(response(200, [("Content-Encoding", "gzip"),
                                         ("Content-Type", "text/plain")], text))

    def on_status(self, method, arguments, headers, body):
        code = int(arguments["code"])
        text = arguments.get("body", "").encode()
        head = [("Content-Type", "text/plain")] if text else []
        if "location" in arguments:
            head.append(("Location", arguments["location"]))
        self.peer.sendall(response(code, head, text))

    def on_redirect(self, method, arguments, headers, body):
        left = int(arguments.get("times", "1"))
        target = f"/redirect?times={left - 1}" if left > 1 else "/plain"
        self.peer.sendall(response(int(arguments.get("code", "302")), [("Location", target)],
                                   b"elsewhere"))

    def on_loop(self, method, arguments, headers, body):
        self.peer.sendall(response(302, [("Location", "/loop")]))

    def on_cached(self, method, arguments, headers, body):
        if headers.get("if-none-match") == '"v1"':
            self.peer.sendall(response(304, [("ETag", '"v1"')]))
        else:
            self.peer.sendall(response(200, [("ETag", '"v1"'), ("Cache-Control", "max-age=0"),
                                             ("Content-Type", "text/plain")], b"cache me"))

    def on_auth(self, method, arguments, headers, body):
        # "user:secret"
        if headers.get("authorization") == "Basic dXNlcjpzZWNyZXQ=":
            self.peer.sendall(response(200, [("Content-Type", "text/plain")], b"welcome"))
        else:
            self.peer.sendall(response(401, [("WWW-Authenticate", 'Basic realm="here"'),
                                             ("Content-Type", "text/plain")], b"who are you"))

    def on_cookie(self, method, arguments, headers, body):
        self.peer.sendall(response(200, [("Set-Cookie", "taste=sweet; Path=/"),
                                         ("Content-Type", "text/plain")],
                                   headers.get("cookie", "none").encode()))

    def on_echo(self, method, arguments, headers, body):
        text = json.dumps({"method": method, "length": len(body),
                           "sha256": hashlib.sha256(body).hexdigest()}).encode()
        self.peer.sendall(response(201, [("Content-Type", "application/json")], text))

    def on_component(self, method, arguments, headers, body):
        self.peer.sendall(response(200, [("Content-Type", "text/plain")],
                                   b'import QtQuick\nText { text: "a component" }\n'))

    def on_reset(self, method, arguments, headers, body):
        """Half of what was promised, then a reset."""
        self.peer.sendall(b"HTTP/1.1 200 OK\r\n" + DATE + b"Content-Length: 1000\r\n\r\n" +
                          b"x" * 500)
        time.sleep(0.1)
        self.peer.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.file.close()
        self.peer.close()
        return False

    def on_early_close(self, method, arguments, headers, body):
        self.file.close()
        self.peer.close()
        return False

    def on_trickle(self, method, arguments, headers, body):
        self.peer.sendall(b"HTTP/1.1 200 OK\r\n" + DATE + b"Content-Length: 20\r\n\r\n")
        for number in range(10):
            time.sleep(0.03)
            self.peer.sendall(b"%d." % number)

    def on_slow(self, method, arguments, headers, body):
        time.sleep(float(arguments.get("seconds", "5")))
        self.peer.sendall(response(200, [], b"late"))


class ScriptedServer:
    def __init__(self, certificate=None):
        """`certificate`: a file with a key and a certificate; the server speaks TLS then."""
        self.context = None
        if certificate is not None:
            self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            self.context.load_cert_chain(certificate)
        self.lock = threading.Lock()
        self.requests = []
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=256)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                peer, _ = self.listener.accept()
            except OSError:
                return
            Connection(self, peer).start()

    def take_requests(self):
        with self.lock:
            taken, self.requests = self.requests, []
        return taken

    def close(self):
        self.listener.close()


if __name__ == "__main__":
    server = ScriptedServer()
    print(server.port, flush=True)
    threading.Event().wait()
