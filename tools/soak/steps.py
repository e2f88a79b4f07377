# SPDX-License-Identifier: MIT
"""What somebody does with the window in a year, one thing after the other.

A step waits for what it is to bring about. Things are found by what they are and where they
are, since the language changes.
"""

from __future__ import annotations

import random
import re
from collections.abc import Callable

from appearance import AppearancePortal
from driver import Application, HeldPrefix, Node, wait_until
from resources import children

FORMULAE, CASKS, UPDATES, SEARCH, TAPS, SETTINGS, ABOUT = range(7)
# Their places in the sidebar, between its headings.
_PLACES = (1, 2, 4, 5, 7, 8, 9)
_LISTS = (FORMULAE, CASKS)
_SIZES = ((700, 450), (760, 520), (1000, 700), (1080, 480))
_WORDS = {FORMULAE: ("ssl", "lib", "py", "jq", "qqq"), CASKS: ("a", "code", "fire", "zz")}
_NEW = "bottom"
_FOUND = ("ripgrep", "fd", "bottom", "wget")
_PINNED = "postgresql@16"
_NEW_TAP = "stripe/stripe-cli"
# Blue, green, red, as the X server has them: the sidebar's upper left corner.
_SIDEBAR = {"light": b"\xf6\xf4\xf3", "dark": b"\x2c\x28\x26"}
_ALERT = "alert message"
# Rows that are in sight at any size of the window.
_ROWS = 5
# A menu, an alert, a sheet with another one on it.
_MOST_OPEN = 3


