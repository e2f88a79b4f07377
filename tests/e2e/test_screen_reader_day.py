# SPDX-License-Identifier: MIT
"""The essential part of a day by what a screen reader offers: no mouse and not a key."""

from __future__ import annotations

import re
import unittest

from driver.testcase import DesktopTest
from driver.tree import Node


class ScreenReaderDay(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def test_everything_by_actions(self) -> None:
        self.app = self.start()
        self.app.find(f"Formulae, {self.formulae_count()}", role="list item")
        self.app.find("Updates, 2", role="list item")
        self.filter_and_open_details()
        self.uninstall()
        self.upgrade()
        self.search_and_install()
        self.add_and_remove_a_tap()
        self.clean_up()
        self.switch_language()
        self.look_who_made_it()
        self.leave()

    def formulae_count(self) -> int:
        return len(self.prefix.state()["formulae"])

    def go_to(self, category: str) -> None:
        self.app.act(self.app.find(re.compile(rf"^{category}(, \d+)?$"), role="list item"))

    def press(self, button: str) -> None:
        self.app.act(self.app.enabled_button(button))

    def control_of(self, package: str, name: str) -> Node:
        """The one at the end of its row."""
        (control,) = self.app.row(package).children
        self.assertEqual((control.role, control.name), ("push button", name))
        return control

    def answer(self, button: str) -> None:
        (found,) = self.app.find(role="alert message").find_all(button, role="push button")
        self.app.act(found)
        self.app.wait_gone(role="alert message")

    def filter_and_open_details(self) -> None:
        field = self.app.find("Filter formulae", role="text")
        self.app.write(field, "jq")
        self.app.find("Formulae (1)", role="label")
        self.app.act(self.app.row("jq"))
        dialog = self.app.find("jq", role="dialog")
        self.assertTrue(dialog.is_in("modal"))
        self.assertTrue(self.app.row("jq").is_in("selected"))
        self.app.find("brew info", role="text", text=lambda text: text.startswith("==> jq"))
        self.press("Close")
        self.app.wait_gone(role="dialog")
        self.app.write(field, "")
        self.app.find(f"Formulae ({self.formulae_count()})", role="label")

    def uninstall(self) -> None:
        before = self.formulae_count()
        self.app.act(self.control_of("tree", "Uninstall"))
        self.app.find("Are you sure you want to uninstall tree?", role="label")
        self.answer("Cancel")
        self.assertTrue(self.prefix.is_installed("tree"))
        # What the row's menu has is offered by the row itself.
        self.app.act(self.app.row("tree"), "Uninstall")
        self.answer("Uninstall")
        self.app.find(f"Formulae, {before - 1}", role="list item")
        self.assertFalse(self.prefix.is_installed("tree"))

    def upgrade(self) -> None:
        self.go_to("Updates")
        self.app.find("Updates (2)", role="label")
        self.app.act(self.control_of("bat", "Update"))
        self.app.find("Updates (1)", role="label")
        self.assertNotIn("bat", self.prefix.outdated())
        self.press("Update All")
        self.app.find("All packages are up to date", role="label")
        self.assertFalse(self.prefix.outdated())

    def search_and_install(self) -> None:
        self.go_to("Search")
        self.app.write(self.app.find("Search Homebrew packages", role="text"), "bottom")
        self.app.act(self.control_of("bottom", "Install"))
        self.app.find("bottom, Installed", role="list item")
        self.assertTrue(self.prefix.is_installed("bottom"))

    def add_and_remove_a_tap(self) -> None:
        taps = self.prefix.state()["taps"]
        self.go_to("Taps")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.press("Add tap")
        self.app.find("Add Tap", role="dialog")
        field = self.app.find("Enter the tap name (e.g., user/repo)", role="text")
        self.app.write(field, "stripe/stripe-cli")
        self.press("Add")
        self.app.find(f"Taps ({len(taps) + 1})", role="label")
        self.app.wait_gone(role="dialog")
        self.app.act(self.control_of("stripe/stripe-cli", "Remove"))
        self.answer("Remove")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.assertEqual(self.prefix.state()["taps"], taps)

    def clean_up(self) -> None:
        self.go_to("Settings")
        self.press("Preview")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Would remove: "))
        self.press("Run Cleanup")
        self.answer("Run Cleanup")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Removing: "))

    def switch_language(self) -> None:
        languages = self.app.find("Language", role="panel")
        self.assertEqual({node.role for node in languages.children}, {"radio button"})
        self.app.act(self.app.find("日本語", role="radio button"))
        self.app.find("言語", role="panel")
        self.assertTrue(self.app.find("日本語", role="radio button").is_in("checked"))
        self.assertEqual(self.home.preferences(), {"appLanguage": "ja"})

    def look_who_made_it(self) -> None:
        self.go_to("情報")
        self.app.find("Version 0.1.9", role="label")
        self.assertTrue(self.app.actions(self.app.find("ホームページ", role="link")))

    def leave(self) -> None:
        self.press("Lumora")
        menu = self.app.find(role="popup menu")
        (close,) = menu.find_all("閉じる", role="menu item")
        # The application may be gone before it has answered.
        self.desk.accessibility.act(close, self.app.actions(close).index("Press"))
        self.assertEqual(self.app.wait_ended()[0], 0)


if __name__ == "__main__":
    unittest.main()
