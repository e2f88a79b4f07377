# SPDX-License-Identifier: MIT
"""The essential part of a day without touching the mouse."""

from __future__ import annotations

import unittest

from driver.testcase import DesktopTest
from driver.waiting import wait_until

LANGUAGES = ("한국어", "English", "日本語")


class KeyboardDay(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def test_everything_by_keys(self) -> None:
        self.app = self.start()
        self.app.find(f"Formulae, {self.formulae_count()}", role="list item")
        self.open_details()
        self.uninstall()
        self.install()
        self.upgrade()
        self.add_and_remove_a_tap()
        self.clean_up()
        self.switch_language()
        self.leave()

    def formulae_count(self) -> int:
        return len(self.prefix.state()["formulae"])

    def answer(self, button: str) -> None:
        self.app.find(role="alert message")
        self.app.tab_to(button, role="push button")
        self.app.press("space")
        self.app.wait_gone(role="alert message")

    def go_to_row(self, package: str) -> None:
        """Down from the row that is current when the list has the keyboard."""
        wanted = self.app.row(package).name
        current = self.app.current_row()
        for _ in self.app.rows():
            if current == wanted:
                break
            self.app.press("Down")
            # A key is only on its way when it has been pressed.
            current = wait_until(
                lambda before=current: (row := self.app.current_row()) != before and row,
                lambda before=current: f"Down leads from {before} to another row",
            )
        self.assertTrue(self.app.row(package).is_in("focused"), package)

    def filter_formulae(self, text: str) -> None:
        self.app.press("ctrl+1")
        self.app.find("Filter formulae", role="text")
        self.app.press("ctrl+f")
        self.app.type(text)
        self.app.find("Formulae (1)", role="label")
        self.app.tab_to("Formulae", role="list")

    def open_details(self) -> None:
        self.filter_formulae("jq")
        self.app.press("Return")
        self.app.find("brew info", role="text", text=lambda text: text.startswith("==> jq"))
        # What lies behind the sheet is out of reach.
        reached = self.app.tab_round()
        self.assertIn("brew info", reached)
        self.assertEqual(reached[-1], "Close")
        self.assertFalse({"Lumora", "Formulae", "Filter formulae"}.intersection(reached), reached)
        self.app.press("Escape")
        self.app.wait_gone("brew info")
        self.app.press("ctrl+f", "Escape")
        self.app.find(f"Formulae ({self.formulae_count()})", role="label")

    def uninstall(self) -> None:
        before = self.formulae_count()
        self.filter_formulae("tree")
        self.app.press("Delete")
        self.app.find("Are you sure you want to uninstall tree?", role="label")
        self.app.press("Escape")
        self.app.wait_gone(role="alert message")
        self.assertTrue(self.prefix.is_installed("tree"))
        self.app.press("Delete")
        self.answer("Uninstall")
        self.app.find(f"Formulae, {before - 1}", role="list item")
        self.assertFalse(self.prefix.is_installed("tree"))

    def install(self) -> None:
        self.app.press("ctrl+4")
        self.app.find("Search Homebrew packages", role="text")
        self.app.press("ctrl+f")
        start = self.prefix.runs()
        self.app.type("bottom")
        self.app.press("Return")
        # Typing asks for a search of its own half a second later: of two that overlap the last
        # has the last word, and it isn't to come in behind the one after the installation.
        wait_until(
            lambda: self.prefix.runs() == start + 2,
            lambda: f"both searches end; there were {self.prefix.commands(start)}",
        )
        self.app.row("bottom")
        self.app.tab_to("Search", role="list")
        self.go_to_row("bottom")
        self.app.press("Right", "Return")
        self.app.find("bottom, Installed", role="list item")
        self.assertTrue(self.prefix.is_installed("bottom"))

    def upgrade(self) -> None:
        outdated = len(self.prefix.outdated())
        self.app.press("ctrl+3")
        self.app.find(f"Updates ({outdated})", role="label")
        self.app.tab_to("Updates", role="list")
        self.go_to_row("bat")
        self.app.press("Right", "space")
        self.app.find(f"Updates ({outdated - 1})", role="label")
        self.assertNotIn("bat", self.prefix.outdated())

    def add_and_remove_a_tap(self) -> None:
        taps = self.prefix.state()["taps"]
        self.app.press("ctrl+5")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.app.tab_to("Add tap", role="push button")
        self.app.press("space")
        self.app.tab_to("Enter the tap name (e.g., user/repo)", role="text")
        self.app.type("stripe/stripe-cli")
        self.app.press("Return")
        self.app.find(f"Taps ({len(taps) + 1})", role="label")
        self.assertIn("stripe/stripe-cli", self.prefix.state()["taps"])
        self.app.tab_to("Taps", role="list")
        self.go_to_row("stripe/stripe-cli")
        self.app.press("Delete")
        self.answer("Remove")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.assertEqual(self.prefix.state()["taps"], taps)

    def clean_up(self) -> None:
        self.app.press("ctrl+6")
        self.app.tab_to("Preview", role="push button")
        self.app.press("space")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Would remove: "))
        self.app.tab_to("Run Cleanup", role="push button")
        self.app.press("space")
        self.answer("Run Cleanup")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Removing: "))
        self.assertEqual(self.prefix.commands()[-2:], ["cleanup -n", "cleanup"])

    def switch_language(self) -> None:
        self.app.tab_to(lambda name: name in LANGUAGES)
        while not self.app.find("日本語").is_in("checked"):
            self.app.press_to_leave("Right")
        self.app.find("言語", role="label")
        self.assertTrue(self.app.find("日本語").is_in("checked"))
        # The page is another one now, and the keyboard is where it was.
        self.app.wait_for_focus("日本語")
        self.assertEqual(self.home.preferences(), {"appLanguage": "ja"})

    def leave(self) -> None:
        self.app.open_menu_by("F10")
        self.app.press("Up", "Return")
        self.assertEqual(self.app.wait_ended()[0], 0)


if __name__ == "__main__":
    unittest.main()
