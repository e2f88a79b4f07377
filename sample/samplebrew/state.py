# SPDX-License-Identifier: MIT
"""The changing part of a prefix: what is installed, tapped and cached.

Readers take no lock: the file is replaced as a whole, so that they see either the
state before a change or the one after it.
"""

from __future__ import annotations

import fcntl
import json
import os

from .errors import BrewError

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    State = dict[str, Any]

FOLDER = os.path.join("var", "sample")


class StateFile:
    def __init__(self, prefix: str) -> None:
        self._path = os.path.join(prefix, FOLDER, "state.json")
        self._lock_path = os.path.join(prefix, FOLDER, "state.lock")

    def read(self) -> State:
        with open(self._path, encoding="utf-8") as file:
            return json.load(file)

    def write(self, state: State) -> None:
        """Replaces the state; only for the holder of the lock."""
        temporary = self._path + ".new"
        with open(temporary, "w", encoding="utf-8") as file:
            json.dump(state, file, ensure_ascii=False, separators=(",", ":"))
        os.replace(temporary, self._path)

    def changing(self) -> Change:
        """`with states.changing() as state:` keeps what the block did unless it raised."""
        return Change(self, self._lock_path)


class Change:
    def __init__(self, states: StateFile, lock_path: str) -> None:
        self._states = states
        self._lock_path = lock_path

    def __enter__(self) -> State:
        self._lock = os.open(self._lock_path, os.O_RDWR | os.O_CREAT, 0o644)
        fcntl.flock(self._lock, fcntl.LOCK_EX)
        self._state = self._states.read()
        return self._state

    def __exit__(self, kind: type[BaseException] | None, *_: object) -> None:
        try:
            if kind is None:
                self._states.write(self._state)
        finally:
            os.close(self._lock)


class PackageLock:
    """Keeps two runs from working on one package.

    The state lock is held only for the moment of a change, so that two different
    packages can be worked on side by side. A second run that is asked for the same
    package gives up at once; one that merely needs it as a dependency waits.
    """

    def __init__(self, prefix: str, package: str, keg_path: str, command: list[str]) -> None:
        self._path = os.path.join(prefix, "var", "homebrew", "locks", package + ".lock")
        self._keg_path = keg_path
        self._command = " ".join(command)
        self._waits = False

    def waiting(self) -> PackageLock:
        self._waits = True
        return self

    def __enter__(self) -> None:
        self._lock = os.open(self._path, os.O_RDWR | os.O_CREAT, 0o644)
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | (0 if self._waits else fcntl.LOCK_NB))
        except OSError as error:
            holder = os.read(self._lock, 4096).decode("utf-8", "surrogateescape")
            os.close(self._lock)
            raise BrewError(
                f"A `brew {holder or self._command}` process has already locked {self._keg_path}.\n"
                "Please wait for it to finish or terminate it to continue."
            ) from error
        os.ftruncate(self._lock, 0)
        os.write(self._lock, self._command.encode("utf-8", "surrogateescape"))

    def __exit__(self, *_: object) -> None:
        os.close(self._lock)
