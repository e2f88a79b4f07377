# SPDX-License-Identifier: MIT
"""A Wayland desktop for one program."""

from __future__ import annotations

import shutil
import unittest
from pathlib import Path

from .application import Application
from .processes import start, stop
from .waiting import wait_until


class Compositor:
    """Nobody sees it, and it has neither mouse nor keys; but with a display it fills that, gives
    the whole of itself to the one window and takes mouse and keys from there."""

    def __init__(self, folder: Path, display: str = "", width: int = 1100, height: int = 750) -> None:
        if shutil.which("weston") is None:
            raise unittest.SkipTest("There is no Wayland compositor: weston is not installed.")
        folder.mkdir(mode=0o700)
        self._socket = folder / "wayland"
        kind = (
            ["--backend=x11-backend.so", "--shell=kiosk-shell.so"]
            if display
            else ["--backend=headless-backend.so"]
        )
        self._server = start(
            # fmt: off
            [
                "weston", *kind, f"--width={width}", f"--height={height}", "--use-pixman",
                "--no-config", "--socket=wayland", "--idle-time=0",
            ],
            # fmt: on
            folder / "weston.log",
            env={"PATH": "/usr/bin:/bin", "XDG_RUNTIME_DIR": str(folder), "DISPLAY": display},
        )
        wait_until(self._socket.exists, "the compositor is there")

    @property
    def environment(self) -> dict[str, str]:
        """What tells a program to come here, and nowhere else."""
        return {"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": str(self._socket), "DISPLAY": ""}

    def __enter__(self) -> Compositor:
        return self

    def __exit__(self, *_error: object) -> None:
        stop(self._server)


class WaylandApplication(Application):
    """What a window is on X11, nobody but the compositor knows here."""

    def wait_for_menu(self) -> None:
        self.find(role="popup menu")

    def open_menu_by(self, key: str) -> None:
        # A menu belongs to the key that is down; people don't let go of it at once.
        self.screen.focus_topmost()
        with self.screen.holding(key):
            self.wait_for_menu()

    def close_window(self) -> None:
        """By itself: nobody else may."""
        self.press("ctrl+w")
