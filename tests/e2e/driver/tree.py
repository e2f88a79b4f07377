# SPDX-License-Identifier: MIT
"""What a window shows at one moment, as a screen reader sees it."""

from __future__ import annotations

import re
from collections.abc import Callable, Iterator
from dataclasses import dataclass, field
from functools import cached_property
from typing import Any, NamedTuple, Protocol, Union

# A text that is to be equal, a pattern that is to be found, or a question to be answered.
Wanted = Union[str, "re.Pattern[str]", Callable[[str], bool]]


class NotSeen(AssertionError):
    """The window does not show what it should, or shows more than one of it."""


class Rect(NamedTuple):
    x: int
    y: int
    width: int
    height: int

    @property
    def right(self) -> int:
        return self.x + self.width

    @property
    def bottom(self) -> int:
        return self.y + self.height

    @property
    def centre(self) -> tuple[int, int]:
        return self.x + self.width // 2, self.y + self.height // 2


class Details(Protocol):
    """What few want to know of few things, and is asked for only then."""

    def name_of(self, ref: Any) -> str: ...

    def text_of(self, ref: Any) -> str: ...

    def description_of(self, ref: Any) -> str: ...

    def rect_of(self, ref: Any) -> Rect | None: ...


@dataclass
class Node:
    """One thing that is showing."""

    role: str
    states: frozenset[str]
    # By which the bus knows it.
    ref: Any
    details: Details
    children: list[Node] = field(default_factory=list)

    @cached_property
    def name(self) -> str:
        return self.details.name_of(self.ref)

    @cached_property
    def text(self) -> str:
        """The content of fields and of other texts to read."""
        return self.details.text_of(self.ref) if self.role == "text" else ""

    @cached_property
    def description(self) -> str:
        return self.details.description_of(self.ref)

    @cached_property
    def rect(self) -> Rect:
        rect = self.details.rect_of(self.ref)
        if rect is None:
            raise NotSeen(f"{self.role} {self.name!r} has gone")
        return rect

    def is_there(self) -> bool:
        """Whether it has not gone by now; where it is then, is known."""
        try:
            return bool(self.rect)
        except NotSeen:
            return False

    def is_in(self, state: str) -> bool:
        return state in self.states

    @property
    def is_enabled(self) -> bool:
        return self.is_in("enabled")

    def walk(self) -> Iterator[Node]:
        yield self
        for child in self.children:
            yield from child.walk()

    def matches(self, role: str | None, name: Wanted | None, text: Wanted | None) -> bool:
        return (
            (role is None or self.role == role)
            and _is_wanted(self.name, name)
            and _is_wanted(self.text, text)
        )

    def find_all(
        self, name: Wanted | None = None, role: str | None = None, text: Wanted | None = None
    ) -> list[Node]:
        return [node for node in self.walk() if node.matches(role, name, text)]

    def describe(self, depth: int = 0) -> str:
        states = " ".join(sorted(self.states - {"enabled", "focusable"}))
        line = f"{'  ' * depth}{self.role} {self.name!r}"
        if self.text:
            line += f" text {self.text[:2000]!r}"
        if self.description:
            line += f" ({self.description!r})"
        line += f" {tuple(self.details.rect_of(self.ref) or ['gone'])}"
        line += "" if self.is_enabled else " DISABLED"
        line += f" [{states}]" if states else ""
        return "\n".join([line, *(child.describe(depth + 1) for child in self.children)])


@dataclass
class Tree:
    """The windows of the application, the main one first."""

    windows: list[Node]

    def find_all(
        self, name: Wanted | None = None, role: str | None = None, text: Wanted | None = None
    ) -> list[Node]:
        return [node for window in self.windows for node in window.find_all(name, role, text)]

    def describe(self) -> str:
        return "\n".join(window.describe() for window in self.windows)


def _is_wanted(actual: str, wanted: Wanted | None) -> bool:
    if wanted is None:
        return True
    if isinstance(wanted, str):
        return actual == wanted
    if isinstance(wanted, re.Pattern):
        return wanted.search(actual) is not None
    return wanted(actual)
