# SPDX-License-Identifier: MIT
"""What readelf tells of a program or library."""

from __future__ import annotations

import re
import subprocess
from pathlib import Path


class Elf:
    def __init__(self, path: Path) -> None:
        self._path = path

    def _read(self, *options: str) -> list[str]:
        command = ["readelf", "--wide", *options, self._path]
        result = subprocess.run(command, capture_output=True, check=True, encoding="utf-8")
        return result.stdout.splitlines()

    def segments(self) -> dict[str, str]:
        """The kinds of segments, and what may be done with their memory: some of "RWE"."""
        # Type, offset, two addresses, two sizes, flags and alignment.
        pattern = re.compile(r"^  ([A-Z_]+)(?: +0x\w+){5} ([RWE ]{3}) +0x\w+$")
        found = filter(None, map(pattern.match, self._read("--segments")))
        return {match[1]: match[2].replace(" ", "") for match in found}

    def dynamic(self, tag: str) -> list[str]:
        """The values of the dynamic section's entries of a kind."""
        pattern = re.compile(rf"^ 0x\w+ +\({tag}\) +(.*)$")
        return [match[1] for match in filter(None, map(pattern.match, self._read("--dynamic")))]

    def flags(self) -> list[str]:
        """What the loader is told to do, and what the file says it is."""
        return " ".join(self.dynamic("FLAGS_1")).split()

    def run_paths(self) -> list[str]:
        entries = self.dynamic("RPATH") + self.dynamic("RUNPATH")
        return [entry.partition("[")[2].rstrip("]") for entry in entries]

    def needed(self) -> list[str]:
        """The names of the libraries that it cannot do without."""
        return [re.sub(r"^Shared library: \[(.*)\]$", r"\1", entry) for entry in self.dynamic("NEEDED")]

    def imports(self) -> set[str]:
        """The symbols that other libraries have to bring."""
        pattern = re.compile(r" UND ([^@ ]+)")
        return {match[1] for match in map(pattern.search, self._read("--dyn-syms")) if match}

    def entries(self) -> list[bytes]:
        """The first four bytes of the code at every address that the program has in its data."""
        pattern = re.compile(r"\] \.text +PROGBITS +(\w+) (\w+) (\w+) ")
        text = next(filter(None, map(pattern.search, self._read("--sections"))))
        address, offset, size = (int(value, 16) for value in text.groups())
        code = self._path.read_bytes()[offset : offset + size]
        places = set()
        for line in self._read("--relocs"):
            if match := re.search(r" R_X86_64_RELATIVE +(\w+)$", line):
                places.add(int(match[1], 16) - address)
        return [code[place : place + 4] for place in sorted(places) if 0 <= place < size]
