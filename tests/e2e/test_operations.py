# SPDX-License-Identifier: MIT
"""However an operation ends, the window says so, and shows what brew said."""

from __future__ import annotations

import re
import subprocess
import unittest
from pathlib import Path

from driver.testcase import DesktopTest
from driver.tree import Node


class OperationsTest(DesktopTest):
    def setUp(self) -> None:
        super().setUp()
        self.app = self.start()
        # What the first refresh asks for isn't to come between.
        self.app.find("Taps, 4", role="list item")
        self.app.find(re.compile(r"^Updates, "), role="list item")

    def strip(self, told: str) -> Node:
        """A strip is named after what it says, for those who hear it."""
        return self.app.find(re.compile(told), role="notification")

    def uninstall(self, formula: str) -> None:
        self.app.choose_category("Formulae")
        self.app.click(self.app.find("Filter formulae", role="text"))
        self.app.type(formula)
        self.app.find("Formulae (1)", role="label")
        self.app.click_row_action(formula)
        self.app.answer("Uninstall")

    def press_in(self, strip: Node, button: str) -> None:
        (found,) = strip.find_all(button, role="push button")
        self.app.click(found)

    def assert_tells(self, told: str, *said: str) -> None:
        """The strip tells it, the sheet shows all that was said, and both can be closed."""
        strip = self.strip(told)
        labels = [label.name for label in strip.find_all(role="label")]
        self.assertEqual(" — ".join(labels), strip.name)
        self.press_in(strip, "Output")
        shown = self.app.find("Output", role="text").text
        for part in said:
            self.assertIn(part, shown)
        self.assertNotIn("\x1b", shown)
        self.assertNotIn("␛", shown)
        self.app.press("Escape")
        self.app.wait_gone("Output", role="text")
        self.press_in(self.strip(told), "Close")
        self.app.wait_gone(re.compile(told), role="notification")


class Operations(OperationsTest):
    def behind_its_back(self, *words: str) -> None:
        """What somebody does in a terminal while the window still shows what was before."""
        subprocess.run([self.prefix.brew, *words], check=True, capture_output=True)

    def test_what_has_gone_is_not_uninstalled(self) -> None:
        self.behind_its_back("uninstall", "skhd")
        self.uninstall("skhd")
        self.assert_tells(r"^Failed to uninstall skhd — Error: No such keg: ", "No such keg")

    def test_a_cask_that_has_gone_is_not_uninstalled(self) -> None:
        self.behind_its_back("uninstall", "--cask", "gimp")
        self.app.choose_category("Casks")
        self.app.click_row_action("gimp")
        self.app.answer("Uninstall")
        self.assert_tells(
            r"^Failed to uninstall gimp — Error: Cask 'gimp' is not installed\.$", "gimp"
        )

    def test_what_has_gone_is_not_upgraded(self) -> None:
        self.behind_its_back("uninstall", "bat")
        self.app.choose_category("Updates")
        self.app.click_row_action("bat")
        self.assert_tells(r"^Failed to upgrade bat — Error: bat not installed$", "bat not installed")

    def test_what_is_nowhere_any_more_is_not_installed(self) -> None:
        self.app.choose_category("Search")
        self.app.click(self.app.find("Search Homebrew packages", role="text"))
        self.app.type("mongodb")
        package = "mongodb/brew/mongodb-community"
        self.app.row(package)
        self.behind_its_back("untap", "mongodb/brew")
        self.prefix.misbehave(install={"error": f'No available formula with the name "{package}".'})
        self.app.click_row_action(package)
        self.assert_tells(
            rf"^Failed to install {package} — Error: No available formula", "No available formula"
        )

    def test_a_tap_that_has_gone_is_not_removed(self) -> None:
        self.behind_its_back("untap", "mongodb/brew")
        self.app.choose_category("Taps")
        self.app.click_row_action("mongodb/brew")
        self.app.answer("Remove")
        self.assert_tells(r"^Error: No available tap mongodb/brew\.$", "brew tap-new mongodb/brew")

    # What can go wrong beside.

    def test_of_many_upgrades_one_fails(self) -> None:
        self.prefix.misbehave(upgrade={"status": 1})
        self.app.choose_category("Updates")
        self.app.click_button("Update All")
        self.assert_tells(
            r"^Upgrade failed$", "Upgrading all packages...\n", "==> Pouring", "\nUpgrade failed"
        )

    def test_a_cask_in_colour(self) -> None:
        self.prefix.misbehave(**{"upgrade --cask": {"error": "no room", "colour": True}})
        self.app.choose_category("Updates")
        self.app.click_row_action("keepassxc")
        self.assert_tells(r"^Failed to upgrade keepassxc — Error: no room$", "Error: no room\n")

    def test_brew_is_gone(self) -> None:
        Path(self.prefix.brew).unlink()
        self.app.choose_category("Updates")
        self.app.click_row_action("bat")
        self.assert_tells(r"^Failed to upgrade bat$", "no such file or directory")

    def test_brew_says_nothing_and_fails(self) -> None:
        self.prefix.misbehave(untap={"status": 3, "truncate": 0, "close": "stderr"})
        self.app.choose_category("Taps")
        self.app.click_row_action("mongodb/brew")
        self.app.answer("Remove")
        self.strip(r"^Removing tap mongodb/brew\.\.\.$")

    # And what goes well.

    def test_what_goes_well_is_told_and_goes_by_itself(self) -> None:
        self.app.choose_category("Taps")
        self.app.click_row_action("mongodb/brew")
        self.app.answer("Remove")
        self.strip(r"^Untapped")
        self.app.wait_gone(re.compile("^Untapped"), role="notification")
        # The transcript stays within reach.
        self.app.open_application_menu()
        self.app.press("Up", "Up", "Return")
        self.app.find("Output", role="text", text=re.compile("^Removing tap mongodb/brew"))

    def test_what_was_left_out_can_be_read(self) -> None:
        self.app.choose_category("Updates")
        self.app.click_button("Update All")
        self.press_in(self.strip("^All packages upgraded$"), "Output")
        self.app.find("Output", role="text", text=re.compile(r"1 Pinned formula\npostgresql@16"))

    def test_the_next_operation_takes_the_place_of_the_last(self) -> None:
        self.app.choose_category("Updates")
        self.app.click_row_action("postgresql@16")
        self.strip("^Failed to upgrade postgresql@16")
        with self.prefix.holding_changes():
            self.app.click_row_action("bat")
            self.app.find("Running...", role="label")
            self.assertFalse(self.app.shows(re.compile("^Failed to upgrade"), role="notification"))
        self.strip("^Successfully upgraded bat$")


if __name__ == "__main__":
    unittest.main()
