# SPDX-License-Identifier: MIT
"""Every page in every state, in the order in which it is quickest to come by.

Nothing here depends on the language of the window: things are found by what they are and
where they are.
"""

from __future__ import annotations

import re
from collections.abc import Callable
from dataclasses import dataclass

from album import Album
from driver import Application, HeldPrefix, Node, wait_until

CATEGORIES = ("formulae", "casks", "updates", "search", "taps", "settings", "about")
# Their places in the sidebar, between its headings.
_PLACES = (1, 2, 4, 5, 7, 8, 9)
# Has everything that a sheet can show: an update, many dependencies, a long description.
FORMULA = "ffmpeg"
CASK = "android-platform-tools"
NEW = "bottom"
BROKEN = "bat"
TAP = "hashicorp/tap"
NEW_TAP = "stripe/stripe-cli"
_ALERT = "alert message"


@dataclass
class Stage:
    """What a round through the scenes needs."""

    album: Album
    prefix: HeldPrefix
    start: Callable[..., Application]
    main_only: bool = False

    def take(self, scene: str, moving: bool = False) -> None:
        self.album.take(self.app, scene, moving)

    def open(self, *arguments: str) -> Application:
        self.app = self.start(*arguments)
        return self.app

    def open_page(self, category: str) -> None:
        """By mouse: the marks of the keyboard are for who uses it."""
        place = _PLACES[CATEGORIES.index(category)]

        def row() -> Node:
            (sidebar,) = self.app.tree().find_all("Lumora", role="list")
            return sidebar.children[place]

        self.app.click(row())
        wait_until(lambda: row().is_in("selected"), f"page {category} is chosen")

    def buttons(self) -> list[Node]:
        """The push buttons of the page, from the top left to the bottom right."""
        nodes = self.app.tree().find_all(lambda name: name != "Lumora", role="push button")
        return sorted(nodes, key=lambda node: (node.rect.y, node.rect.x))

    def press_button(self, place: int) -> None:
        """The one at a place among the buttons of the page, as soon as it can be pressed."""

        def enabled() -> Node | None:
            buttons = self.buttons()
            found = buttons[place] if len(buttons) > place else None
            return found if found and found.is_enabled else None

        self.app.click(wait_until(enabled, lambda: f"button {place} of {self.buttons()}"))

    def search_for(self, text: str) -> None:
        self.app.press("ctrl+f", "ctrl+a")
        self.app.type(text)

    def wait_for_count(self, count: int) -> None:
        """The number of its packages that a page's title ends with."""
        self.app.find(re.compile(rf" \({count}\)$"), role="label")

    def strip(self, told: str) -> tuple[Node, Node]:
        """The buttons of the strip that tells of an operation: for its output and to close it."""
        # These words come from brew and have no language.
        strip = self.app.find(re.compile(told), role="notification")
        output, close = strip.find_all(role="push button")
        return output, close

    def close_strip(self, told: str) -> None:
        self.app.click(self.strip(told)[1])
        self.app.wait_gone(re.compile(told), role="notification")

    def dismiss_alert(self) -> None:
        self.app.find(role=_ALERT)
        self.app.press("Escape")
        self.app.wait_gone(role=_ALERT)

    def close_menu(self) -> None:
        self.app.press("Escape")
        wait_until(lambda: not self.app.screen.has_popup(), "the menu closes")

    def close_sheet(self) -> None:
        self.app.press("Escape")
        self.app.wait_gone("brew info", role="text")