class Steps:
    """Each ends where the next one can begin: with no sheet, no alert and no strip."""

    def __init__(
        self, app: Application, prefix: HeldPrefix, portal: AppearancePortal, chance: random.Random
    ) -> None:
        self._app = app
        self._prefix = prefix
        self._portal = portal
        self._chance = chance
        self._page: int | None = None
        self._appearance = "light"
        # How often each is to be done among 10,000. Those at the end start a brew.
        self.kinds: dict[str, tuple[int, Callable[[], None]]] = {
            "page": (3600, self.page),
            "appearance": (1500, self.appearance),
            "language": (1140, self.language),
            "filter": (900, self.filter),
            "scroll": (500, self.scroll),
            "resize": (400, self.resize),
            "uninstall asked and cancelled": (350, self.alert),
            "menu": (300, self.menu),
            "sheet for a tap": (250, self.tap_sheet),
            "detail": (400, self.detail),
            "refresh": (150, self.refresh),
            "search": (150, self.search),
            "install, uninstall": (120, self.change),
            "tap, untap": (120, self.tap),
            "upgrade that fails": (60, self.failure),
            "preview, doctor": (60, self.settings),
        }

    # At rest

    def rest(self) -> None:
        """The page of formulae, and no brew at work."""
        self._go(FORMULAE)
        self._app.screen.park_mouse()
        self._wait_for_brew()

    def recover(self) -> None:
        """From a step that has stopped half-way, with whatever it had opened."""
        for _ in range(_MOST_OPEN):
            self._app.press("Escape")
        self._page = None
        self.rest()

    def _wait_for_brew(self) -> None:
        wait_until(
            lambda: not children(self._app.process_id),
            lambda: f"{children(self._app.process_id)} end",
        )

    def _go(self, page: int) -> None:
        if page == self._page:
            return
        self._app.press(f"ctrl+{page + 1}")
        self._page = page

        def is_chosen() -> bool:
            sidebars = self._app.tree().find_all("Lumora", role="list")
            rows = [row for sidebar in sidebars for row in sidebar.children]
            return len(rows) > _PLACES[-1] and rows[_PLACES[page]].is_in("selected")

        wait_until(is_chosen, lambda: f"page {page} in\n{self._app.tree().describe()}")

    def _rows(self) -> list[Node]:
        """None while the page is changing."""
        lists = self._app.tree().find_all(lambda name: name != "Lumora", role="list")
        return lists[0].children if len(lists) == 1 else []

    def _wait_for_rows(self) -> list[Node]:
        return wait_until(self._rows, lambda: f"rows in\n{self._app.tree().describe()}")

    # Steps without a brew

    def page(self) -> None:
        self._go(self._chance.choice([page for page in range(7) if page != self._page]))

    def appearance(self) -> None:
        self._appearance = "dark" if self._appearance == "light" else "light"
        self._portal.prefer(self._appearance)
        wait_until(
            lambda: self._app.screen.picture(1, 1).pixels[:3] == _SIDEBAR[self._appearance],
            f"the window becomes {self._appearance}",
        )

    def language(self) -> None:
        self._go(SETTINGS)

        def languages() -> list[Node]:
            return self._app.tree().find_all(role="radio button")

        shown = wait_until(languages, "the languages are there")
        name = self._chance.choice([node.name for node in shown if not node.is_in("checked")])
        self._app.click(self._app.find(name, role="radio button"))
        wait_until(
            lambda: any(node.name == name and node.is_in("checked") for node in languages()),
            f"{name} is chosen",
        )

    def filter(self) -> None:
        page = self._chance.choice(_LISTS)
        self._go(page)
        word = self._chance.choice(_WORDS[page])
        self._app.press("ctrl+f")
        self._app.type(word)
        self._app.find(role="text", text=word)
        self._app.press("Escape")
        self._app.wait_gone(role="text", text=word)

    def scroll(self) -> None:
        self._go(FORMULAE)
        first = self._wait_for_rows()[0]
        before = first.name
        x, y = first.rect.centre
        for button, is_there in ((5, lambda name: name != before), (4, lambda name: name == before)):

            def has_scrolled(is_there: Callable[[str], bool] = is_there) -> bool:
                return any(is_there(row.name) for row in self._rows()[:1])

            for _ in range(12):
                self._app.click_at(x, y, button)
            wait_until(has_scrolled, "the list scrolls")

    def resize(self) -> None:
        self._app.resize(*self._chance.choice(_SIZES))
        self._app.resize(900, 600)

    def alert(self) -> None:
        self._go(self._chance.choice(_LISTS))
        self._app.click_action_of(self._chance.choice(self._wait_for_rows()[:_ROWS]))
        self._app.find(role=_ALERT)
        self._app.press("Escape")
        self._app.wait_gone(role=_ALERT)

    def menu(self) -> None:
        self._app.press("F10")
        self._app.wait_for_menu()
        self._app.press("Escape")
        wait_until(lambda: not self._app.screen.has_popup(), "the menu closes")

    def tap_sheet(self) -> None:
        self._go(TAPS)
        self._open_tap_sheet()
        self._app.press("Escape")
        self._app.wait_gone(re.compile("user/repo"), role="text")

    def _open_tap_sheet(self) -> None:
        def add_button() -> Node | None:
            buttons = self._buttons()
            return buttons[1] if len(buttons) > 1 and buttons[1].is_enabled else None

        self._app.click(wait_until(add_button, "a tap can be added"))
        self._app.find(re.compile("user/repo"), role="text")

    def _buttons(self) -> list[Node]:
        """The push buttons of the page, from the top left to the bottom right."""
        nodes = self._app.tree().find_all(lambda name: name != "Lumora", role="push button")
        return sorted(nodes, key=lambda node: (node.rect.y, node.rect.x))

    # Steps with one

    def detail(self) -> None:
        self._go(self._chance.choice(_LISTS))
        self._app.click(self._chance.choice(self._wait_for_rows()[:_ROWS]))
        wants_report = self._chance.random() < 0.5
        self._app.find("brew info", role="text", text=re.compile("==>" if wants_report else ""))
        self._app.press("Escape")
        self._app.wait_gone("brew info", role="text")

    def refresh(self) -> None:
        self._go(self._chance.choice((FORMULAE, CASKS, UPDATES, TAPS)))
        self._wait_for_brew()
        before = self._prefix.runs()
        self._app.press("ctrl+r")
        wait_until(lambda: self._prefix.runs() > before, "brew has reported")

    def search(self) -> None:
        self._search_for(self._chance.choice(_FOUND))

    def _search_for(self, name: str) -> None:
        self._go(SEARCH)
        begun = self._prefix.runs()
        self._app.press("ctrl+f", "ctrl+a")
        self._app.type(name)
        # What the first letters have brought may be there before.
        self._prefix.wait_for_command(f"search {name}", begun)
        self._wait_for_brew()
        self._app.row(name)

    def change(self) -> None:
        if self._prefix.is_installed(_NEW):
            self._wait_for_brew()
            self._go(FORMULAE)
            self._app.press("ctrl+f", "ctrl+a")
            self._app.type(_NEW)
            wait_until(lambda: len(self._app.rows()) == 1, f"{_NEW} is the only one shown")
            self._app.click_row_action(_NEW)
            self._agree()
            self._close_strip(_NEW)
            wait_until(lambda: not self._prefix.is_installed(_NEW), f"{_NEW} goes")
            self._app.press("ctrl+f", "Escape")
        else:
            self._search_for(_NEW)
            self._app.click_row_action(_NEW)
            self._close_strip(_NEW)
            wait_until(lambda: self._prefix.is_installed(_NEW), f"{_NEW} comes")

    def tap(self) -> None:
        self._wait_for_brew()
        self._go(TAPS)
        if _NEW_TAP in self._prefix.state()["taps"]:
            self._app.click_row_action(_NEW_TAP)
            self._agree()
        else:
            self._open_tap_sheet()
            self._app.type(_NEW_TAP)
            self._app.press("Return")
        self._close_strip("apped")

    def failure(self) -> None:
        self._wait_for_brew()
        self._go(UPDATES)
        self._app.click_row_action(_PINNED)
        output, _ = self._strip(_PINNED)
        self._app.click(output)
        self._app.find(role="text", text=re.compile("pinned"))
        self._app.press("Escape")
        self._app.wait_gone(role="text", text=re.compile("pinned"))
        self._close_strip(_PINNED)

    def settings(self) -> None:
        """Its reports come whether somebody is there to read them or not."""
        self._go(SETTINGS)
        begun = self._prefix.runs()
        buttons = wait_until(lambda: len(self._buttons()) == 3 and self._buttons(), "three buttons")
        _, _, doctor = buttons
        preview = buttons[0]
        command, button = self._chance.choice((("cleanup -n", preview), ("doctor", doctor)))
        self._app.click(button)
        if self._chance.random() < 0.5:
            self._prefix.wait_for_command(command, begun)

    def _agree(self) -> None:
        """To what an alert warns of: the button that isn't the one to start with."""

        def other_button() -> Node | None:
            alerts = self._app.tree().find_all(role=_ALERT)
            buttons = [node for alert in alerts for node in alert.find_all(role="push button")]
            others = [button for button in buttons if not button.is_in("focused")]
            return others[0] if len(buttons) == 2 and len(others) == 1 else None

        button = wait_until(other_button, "an alert asks")
        self._app.wait_out_a_double_click()
        self._app.click(button)
        self._app.wait_gone(role=_ALERT)

    def _strip(self, told: str) -> tuple[Node, Node]:
        """The buttons of the strip that tells of an operation, whose words are brew's."""

        def buttons() -> list[Node] | None:
            strips = self._app.tree().find_all(re.compile(told), role="notification")
            found = [node for strip in strips for node in strip.find_all(role="push button")]
            return found if len(found) == 2 else None

        output, close = wait_until(buttons, f"a strip tells of {told}")
        return output, close

    def _close_strip(self, told: str) -> None:
        self._app.click(self._strip(told)[1])
        self._app.wait_gone(re.compile(told), role="notification")
