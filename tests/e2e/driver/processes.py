# SPDX-License-Identifier: MIT
"""Child processes that never outlive the one who started them."""

from __future__ import annotations

import ctypes
import os
import signal
import subprocess
import time
from pathlib import Path
from typing import Any

from .waiting import NotHappened, wait_until

_PR_SET_PDEATHSIG = 1
_PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None)


def adopt_orphans() -> None:
    """Makes this process the parent of every descendant whose own parent ends before it."""
    _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def end_orphans() -> None:
    """Ends what is still there of the descendants."""
    while children := _children():
        for child in children:
            try:
                os.kill(child, signal.SIGKILL)
                os.waitpid(child, 0)
            except (ChildProcessError, ProcessLookupError):
                continue


def at_work() -> set[int]:
    """The children of this process that have not ended."""
    return {child for child in _children() if not _has_ended(child)}


def seconds_for_nothing(times: int = 5) -> float:
    """What starting and ending a process takes at the moment, at the worst."""
    slowest = 0.0
    for _ in range(times):
        begun = time.monotonic()
        subprocess.run(["/bin/sh", "-c", "exit"], check=True)
        slowest = max(slowest, time.monotonic() - begun)
    return slowest


def _has_ended(process: int) -> bool:
    """Also one whose status nobody has asked for yet."""
    try:
        stat = Path(f"/proc/{process}/stat").read_text(errors="replace")
    except FileNotFoundError:
        return True
    return stat.rpartition(")")[2].split()[0] == "Z"


def _children() -> list[int]:
    # Children of other threads of ours would stand in other files; there are no such threads.
    me = os.getpid()
    return [int(word) for word in Path(f"/proc/{me}/task/{me}/children").read_text().split()]


def _end_with_parent() -> None:
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0)


def start(command: list[str], log: Path, **options: Any) -> subprocess.Popen[bytes]:
    """Starts a program that ends when this process ends, however that happens."""
    with log.open("ab") as file:
        return subprocess.Popen(
            command,
            stdin=subprocess.DEVNULL,
            stdout=options.pop("stdout", file),
            stderr=file,
            preexec_fn=_end_with_parent,
            **options,
        )


class OtherProcess:
    """One that somebody else has started, and whose exit status is theirs to know."""

    returncode = "of its own"

    def __init__(self, pid: int) -> None:
        self.pid = pid

    def poll(self) -> str | None:
        return self.returncode if _has_ended(self.pid) else None


def stop(child: subprocess.Popen[bytes]) -> None:
    if child.poll() is None:
        child.terminate()
        try:
            wait_until(lambda: child.poll() is not None, f"{child.args} ends", patience=5)
        except NotHappened:
            child.kill()
    child.wait()
    if child.stdout:
        child.stdout.close()