def visit_pages(stage: Stage) -> None:
    """The pages on a machine with something on it, and what can be opened from them."""
    state = stage.prefix.state()
    outdated = len(stage.prefix.outdated())
    with stage.prefix.holding_runs():
        stage.open()
        if not stage.main_only:
            stage.app.find(re.compile(r"\(0\)$"), role="label")
            stage.take("formulae-loading", moving=True)
    stage.wait_for_count(len(state["formulae"]))
    stage.app.find(re.compile(rf", {len(state['taps'])}$"), role="list item")
    stage.app.find(re.compile(rf", {outdated}$"), role="list item")
    stage.take("formulae")
    visit_formulae(stage)
    stage.open_page("casks")
    stage.wait_for_count(len(state["casks"]))
    stage.take("casks")
    if not stage.main_only:
        # Its name has hyphens where a line could end.
        stage.app.click_row_action(CASK)
        stage.app.find(role=_ALERT)
        stage.take("uninstall-cask-alert")
        stage.dismiss_alert()
        stage.app.click(stage.app.row(CASK))
        stage.app.find("brew info", role="text")
        stage.take("cask-detail")
        stage.close_sheet()
    visit_updates(stage, outdated)
    visit_search(stage)
    visit_taps(stage, len(state["taps"]))
    visit_settings(stage)
    stage.open_page("about")
    stage.take("about")
    if not stage.main_only:
        visit_failure(stage)


def visit_formulae(stage: Stage) -> None:
    stage.search_for(FORMULA)
    stage.app.row(FORMULA)
    if not stage.main_only:
        stage.search_for("png")
        stage.app.row("libpng")
        stage.take("formulae-filtered")
        stage.search_for(FORMULA)
        stage.app.click_row_action(FORMULA)
        stage.app.find(role=_ALERT)
        stage.take("uninstall-alert")
        stage.dismiss_alert()
        stage.app.open_context_menu(stage.app.row(FORMULA))
        stage.take("row-menu")
        stage.close_menu()
    stage.app.click(stage.app.row(FORMULA))
    stage.app.find("brew info", role="text")
    stage.take("formula-detail")
    if not stage.main_only:
        stage.app.scroll_down(stage.app.find(FORMULA, role="label"))
        stage.take("formula-detail-report")
    stage.close_sheet()
    stage.app.press("ctrl+f", "Escape")
    if not stage.main_only:
        stage.app.click_button("Lumora")
        stage.app.wait_for_menu()
        stage.take("menu")
        stage.app.press("Down")
        stage.take("menu-entry")
        stage.close_menu()


def visit_updates(stage: Stage, outdated: int) -> None:
    stage.open_page("updates")
    stage.wait_for_count(outdated)
    stage.take("updates")
    if stage.main_only:
        return
    with stage.prefix.holding_changes():
        stage.app.click_row_action(FORMULA)
        stage.app.find(role="text", text=re.compile(f" {FORMULA}\\."))
        stage.take("updates-running", moving=True)
        stage.app.press("End")
        stage.take("updates-running-end", moving=True)
        stage.app.press("Home")
    stage.wait_for_count(outdated - 1)
    upgraded = f"^Successfully upgraded {FORMULA}"
    stage.strip(upgraded)
    stage.take("operation-succeeded")
    stage.close_strip(upgraded)
    visit_failed_upgrade(stage, BROKEN)


def visit_failed_upgrade(stage: Stage, package: str) -> None:
    stage.prefix.misbehave(upgrade={"error": f"{package} did not build"})
    stage.app.click_row_action(package)
    failed = f"^Failed to upgrade {package}"
    output, _ = stage.strip(failed)
    stage.take("operation-failed")
    stage.app.click(output)
    stage.app.find(role="text", text=re.compile("did not build"))
    stage.take("operation-output")
    stage.app.press("Escape")
    wait_until(
        lambda: not stage.app.tree().find_all(role="text", text=re.compile("did not build")),
        "the sheet is closed",
    )
    stage.close_strip(failed)
    stage.prefix.misbehave()


def visit_search(stage: Stage) -> None:
    stage.open_page("search")
    stage.app.find(re.compile("Homebrew"), role="text")
    stage.take("search-empty")
    if not stage.main_only:
        with stage.prefix.holding_runs():
            stage.search_for("qqq")
            before = words(stage)
            stage.app.press("Return")
            wait_until(lambda: words(stage) != before, "the search has begun")
            stage.take("search-running", moving=True)
        wait_until(lambda: words(stage) == before, "the search has ended")
        stage.take("search-no-results")
    # Casks are told from formulae only by the headings between them.
    stage.prefix.misbehave(search={"headings": True})
    stage.search_for("bo")
    stage.app.row(NEW)
    stage.take("search-results")
    if not stage.main_only:
        with stage.prefix.holding_changes():
            stage.app.click_row_action(NEW)
            stage.app.find(role="text", text=re.compile(f" {NEW}\\."))
            stage.take("search-installing", moving=True)
        stage.app.find(re.compile(f"^{NEW}, "), role="list item")
        stage.close_strip(f"^Successfully installed {NEW}")
        stage.take("search-installed")


