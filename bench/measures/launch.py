# SPDX-License-Identifier: MIT
"""From the start of the process to its first painted frame, and to the lists."""

from __future__ import annotations

import statistics

from .setting import Setting, in_turns
from .table import Row

ROUNDS = 15


def measure(setting: Setting) -> list[Row]:
    sleeper = setting.folder / "sleeper"
    sleeper.write_text("#!/bin/sh\nexec sleep 60\n", encoding="utf-8")
    sleeper.chmod(0o755)

    launch = setting.program("launch")
    times = in_turns({
        "empty": lambda: setting.run(setting.program("bare_window"), "--exit"),
        "plain": lambda: setting.run(setting.program("plain_window"), "--exit"),
        "sleeping": lambda: setting.run(launch, str(sleeper), "--exit"),
        "sample": lambda: setting.run(launch, setting.brew, "--exit"),
        "lists": lambda: setting.run(launch, setting.brew, "--exit-loaded"),
    }, ROUNDS)
    medians = {name: statistics.median(each) for name, each in times.items()}
    plain = (1.1, medians["plain"], "plain window")
    return [
        Row("first frame, empty window", medians["empty"], "ms"),
        Row("first frame, brew that only sleeps", medians["sleeping"], "ms", *plain),
        Row("first frame, sample brew", medians["sample"], "ms", *plain),
        Row("all lists there, sample brew", medians["lists"], "ms"),
    ]
