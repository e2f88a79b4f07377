# SPDX-License-Identifier: MIT
"""Invented but repeatable figures: sizes, checksums and commit ids.

Nothing is ever downloaded or unpacked, yet the reports carry such values; deriving
them from the names keeps two runs, and two prefixes, in agreement with each other.
"""

from __future__ import annotations

from zlib import crc32


def _number(text: str, low: int, high: int) -> int:
    return low + crc32(text.encode()) % (high - low)


def hexadecimal(text: str, digits: int) -> str:
    words = (f"{crc32(text.encode(), seed):08x}" for seed in range(1, digits // 8 + 1))
    return "".join(words)


def keg_contents(name: str, version: str) -> tuple[int, int]:
    """Number of files and bytes of an installed version."""
    files = _number(name, 6, 480)
    return files, files * _number(name + " bytes", 900, 90_000) + _number(name + version, 0, 9_000)


def cask_size(token: str, version: str) -> int:
    return _number(token, 2_000_000, 900_000_000) + _number(token + version, 0, 90_000)


def download_size(name: str, version: str) -> int:
    size = _number("download " + name, 40_000, 120_000_000)
    return size + _number("download " + name + version, 0, size // 20)


def tap_contents(name: str, packages: int) -> tuple[int, int]:
    """Number of files and bytes of a cloned tap."""
    files = 12 + packages + _number(name, 0, 40)
    return files, files * _number("tap " + name, 2_000, 6_000)
