# SPDX-License-Identifier: MIT
"""What all measures need: the programs, a display, a brew, and turns taken by subject and
reference."""

from __future__ import annotations

import json
import os
import subprocess
import tempfile
import time
from collections.abc import Callable, Mapping
from contextlib import ExitStack
from pathlib import Path
from typing import TypeVar


Subject = TypeVar("Subject")
Result = TypeVar("Result")


class Display:
    """A virtual X display for as long as the block runs."""

    def __enter__(self) -> Display:
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1000x700x24"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            self.name = ":" + answer.readline().strip()
        return self

    def __exit__(self, *_: object) -> None:
        self.server.terminate()
        self.server.wait()


class Setting:
    """The built programs, a home and a display of their own, and a sample Homebrew."""

    def __init__(self, programs: Path, create_prefix: Path) -> None:
        self._programs = programs
        self._create_prefix = create_prefix

    def __enter__(self) -> Setting:
        with ExitStack() as stack:
            self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory()))
            display = stack.enter_context(Display())
            self.environment = os.environ | {
                "DISPLAY": display.name, "HOME": str(self.folder),
                "XDG_CONFIG_HOME": str(self.folder), "QT_QPA_PLATFORM": "xcb"}
            prefix = self.folder / "brew"
            subprocess.run([self._create_prefix, prefix, "--everything"], check=True,
                           stdout=subprocess.DEVNULL)
            self.brew = str(prefix / "bin/brew")
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_: object) -> None:
        self._stack.close()

    def program(self, name: str) -> str:
        return str(self._programs / f"bench_{name}")

    def run(self, *command: str) -> float:
        """Milliseconds from its start until it has ended."""
        begin = time.monotonic()
        subprocess.run(command, env=self.environment, check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        return (time.monotonic() - begin) * 1000

    def brew_with(self, formulae: int) -> str:
        """One that has so many installed, and nothing else."""
        report = subprocess.run([self.program("report"), str(formulae)], check=True,
                                stdout=subprocess.PIPE).stdout
        return self.brew_printing(report, f"brew-{formulae}")

    def brew_printing(self, report: bytes, name: str) -> str:
        """One of this name that has what the report of formulae says, and nothing else."""
        printed, brew = self.folder / f"{name}.json", self.folder / name
        printed.write_bytes(report)
        brew.write_text(f"#!/bin/sh\ncase $* in *--formula) exec cat {printed};; tap) ;;\n"
                        """*) echo '{"formulae": [], "casks": []}';; esac\n""")
        brew.chmod(0o755)
        return str(brew)

    def google(self, name: str, *options: str) -> dict[str, float]:
        """Milliseconds by benchmark: the medians of repetitions that all take turns with. Under
        "NAME stall" the longest that the interface was deaf, where a benchmark counts that."""
        output = subprocess.run(
            [self.program(name), "--benchmark_format=json", "--benchmark_repetitions=15",
             "--benchmark_enable_random_interleaving=true",
             "--benchmark_report_aggregates_only=true", *options],
            stdout=subprocess.PIPE, check=True,
            env=self.environment | {"QT_QPA_PLATFORM": "offscreen"})
        units = {"ns": 1e-6, "us": 1e-3, "ms": 1.0}
        medians = [entry for entry in json.loads(output.stdout)["benchmarks"]
                   if entry["aggregate_name"] == "median"]
        times = {entry["run_name"]: entry["real_time"] * units[entry["time_unit"]]
                 for entry in medians}
        return times | {f"{entry['run_name']} stall": entry["stall"]
                        for entry in medians if "stall" in entry}


def in_turns(subjects: Mapping[Subject, Callable[[], Result]],
             rounds: int) -> dict[Subject, list[Result]]:
    """So many results of each; whatever else the machine does meanwhile meets all of them."""
    results: dict[Subject, list[Result]] = {name: [] for name in subjects}
    for turn in range(rounds):
        for name in list(subjects)[:: 1 if turn % 2 == 0 else -1]:
            results[name].append(subjects[name]())
    return results
