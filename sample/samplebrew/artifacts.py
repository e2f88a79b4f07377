# SPDX-License-Identifier: MIT
"""The one thing that a cask puts on the machine, and what is said while it comes and goes."""

from __future__ import annotations

import os

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Cask
    from .context import Brew


def target(cask: Cask, prefix: str) -> str:
    """Where the artifact is said to be put: always inside the prefix, never beside it."""
    kind, file = cask.artifact
    folder = {"binary": "bin", "font": "share/fonts"}.get(kind, "Applications")
    return os.path.join(prefix, folder, file)


def placing(brew: Brew, cask: Cask) -> str:
    kind, file = cask.artifact
    if kind == "pkg":
        return f"Running installer for {cask.token}"
    verb = "Linking" if kind == "binary" else "Moving"
    return f"{verb} {kind.capitalize()} '{file}' to '{target(cask, brew.prefix)}'"


def removing(brew: Brew, cask: Cask, version: str) -> list[str]:
    kind, file = cask.artifact
    if kind == "pkg":
        return ["Uninstalling packages:", f"Removing files of '{file}'"]
    if kind == "binary":
        return [f"Unlinking Binary '{target(cask, brew.prefix)}'"]
    kept = os.path.join(brew.caskroom(cask.token, version), file)
    return [
        f"Backing up {kind.capitalize()} '{file}' to '{kept}'",
        f"Removing {kind.capitalize()} '{target(cask, brew.prefix)}'",
    ]
