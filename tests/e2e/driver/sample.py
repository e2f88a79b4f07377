# SPDX-License-Identifier: MIT
"""The sample Homebrew, with a hand on its runs: they can be kept waiting."""

from __future__ import annotations

import contextlib
import fcntl
import sys
from collections.abc import Iterator
from pathlib import Path

from .waiting import wait_until

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "sample"))

from sample_prefix import SamplePrefix  # noqa: E402

_LAUNCHER = """#!/bin/sh
echo "$*" >> {begun}
exec flock --shared --no-fork {gate} {brew} "$@"
"""


class HeldPrefix(SamplePrefix):
    def __init__(self, folder: Path, *options: str) -> None:
        super().__init__(folder, *options)
        self._gate = folder / "var/sample/gate.lock"
        self._gate.touch()
        (folder / "var/sample/log.jsonl").touch()
        launcher = folder / "bin/held-brew"
        self._begun = folder / "var/sample/begun"
        self._begun.touch()
        launcher.write_text(
            _LAUNCHER.format(begun=self._begun, gate=self._gate, brew=super().brew),
            encoding="utf-8",
        )
        launcher.chmod(0o755)

    @property
    def brew(self) -> str:
        return str(self.folder / "bin/held-brew")

    @contextlib.contextmanager
    def holding_runs(self) -> Iterator[None]:
        """No run begins before the end of the block."""
        with self._locked(self._gate):
            yield

    @contextlib.contextmanager
    def holding_changes(self) -> Iterator[None]:
        """Runs begin, but wait where they would make their first change."""
        with self._locked(self.folder / "var/sample/state.lock"):
            yield

    @staticmethod
    @contextlib.contextmanager
    def _locked(path: Path) -> Iterator[None]:
        with path.open("a") as file:
            fcntl.flock(file, fcntl.LOCK_EX)
            yield

    def commands(self, start: int = 0) -> list[str]:
        """The command lines of the runs that have ended, from the one numbered `start` on."""
        return [" ".join(entry["args"]) for entry in self.log()[start:]]

    def runs(self) -> int:
        return len(self.log())

    def has_ended(self, command: str, start: int = 0) -> bool:
        return command in self.commands(start)

    def wait_for_command(self, command: str, start: int = 0) -> int:
        """The status of the first such run, as soon as it has ended."""
        wait_until(
            lambda: self.has_ended(command, start),
            lambda: f"`brew {command}` ends; there were {self.commands(start)}",
        )
        return self.log()[start:][self.commands(start).index(command)]["status"]

    def wait_until_begun(self, commands: set[str]) -> None:
        """Until such runs are under way, or held before their first step."""
        wait_until(
            lambda: commands <= set(self._begun.read_text(encoding="utf-8").splitlines()),
            lambda: f"{commands} begin; there were {self._begun.read_text(encoding='utf-8')}",
        )

    def wait_until_at_work_on(self, formula: str) -> None:
        """Until a run has made sure that it is the only one to change a formula."""
        lock = self.folder / f"var/homebrew/locks/{formula}.formula.lock"
        wait_until(
            lambda: lock.exists() and lock.stat().st_size > 0, f"a run has begun with {formula}"
        )

    def is_installed(self, formula: str) -> bool:
        return formula in self.state()["formulae"]
