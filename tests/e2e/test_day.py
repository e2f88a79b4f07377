# SPDX-License-Identifier: MIT
"""A day with the application: what the window shows, and what Homebrew then holds."""

from __future__ import annotations

import unittest

from driver.testcase import DesktopTest

LOADS = {
    "info --json=v2 --installed --formula",
    "info --json=v2 --installed --cask",
    "outdated --json=v2",
    "tap",
}


class Day(DesktopTest):
    def test_from_the_first_look_to_the_last(self) -> None:
        self.counted = self.prefix.runs()
        self.look_at_what_is_installed()
        self.filter()
        self.open_and_close_details()
        self.install_from_search()
        self.upgrade_one()
        self.upgrade_all()
        self.uninstall()
        self.add_and_remove_a_tap()
        self.clean_up()
        self.ask_the_doctor()
        self.switch_languages()
        self.close_the_window()
        self.start_again_in_the_chosen_language()

    # What is expected comes from the files of the sample, never from the application.

    def formulae(self) -> dict:
        return self.prefix.state()["formulae"]

    def outdated_count(self) -> int:
        return len(self.prefix.outdated())

    def new_commands(self) -> list[str]:
        """Those that have ended since this was asked the last time."""
        commands = self.prefix.commands(self.counted)
        self.counted += len(commands)
        return commands

    def ignore_own_questions(self) -> None:
        self.counted = self.prefix.runs()

    def assert_sidebar_shows(self, entry: str) -> None:
        self.app.find(entry, role="list item")

    # The steps

    def look_at_what_is_installed(self) -> None:
        state = self.prefix.state()
        outdated = self.outdated_count()
        self.ignore_own_questions()
        with self.prefix.holding_runs():
            self.app = self.start()
            self.app.find("Loading formulae...", role="label")
            self.app.find("Formulae (0)", role="label")
            self.assertFalse(self.app.button("Refresh formulae list").is_enabled)
        self.app.find(f"Formulae ({len(state['formulae'])})", role="label")
        self.assert_sidebar_shows(f"Formulae, {len(state['formulae'])}")
        self.assert_sidebar_shows(f"Casks, {len(state['casks'])}")
        self.assert_sidebar_shows(f"Updates, {outdated}")
        self.assert_sidebar_shows(f"Taps, {len(state['taps'])}")
        first = sorted(state["formulae"], key=str.casefold)[:5]
        self.assertEqual([row.split(", ")[0] for row in self.app.rows()[:5]], first)
        self.assertEqual(sorted(self.new_commands()), sorted(LOADS))

    def filter(self) -> None:
        report = self.prefix.report("info", "--json=v2", "--installed", "--formula")
        expected = [
            formula["name"]
            for formula in report["formulae"]
            if "ssl" in f"{formula['name']}\n{formula['desc']}".lower()
        ]
        self.ignore_own_questions()
        self.app.click(self.app.find("Filter formulae", role="text"))
        self.app.type("SSL")
        self.app.find(f"Formulae ({len(expected)})", role="label")
        shown = [row.split(", ")[0] for row in self.app.rows()]
        self.assertEqual(shown, sorted(expected))
        self.assertGreater(len(shown), 0)
        self.app.press("Escape")
        self.app.find(f"Formulae ({len(report['formulae'])})", role="label")
        self.assertEqual(self.new_commands(), [])

    def open_and_close_details(self) -> None:
        for close in (lambda: self.app.click_in_sheet("Close"), lambda: self.app.press("Escape")):
            self.app.click(self.app.row("bat"))
            self.app.find("Version: 0.26.0", role="label")
            self.app.find("Installed: 0.25.0", role="label")
            self.app.find("Dependencies (2)", role="label")
            self.app.find("brew info", role="text", text=lambda text: text.startswith("==> bat"))
            close()
            self.app.wait_gone("Close", role="push button")
            self.assertEqual(self.new_commands(), ["info bat"])

    def install_from_search(self) -> None:
        before = len(self.formulae())
        self.assertFalse(self.prefix.is_installed("bottom"))
        self.app.choose_category("Search")
        self.app.find("Type to search Homebrew packages", role="label")
        self.app.click(self.app.find("Search Homebrew packages", role="text"))
        self.app.type("bottom")
        self.app.row("bottom")
        self.assertEqual(self.new_commands(), ["search bottom"])
        with self.prefix.holding_changes():
            self.app.click_row_action("bottom")
            self.app.find("Running...", role="label")
            self.app.find("Output", role="text", text="Installing bottom...")
            self.assertFalse(self.prefix.is_installed("bottom"))
        self.app.find("bottom, Installed", role="list item")
        self.app.wait_gone("Running...")
        self.assertTrue(self.prefix.is_installed("bottom"))
        self.assert_sidebar_shows(f"Formulae, {before + 1}")
        self.assertEqual(
            self.new_commands(),
            ["install bottom", "info --json=v2 --installed --formula", "search bottom"],
        )

    def upgrade_one(self) -> None:
        outdated = self.outdated_count()
        self.ignore_own_questions()
        self.app.choose_category("Updates")
        self.app.find(f"Updates ({outdated})", role="label")
        self.app.find("bat, 0.25.0 → 0.26.0", role="list item")
        self.assertEqual(self.new_commands(), [])
        with self.prefix.holding_changes():
            self.app.click_row_action("bat")
            self.app.find("Output", role="text", text="Upgrading bat...")
            # No second upgrade meanwhile.
            self.assertFalse(self.app.button("Update All").is_enabled)
            self.app.click_row_action("gh")
        self.app.find(f"Updates ({outdated - 1})", role="label")
        self.assert_sidebar_shows(f"Updates, {outdated - 1}")
        self.assertFalse([row for row in self.app.rows() if row.startswith("bat,")])
        self.prefix.wait_for_command("info --json=v2 --installed --formula", self.counted)
        self.assertEqual(
            self.new_commands(),
            ["upgrade bat", "outdated --json=v2", "info --json=v2 --installed --formula"],
        )
        self.assertNotIn("bat", self.prefix.outdated())
        self.ignore_own_questions()

    def upgrade_all(self) -> None:
        self.app.click_button("Update All")
        # What is pinned stays as it is.
        self.app.find("Updates (1)", role="label")
        self.assertEqual(self.prefix.outdated(), {"postgresql@16"})
        self.assert_sidebar_shows("Updates, 1")
        self.assertEqual(
            self.app.rows(), ["Formulae (1)", "postgresql@16, 16.9 → 16.10"]
        )
        for load in LOADS:
            self.prefix.wait_for_command(load, self.counted)
        self.ignore_own_questions()

    def uninstall(self) -> None:
        before = len(self.formulae())
        self.app.choose_category("Formulae")
        self.app.click(self.app.find("Filter formulae", role="text"))
        self.app.type("bottom")
        self.app.find("Formulae (1)", role="label")
        self.app.click_row_action("bottom")
        self.app.find("Are you sure you want to uninstall bottom?", role="label")
        self.app.answer("Cancel")
        self.assertEqual(self.new_commands(), [])
        self.app.click_row_action("bottom")
        self.app.find("Uninstall Package", role="alert message")
        self.app.answer("Uninstall")
        self.app.find("Formulae (0)", role="label")
        self.assert_sidebar_shows(f"Formulae, {before - 1}")
        self.assertFalse(self.prefix.is_installed("bottom"))
        self.assertEqual(
            self.new_commands(), ["uninstall bottom", "info --json=v2 --installed --formula"]
        )

    def add_and_remove_a_tap(self) -> None:
        taps = sorted(self.prefix.state()["taps"])
        self.app.choose_category("Taps")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.assertEqual(self.app.rows(), taps)
        self.app.click_button("Add tap")
        field = self.app.find("Enter the tap name (e.g., user/repo)", role="text")
        self.assertEqual(field.text, "")
        self.assertFalse(self.app.button("Add").is_enabled)
        self.app.click(field)
        self.app.type("missing/tap")
        self.app.click_in_sheet("Add")
        self.assertEqual(self.prefix.wait_for_command("tap missing/tap", self.counted), 1)
        # The name is still there to be corrected.
        self.app.enabled_button("Add")
        field = self.app.find("Enter the tap name (e.g., user/repo)", role="text")
        self.assertEqual(field.text, "missing/tap")
        self.app.press("ctrl+a")
        self.app.type(" stripe/stripe-cli ")
        self.app.click_button("Add")
        self.app.wait_gone("Enter the tap name (e.g., user/repo)", role="text")
        self.app.find(f"Taps ({len(taps) + 1})", role="label")
        self.assertEqual(self.app.rows(), sorted([*taps, "stripe/stripe-cli"]))
        self.assertIn("stripe/stripe-cli", self.prefix.state()["taps"])
        self.assertEqual(
            self.new_commands(), ["tap missing/tap", "tap stripe/stripe-cli", "tap"]
        )

        self.app.click_row_action("stripe/stripe-cli")
        self.app.find(
            "Are you sure you want to remove the tap 'stripe/stripe-cli'?", role="label"
        )
        self.app.answer("Cancel")
        self.assertEqual(self.new_commands(), [])
        self.app.click_row_action("stripe/stripe-cli")
        self.app.answer("Remove")
        self.app.find(f"Taps ({len(taps)})", role="label")
        self.assertEqual(self.app.rows(), taps)
        self.assertEqual(sorted(self.prefix.state()["taps"]), taps)
        self.assertEqual(self.new_commands(), ["untap stripe/stripe-cli", "tap"])

    def clean_up(self) -> None:
        self.app.choose_category("Settings")
        before = self.prefix.state()
        self.app.click_button("Preview")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Would remove: "))
        self.assertEqual(self.prefix.state(), before)
        self.app.click_button("Run Cleanup")
        self.app.find("This will remove old versions and cache files. Continue?", role="label")
        self.app.answer("Cancel")
        self.assertEqual(self.new_commands(), ["cleanup -n"])
        self.app.click_button("Run Cleanup")
        self.app.answer("Run Cleanup")
        self.app.find("Output", role="text", text=lambda text: text.startswith("Removing: "))
        self.assertNotEqual(self.prefix.state(), before)
        self.app.click_button("Preview")
        self.app.find("Output", role="text", text="Nothing to clean up.")
        self.assertEqual(self.new_commands(), ["cleanup", "cleanup -n"])

    def ask_the_doctor(self) -> None:
        self.app.click_button("Run Doctor")
        answer = self.app.find("Diagnosis", role="text", text=lambda text: text != "").text
        self.assertIn("Warning: ", answer)
        self.assertEqual(self.new_commands(), ["doctor"])

    def switch_languages(self) -> None:
        for button, title, language, cleanup, stored in (
            ("한국어", "설정", "언어", "정리 실행", "ko"),
            ("日本語", "設定", "言語", "クリーンアップ実行", "ja"),
        ):
            self.app.click(self.app.find(button))
            self.app.find(language, role="label")
            self.app.find(title, role="label")
            self.app.find(cleanup, role="push button")
            self.assert_sidebar_shows(title)
            self.assertTrue(self.app.find(button).is_in("checked"))
            self.assertFalse(self.app.shows("Settings"))
            self.assertEqual(self.home.preferences(), {"appLanguage": stored})
        self.assertEqual(self.new_commands(), [])

    def close_the_window(self) -> None:
        self.app.close_window()
        status, seconds = self.app.wait_ended()
        self.assertEqual(status, 0)
        self.assertLess(seconds, 1)

    def start_again_in_the_chosen_language(self) -> None:
        app = self.start()
        app.find("formulaeを検索", role="text")
        app.find(f"Formulae ({len(self.formulae())})", role="label")


class Leaving(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def test_the_window_closes_while_everything_loads(self) -> None:
        start = self.prefix.runs()
        with self.prefix.holding_runs():
            app = self.start()
            app.find("Loading formulae...", role="label")
            # What hasn't begun by then never does.
            self.prefix.wait_until_begun(LOADS)
            app.close_window()
            status, seconds = app.wait_ended()
        self.assertEqual(status, 0)
        self.assertLess(seconds, 1)
        for load in LOADS:
            self.assertEqual(self.prefix.wait_for_command(load, start), 0)

    def test_every_way_out(self) -> None:
        for way in ("menu", "ctrl+q", "ctrl+w"):
            with self.subTest(way):
                app = self.start()
                app.find(f"Formulae, {len(self.prefix.state()['formulae'])}", role="list item")
                if way == "menu":
                    app.open_application_menu()
                    app.press("Up", "Return")
                else:
                    app.press(way)
                status, seconds = app.wait_ended()
                self.assertEqual(status, 0)
                self.assertLess(seconds, 1)


if __name__ == "__main__":
    unittest.main()
