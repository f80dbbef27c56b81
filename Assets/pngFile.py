"""Encodes pictures as PNG."""

import struct
import zlib


def _filtered(row, previous, step):
    """The row after the PNG filter (none, sub, up or average) whose output has the smallest sum of magnitudes."""
    left = bytes(step) + row[:-step]
    candidates = (row,
                  bytes((x - a) & 255 for x, a in zip(row, left)),
                  bytes((x - b) & 255 for x, b in zip(row, previous)),
                  bytes((x - (a + b) // 2) & 255 for x, a, b in zip(row, left, previous)))
    costs = [sum(min(value, 256 - value) for value in candidate) for candidate in candidates]
    best = costs.index(min(costs))
    return bytes([best]) + candidates[best]


def encode_png(rows):
    """`rows`: from the top, lists of (r, g, b) or (r, g, b, a) with components from 0 to 255."""
    step = len(rows[0][0])
    colour_type = {3: 2, 4: 6}[step]
    lines = [bytes(component for pixel in row for component in pixel) for row in rows]
    above = [bytes(len(lines[0]))] + lines[:-1]
    data = b"".join(_filtered(line, previous, step) for line, previous in zip(lines, above))

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, colour_type, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(data, 9))
            + chunk(b"IEND", b""))
