# SPDX-License-Identifier: MIT
"""Takes pictures of a window and puts them where they belong."""

from __future__ import annotations

import time
from pathlib import Path

from driver import Application, wait_until

_INTERVAL = 0.04
# So many equal pictures in a row say that nothing moves any more.
_STILL = 4


class Album:
    def __init__(self, folder: Path, suffix: str, pixels: tuple[int, int]) -> None:
        self._folder = folder
        self._suffix = suffix
        self._pixels = pixels
        self.names: list[str] = []

    def take(self, application: Application, scene: str, moving: bool = False) -> None:
        """`moving` is for scenes in which something turns, so that they never come to rest."""
        application.screen.park_mouse()
        self._pictures = [application.screen.picture(*self._pixels)]

        def look() -> bool:
            time.sleep(_INTERVAL)
            self._pictures.append(application.screen.picture(*self._pixels))
            last = self._pictures[-_STILL:]
            if moving:
                # Two different ones show that the window is painted and alive.
                return len(self._pictures) >= _STILL and any(a != b for a, b in zip(last, last[1:]))
            return len(last) == _STILL and all(picture == last[0] for picture in last)

        wait_until(look, f"{scene} {'moves' if moving else 'comes to rest'}")
        name = f"{scene}-{self._suffix}.png"
        self._pictures[-1].write(self._folder / name)
        self.names.append(name)
