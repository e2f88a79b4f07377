#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Takes pictures of every page and state of the built application on a virtual display."""

from __future__ import annotations

import argparse
import itertools
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/e2e"))

from album import Album  # noqa: E402
from driver import Application, Desk, HeldPrefix  # noqa: E402
from driver.namespaces import without_network  # noqa: E402
from fonts import write_configuration  # noqa: E402
from scenes import Stage, visit_emptiness, visit_missing_homebrew, visit_pages  # noqa: E402

# Where the mouse is out of the way, beside the window.
_MARGIN = 8


class View:
    """One of the ways in which the application can look."""

    def __init__(self, language: str, appearance: str, size: str, scale: str) -> None:
        self.language = language
        self.appearance = appearance
        self.width, self.height = (int(word) for word in size.split("x"))
        self.scale = float(scale)
        self.suffix = f"{appearance}-{language}-{size}" + (f"@{scale}x" if self.scale != 1 else "")

    @property
    def pixels(self) -> tuple[int, int]:
        return round(self.width * self.scale), round(self.height * self.scale)


def visit(desk: Desk, view: View, options: argparse.Namespace) -> list[str]:
    """The names of the pictures taken."""
    folder = Path(tempfile.mkdtemp(prefix="v", dir=desk.folder))
    fonts = folder / "fonts.conf"
    write_configuration(fonts, view.language, options.font)
    album = Album(options.out, view.suffix, view.pixels)
    rounds = (
        (visit_pages, ()),
        (visit_emptiness, ("--empty",)),
        (visit_missing_homebrew, ("--empty",)),
    )
    for number, (visit_scenes, machine) in enumerate(rounds):
        prefix = HeldPrefix(folder / str(number) / "homebrew", "--pace", "0", *machine)
        home = desk.new_home(view.language)
        started: list[Application] = []

        def start(*arguments: str) -> Application:
            application = Application(
                desk,
                options.app,
                home,  # noqa: B023
                [*(arguments or ("--brew", prefix.brew)), "--appearance", view.appearance],  # noqa: B023
                {"FONTCONFIG_FILE": str(fonts)},
                without_network(),
                scale=view.scale,
            )
            started.append(application)  # noqa: B023
            application.resize(view.width, view.height)
            return application

        try:
            visit_scenes(Stage(album, prefix, start, options.quick))
        finally:
            for application in started:
                application.stop()
    return album.names


def parse_arguments() -> argparse.Namespace:
    def words(text: str) -> list[str]:
        return text.split(",")

    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--app", type=Path, required=True, help="the built application")
    parser.add_argument("--out", type=Path, required=True, help="the folder for the pictures")
    parser.add_argument("--languages", type=words, default=["en", "ko", "ja"], metavar="en,ko,ja")
    parser.add_argument("--appearances", type=words, default=["light", "dark"], metavar="light,dark")
    parser.add_argument(
        "--sizes", type=words, default=["900x600"], metavar="900x600,700x450", help="of the window"
    )
    parser.add_argument(
        "--scales", type=words, default=["1"], metavar="1,1.5,2", help="pixels of the screen per point"
    )
    parser.add_argument("--font", default="Inter", help="another typeface, such as DejaVu Sans")
    parser.add_argument(
        "--quick", action="store_true", help="the pages only, not all of the states they can be in"
    )
    options = parser.parse_args()
    options.app = options.app.resolve()
    options.out = options.out.resolve()
    return options


def main() -> int:
    options = parse_arguments()
    begun = time.monotonic()
    views = [
        View(*choice)
        for choice in itertools.product(
            options.languages, options.appearances, options.sizes, options.scales
        )
    ]
    largest = [max(view.pixels[side] for view in views) + _MARGIN for side in range(2)]
    count = 0
    with Desk(*largest) as desk:
        for view in views:
            names = visit(desk, view, options)
            count += len(names)
            print(f"{view.suffix}: {len(names)} pictures", flush=True)
    print(f"{count} pictures in {time.monotonic() - begun:.0f} s, in {options.out}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
