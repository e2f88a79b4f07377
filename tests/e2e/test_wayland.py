# SPDX-License-Identifier: MIT
"""The same days on a Wayland desktop, as far as it lets somebody else look and press."""

from __future__ import annotations

import re
import unittest
from pathlib import Path
from typing import Any

import test_day
import test_keyboard_day
import test_screen_reader_day
from driver.application import Application
from driver.compositor import Compositor, WaylandApplication
from driver.testcase import DesktopTest
from driver.waiting import wait_until


class OnWayland(DesktopTest):
    """Unseen, with neither mouse nor keys."""

    application_class = WaylandApplication
    has_input = False
    compositor: Compositor

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        display = cls.desk.screen.name if cls.has_input else ""
        cls.compositor = cls.enter(Compositor(cls.desk.folder / "compositor", display))

    def start(self, *arguments: str, **options: Any) -> Application:
        options["environment"] = {**self.compositor.environment, **options.get("environment", {})}
        app = super().start(*arguments, **options)
        loaded = Path(f"/proc/{app.process_id}/maps").read_text()
        self.assertIn("/libqwayland", loaded)
        self.assertNotIn("/libqxcb", loaded)
        if self.has_input:
            # Keys that come before the compositor has given it the keyboard are nobody's.
            app.screen.focus_topmost()
            wait_until(app.focused, "the window has the keyboard")
        return app


class Day(OnWayland, test_day.Day):
    has_input = True


class KeyboardDay(OnWayland, test_keyboard_day.KeyboardDay):
    has_input = True


class ScreenReaderDay(OnWayland, test_screen_reader_day.ScreenReaderDay):
    def test_everything_by_actions(self) -> None:
        super().test_everything_by_actions()
        # Newer versions of Qt name what has gone before somebody asks for it, as a reader may.
        complaints = [line for line in self.app.log.read_text().splitlines()
                      if "Could not find accessible on path" not in line]
        self.assertEqual(complaints, [])


class Window(OnWayland):
    prefix_options = ("--small", "--pace", "0")

    def said(self, app: Application, request: str) -> str:
        """What the window has told the compositor of itself, once it has."""
        pattern = re.compile(rf"-> xdg_\w+[@#]\d+\.{request}\((.*)\)$", re.MULTILINE)
        return wait_until(
            lambda: (match := pattern.search(app.log.read_text())) and match[1],
            f"the window says {request}",
        )

    def test_the_desktop_learns_whose_window_it_is(self) -> None:
        app = self.start(environment={"WAYLAND_DEBUG": "1"})
        self.assertEqual(self.said(app, "set_app_id"), '"lumora"')
        self.assertEqual(self.said(app, "set_title"), '"Lumora"')

    def test_it_brings_a_title_bar_where_the_desktop_has_none(self) -> None:
        app = self.start(environment={"WAYLAND_DEBUG": "1"})
        _, _, width, height = map(int, self.said(app, "set_window_geometry").split(", "))
        self.assertGreater(width, 900)
        self.assertGreater(height, 600 + 20)


if __name__ == "__main__":
    unittest.main()
