# SPDX-License-Identifier: MIT
"""Lines of the tables, how they are written, and where they stand in a document."""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import Field, dataclass, fields
from pathlib import Path
from typing import Any, ClassVar, Protocol


def number(value: float) -> str:
    """With as many digits as mean something."""
    digits = 2 - math.floor(math.log10(abs(value))) if value else 0
    return f"{value:,.{max(0, digits)}f}"


class Line(Protocol):
    """What a table has several of, all with the same columns: a dataclass."""

    __dataclass_fields__: ClassVar[dict[str, Field[Any]]]

    @property
    def cells(self) -> dict[str, str]: ...


@dataclass(frozen=True)
class Row:
    """A result beside its reference; the goal is the most that it may be, or that it may be of the
    reference where there is one."""

    measure: str
    result: float
    unit: str
    goal: float | None = None
    reference: float | None = None
    referred: str = ""

    @property
    def ratio(self) -> float | None:
        return self.result / self.reference if self.reference else None

    @property
    def met(self) -> bool | None:
        if self.goal is None:
            return None
        return (self.result if self.ratio is None else self.ratio) <= self.goal

    @property
    def cells(self) -> dict[str, str]:
        unit = f" {self.unit}"
        reference = f"{self.referred}, {number(self.reference)}{unit}" if self.reference else ""
        return {
            "measure": self.measure,
            "result": number(self.result) + unit,
            "reference": reference,
            "ratio": f"{self.ratio:.2f}" if self.ratio is not None else "",
            "goal": _goal(self.goal, " ×" if self.reference else unit),
            "met": yes_or_no(self.met),
        }


def _goal(goal: float | None, unit: str) -> str:
    if goal is None:
        return ""
    return f"≤ {goal:g}{unit}" if goal else "none"


def yes_or_no(met: bool | None) -> str:
    return {True: "yes", False: "no", None: ""}[met]


def markdown(lines: Sequence[Line]) -> str:
    """Those with the same columns as one table."""
    tables: dict[tuple[str, ...], list[str]] = {}
    for line in lines:
        cells = line.cells
        head = [f"| {' | '.join(cells)} |", "|---" * len(cells) + "|"]
        tables.setdefault(tuple(cells), head).append(f"| {' | '.join(cells.values())} |")
    return "\n\n".join("\n".join(table) for table in tables.values())


def as_json(line: Line) -> dict[str, object]:
    """Its fields, which the cells round, and what follows from them."""
    told = {field.name: getattr(line, field.name) for field in fields(line)}
    return told | {name: getattr(line, name) for name in ("ratio", "met") if hasattr(line, name)}


def replace_block(document: Path, name: str, text: str) -> None:
    """What stands between the marks of that name."""
    begin, end = f"<!-- {name} -->\n", f"<!-- end of {name} -->"
    content = document.read_text(encoding="utf-8")
    if begin not in content or end not in content:
        raise SystemExit(f"{document} has no place for {name}")
    before, rest = content.split(begin, 1)
    behind = rest.split(end, 1)[1]
    document.write_text(f"{before}{begin}\n{text}\n\n{end}{behind}", encoding="utf-8")
