# SPDX-License-Identifier: MIT
"""Curves over a number of things, from nothing up, as a picture."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from pathlib import Path

from .table import number

WIDTH, HEIGHT, MARGIN = 360, 240, 40
ROOM_FOR_NAMES = 150
LINE = 14


@dataclass(frozen=True)
class Curve:
    name: str
    colour: str
    values: Sequence[float]


def _panel(left: int, things: Sequence[int], unit: str, curves: Sequence[Curve]) -> str:
    most = max(max(curve.values) for curve in curves) * 1.05
    bottom = MARGIN + HEIGHT

    def x(thing: int) -> float:
        return left + thing / things[-1] * WIDTH

    def y(value: float) -> float:
        return bottom - value / most * HEIGHT

    drawn = [f'<path d="M{left} {MARGIN}V{bottom}h{WIDTH}" fill="none" stroke="#888"/>']
    drawn += [f'<text x="{x(thing):.0f}" y="{bottom + LINE}" text-anchor="middle" '
              f'fill="#555">{thing:,}</text>' for thing in things]
    # From below, each name at its curve's end, but clear of the one before.
    free = float(bottom)
    for curve in sorted(curves, key=lambda curve: curve.values[-1]):
        points = [(x(thing), y(value)) for thing, value in zip(things, curve.values)]
        line = " ".join(f"{across:.1f},{down:.1f}" for across, down in points)
        drawn.append(f'<polyline points="{line}" fill="none" stroke="{curve.colour}" '
                     'stroke-width="1.5"/>')
        drawn += [f'<circle cx="{across:.1f}" cy="{down:.1f}" r="2.5" fill="{curve.colour}"/>'
                  for across, down in points]
        place = min(points[-1][1] + LINE / 3, free)
        free = place - LINE
        drawn.append(f'<text x="{points[-1][0] + 8:.0f}" y="{place:.0f}" fill="{curve.colour}">'
                     f"{curve.name}, {number(curve.values[-1])} {unit}</text>")
    return "".join(drawn)


def write_chart(path: Path, things: Sequence[int], panels: Mapping[str, Sequence[Curve]]) -> None:
    """A panel for each unit, side by side."""
    step = MARGIN + WIDTH + ROOM_FOR_NAMES
    width, height = len(panels) * step + MARGIN, HEIGHT + 2 * MARGIN
    drawn = "".join(_panel(MARGIN + place * step, things, unit, curves)
                    for place, (unit, curves) in enumerate(panels.items()))
    path.write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
        f'font-family="sans-serif" font-size="11"><rect width="100%" height="100%" fill="#fff"/>'
        f"{drawn}</svg>\n", encoding="utf-8")
