# SPDX-License-Identifier: MIT
"""What users do in the window, in the time of its interface thread."""

from __future__ import annotations

import subprocess
from dataclasses import dataclass
from statistics import median, quantiles

from .setting import Setting
from .table import number, yes_or_no

HALF_A_FRAME = 1000 / 60 / 2
SIZES = (300, 8_000)
TURNS = 5


@dataclass(frozen=True)
class Interaction:
    """So many milliseconds each time."""

    measure: str
    rows: int
    median: float
    rarely: float

    @property
    def met(self) -> bool:
        return self.rarely <= HALF_A_FRAME

    @property
    def cells(self) -> dict[str, str]:
        return {
            "measure": self.measure,
            "rows": f"{self.rows:,}",
            "median": f"{number(self.median)} ms",
            "99th percentile": f"{number(self.rarely)} ms",
            "goal": f"≤ {number(HALF_A_FRAME)} ms",
            "met": yes_or_no(self.met),
        }


def samples(setting: Setting, rows: int, *names: str) -> dict[str, list[float]]:
    """Of these, or else of all of them."""
    output = subprocess.run([setting.program("interaction"), str(rows), *names],
                            stdout=subprocess.PIPE, text=True, check=True,
                            env=setting.environment).stdout
    times: dict[str, list[float]] = {}
    for line in output.splitlines():
        name, _, time = line.partition("\t")
        times.setdefault(name, []).append(float(time))
    return times


def ninety_ninth(times: list[float]) -> float:
    return quantiles(times, n=100, method="inclusive")[-1]


def measure(setting: Setting) -> list[Interaction]:
    turns: dict[tuple[str, int], list[list[float]]] = {}
    for _ in range(TURNS):
        for rows in SIZES:
            for name, times in samples(setting, rows).items():
                turns.setdefault((name, rows), []).append(times)
    return [Interaction(name, rows, median(map(median, each)), median(map(ninety_ninth, each)))
            for (name, rows), each in turns.items()]