def words(stage: Stage) -> list[str]:
    """What the page says where it has no list: its title, and a line below a symbol."""
    return [label.name for label in stage.app.tree().find_all(role="label")]


def visit_taps(stage: Stage, taps: int) -> None:
    stage.open_page("taps")
    stage.wait_for_count(taps)
    stage.take("taps")
    if stage.main_only:
        return
    stage.press_button(1)
    stage.app.find(re.compile("user/repo"), role="text")
    stage.take("add-tap")
    stage.prefix.misbehave(tap={"error": "Invalid tap name: stripe"})
    stage.app.type("stripe")
    stage.app.press("Return")
    # One is in the window, the other one in the sheet over it.
    wait_until(
        lambda: len(stage.app.tree().find_all(re.compile("Invalid tap"), role="notification")) == 2,
        "the sheet tells of the failure",
    )
    stage.take("add-tap-failed")
    stage.prefix.misbehave()
    stage.app.press("ctrl+a")
    stage.app.type(NEW_TAP)
    with stage.prefix.holding_changes():
        stage.app.press("Return")
        stage.app.find(role="text", text=re.compile(f" {NEW_TAP}\\."))
        stage.take("add-tap-running", moving=True)
    stage.wait_for_count(taps + 1)
    stage.close_strip("^Tapped ")
    stage.app.click_row_action(TAP)
    stage.app.find(role=_ALERT)
    stage.take("remove-tap-alert")
    stage.dismiss_alert()


def visit_settings(stage: Stage) -> None:
    stage.open_page("settings")
    stage.take("settings")
    if stage.main_only:
        return
    preview, clean, doctor = range(3)
    stage.press_button(clean)
    stage.app.find(role=_ALERT)
    stage.take("cleanup-alert")
    stage.dismiss_alert()
    with stage.prefix.holding_runs():
        stage.press_button(preview)
        stage.press_button(doctor)
        wait_until(lambda: not stage.buttons()[doctor].is_enabled, "both commands run")
        stage.take("settings-running", moving=True)
    for command in ("cleanup -n", "doctor"):
        stage.prefix.wait_for_command(command)
    output = stage.app.find(role="text", text=re.compile("^Would remove"))
    stage.take("settings-outputs")
    stage.app.scroll_down(output)
    stage.take("settings-outputs-end")


def visit_failure(stage: Stage) -> None:
    stage.open_page("formulae")
    stage.prefix.misbehave(outdated={"cask_versions": "list"})
    stage.open_page("updates")
    stage.app.press("ctrl+r")
    stage.app.find(re.compile("installed_versions"), role="label")
    stage.open_page("formulae")
    stage.take("failure")
    stage.prefix.misbehave()


def visit_emptiness(stage: Stage) -> None:
    """A machine with nothing on it."""
    stage.open()
    for load in ("info --json=v2 --installed --formula", "outdated --json=v2", "tap"):
        stage.prefix.wait_for_command(load)
    for category in ("formulae", "casks", "updates"):
        stage.open_page(category)
        # The title and the text below the symbol, but no spinner any more.
        stage.wait_for_count(0)
        stage.take(f"{category}-empty")
    if not stage.main_only:
        stage.prefix.misbehave(tap={"truncate": 0})
        stage.open_page("taps")
        stage.app.press("ctrl+r")
        stage.wait_for_count(0)
        stage.take("taps-empty")


def visit_missing_homebrew(stage: Stage) -> None:
    stage.open("--brew", "/nonexistent")
    stage.app.find(re.compile("Homebrew"), role="push button")
    stage.take("not-found")
