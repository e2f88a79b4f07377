# SPDX-License-Identifier: MIT
"""What becomes of a brew at work when the application ends, in whatever way."""

from __future__ import annotations

import os
import signal
import sys
import unittest
from collections.abc import Callable

from driver.application import Application
from driver.processes import at_work, seconds_for_nothing
from driver.session_manager import SessionManager
from driver.testcase import DesktopTest
from driver.waiting import wait_until

LONGEST_END = 1.0
# Where the processors have other work it is that of so many processes that do nothing.
LONGEST_ENDS = 50


class LeavingTest(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def start_an_upgrade(self, **environment: str) -> Application:
        app = self.start(environment=environment)
        app.find(f"Formulae, {len(self.prefix.state()['formulae'])}", role="list item")
        app.choose_category("Updates")
        app.click_row_action("bat")
        app.find("Output", role="text", text="Upgrading bat...")
        self.prefix.wait_until_at_work_on("bat")
        return app

    def assert_upgrade_outlives(
        self, leave: Callable[[Application], None], status: int, **environment: str
    ) -> None:
        start = self.prefix.runs()
        with self.prefix.holding_changes():
            app = self.start_an_upgrade(**environment)
            before = at_work()
            leave(app)
            ended, seconds = app.wait_ended()
            self.assertEqual(ended, status)
            self.assert_was_quick(seconds)
            self.assertFalse(self.prefix.has_ended("upgrade bat", start))
            self.assertIn("bat", self.prefix.outdated())
        self.assertEqual(self.prefix.wait_for_command("upgrade bat", start), 0)
        self.assertNotIn("bat", self.prefix.outdated())
        wait_until(lambda: at_work() <= before, "all that the application has started ends")

    def assert_was_quick(self, seconds: float) -> None:
        reference = seconds_for_nothing()
        print(
            f"{self._testMethodName}: {seconds:.3f} s, where nothing takes {reference:.3f} s",
            file=sys.stderr,
        )
        self.assertLess(seconds, max(LONGEST_END, LONGEST_ENDS * reference))


class Leaving(LeavingTest):
    def assert_upgrade_outlives_signal(self, number: signal.Signals) -> None:
        self.assert_upgrade_outlives(lambda app: os.kill(app.process_id, number), -number)

    def test_the_window_is_closed(self) -> None:
        self.assert_upgrade_outlives(Application.close_window, 0)

    def test_the_application_is_quit(self) -> None:
        self.assert_upgrade_outlives(lambda app: app.press("ctrl+q"), 0)

    def test_a_menu_is_opened_behind_its_end(self) -> None:
        def close_and_click(app: Application) -> None:
            button = app.button("Lumora").rect.centre
            app.press("ctrl+w")
            app.screen.click(*button)

        self.assert_upgrade_outlives(close_and_click, 0)

    def test_the_system_goes_down(self) -> None:
        self.assert_upgrade_outlives_signal(signal.SIGTERM)

    def test_the_session_is_logged_out_of(self) -> None:
        manager = SessionManager(self.home.folder)
        self.addCleanup(manager.close)
        self.assert_upgrade_outlives(
            lambda app: manager.log_out(), 0, SESSION_MANAGER=manager.address
        )

    def test_its_terminal_hangs_up(self) -> None:
        self.assert_upgrade_outlives_signal(signal.SIGHUP)

    def test_it_is_interrupted(self) -> None:
        self.assert_upgrade_outlives_signal(signal.SIGINT)

    def test_it_crashes(self) -> None:
        self.assert_upgrade_outlives_signal(signal.SIGABRT)

    def test_it_is_killed(self) -> None:
        self.assert_upgrade_outlives_signal(signal.SIGKILL)


class LeavingWithTheDisplay(LeavingTest):
    def test_the_display_goes(self) -> None:
        self.assert_upgrade_outlives(lambda app: app.screen.close(), 1)


if __name__ == "__main__":
    unittest.main()
