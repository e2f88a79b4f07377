# SPDX-License-Identifier: MIT
"""Writes pictures as PNG files."""

from __future__ import annotations

import struct
import zlib
from pathlib import Path


class Picture:
    """Pixels as the X server gives them: four bytes each, blue first, the last one unused."""

    def __init__(self, width: int, height: int, pixels: bytes) -> None:
        self.width = width
        self.height = height
        self.pixels = pixels

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Picture) and self.pixels == other.pixels

    def colours(self) -> int:
        return len(set(struct.iter_unpack("4s", self.pixels)))

    def write(self, path: Path) -> None:
        rgb = bytearray(3 * self.width * self.height)
        for channel in range(3):
            rgb[channel::3] = self.pixels[2 - channel :: 4]
        size = 3 * self.width
        # Every line begins with the number of its filter: none.
        lines = b"".join(
            b"\0" + rgb[start : start + size] for start in range(0, len(rgb), size)
        )
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(
            b"\x89PNG\r\n\x1a\n"
            + _chunk(b"IHDR", header)
            + _chunk(b"IDAT", zlib.compress(lines, 6))
            + _chunk(b"IEND", b"")
        )


def _chunk(kind: bytes, content: bytes) -> bytes:
    checksum = zlib.crc32(kind + content)
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", checksum)
