# SPDX-License-Identifier: MIT
"""What the application does while there is nothing to do."""

from __future__ import annotations

import time
from pathlib import Path

from .processes import cpu_ticks, status_field, while_running
from .setting import Setting
from .table import Row

SECONDS = 30
# Until the loads are over, and the connections that were kept for more have been closed.
SETTLE = 40
TICK = 10


def wakeups(pid: int) -> dict[int, int]:
    """Voluntary context switches by thread."""
    tasks = [int(task.name) for task in Path(f"/proc/{pid}/task").iterdir()]
    return {task: status_field(task, "voluntary_ctxt_switches") for task in tasks}


def idle(pid: int) -> tuple[int, int]:
    before, ticks = wakeups(pid), cpu_ticks(pid)
    time.sleep(SECONDS)
    after = wakeups(pid)
    # A thread that has ended meanwhile was woken to do so.
    switches = sum(after[task] - before[task] if task in after else 1 for task in before)
    return switches, cpu_ticks(pid) - ticks


def measure(setting: Setting) -> list[Row]:
    switches, ticks = while_running([setting.program("launch"), setting.brew],
                                    setting.environment, SETTLE, idle)
    return [
        Row(f"idle for {SECONDS} s", switches, "wake-ups", 0),
        Row(f"idle for {SECONDS} s, processor time", ticks * TICK, "ms", 0),
    ]
