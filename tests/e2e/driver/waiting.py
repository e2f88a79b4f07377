# SPDX-License-Identifier: MIT
"""Waiting for what is expected to happen, and no longer."""

from __future__ import annotations

import time
from collections.abc import Callable
from typing import TypeVar

T = TypeVar("T")

# Far above anything that happens at all; only what never happens takes that long.
PATIENCE = 20.0
_INTERVAL = 0.04
_LATENESS = 0.15
_LONGEST_INTERVAL = 0.5


class NotHappened(AssertionError):
    """What was waited for did not come in time."""


def wait_until(
    condition: Callable[[], T | None],
    what: str | Callable[[], str],
    patience: float = PATIENCE,
    pause: Callable[[float], None] = time.sleep,
) -> T:
    """The first result of `condition` that counts as true."""
    begun = time.monotonic()
    while True:
        asked = time.monotonic()
        result = condition()
        if result:
            return result
        now = time.monotonic()
        if now > begun + patience:
            described = what if isinstance(what, str) else what()
            raise NotHappened(f"not within {patience:g} s: {described}")
        # Looking takes the processor from what is waited for: what takes long is seen a bit late.
        late = min(_LONGEST_INTERVAL, (now - begun) * _LATENESS)
        pause(max(_INTERVAL, now - asked, late))
