# SPDX-License-Identifier: MIT
"""Nobody wakes the application where nothing is to be seen of it."""

from __future__ import annotations

import re
import time
import unittest

from driver.testcase import DesktopTest
from driver.waiting import wait_until

# In which a spinner turns many times.
_A_WHILE = 1.5


class Idle(DesktopTest):
    def setUp(self) -> None:
        super().setUp()
        self.app = self.start()
        self.app.find("Taps, 4", role="list item")
        self.app.choose_category("Updates")
        self.app.find(re.compile(r"^bat, "), role="list item")
        self.app.screen.park_mouse()

    def wakeups_in_a_while(self) -> int:
        before = self.app.wakeups()
        time.sleep(_A_WHILE)
        return self.app.wakeups() - before

    def wait_until_still(self) -> None:
        wait_until(lambda: self.wakeups_in_a_while() == 0, "nobody wakes it any more")

    def test_nobody_wakes_it_when_all_is_loaded(self) -> None:
        self.wait_until_still()

    def test_nobody_wakes_it_in_a_minimised_window_whatever_runs(self) -> None:
        (window,) = self.app.screen.windows()
        with self.prefix.holding_changes():
            self.app.click_row_action("bat")
            self.app.find("Running...", role="label")
            self.app.screen.park_mouse()
            # The one of the overlay, and the one of the row.
            self.assertGreater(self.wakeups_in_a_while(), 5)
            self.app.screen.minimise(window)
            self.wait_until_still()
            self.app.screen.restore(window)
            wait_until(lambda: self.wakeups_in_a_while() > 5, "the spinners turn again")
        self.app.wait_gone("Running...", role="label")
        self.wait_until_still()


if __name__ == "__main__":
    unittest.main()
