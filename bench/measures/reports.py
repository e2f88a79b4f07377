# SPDX-License-Identifier: MIT
"""From what a command printed to what the pages have of it."""

from __future__ import annotations

from . import outputs
from .setting import Setting
from .table import Row


def measure(setting: Setting) -> list[Row]:
    times = setting.google("manager")
    return [
        Row("decode, map, sort, publish all formulae", times["decodeMapSortPublish/8563"], "ms",
            1.75, times["parseOnly/8563"], "parsing alone"),
        Row("the same for 300 formulae", times["decodeMapSortPublish/300"], "ms", 1),
        Row("refreshAll, four children of 1 s",
            times["refreshAllOfOneSecondEach/iterations:1/real_time"], "ms", 1.05, 1000,
            "one of them"),
        *outputs.measure(setting),
    ]
