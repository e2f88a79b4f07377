# SPDX-License-Identifier: MIT
"""Where something is missing or misbehaves, the window says so and stays alive."""

from __future__ import annotations

import re
import unittest

from driver.application import Application
from driver.namespaces import own
from driver.testcase import DesktopTest
from driver.tree import Wanted

FORMULAE = "info --formula"
# In seconds; far above what anyone calls fluent, and below what anyone calls frozen.
LONGEST_FREEZE = 2


class MissingHomebrew(DesktopTest):
    def test_there_is_nothing_but_the_page_that_says_so(self) -> None:
        app = self.start("--brew", "/nonexistent", "--appearance", "light")
        app.find("Homebrew Not Found", role="label")
        app.find(
            "Lumora requires Homebrew to be installed.\nPlease install Homebrew first.",
            role="label",
        )
        self.assertTrue(app.button("Install Homebrew").is_enabled)
        self.assertFalse(app.shows(role="list"))
        app.open_application_menu()
        app.press("Up", "Return")
        self.assertEqual(app.wait_ended()[0], 0)
        self.assertEqual(self.prefix.commands(), [])


class MisbehavingHomebrew(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def start_with(self, **switches: dict) -> Application:
        self.prefix.misbehave(**switches)
        return self.start()

    def formulae_count(self) -> int:
        return len(self.prefix.state()["formulae"])

    def assert_loaded(self, app: Application, *sidebar: str) -> None:
        for entry in sidebar:
            app.find(entry, role="list item")

    def test_every_run_fails(self) -> None:
        app = self.start_with(**{"*": {"error": "No such luck", "status": 1}})
        app.find("No formulae installed", role="label")
        app.find(re.compile("^brew .* failed$"), role="label")
        # The strip belongs to the window rather than to a page.
        app.choose_category("Taps")
        app.find("No taps configured", role="label")
        self.assertFalse(app.shows(re.compile(", "), role="list item"), "a count in the sidebar")

    def test_versions_as_a_list_where_a_text_is_due(self) -> None:
        app = self.start_with(outdated={"cask_versions": "list"})
        app.find(
            "Failed to load outdated: casks[0].installed_versions: expected text, found list",
            role="label",
        )
        state = self.prefix.state()
        self.assert_loaded(
            app, f"Formulae, {len(state['formulae'])}", f"Casks, {len(state['casks'])}", "Taps, 1"
        )
        # No count: nothing is known about updates.
        app.find("Updates", role="list item")

    def test_half_a_report_and_then_a_whole_one(self) -> None:
        app = self.start_with(**{FORMULAE: {"truncate": 0.5}})
        message = app.find(re.compile("^Failed to load formulae: "), role="label")
        app.find("No formulae installed", role="label")
        self.assert_loaded(app, "Casks, 2", "Taps, 1")
        self.prefix.misbehave()
        app.click_button("Refresh formulae list")
        self.assert_loaded(app, f"Formulae, {self.formulae_count()}")
        app.wait_gone(message.name)

    def test_the_strip_is_closed_until_there_is_another_message(self) -> None:
        app = self.start_with(**{FORMULAE: {"status": 1}})
        message = "brew info --installed --formula failed"
        app.find(message, role="label")
        app.click_button("Close")
        app.wait_gone(message)
        self.prefix.misbehave(**{"info --cask": {"truncate": 0.5}})
        app.choose_category("Casks")
        app.click_button("Refresh cask list")
        app.find(re.compile("^Failed to load casks: "), role="label")

    def test_a_profile_that_talks(self) -> None:
        (self.home.folder / ".zprofile").write_text("echo Welcome back\n", encoding="utf-8")
        app = self.start()
        app.find(re.compile("^Failed to load "), role="label")
        # A list of plain lines has one line more; nothing can tell it from a tap.
        app.find("Taps, 2", role="list item")
        app.find("No formulae installed", role="label")

    def longest_freeze(self, app: Application, command: str, seen: Wanted, role: str) -> float:
        """At most how long the window did nothing from before the command's end until that is
        seen, not counting what other programs took from it."""
        busy = app.busy_seconds()
        self.prefix.wait_for_command(command, self.runs_before)
        app.find(seen, role)
        return app.busy_seconds() - busy

    def test_a_report_of_a_hundred_megabytes(self) -> None:
        app = self.start()
        self.assert_loaded(app, f"Formulae, {self.formulae_count()}", "Taps, 1")
        self.prefix.misbehave(**{FORMULAE: {"long_line": 100}})
        self.runs_before = self.prefix.runs()
        app.click_button("Refresh formulae list")
        message = re.compile("^Failed to load formulae: ")
        command = "info --json=v2 --installed --formula"
        freeze = self.longest_freeze(app, command, message, "label")
        self.assertLess(freeze, LONGEST_FREEZE)

    def test_a_text_of_a_hundred_megabytes(self) -> None:
        self.prefix.misbehave(doctor={"long_line": 100})
        app = self.start()
        self.assert_loaded(app, f"Formulae, {self.formulae_count()}", "Taps, 1")
        app.choose_category("Settings")
        self.runs_before = self.prefix.runs()
        app.click_button("Run Doctor")
        freeze = self.longest_freeze(app, "doctor", "Diagnosis", "text")
        self.assertLess(freeze, LONGEST_FREEZE)
        app.choose_category("Casks")
        app.find("Casks (2)", role="label")


class MissingShell(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def test_the_strip_names_what_to_install(self) -> None:
        empty = self.desk.folder / "empty"
        empty.touch(mode=0o644)
        alone = own("mount", "net")
        if alone is None:
            self.skipTest("This system lets nobody have a mount namespace.")
        hide = f"mount --bind {empty} /bin/zsh && exec \"$@\""
        app = self.start(wrapper=[*alone, "sh", "-ec", hide, "sh"])
        app.find(
            lambda name: name.endswith(
                "/bin/zsh could not be started: Permission denied. Lumora runs every brew command "
                "through this shell. Please install zsh and try again."
            ),
            role="label",
        )
        app.find("No formulae installed", role="label")
        self.assertEqual(self.prefix.commands(), [])


if __name__ == "__main__":
    unittest.main()
