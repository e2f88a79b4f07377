#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Presses keys and buttons at random in the built application, which has to bear it."""

from __future__ import annotations

import argparse
import collections
import random
import sys
import time
from collections.abc import Callable
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/e2e"))

from appearance import AppearancePortal  # noqa: E402
from driver import Application, Desk, HeldPrefix, NotHappened, wait_until  # noqa: E402
from driver.namespaces import without_network  # noqa: E402

_KEYS = (
    *("Tab", "shift+Tab", "Return", "Escape", "space", "Up", "Down", "Left", "Right", "Home"),
    *("End", "Prior", "Next", "BackSpace", "Delete", "F10", "shift+F10", "Menu", "alt+Left"),
    *(f"ctrl+{letter}" for letter in "acfrvxz1234567"),
)
_LETTERS = "abeglnoprst/@-0 "
_WHEEL = (4, 5, 6, 7)
_SMALLEST, _LARGEST = (1, 1), (1080, 730)
# Acts between looks.
_LOOK_EVERY = 25
_TOLD_EVERY = 60.0
_BUTTONS = (1, 1, 1, 1, 3, 2)


class Hands:
    def __init__(self, app: Application, portal: AppearancePortal, chance: random.Random) -> None:
        self._app = app
        self._screen = app.screen
        self._portal = portal
        self._chance = chance
        self.kinds: dict[Callable[[], None], float] = {
            self.click: 40,
            self.double_click: 8,
            self.drag: 6,
            self.wheel: 12,
            self.key: 60,
            self.write: 10,
            self.resize: 4,
            self.appearance: 2,
            # Rarely, since it ends what is going on.
            self.leave: 0.3,
        }

    def act(self) -> str:
        kind = self._chance.choices([*self.kinds], [*self.kinds.values()])[0]
        kind()
        return kind.__name__

    def _anywhere(self) -> tuple[int, int]:
        return self._chance.randrange(self._screen.width), self._chance.randrange(
            self._screen.height
        )

    def click(self) -> None:
        self._screen.focus_topmost()
        self._screen.click(*self._anywhere(), self._chance.choice(_BUTTONS))

    def double_click(self) -> None:
        place = self._anywhere()
        self._screen.focus_topmost()
        self._screen.click(*place)
        self._screen.click(*place)

    def drag(self) -> None:
        self._screen.move_mouse(*self._anywhere())
        self._screen.press_button()
        self._screen.move_mouse(*self._anywhere())
        self._screen.release_button()

    def wheel(self) -> None:
        place, direction = self._anywhere(), self._chance.choice(_WHEEL)
        for _ in range(self._chance.randrange(1, 8)):
            self._screen.click(*place, direction)

    def key(self) -> None:
        self._app.press(self._chance.choice(_KEYS))

    def write(self) -> None:
        self._app.type("".join(self._chance.choices(_LETTERS, k=self._chance.randrange(1, 6))))

    def resize(self) -> None:
        if windows := self._screen.windows():
            sides = (self._chance.randint(*side) for side in zip(_SMALLEST, _LARGEST))
            self._screen.resize(windows[0], *sides)

    def appearance(self) -> None:
        name = self._chance.choice(("color-scheme", "contrast", "reduced-motion"))
        self._portal.wish(name, self._chance.randrange(3 if name == "color-scheme" else 2))

    def leave(self) -> None:
        """And go on at once, as everywhere."""
        windows = self._screen.windows()
        if windows and self._chance.random() < 0.5:
            self._screen.close_window(windows[-1])
        else:
            self._app.press("ctrl+w")


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--app", type=Path, required=True, help="the built application")
    parser.add_argument("--minutes", type=float, default=30, help="(default 30)")
    parser.add_argument("--seed", type=int, help="of an earlier run")
    options = parser.parse_args()
    options.app = options.app.resolve()
    if options.seed is None:
        options.seed = random.SystemRandom().randrange(1_000_000)
    return options


def stumble(options: argparse.Namespace) -> None:
    chance = random.Random(options.seed)
    done: collections.Counter[str] = collections.Counter()
    begun = told = time.monotonic()
    starts = 0
    with Desk() as desk:
        portal = AppearancePortal(desk.environment(desk.new_home())["DBUS_SESSION_BUS_ADDRESS"])
        surroundings = {"QT_FATAL_WARNINGS": "1", "PATH": with_launcher(desk.folder / "bin")}
        while (now := time.monotonic()) - begun < options.minutes * 60:
            prefix = HeldPrefix(desk.folder / f"homebrew-{starts}", "--pace", "0")
            app = Application(
                desk,
                options.app,
                desk.new_home(chance.choice(("en", "ko", "ja"))),
                ["--brew", prefix.brew],
                surroundings,
                without_network(),
            )
            starts += 1
            hands = Hands(app, portal, chance)
            try:
                while not app.has_ended() and now - begun < options.minutes * 60:
                    done[hands.act()] += 1
                    if done.total() % _LOOK_EVERY == 0:
                        look(app)
                    now = time.monotonic()
                    if now - told > _TOLD_EVERY:
                        told = now
                        print(f"{(now - begun) / 60:5.1f} min  {done.total()} acts", flush=True)
            finally:
                app.stop()
            status = app.wait_ended()[0]
            log = app.log.read_text(errors="replace")
            if log or status not in (0, -15):
                raise NotHappened(f"status {status} in start {starts}:\n{log}")
        portal.close()
    print(f"{starts} starts, " + ", ".join(f"{n} × {kind}" for kind, n in done.most_common()))


def with_launcher(folder: Path) -> str:
    """A path on which addresses can be opened, which takes no browser."""
    folder.mkdir()
    (folder / "xdg-open").symlink_to("/bin/true")
    return f"{folder}:/usr/bin:/bin:/usr/sbin:/sbin"


def look(app: Application) -> None:
    """At the whole of what a screen reader is given, which takes the thread of the window."""
    wait_until(lambda: app.has_ended() or app.tree().windows, "the window answers")


def main() -> int:
    options = parse_arguments()
    print(f"{options.minutes:g} minutes, --seed {options.seed}", flush=True)
    stumble(options)
    print("It bore all of it")
    return 0


if __name__ == "__main__":
    sys.exit(main())
