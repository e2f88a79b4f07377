# SPDX-License-Identifier: MIT
"""Resident memory, once all is loaded."""

from __future__ import annotations

import statistics

from .processes import status_field, while_running
from .setting import Setting, in_turns
from .table import Row

ROUNDS = 3
SETTLE = 8


def resident(pid: int) -> float:
    return status_field(pid, "VmRSS") / 1024


def measure(setting: Setting) -> list[Row]:
    def running(*command: str) -> float:
        return while_running(list(command), setting.environment, SETTLE, resident)

    sizes = in_turns({
        "bare window": lambda: running(setting.program("bare_window")),
        "Lumora": lambda: running(setting.program("launch"), setting.brew),
    }, ROUNDS)
    medians = {name: statistics.median(each) for name, each in sizes.items()}
    return [Row("resident, packages loaded", medians["Lumora"], "MB", 1.5,
                medians["bare window"], "bare window")]
