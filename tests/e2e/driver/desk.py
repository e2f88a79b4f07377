# SPDX-License-Identifier: MIT
"""A desktop for one program: a display, an accessibility bus and a place for files."""

from __future__ import annotations

import contextlib
import os
import signal
import sys
import tempfile
from pathlib import Path
from types import TracebackType
from typing import NoReturn

from .accessibility import AccessibilityBus
from .home import Home
from .processes import adopt_orphans, end_orphans
from .screen import Screen
from .session_bus import SessionBus

# Of our own environment only what a sanitizer or an unusual place of libraries needs.
_KEPT = ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LD_LIBRARY_PATH")

_FONTS = Path(__file__).resolve().parents[2] / "support/fonts.conf"


class Desk:
    """Use it in a `with`: everything ends with it, whatever happens inside."""

    def __init__(self, width: int = 1100, height: int = 750) -> None:
        self._size = width, height
        self._stack = contextlib.ExitStack()

    def __enter__(self) -> Desk:
        # When CTest's patience is at an end it asks politely first.
        signal.signal(signal.SIGTERM, _leave)
        adopt_orphans()
        with self._stack:
            self._stack.callback(end_orphans)
            temporary = self._stack.enter_context(
                tempfile.TemporaryDirectory(prefix="lumora-", ignore_cleanup_errors=True)
                if sys.version_info >= (3, 10)
                else tempfile.TemporaryDirectory(prefix="lumora-")
            )
            self.folder = Path(temporary).resolve()
            self._stack.callback(end_orphans)
            self._homes = 0
            own = self.new_home()
            self.screen = Screen(*self._size, self.folder / "display.log")
            self._stack.callback(self.screen.close)
            self._environment = {
                **{name: os.environ[name] for name in _KEPT if name in os.environ},
                "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin",
                "LANG": "C.UTF-8",
                "DISPLAY": self.screen.name,
                "FONTCONFIG_FILE": str(_FONTS),
                "GSETTINGS_BACKEND": "memory",
                "QT_QPA_PLATFORM": "xcb",
                "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            }
            bus = SessionBus(
                self.folder / "bus", self.environment(own), self.folder / "session-bus.log"
            )
            self._stack.callback(bus.close)
            self._environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address
            self.accessibility = AccessibilityBus(bus.address)
            self._stack.callback(self.accessibility.close)
            self._stack = self._stack.pop_all()
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        traceback: TracebackType | None,
    ) -> None:
        self._stack.close()

    def new_home(self, language: str | None = "en") -> Home:
        self._homes += 1
        return Home(self.folder / f"home-{self._homes}", language)

    def environment(self, home: Home) -> dict[str, str]:
        return {
            **self._environment,
            "HOME": str(home.folder),
            "XDG_RUNTIME_DIR": str(home.runtime),
            "TMPDIR": str(home.temporary),
        }


def _leave(_number: int, _frame: object) -> NoReturn:
    sys.exit(128 + signal.SIGTERM)
