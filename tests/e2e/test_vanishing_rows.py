# SPDX-License-Identifier: MIT
"""Whoever reads along may ask for what has just gone: rows, their controls, whole pages."""

from __future__ import annotations

import unittest
from collections.abc import Callable

from driver.testcase import DesktopTest
from driver.tree import Node

_ROUNDS = 3
_MOST_ROUNDS = 50


class VanishingRows(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def setUp(self) -> None:
        super().setUp()
        self.app = self.start()
        self.app.find("Formulae (9)", role="label")
        self.app.find("Updates, 2", role="list item")

    def nodes(self) -> list[Node]:
        tree = self.app.tree(is_of_interest=lambda _: False)
        return [node for window in tree.windows for node in window.walk()]

    def walk_while(self, *changes: Callable[[], object]) -> None:
        """Asks for what was there before each change while it is under way and afterwards."""
        known = before = self.nodes()
        gone: set[object] = set()
        for number in range(_MOST_ROUNDS):
            # A walk may well be over before what is loaded is there.
            if number >= _ROUNDS and gone:
                break
            for change in changes:
                change()
                self.desk.accessibility.pester(before)
                # Those of before that may be others' by now, too.
                self.desk.accessibility.pester(known[::3])
                after = self.nodes()
                gone |= {node.ref for node in known} - {node.ref for node in after}
                known, before = before, after
        self.assertTrue(gone, "there was nothing that has gone")

    def write(self, field: str, text: str) -> Callable[[], None]:
        return lambda: self.app.write(self.app.find(field, role="text"), text)

    def test_of_a_list_that_is_filtered(self) -> None:
        for key, field in (("ctrl+1", "Filter formulae"), ("ctrl+2", "Filter casks")):
            self.app.press(key)
            self.walk_while(*(self.write(field, text) for text in ("e", "zzz", "i", "")))

    def test_of_a_list_that_is_loaded_anew(self) -> None:
        for key in ("ctrl+1", "ctrl+2", "ctrl+3", "ctrl+5"):
            self.app.press(key)
            self.walk_while(self.fail_to_load, self.load)

    def fail_to_load(self) -> None:
        self.prefix.misbehave(every={"noise": "no report", "status": 0})
        self.app.press("F5")

    def load(self) -> None:
        self.prefix.misbehave()
        self.app.press("F5")

    def test_of_what_is_searched_for(self) -> None:
        self.app.press("ctrl+4")
        field = "Search Homebrew packages"
        self.walk_while(*(self.write(field, text) for text in ("bo", "qqq", "j", "")))

    def test_of_rows_that_are_done_with(self) -> None:
        for package in ("bat", "jq", "skhd", "tree"):
            before = self.nodes()
            (trash,) = self.app.row(package).children
            self.app.act(trash)
            (agree,) = self.app.find(role="alert message").find_all("Uninstall", role="push button")
            self.app.act(agree)
            count = len(self.app.rows())
            self.walk_until(before, lambda count=count: len(self.app.rows()) < count)

    def walk_until(self, nodes: list[Node], condition: Callable[[], bool]) -> None:
        while not condition():
            self.desk.accessibility.pester(nodes)
        self.desk.accessibility.pester(nodes)

    def test_of_pages_and_sheets(self) -> None:
        self.walk_while(
            *(lambda key=key: self.app.press(key) for key in ("ctrl+3", "ctrl+5", "ctrl+7", "ctrl+1")),
            lambda: self.app.act(self.app.row("jq")),
            lambda: self.app.press("Escape"),
        )

    def test_of_a_window_in_another_language(self) -> None:
        self.app.press("ctrl+6")
        self.walk_while(
            *(
                lambda name=name: self.app.act(self.app.find(name, role="radio button"))
                for name in ("日本語", "한국어", "English")
            )
        )


if __name__ == "__main__":
    unittest.main()
