# SPDX-License-Identifier: MIT
"""What a command costs through runBrewSync, guard included, beside the least that it can cost."""

from __future__ import annotations

from .setting import Setting
from .table import Row


def measure(setting: Setting) -> list[Row]:
    times = setting.google("core")
    return [
        Row(f"runBrewSync, {child} child", times[f"guardedRun/{name}"], "ms", most,
            times[f"plainSpawn/{name}"], "posix_spawn")
        for child, name, most in (("trivial", "trivial/real_time", 1.4),
                                  ("500 ms", "halfASecond/iterations:1/real_time", 1.01))
    ]
