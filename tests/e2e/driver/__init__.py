# SPDX-License-Identifier: MIT
"""Drives the built application on a virtual display, with real mouse and key events.

`Desk` is a desktop for one program: display, accessibility bus, a home folder. `Application`
is the program on it: what its window shows is read as a screen reader reads it, and what
it is told is told by mouse and keys.
"""

# What is missing is to be said in words, before an import of it fails.
from .requirements import require_programs_and_modules

require_programs_and_modules()

from .application import Application  # noqa: E402
from .desk import Desk  # noqa: E402
from .home import Home  # noqa: E402
from .sample import HeldPrefix  # noqa: E402
from .tree import Node, NotSeen, Tree  # noqa: E402
from .waiting import NotHappened, wait_until  # noqa: E402

__all__ = [
    "Application",
    "Desk",
    "HeldPrefix",
    "Home",
    "Node",
    "NotHappened",
    "NotSeen",
    "Tree",
    "wait_until",
]
