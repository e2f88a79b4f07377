# SPDX-License-Identifier: MIT
"""The application on a desk: looked at through its accessible tree, told by mouse and keys."""

from __future__ import annotations

import os
import re
import time
from collections.abc import Callable
from pathlib import Path

from .desk import Desk
from .home import Home
from .processes import OtherProcess, start, stop
from .tree import Node, NotSeen, Tree, Wanted
from .waiting import PATIENCE, NotHappened, wait_until

# From a row's right end to within its button, whether a trash can or one with a word in it.
_ROW_ACTION_INSET = 28
# What is read of a row stands in the middle of a wider list.
_WIDEST_ROW = 880
# More than there are things on any page.
_MOST_TABS = 30
_CONTAINERS = ("dialog", "filler", "frame", "panel")
_BUTTON_LEFT = 1
_BUTTON_RIGHT = 3
_WHEEL_DOWN = 5
_MANY_TURNS = 30
# For so many seconds a sheet takes a press for the second one of the double click that opened it.
_DOUBLE_CLICK = 0.4


class Application:
    """Everything that is looked for is waited for."""

    def __init__(
        self,
        desk: Desk,
        program: Path,
        home: Home,
        arguments: list[str],
        environment: dict[str, str] | None = None,
        wrapper: list[str] | None = None,
        scale: float = 1,
    ) -> None:
        """`wrapper` is a command that ends by becoming the one behind it; `scale` is how many
        pixels of the screen make one of the window's own."""
        self.desk = desk
        self._scale = scale
        self.home = home
        self.screen = desk.screen
        self.log = home.folder / "application.log"
        self._process = start(
            [*(wrapper or []), str(program), *arguments],
            self.log,
            env={
                **desk.environment(home),
                "QT_SCALE_FACTOR": f"{scale:g}",
                **(environment or {}),
            },
            cwd=home.folder,
        )
        self._accessible = self._wait(
            lambda: desk.accessibility.application_of(self.process_id),
            lambda: "the application appears on the accessibility bus",
        )

    @property
    def process_id(self) -> int:
        return self._process.pid

    def stop(self) -> None:
        stop(self._process)

    def busy_seconds(self) -> float:
        """The processor time that the thread with the window has used so far."""
        pid = self.process_id
        stat = Path(f"/proc/{pid}/task/{pid}/stat").read_text()
        user, system = stat.rpartition(")")[2].split()[11:13]
        return (int(user) + int(system)) / os.sysconf("SC_CLK_TCK")

    def wakeups(self) -> int:
        """How often any of its threads has stopped waiting so far."""
        statuses = Path(f"/proc/{self.process_id}/task").glob("*/status")
        return sum(
            int(line.split()[1])
            for status in statuses
            for line in status.read_text().splitlines()
            if line.startswith("voluntary_ctxt_switches:")
        )

    # What it shows

    def tree(self, is_of_interest: Callable[[Node], bool] = lambda _: True) -> Tree:
        """All that is showing, with the names of what is of interest."""
        return self.desk.accessibility.read(self._accessible, is_of_interest)

    def find_all(
        self, name: Wanted | None = None, role: str | None = None, text: Wanted | None = None
    ) -> list[Node]:
        """What fits at this moment."""
        return self.tree(_of_role(role)).find_all(name, role, text)

    def find(
        self,
        name: Wanted | None = None,
        role: str | None = None,
        text: Wanted | None = None,
        patience: float = PATIENCE,
    ) -> Node:
        """The one thing that fits, as soon as it is there."""
        found: list[Node] = []

        def look() -> bool:
            nonlocal found
            found = self.find_all(name, role, text)
            return len(found) == 1

        def what() -> str:
            sought = ", ".join(
                f"{key} {value!r}"
                for key, value in (("name", name), ("role", role), ("text", text))
                if value is not None
            )
            return f"one thing with {sought} ({len(found)} there) in\n{self.tree().describe()}"

        try:
            self._wait(look, what, patience)
        except NotHappened as error:
            raise NotSeen(str(error)) from None
        return found[0]

    def shows(
        self, name: Wanted | None = None, role: str | None = None, text: Wanted | None = None
    ) -> bool:
        """Whether it is there at this moment."""
        return bool(self.find_all(name, role, text))

    def wait_gone(
        self, name: Wanted | None = None, role: str | None = None, text: Wanted | None = None
    ) -> None:
        self._wait(
            lambda: not self.shows(name, role, text),
            lambda: f"{name or text or role!r} goes from\n{self.tree().describe()}",
        )

    def button(self, name: Wanted) -> Node:
        return self.find(name, role="push button")

    def enabled_button(self, name: Wanted) -> Node:
        """The button, once it can be pressed."""
        return self._wait(
            lambda: next(
                (node for node in self.find_all(name, "push button") if node.is_enabled), None
            ),
            lambda: f"button {name!r} can be pressed in\n{self.tree().describe()}",
        )

    def row(self, package: str) -> Node:
        """The row of a package or tap on the page."""

        def row() -> Node | None:
            found = self.find(_begins_with(package), role="list item")
            # A list that is loaded anew has other rows, called the same.
            return found if found.is_there() else None

        return self._wait(row, f"{package} keeps its row")

    def rows(self) -> list[str]:
        """What the rows on the page say, as far as they can be seen; headings among them."""
        return [
            node.name
            for page_list in self.tree(_of_role("list", "list item")).find_all(
                lambda name: name != "Lumora", role="list"
            )
            for node in page_list.children
        ]

    # What it is told

    def current_row(self) -> str | None:
        """The name of the row that the keyboard is at."""
        return next(
            (
                node.name
                for window in self.tree(_has_focus).windows
                for node in window.walk()
                if node.role == "list item" and _has_focus(node)
            ),
            None,
        )

    def click(self, node: Node, button: int = _BUTTON_LEFT) -> None:
        self.click_at(*node.rect.centre, button)

    def click_at(self, x: int, y: int, button: int = _BUTTON_LEFT) -> None:
        self.screen.focus_topmost()
        self.screen.click(round(x * self._scale), round(y * self._scale), button)

    def scroll_down(self, node: Node) -> None:
        """With the mouse's wheel, to the end of whatever scrolls below the pointer."""
        x, y = node.rect.x + 1, node.rect.y + 1
        for _ in range(_MANY_TURNS):
            self.click_at(x, y, _WHEEL_DOWN)

    def click_button(self, name: Wanted) -> None:
        self.click(self.enabled_button(name))

    def click_in_sheet(self, name: Wanted) -> None:
        """A button of the sheet that is open, however recently it came."""
        self.wait_out_a_double_click()
        self.click_button(name)

    def answer(self, button: str) -> None:
        """By a button of the alert that is open, however recently it came."""
        (found,) = self.find(role="alert message").find_all(button, role="push button")
        self.wait_out_a_double_click()
        self.click(found)
        self.wait_gone(role="alert message")

    def wait_out_a_double_click(self) -> None:
        end = time.monotonic() + _DOUBLE_CLICK
        wait_until(lambda: time.monotonic() > end, "a double click is over")

    def click_row_action(self, package: str) -> None:
        """The trash can or the button at the end of a row."""
        self.click_action_of(self.row(package))

    def click_action_of(self, row: Node) -> None:
        beside = max(0, (row.rect.width - _WIDEST_ROW) // 2)
        self.click_at(row.rect.right - beside - _ROW_ACTION_INSET, row.rect.centre[1])

    def open_context_menu(self, node: Node) -> None:
        self.click(node, _BUTTON_RIGHT)
        self.wait_for_menu()

    def open_application_menu(self) -> None:
        self.click_button("Lumora")
        self.wait_for_menu()

    def open_menu_by(self, key: str) -> None:
        self.press(key)
        self.wait_for_menu()

    def wait_for_menu(self) -> None:
        self._wait(self.screen.has_popup, "a menu opens")

    def choose_category(self, name: str) -> None:
        """By a click in the sidebar."""
        self.click(self.find(lambda found: found.split(", ")[0] == name, role="list item"))

    def press(self, *keys: str) -> None:
        self.screen.focus_topmost()
        for key in keys:
            self.screen.press(key)

    def type(self, text: str) -> None:
        self.screen.focus_topmost()
        self.screen.type(text)

    def focused(self) -> Node | None:
        """What has the keyboard; a list rather than the row that is current in it."""
        focused = [
            node
            for window in self.tree(_has_focus).windows
            for node in window.walk()
            if _has_focus(node) and node.role != "list item"
        ]
        # Containers say of themselves what is true of what is in them.
        innermost = [node for node in focused if node.role not in _CONTAINERS] or focused
        return innermost[0] if innermost else None

    def wait_for_focus(self, name: str) -> None:
        self._wait(
            lambda: (focused := self.focused()) is not None and focused.name == name,
            lambda: f"{name!r} has the keyboard rather than {self.focused()}",
        )

    def press_to_leave(self, key: str) -> None:
        """Presses a key that moves the keyboard to something else, and waits until it has."""
        self._leave(self.focused(), key)

    def tab_to(self, name: Wanted, role: str | None = None) -> None:
        """Presses the Tab key until something has the keyboard."""
        passed: list[str] = []
        self.screen.focus_topmost()
        node = self.focused()
        while not (node and node.matches(role, name, None)):
            passed.append(f"{node.role} {node.name!r}" if node else "nothing")
            if len(passed) == _MOST_TABS:
                raise NotSeen(f"the Tab key does not reach {name!r}; it went through {passed}")
            node = self._leave(node, "Tab")

    def tab_round(self) -> list[str]:
        """What the Tab key goes through until it is where it began."""
        names: list[str] = []
        begun = node = self.focused()
        while not names or not _is_same(node, begun):
            if len(names) == _MOST_TABS:
                raise NotSeen(f"the Tab key does not come back; it went through {names}")
            node = self._leave(node, "Tab")
            names.append(node.name)
        return names

    def _leave(self, before: Node | None, key: str) -> Node:
        self.press(key)

        def elsewhere() -> Node | None:
            node = self.focused()
            return None if _is_same(node, before) else node

        return self._wait(elsewhere, lambda: f"{key} moves the keyboard away from {before and before.name!r}")

    # What a screen reader does to it, without mouse and keys

    def actions(self, node: Node) -> list[str]:
        """What can be done with it, the most natural first."""
        (names,) = self.desk.accessibility.actions_of([node])
        return names

    def act(self, node: Node, action: str | None = None) -> None:
        """Does that, or else the most natural."""
        names = self.actions(node)
        place = names.index(action) if action else 0
        if place >= len(names) or not self.desk.accessibility.act(node, place):
            raise NotSeen(f"{node.describe()} does nothing of the kind, but {names}")

    def write(self, node: Node, text: str) -> None:
        """Fills a field in."""
        if not self.desk.accessibility.write(node, text):
            raise NotSeen(f"{node.describe()} cannot be written into")

    def close_window(self) -> None:
        self.screen.close_window(self.screen.windows()[0])

    def resize(self, width: int, height: int) -> None:
        self.screen.resize(
            self.screen.windows()[0], round(width * self._scale), round(height * self._scale)
        )

        def is_resized() -> bool:
            rect = self.tree(_of_role("frame")).windows[0].rect
            return (rect.width, rect.height) == (width, height)

        self._wait(is_resized, lambda: f"the window becomes {width} × {height}")

    def has_ended(self) -> bool:
        return self._process.poll() is not None

    def wait_ended(self, patience: float = PATIENCE) -> tuple[int, float]:
        """Its exit status, and how many seconds it took from now on."""
        started = time.monotonic()
        status = wait_until(
            lambda: None if self._process.poll() is None else (self._process.returncode,),
            "the application ends",
            patience,
        )
        return status[0], time.monotonic() - started

    def _wait(self, condition, what, patience: float = PATIENCE):
        """Waits, but not for a process that has ended."""

        def still_running():
            if self.has_ended():
                raise NotHappened(
                    f"the application ended with status {self._process.returncode}:\n"
                    + self.log.read_text(errors="replace")
                )
            return condition()

        return wait_until(still_running, what, patience, self.desk.accessibility.listen)


class Companion(Application):
    """A program that was started by the application, or by what that has started."""

    def __init__(self, desk: Desk, home: Home, process: int) -> None:
        self.desk = desk
        self._scale = 1
        self.home = home
        self.screen = desk.screen
        self.log = home.folder / "application.log"
        self._process = OtherProcess(process)
        self._accessible = self._wait(
            lambda: desk.accessibility.application_of(process),
            lambda: "the program appears on the accessibility bus",
        )


def _begins_with(package: str) -> re.Pattern[str]:
    return re.compile(rf"^{re.escape(package)}(, |$)")


def _has_focus(node: Node) -> bool:
    return node.is_in("focused")


def _of_role(*roles: str | None) -> Callable[[Node], bool]:
    """What has one of them; everything, where none is told."""
    return lambda node: None in roles or node.role in roles


def _is_same(one: Node | None, other: Node | None) -> bool:
    return (one and one.ref) == (other and other.ref)
