# SPDX-License-Identifier: MIT
"""Small pieces of text that several commands print in the same way."""

from __future__ import annotations


def join_words(words: list[str]) -> str:
    """`a`, `a and b`, `a, b and c`."""
    if len(words) < 2:
        return "".join(words)
    return ", ".join(words[:-1]) + " and " + words[-1]


def count(number: int, singular: str, plural: str) -> str:
    return f"{number} {singular if number == 1 else plural}"


def readable_size(size: int, keep_zero: bool = False) -> str:
    """A size as `brew` writes it: `195B`, `15.8KB`, `16KB`.

    Kegs drop a zero after the point while taps keep it (`88.0KB`).
    """
    if size < 1000:
        return f"{size}B"
    amount = float(size)
    unit = ""
    for unit in ("KB", "MB", "GB"):
        amount /= 1024
        if amount < 1000:
            break
    text = f"{amount:.1f}"
    return (text if keep_zero else text.removesuffix(".0")) + unit


def readable_contents(files: int, size: int, keep_zero: bool = False) -> str:
    return f"{files:,} {'file' if files == 1 else 'files'}, {readable_size(size, keep_zero)}"


def columns(rows: list[tuple[str, str, str]]) -> list[str]:
    """Lines such as `name  1.0 -> 1.1` with the versions below each other."""
    name_width = max((len(name) for name, _, _ in rows), default=0)
    old_width = max((len(old) for _, old, _ in rows), default=0)
    gap = " " if len(rows) == 1 else "  "
    return [f"{name:<{name_width}}{gap}{old:<{old_width}} -> {new}" for name, old, new in rows]


_REASONS = {
    "repo_archived": "it has an archived upstream repository",
    "unmaintained": "it is not maintained upstream",
    "discontinued": "it is discontinued upstream",
}


def retirement(state: str, date: str, reason: str) -> str:
    """What is said of a deprecated or disabled package after its name."""
    sentence = _REASONS.get(reason, f"it is {reason}")
    return f"{state} because {sentence}! It was {state} on {date}."
