# SPDX-License-Identifier: MIT
"""What the system knows of a running process."""

from __future__ import annotations

import subprocess
import time
from collections.abc import Callable, Mapping
from pathlib import Path
from typing import TypeVar

Result = TypeVar("Result")


def status_field(pid: int, name: str) -> int:
    for line in Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith(name + ":"):
            return int(line.split()[1])
    raise KeyError(name)


def cpu_ticks(pid: int) -> int:
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def while_running(command: list[str], environment: Mapping[str, str], settle: float,
                  measure: Callable[[int], Result]) -> Result:
    """What there is to measure of its process after so many seconds."""
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        time.sleep(settle)
        return measure(process.pid)
    finally:
        process.kill()
        process.wait()
