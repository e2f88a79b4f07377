# SPDX-License-Identifier: MIT
"""What more packages take, in time and in memory."""

from __future__ import annotations

import statistics
from dataclasses import dataclass
from functools import partial
from pathlib import Path

from . import interaction
from .chart import Curve, write_chart
from .processes import status_field, while_running
from .setting import Setting, in_turns
from .table import number

SIZES = (300, 1_000, 3_000, 8_563)
LAUNCHES, SETTLED = 7, 3
SETTLE = 8
KEYSTROKE = "filter keystroke"
PICTURE = "pictures/growth.svg"


@dataclass(frozen=True)
class Growth:
    """Milliseconds and megabytes with so many packages; `shown` counts from the start of the
    process."""

    packages: int
    published: float
    keystroke: float
    shown: float
    resident: float
    anonymous: float

    @property
    def cells(self) -> dict[str, str]:
        return {
            "packages": f"{self.packages:,}",
            "decoded to published": f"{number(self.published)} ms",
            "filter keystroke": f"{number(self.keystroke)} ms",
            "launch to all lists": f"{number(self.shown)} ms",
            "resident": f"{number(self.resident)} MB",
            "anonymous": f"{number(self.anonymous)} MB",
        }


def measure(setting: Setting) -> list[Growth]:
    brews = {size: setting.brew_with(size) for size in SIZES}
    program = setting.program("launch")

    def shown(brew: str) -> float:
        return setting.run(program, brew, "--exit-loaded")

    def memory(brew: str) -> tuple[float, float]:
        return while_running([program, brew], setting.environment, SETTLE, lambda pid: (
            status_field(pid, "VmRSS") / 1024, status_field(pid, "RssAnon") / 1024))

    launches = in_turns({size: partial(shown, brew) for size, brew in brews.items()}, LAUNCHES)
    memories = in_turns({size: partial(memory, brew) for size, brew in brews.items()}, SETTLED)
    decoded = setting.google("manager", "--benchmark_filter=decodeMapSortPublish")
    return [
        Growth(
            size,
            decoded[f"decodeMapSortPublish/{size}"],
            statistics.median(
                interaction.samples(setting, size, KEYSTROKE)[KEYSTROKE]),
            statistics.median(launches[size]),
            statistics.median(resident for resident, _ in memories[size]),
            statistics.median(anonymous for _, anonymous in memories[size]),
        )
        for size in SIZES
    ]


def draw(lines: list[Growth], document: Path) -> str:
    """Makes the picture that the document shows below the table, and says how it does."""
    packages = [line.packages for line in lines]
    write_chart(document.parent / PICTURE, packages, {
        "ms": [
            Curve("launch to all lists", "#0b62d6", [line.shown for line in lines]),
            Curve("decoded to published", "#b45309", [line.published for line in lines]),
            Curve("filter keystroke", "#15803d", [line.keystroke for line in lines]),
        ],
        "MB": [
            Curve("resident", "#0b62d6", [line.resident for line in lines]),
            Curve("anonymous", "#b45309", [line.anonymous for line in lines]),
        ],
    })
    return f"![Time and memory over the number of packages]({PICTURE})"
