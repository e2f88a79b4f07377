# SPDX-License-Identifier: MIT
"""Everything that a screen reader finds in every page, in every language.

What it is to find stands in `trees`, for people to read. LUMORA_WRITE_TREES=1 writes it anew.
"""

from __future__ import annotations

import difflib
import json
import os
import re
import unittest
from collections.abc import Callable, Iterator
from pathlib import Path

from driver.testcase import DesktopTest
from driver.tree import Node, Tree
from driver.waiting import NotHappened, wait_until

_HERE = Path(__file__).resolve().parent
_TREES = _HERE / "trees"
_TEXTS = json.loads((_HERE.parent / "data/l10n.json").read_text(encoding="utf-8"))
# What only arranges or adorns other things: nobody hears its name, so it is to have none.
_ROOM = {"filler", "splitter"}
# What may have a name, and is no more than that without.
_GROUPS = {"graphic", "panel"}
# What moves and parts what is to be seen.
_MOVERS = {"grip", "scroll bar", "separator"}
_CONTROLS = {"link", "list item", "menu item", "push button", "radio button"}
# Focus is a matter of the way that led here.
_TOLD_STATES = ("busy", "checked", "modal", "selected")
_MARKUP = re.compile(r"<[A-Za-z!/]|&\w+;")


class Trees(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def test_in_korean(self) -> None:
        self.visit("ko")

    def test_in_english(self) -> None:
        self.visit("en")

    def test_in_japanese(self) -> None:
        self.visit("ja")

    def visit(self, language: str) -> None:
        self.language = language
        self.app = self.start(home=self.desk.new_home(language))
        for count in (9, 2, 2, 1):
            wait_until(
                lambda count=count: self.app.shows(re.compile(f", {count}$"), role="list item"),
                f"{count} are counted in the sidebar",
            )
        for number, page in enumerate(
            ("formulae", "casks", "updates", "search", "taps", "settings", "about"), start=1
        ):
            self.app.press(f"ctrl+{number}")
            self.wait_for_page(page)
            self.compare(page)
        self.visit_sheets()
        self.visit_what_comes_and_goes()

    def test_without_homebrew(self) -> None:
        for self.language in ("ko", "en", "ja"):
            home = self.desk.new_home(self.language)
            self.app = self.start("--brew", "/nonexistent", "--appearance", "light", home=home)
            self.app.find(self.text("brewNotFound"), role="label")
            self.compare("not-found")
            self.app.stop()

    def visit_sheets(self) -> None:
        self.app.press("ctrl+1")
        self.app.open_context_menu(self.app.row("bat"))
        self.app.find(role="popup menu")
        self.compare("row-menu")
        self.app.press("Escape")
        self.app.wait_gone(role="popup menu")
        self.app.act(self.app.row("jq"))
        self.app.find("brew info", role="text", text=re.compile("^==> jq"))
        self.compare("detail")
        self.app.press("Escape")
        self.app.wait_gone(role="dialog")
        self.app.act(self.app.row("jq"), self.text("uninstall"))
        self.app.find(role="alert message")
        self.compare("uninstall-alert")
        self.app.press("Escape")
        self.app.wait_gone(role="alert message")
        self.app.press("ctrl+5")
        self.app.act(self.app.button(self.text("addTapHelp")))
        self.app.find(role="dialog")
        self.compare("add-tap")
        self.app.press("Escape")
        self.app.wait_gone(role="dialog")
        self.app.act(self.app.button("Lumora"))
        self.app.find(role="popup menu")
        self.compare("menu")
        self.app.press("Escape")
        self.app.wait_gone(role="popup menu")

    def visit_what_comes_and_goes(self) -> None:
        self.app.press("ctrl+4")
        self.app.write(self.app.find(self.text("searchHomebrew"), role="text"), "bo")
        self.app.row("bottom")
        self.compare("search-results")
        self.app.write(self.app.find(self.text("searchHomebrew"), role="text"), "qqq")
        self.app.find(self.text("noResultsFound"), role="label")
        self.compare("no-results")
        self.app.press("ctrl+6")
        self.app.act(self.app.button(self.text("preview")))
        self.app.act(self.app.button(self.text("runDoctor")))
        wait_until(lambda: len(self.app.find_all(role="text")) == 2, "both have answered")
        self.compare("settings-with-outputs")
        self.app.press("ctrl+3")
        start = self.prefix.runs()
        with self.prefix.holding_changes():
            (update,) = self.app.row("bat").children
            self.app.act(update)
            self.app.find(role="notification", name=re.compile("bat"))
            self.compare("running")
        self.wait_for_page("updates", 1)
        # The load that follows isn't to fail, too.
        self.prefix.wait_for_command("info --json=v2 --installed --formula", start)
        self.prefix.misbehave(every={"error": "No such luck", "status": 1})
        (update,) = self.app.row("keepassxc").children
        self.app.act(update)
        self.app.find(re.compile("^Failed to upgrade keepassxc"), role="notification")
        self.app.press("F5")
        self.app.find("brew outdated failed", role="notification")
        self.compare("failures")
        self.app.act(self.app.button(self.text("output")))
        self.app.find(role="dialog")
        self.compare("output")

    def text(self, key: str) -> str:
        (entry,) = (entry for entry in _TEXTS if entry["key"] == key)
        return entry[self.language]

    def wait_for_page(self, page: str, count: int | None = None) -> None:
        counted = r"( \(\d+\))?" if count is None else rf" \({count}\)"
        title = re.compile(f"^{re.escape(self.text(page))}{counted}$")
        wait_until(
            lambda: self.app.shows(title, role="label"),
            lambda: f"{title} is the title in\n{self.app.tree().describe()}",
        )

    # What holds for every tree

    def compare(self, name: str) -> None:
        """Checks what is shown, as soon as it is what it is to be."""
        reference = _TREES / f"{name}.{self.language}.txt"
        if os.environ.get("LUMORA_WRITE_TREES"):
            reference.parent.mkdir(exist_ok=True)
            reference.write_text(self.settled(), encoding="utf-8")
        wanted = reference.read_text(encoding="utf-8") if reference.exists() else ""
        with self.subTest(tree=reference.name):

            def look() -> Seen | None:
                seen = self.look()
                return seen if seen.dump() == wanted else None

            try:
                self.check(wait_until(look, "the tree is as it is to be"))
            except NotHappened:
                difference = difflib.unified_diff(
                    wanted.splitlines(),
                    self.look().dump().splitlines(),
                    str(reference),
                    "shown",
                    lineterm="",
                )
                self.fail("\n".join(difference))

    def settled(self) -> str:
        """What is still the same when it is looked at again."""
        before: list[str] = [""]

        def is_same() -> bool:
            before.append(self.look().dump())
            return before[-1] == before[-2]

        wait_until(is_same, "the tree settles")
        return before[-1]

    def look(self) -> Seen:
        tree = self.app.tree()
        nodes = [node for window in tree.windows for node in window.walk()]
        self.desk.accessibility.read_descriptions(nodes)
        return Seen(tree, list(zip(nodes, self.desk.accessibility.actions_of(nodes))))

    def check(self, seen: Seen) -> None:
        faults = [
            f"{fault}: {node.describe()}"
            for node, actions in seen.things
            for is_faulty, fault in _FAULTS
            if is_faulty(node, actions)
        ]
        if faults:
            self.fail("\n".join([*faults, seen.tree.describe()]))


class Seen:
    """A whole tree, and what can be done with each thing in it."""

    def __init__(self, tree: Tree, things: list[tuple[Node, list[str]]]) -> None:
        self.tree = tree
        self.things = things

    def dump(self) -> str:
        actions = {id(node): names for node, names in self.things}

        def lines(nodes: list[Node], depth: int) -> Iterator[str]:
            for node in nodes:
                if node.role in _MOVERS:
                    continue
                below = depth
                if not is_room(node):
                    yield "  " * depth + describe(node, actions[id(node)]) + "\n"
                    below += 1
                yield from lines(node.children, below)

        return "".join(lines(self.tree.windows, 0))


def is_room(node: Node) -> bool:
    return node.role in _ROOM | _GROUPS and not node.name


def describe(node: Node, actions: list[str]) -> str:
    line = f"{node.role} “{node.name}”"
    if node.text:
        # The rest is in the words of the sample, and about places that are others every time.
        line += f" text “{node.text.split('/')[0].strip().splitlines()[0]}”"
    if node.description and node.description != node.name:
        line += f", described as “{node.description}”"
    line += "".join(f", {state}" for state in _TOLD_STATES if node.is_in(state))
    if not node.is_enabled:
        line += ", disabled"
    # What takes the focus can be given it.
    named = [action for action in actions if action != "SetFocus"]
    return line + (f" — {', '.join(named)}" if named else "")


_FAULTS: list[tuple[Callable[[Node, list[str]], bool], str]] = [
    (lambda node, _: not node.name and node.role not in _ROOM | _GROUPS | _MOVERS, "no name"),
    (lambda node, _: bool(node.name) and node.role in _ROOM, "a name that nobody hears"),
    (lambda node, actions: bool(actions) and node.role in _ROOM, "a control that nobody finds"),
    (lambda node, _: node.is_in("focusable") and node.role in _ROOM, "room with the keyboard"),
    (lambda node, _: bool(_MARKUP.search(node.name + node.description)), "markup"),
    (
        lambda node, actions: node.role in _CONTROLS and node.is_enabled and not actions,
        "nothing to be done with it",
    ),
]


if __name__ == "__main__":
    unittest.main()
