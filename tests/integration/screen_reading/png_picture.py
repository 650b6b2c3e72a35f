"""PNG files as rows of pixels, read without any library that the probe uses too."""

import struct
import zlib


class Picture:
    def __init__(self, data):
        assert data[:8] == b"\x89PNG\r\n\x1a\n", data[:8]
        compressed = b""
        at = 8
        while at < len(data):
            size, = struct.unpack(">I", data[at:at + 4])
            kind = data[at + 4:at + 8]
            content = data[at + 8:at + 8 + size]
            check, = struct.unpack(">I", data[at + 8 + size:at + 12 + size])
            assert check == zlib.crc32(kind + content)
            if kind == b"IHDR":
                self.width, self.height, depth, colour, *rest = struct.unpack(">IIBBBBB", content)
                assert depth == 8 and colour in (2, 6) and rest == [0, 0, 0]
                self.channels = 3 if colour == 2 else 4
            elif kind == b"IDAT":
                compressed += content
            at += 12 + size
        assert kind == b"IEND"
        self.rows = self.unfiltered(zlib.decompress(compressed))

    def unfiltered(self, data):
        stride = self.width * self.channels
        assert len(data) == (stride + 1) * self.height
        rows = []
        for y in range(self.height):
            start = y * (stride + 1)
            # The probe does not filter; a file that does is a change to be noticed here.
            assert data[start] == 0
            rows.append(data[start + 1:start + 1 + stride])
        return rows

    def pixel(self, x, y):
        return tuple(self.rows[y][x * self.channels:x * self.channels + 3])

    def box_of(self, colour):
        """(left, top, right, bottom) around all pixels of a colour, the ends excluded."""
        wanted = bytes(colour) + (b"\xff" if self.channels == 4 else b"")
        left, top, right, bottom = self.width, self.height, -1, -1
        for y, row in enumerate(self.rows):
            first = self.find(row, wanted, row.find)
            if first is None:
                continue
            last = self.find(row, wanted, row.rfind)
            left, right = min(left, first), max(right, last + 1)
            top, bottom = min(top, y), y + 1
        return None if right < 0 else (left, top, right, bottom)

    def find(self, row, wanted, search):
        is_reverse = search.__name__ == "rfind"
        start, end = 0, len(row)
        while (at := search(wanted, start, end)) >= 0:
            if at % self.channels == 0:
                return at // self.channels
            if is_reverse:
                end = at + len(wanted) - 1
            else:
                start = at + 1
        return None
