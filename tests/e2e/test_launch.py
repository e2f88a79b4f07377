# SPDX-License-Identifier: MIT
"""The commands of the first loads wait for the window's first frame, but not where none comes."""

from __future__ import annotations

import unittest

from driver.testcase import DesktopTest


class Launch(DesktopTest):
    def test_all_is_loaded_into_a_window_that_nobody_sees(self) -> None:
        with self.desk.screen.withholding_windows():
            app = self.start()
            app.find("Taps, 4", role="list item")
            app.row("bat")
            self.assertEqual(self.desk.screen.windows(), [])
        app.choose_category("Taps")
        app.row("mongodb/brew")


if __name__ == "__main__":
    unittest.main()
