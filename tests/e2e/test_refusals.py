# SPDX-License-Identifier: MIT
"""The ways of brew to refuse something: the window says so, and shows what brew said."""

from __future__ import annotations

import re
import unittest
from collections.abc import Callable

import test_operations
from driver.tree import Node
from driver.waiting import wait_until


class Refusals(test_operations.OperationsTest):
    """What is refused changes nothing: one window serves all of them, as long as none fails."""

    serving: Refusals | None = None

    def setUp(self) -> None:
        if self.serving is None:
            try:
                super().setUp()
            except Exception:
                self.stop_serving()
                raise
            type(self).serving = self
        else:
            self.app = self._application = self.serving.app
            self.prefix, self.home = self.serving.prefix, self.serving.home

    def at_end(self, step: Callable[[], None]) -> None:
        self.addClassCleanup(step)

    def keep_evidence(self) -> None:
        try:
            super().keep_evidence()
        finally:
            self.stop_serving()

    def stop_serving(self) -> None:
        """What has failed may have left anything behind."""
        type(self).serving = None
        if self._application:
            self._application.stop()

    def install(self, name: str) -> None:
        self.app.choose_category("Search")
        self.app.click(self.app.find("Search Homebrew packages", role="text"))
        self.app.press("ctrl+a")
        self.app.type(name)
        self.app.click_row_action(name)

    def test_a_pinned_formula_is_not_upgraded(self) -> None:
        self.app.choose_category("Updates")
        self.app.click_row_action("postgresql@16")
        self.assert_tells(
            r"^Failed to upgrade postgresql@16 — Error: Not upgrading 1 pinned package:$",
            "Upgrading postgresql@16...\n",
            "Error: Not upgrading 1 pinned package:",
            "\nFailed to upgrade postgresql@16",
        )

    def test_what_others_need_is_not_uninstalled(self) -> None:
        self.uninstall("libpng")
        self.assert_tells(
            r"^Failed to uninstall libpng — Error: Refusing to uninstall ",
            "because it is required by",
            "brew uninstall --ignore-dependencies libpng",
        )
        self.assertTrue(self.prefix.is_installed("libpng"))

    def test_what_conflicts_is_not_installed(self) -> None:
        self.install("mecab")
        self.assert_tells(
            r"^Failed to install mecab — Error: mecab: Cannot install mecab because conflicting",
            "mecab-ko: because both install the same programs",
        )

    def test_what_is_disabled_is_not_installed(self) -> None:
        self.install("docker-machine")
        self.assert_tells(
            r"^Failed to install docker-machine — Error: docker-machine has been disabled",
            "Failed to install docker-machine",
        )

    def test_a_tap_in_use_is_not_removed(self) -> None:
        self.app.choose_category("Taps")
        self.app.click_row_action("hashicorp/tap")
        self.app.answer("Remove")
        # A tap has no closing words of the window's own.
        self.assert_tells(
            r"^Error: Refusing to untap hashicorp/tap because it contains",
            "Removing tap hashicorp/tap...\n",
            "terraform",
        )

    def add_tap(self, name: str) -> None:
        self.app.choose_category("Taps")
        self.app.click_button("Add tap")
        self.app.find("Enter the tap name (e.g., user/repo)", role="text")
        self.app.type(name)
        self.app.press("Return")

    def assert_the_sheet_tells(self, name: str, told: str) -> None:
        """The sheet is a window's last child; its strip is the one that can be reached."""

        def in_sheet() -> Node | None:
            found = self.app.find_all(re.compile(told), role="notification")
            return found[-1] if len(found) == 2 else None

        strip = wait_until(in_sheet, f"the sheet tells {told}")
        field = self.app.find("Enter the tap name (e.g., user/repo)", role="text")
        self.assertEqual(field.text, name)
        self.assertLess(strip.rect.bottom, field.rect.y)
        self.press_in(strip, "Output")
        self.app.find("Output", role="text", text=re.compile(told.removeprefix("^")))
        self.app.press("Escape")
        self.app.wait_gone("Output", role="text")
        self.assertEqual(
            self.app.find("Enter the tap name (e.g., user/repo)", role="text").text, name
        )
        self.press_in(strip, "Close")
        self.app.wait_gone(re.compile(told), role="notification")
        self.app.press("Escape")
        self.app.wait_gone("Enter the tap name (e.g., user/repo)", role="text")

    def test_a_tap_that_is_nowhere_is_not_added(self) -> None:
        self.add_tap("missing/tools")
        self.assert_the_sheet_tells("missing/tools", "^Error: Failure while executing; `git clone")

    def test_what_comes_with_brew_is_not_added(self) -> None:
        self.add_tap("homebrew/core")
        self.assert_the_sheet_tells("homebrew/core", "^Error: Tapping homebrew/core is no longer")

    def test_nonsense_is_not_added(self) -> None:
        self.add_tap("nonsense")
        self.assert_the_sheet_tells("nonsense", "^Error: Invalid tap name: 'nonsense'")


if __name__ == "__main__":
    unittest.main()
