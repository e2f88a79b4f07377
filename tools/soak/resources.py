# SPDX-License-Identifier: MIT
"""What a process holds of the system, how that went on, and whether it stayed the same."""

from __future__ import annotations

import csv
import os
import statistics
from dataclasses import asdict, dataclass, fields
from pathlib import Path

# Caches fill, and threads come up for the first time.
WARM_UP = 0.1
SETTLED = 0.2
# What is lost is lost all the time, and what is kept once, such as the letters of a font, is not:
# it is the middle one of this many parts that counts.
PARTS = 5
# Kibibytes in 1,000 steps: whatever loses 60 bytes in each, or a widget in every tenth, is above
# this. Half of it there is without a leak of ours: libX11 keeps 160 bytes of account for each menu
# that opens, and Qt the letters and symbols that it has drawn.
MOST_GROWTH = 60.0


@dataclass
class Sample:
    """Kibibytes and numbers of things, after so many steps and seconds. `heap` is what of the
    anonymous memory is in use."""

    step: int
    seconds: int
    resident: int
    proportional: int
    anonymous: int
    heap: float
    descriptors: int
    threads: int
    zombies: int


def children(process: int) -> list[int]:
    """Those that have not been waited for; a thread that ends leaves them to another."""
    found: list[int] = []
    for thread in Path(f"/proc/{process}/task").iterdir():
        try:
            found += [int(word) for word in (thread / "children").read_text().split()]
        except FileNotFoundError:
            continue
    return found


def _is_zombie(process: int) -> bool:
    try:
        stat = Path(f"/proc/{process}/stat").read_text(errors="replace")
    except FileNotFoundError:
        return False
    return stat.rpartition(")")[2].split()[0] == "Z"


def take_sample(process: int, heap: Path, step: int, seconds: float) -> Sample:
    """`heap` is the pipe that tells of it."""
    own = Path(f"/proc/{process}")
    memory = {}
    for line in (own / "smaps_rollup").read_text().splitlines()[1:]:
        key, value, *_ = line.split()
        memory[key.rstrip(":")] = int(value)
    return Sample(
        step,
        round(seconds),
        memory["Rss"],
        memory["Pss"],
        memory["Anonymous"],
        int(heap.read_text().split()[0]) / 1024,
        len(os.listdir(own / "fd")),
        len(os.listdir(own / "task")),
        sum(map(_is_zombie, children(process))),
    )


def growth(samples: list[Sample], steps: int) -> float:
    """Kibibytes of the heap per 1,000 steps, once all has settled."""
    settled = [sample for sample in samples if sample.step >= SETTLED * steps]
    ends = [round(part * (len(settled) - 1) / PARTS) for part in range(PARTS + 1)]
    return statistics.median(
        _slope(settled[begin : end + 1]) for begin, end in zip(ends, ends[1:])
    )


def _slope(samples: list[Sample]) -> float:
    """That of the line that fits best."""
    count = len(samples)
    mean_step = sum(sample.step for sample in samples) / count
    mean = sum(sample.heap for sample in samples) / count
    spread = sum((sample.step - mean_step) ** 2 for sample in samples)
    common = sum((sample.step - mean_step) * (sample.heap - mean) for sample in samples)
    return 1000 * common / spread if spread else 0.0


def complaints(samples: list[Sample], steps: int) -> list[str]:
    """What didn't stay as it was; nothing if all is well."""
    warm = next(sample for sample in samples if sample.step >= WARM_UP * steps)
    last = samples[-1]
    found = [
        f"{name}: {before} after {warm.step} steps, {after} after {last.step}"
        for name in ("descriptors", "threads")
        if (before := getattr(warm, name)) != (after := getattr(last, name))
    ]
    found += [
        f"{sample.zombies} zombies after {sample.step} steps" for sample in samples if sample.zombies
    ]
    slope = growth(samples, steps)
    if slope > MOST_GROWTH:
        found.append(f"memory grows by {slope:.1f} KiB in 1,000 steps, allowed are {MOST_GROWTH:g}")
    return found


def write_table(path: Path, samples: list[Sample]) -> None:
    with path.open("w", encoding="utf-8", newline="") as file:
        table = csv.DictWriter(file, [field.name for field in fields(Sample)])
        table.writeheader()
        table.writerows(asdict(sample) for sample in samples)


def write_curve(path: Path, samples: list[Sample]) -> None:
    """Resident memory and the heap over the steps, from nothing up, as a picture."""
    width, height, margin = 800, 300, 50
    last = max(samples[-1].step, 1)
    most = max(sample.resident for sample in samples) * 1.1

    def line(name: str, colour: str) -> str:
        points = " ".join(
            f"{margin + sample.step / last * width:.1f},"
            f"{margin + height * (1 - getattr(sample, name) / most):.1f}"
            for sample in samples
        )
        x, y = points.split()[-1].split(",")
        return (
            f'<polyline points="{points}" fill="none" stroke="{colour}"/>'
            f'<text x="{float(x) + 4}" y="{y}" fill="{colour}">{name}</text>'
        )

    path.write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width + 3 * margin}" '
        f'height="{height + 2 * margin}" font-family="sans-serif" font-size="11">'
        f'<path d="M{margin} {margin}v{height}h{width}" fill="none" stroke="#888"/>'
        f'<text x="4" y="{margin}">{most / 1024:.0f} MiB</text><text x="4" y="{margin + height}">0</text>'
        f'<text x="{margin + width}" y="{margin + height + 16}" text-anchor="end">{last} steps</text>'
        f"{line('resident', '#0b62d6')}{line('anonymous', '#b45309')}{line('heap', '#15803d')}</svg>\n",
        encoding="utf-8",
    )
