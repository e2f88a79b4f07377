# SPDX-License-Identifier: MIT
"""From what a command printed to what can be seen of it, where that is much."""

from __future__ import annotations

from .setting import Setting
from .table import Row

FRAME = 16.7
SHAPES = (("60,000 lines", FRAME), ("a line of 10 MB", FRAME), ("100 MB", 100))
SHOWN_WITHIN = 100


def measure(setting: Setting) -> list[Row]:
    hits = setting.google("outputs", "--benchmark_filter=showHits")
    rows = [Row("8,000 hits of a search, from bytes to the painted list", hits["showHits/8000"],
                "ms", 8)]
    # Each of these is five runs already.
    times = setting.google("outputs", "--benchmark_filter=run|open", "--benchmark_repetitions=3")
    for benchmark, what in (("runDoctor", "doctor's report"), ("runUpgrade", "upgrade"),
                            ("openTranscript", "transcript opened")):
        for shape, (amount, longest) in enumerate(SHAPES):
            name = f"{benchmark}/{shape}/iterations:5/manual_time"
            rows.append(Row(f"{what}, {amount}: until painted", times[name], "ms",
                            SHOWN_WITHIN if longest == FRAME else None))
            rows.append(Row(f"{what}, {amount}: longest stall, processor time",
                            times[f"{name} stall"], "ms", longest))
    return rows
