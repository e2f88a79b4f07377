# SPDX-License-Identifier: MIT
"""From the start of the process to its first painted frame."""

from __future__ import annotations

import statistics
import subprocess
import time

from .setting import Setting, in_turns
from .table import Row

ROUNDS = 15


def measure(setting: Setting) -> list[Row]:
    def start(*command: str) -> float:
        begin = time.monotonic()
        subprocess.run([*command, "--exit"], env=setting.environment, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return (time.monotonic() - begin) * 1000

    times = in_turns({
        "bare window": lambda: start(setting.program("bare_window")),
        "Lumora": lambda: start(setting.program("launch"), setting.brew),
    }, ROUNDS)
    medians = {name: statistics.median(each) for name, each in times.items()}
    return [Row("first frame, sample brew", medians["Lumora"], "ms", 1.3,
                medians["bare window"], "bare window")]
