# SPDX-License-Identifier: MIT
"""What a screen reader is told without asking."""

from __future__ import annotations

import re
import unittest
from collections.abc import Callable
from typing import Any

from driver.testcase import DesktopTest
from driver.waiting import wait_until


class Announcements(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def setUp(self) -> None:
        super().setUp()
        self.app = self.start()
        self.app.find(f"Formulae ({len(self.prefix.state()['formulae'])})", role="label")

    def wait_to_hear(self, heard: Callable[[], list[Any]], what: Any) -> None:
        wait_until(
            lambda: what in heard(),
            lambda: f"{what!r} is heard: {heard()}",
            pause=self.desk.accessibility.listen,
        )

    def test_an_operation_is_told_of_once_from_its_beginning_to_its_end(self) -> None:
        self.app.find(re.compile("^Updates, "), role="list item")
        self.app.press("ctrl+3")
        with self.desk.accessibility.announcements() as heard:
            with self.prefix.holding_changes():
                self.app.click_row_action("bat")
                self.wait_to_hear(heard, "Running... Upgrading bat...")
            self.wait_to_hear(heard, "Successfully upgraded bat")
            self.app.find("Updates (1)", role="label")
        self.assertEqual(heard(), ["Running... Upgrading bat...", "Successfully upgraded bat"])

    def test_failures_are_told_of(self) -> None:
        self.app.find(re.compile("^Updates, "), role="list item")
        self.app.press("ctrl+3")
        self.prefix.misbehave(every={"error": "No such luck", "status": 1})
        with self.desk.accessibility.announcements() as heard:
            self.app.click_row_action("bat")
            failure = "Failed to upgrade bat — Error: No such luck"
            self.wait_to_hear(heard, failure)
            self.app.press("F5")
            self.wait_to_hear(heard, "brew outdated failed")

    def test_what_a_page_has_to_say_instead_of_a_list_is_told(self) -> None:
        with self.desk.accessibility.announcements() as heard:
            self.app.press("ctrl+4")
            self.wait_to_hear(heard, "Type to search Homebrew packages")
            self.app.type("nothing-of-this-name")
            self.wait_to_hear(heard, "Searching...")
            self.wait_to_hear(heard, "No results found")
        self.assertLess(heard().index("Searching..."), heard().index("No results found"))

    def test_the_keyboard_is_told_of_wherever_it_goes_in_a_list(self) -> None:
        with self.desk.accessibility.entered_states("focused") as heard:
            self.app.tab_to("Formulae", role="list")
            self.wait_to_hear(heard, self.row("bat"))
            self.app.press("Right")
            self.wait_to_hear(heard, ["push button", "Uninstall"])
            before = len(heard())
            self.app.press("Left")
            wait_until(lambda: self.row("bat") in heard()[before:], "the row is heard again")
            self.app.press("Down")
            self.wait_to_hear(heard, self.row("ca-certificates"))

    def test_a_row_that_is_chosen_is_told_of(self) -> None:
        with self.desk.accessibility.entered_states("selected") as heard:
            self.app.click(self.app.row("jq"))
            self.wait_to_hear(heard, self.row("jq"))
        self.assertTrue(self.app.row("jq").is_in("selected"))
        self.assertFalse(self.app.row("bat").is_in("selected"))

    def test_a_row_that_is_chosen_no_more_is_told_of(self) -> None:
        bat, jq = self.row("bat"), self.row("jq")
        self.app.click(self.app.row("jq"))
        self.app.find("jq", role="dialog")
        accessibility = self.desk.accessibility
        with accessibility.entered_states("selected", entered=0) as heard:
            self.app.press("Escape")
            self.wait_to_hear(heard, jq)
        self.assertNotIn(bat, heard())

    def row(self, package: str) -> list[str]:
        return ["list item", self.app.row(package).name]


if __name__ == "__main__":
    unittest.main()
