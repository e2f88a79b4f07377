# SPDX-License-Identifier: MIT
"""The two streams of one run, and what the switches do to them."""

from __future__ import annotations

import os
import time
from itertools import groupby

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

STDOUT = 1
STDERR = 2
_FLOOD_LINE = b"remote: Counting objects, please wait while this line repeats itself\n"
_NOT_UTF8 = b"\xc3\x28\xff"


def _encode(text: str) -> bytes:
    # An argument that is not UTF-8 arrives with escaped bytes and leaves as it came.
    return text.encode("utf-8", "surrogateescape")


def _write(stream: int, data: bytes) -> None:
    view = memoryview(data)
    while view:
        view = view[os.write(stream, view) :]


def _coloured(data: bytes) -> bytes:
    """What a terminal would get: blue arrows, yellow warnings, red errors, bold text."""
    lines = []
    for line in data.split(b"\n"):
        if line.startswith(b"==> "):
            line = b"\033[34m==>\033[0m \033[1m" + line[4:] + b"\033[0m"
        elif line.startswith(b"Warning: "):
            line = b"\033[33mWarning:\033[0m " + line[9:]
        elif line.startswith(b"Error: "):
            line = b"\033[31mError:\033[0m " + line[7:]
        elif line:
            line = b"\033[1m" + line + b"\033[0m"
        lines.append(line)
    return b"\n".join(lines)


class Output:
    """Collects what a command prints and hands it over at every pause and at the end.

    A command that nobody reads any more must notice, as the real one does: the broken
    pipe is not swallowed but ends the run at the next pause.
    """

    def __init__(self, switches: dict[str, Any], pace: float) -> None:
        self._switches = switches
        self._pace = pace
        self._pending: list[tuple[int, bytes]] = []
        altering = ("invalid_utf8", "colour", "close")
        self._hold_until_end = "truncate" in switches or any(map(switches.get, altering))

    def line(self, text: str = "") -> None:
        self._pending.append((STDOUT, _encode(text + "\n")))

    def lines(self, texts: list[str]) -> None:
        for text in texts:
            self.line(text)

    def heading(self, text: str) -> None:
        self.line("==> " + text)

    def note(self, text: str = "") -> None:
        """One line on standard error, where progress goes as well as complaints."""
        self._pending.append((STDERR, _encode(text + "\n")))

    def note_heading(self, text: str) -> None:
        self.note("==> " + text)

    def warning(self, text: str) -> None:
        self.note("Warning: " + text)

    def error(self, text: str) -> None:
        self.note("Error: " + text)

    def pause(self, seconds: float) -> None:
        """Time that real work would take, scaled by the pace."""
        if not self._hold_until_end:
            self._flush()
        if self._pace:
            time.sleep(seconds * self._pace)

    def begin(self) -> None:
        """What comes before the command's own output."""
        switches = self._switches
        time.sleep(switches.get("delay", 0))
        _write(STDOUT, _encode(switches.get("noise", "")))
        _write(STDERR, _encode(switches.get("noise_stderr", "")))
        flood = switches.get("stderr_flood", 0)
        _write(STDERR, (_FLOOD_LINE * (flood // len(_FLOOD_LINE) + 1))[:flood])
        if "long_line" in switches:
            _write(STDOUT, b"x" * int(switches["long_line"] * 1024 * 1024) + b"\n")

    def finish(self) -> None:
        """What is still unwritten, altered and closed as switched."""
        closed = self._switches.get("close")
        if self._hold_until_end:
            self._alter()
        if closed:
            self._flush_and_close(STDOUT if closed == "stdout" else STDERR)
        else:
            self._flush()
        time.sleep(self._switches.get("delay_after", 0) if not closed else 0)

    def _taken(self, stream: int) -> bytes:
        return b"".join(data for target, data in self._pending if target == stream)

    def _alter(self) -> None:
        out, err = self._taken(STDOUT), self._taken(STDERR)
        if self._switches.get("colour"):
            out, err = _coloured(out), _coloured(err)
        if "truncate" in self._switches:
            kept = self._switches["truncate"]
            out = out[: int(kept if kept >= 1 else len(out) * kept)]
        if self._switches.get("invalid_utf8"):
            middle = len(out) // 2
            out = out[:middle] + _NOT_UTF8 + out[middle:]
        self._pending = [(STDERR, err), (STDOUT, out)]

    def _flush(self) -> None:
        pending, self._pending = self._pending, []
        for stream, run in groupby(pending, key=lambda chunk: chunk[0]):
            _write(stream, b"".join(data for _, data in run))

    def _flush_and_close(self, first: int) -> None:
        """One stream ends while the other still has everything to say."""
        other = STDERR if first == STDOUT else STDOUT
        _write(first, self._taken(first))
        # Replaced rather than closed, lest the next opened file becomes the stream.
        null = os.open(os.devnull, os.O_WRONLY)
        os.dup2(null, first)
        os.close(null)
        time.sleep(self._switches.get("delay_after", 0))
        _write(other, self._taken(other))
        self._pending = []
