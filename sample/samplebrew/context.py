# SPDX-License-Identifier: MIT
"""What every command works with: one run of `brew` in one prefix."""

from __future__ import annotations

import os

from .catalogue import Catalogue, Cask, Formula
from .errors import BrewError
from .state import PackageLock, StateFile

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    from .catalogue import Package
    from .output import Output
    from .state import State

CATALOGUE_FILE = os.path.join("Library", "sample", "catalogue.json")


class Brew:
    def __init__(self, prefix: str, args: list[str], switches: dict[str, Any], out: Output) -> None:
        self.prefix = prefix
        self.args = args
        self.switches = switches
        self.out = out
        self.states = StateFile(prefix)

    def catalogue(self, state: State) -> Catalogue:
        return Catalogue(os.path.join(self.prefix, CATALOGUE_FILE), state["taps"])

    @property
    def cleans_after_install(self) -> bool:
        return "HOMEBREW_NO_INSTALL_CLEANUP" not in os.environ

    def keg(self, name: str, version: str = "") -> str:
        return os.path.join(self.prefix, "Cellar", name, version).rstrip("/")

    def caskroom(self, token: str, version: str = "") -> str:
        return os.path.join(self.prefix, "Caskroom", token, version).rstrip("/")

    def download(self, package: Package, version: str) -> str:
        """Where the downloaded file of a version is said to lie."""
        if isinstance(package, Cask):
            file = f"Cask/{package.token}--{version}.zip"
        elif package.bottled:
            file = f"{package.name}--{version}.bottle.tar.gz"
        else:
            file = f"{package.name}--{version}.tar.gz"
        return os.path.join(self.prefix, "var", "cache", "Homebrew", file)

    def locked(self, package: Package) -> PackageLock:
        if isinstance(package, Formula):
            kind, path = "formula", self.keg(package.name)
        else:
            kind, path = "cask", self.caskroom(package.token)
        return PackageLock(self.prefix, f"{package.name}.{kind}", path, self.args)


def no_formula(name: str) -> BrewError:
    return BrewError(f'No available formula with the name "{name}".')


def no_cask(token: str) -> BrewError:
    return BrewError(f"Cask '{token}' is unavailable: No Cask with this name exists.")
