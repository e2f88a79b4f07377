# SPDX-License-Identifier: MIT
"""What the tests on a virtual desktop have in common."""

from __future__ import annotations

import functools
import os
import shutil
import sys
import tempfile
import types
import unittest
from collections.abc import Callable
from pathlib import Path
from typing import Any

from .application import Application
from .desk import Desk
from .home import Home
from .namespaces import without_network
from .sample import HeldPrefix


def program() -> Path:
    """The built application."""
    path = os.environ.get("LUMORA_APP")
    if not path:
        sys.exit("LUMORA_APP has to name the built application.")
    return Path(path)


class DesktopTest(unittest.TestCase):
    """One desk for a class of tests, one home and one sample Homebrew for each of them.

    What the screen showed when a test failed is kept in a folder that the failure names.
    """

    desk: Desk
    application_class = Application
    prefix_options: tuple[str, ...] = ("--pace", "0")
    maxDiff = None

    def __init__(self, method: str = "runTest") -> None:
        super().__init__(method)
        if method != "runTest":
            test = _keeping_evidence(getattr(type(self), method))
            setattr(self, method, types.MethodType(test, self))
        self._application: Application | None = None

    @classmethod
    def setUpClass(cls) -> None:
        cls.desk = cls.enter(Desk())

    @classmethod
    def enter(cls, context: Any) -> Any:
        result = context.__enter__()
        cls.addClassCleanup(context.__exit__, None, None, None)
        return result

    def setUp(self) -> None:
        folder = Path(tempfile.mkdtemp(prefix="prefix-", dir=self.desk.folder))
        self.prefix = HeldPrefix(folder / "homebrew", *self.prefix_options)
        self.home = self.desk.new_home()
        self.desk.screen.park_mouse()

    def start(self, *arguments: str, **options: Any) -> Application:
        """Starts the application on the sample Homebrew, unless told otherwise."""
        home: Home = options.pop("home", self.home)
        given = list(arguments) or ["--brew", self.prefix.brew, "--appearance", "light"]
        options.setdefault("wrapper", without_network())
        application = self.application_class(self.desk, program(), home, given, **options)
        self._application = application
        self.at_end(application.stop)
        return application

    def at_end(self, step: Callable[[], None]) -> None:
        """Of the test, unless its class shares what it starts."""
        self.addCleanup(step)

    def keep_evidence(self) -> None:
        place = os.environ.get("LUMORA_EVIDENCE") or tempfile.gettempdir()
        folder = Path(place) / f"{type(self).__name__}.{self._testMethodName}"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        self.desk.screen.picture().write(folder / "screen.png")
        if self._application:
            shutil.copy(self._application.log, folder)
            try:
                tree = self._application.tree().describe()
            except TimeoutError as error:
                tree = str(error)
            (folder / "tree.txt").write_text(tree + "\n", encoding="utf-8")
        for file in (self.prefix.folder / "var/sample").glob("*.json*"):
            shutil.copy(file, folder)
        print(f"What was to be seen at the failure: {folder}", file=sys.stderr)


def _keeping_evidence(test: Callable[[DesktopTest], None]) -> Callable[[DesktopTest], None]:
    @functools.wraps(test)
    def wrapped(self: DesktopTest) -> None:
        try:
            test(self)
        except unittest.SkipTest:
            raise
        except Exception:
            self.keep_evidence()
            raise

    return wrapped
