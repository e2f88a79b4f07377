# SPDX-License-Identifier: MIT
"""What could be installed: the records behind every name."""

from __future__ import annotations

import json

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any, Union

    Entry = dict[str, Any]
    Package = Union["Formula", "Cask"]

CORE = "homebrew/core"
CASK_CORE = "homebrew/cask"


class Formula:
    __slots__ = ("name", "entry", "tap")

    def __init__(self, name: str, entry: Entry) -> None:
        self.name = name
        self.entry = entry
        self.tap: str = entry.get("tap", CORE)

    @property
    def full_name(self) -> str:
        return self.name if self.tap == CORE else f"{self.tap}/{self.name}"

    @property
    def version(self) -> str:
        return self.entry["version"]

    @property
    def revision(self) -> int:
        return self.entry.get("revision", 0)

    @property
    def pkg_version(self) -> str:
        """The version of a keg: the upstream version and the formula's own revision."""
        return f"{self.version}_{self.revision}" if self.revision else self.version

    @property
    def bottled(self) -> bool:
        return self.tap == CORE

    @property
    def dependencies(self) -> list[str]:
        return self.entry.get("dependencies", [])

    @property
    def keg_only(self) -> bool:
        return "keg_only" in self.entry

    @property
    def links(self) -> bool:
        """Versioned formulae are keg-only too, yet are linked while no other version is."""
        return self.entry.get("keg_only") in (None, ":versioned_formula")


class Cask:
    __slots__ = ("token", "entry", "tap")

    def __init__(self, token: str, entry: Entry) -> None:
        self.token = token
        self.entry = entry
        self.tap: str = entry.get("tap", CASK_CORE)

    @property
    def full_token(self) -> str:
        return self.token if self.tap == CASK_CORE else f"{self.tap}/{self.token}"

    # Both kinds are listed under these two names.
    @property
    def name(self) -> str:
        return self.token

    @property
    def full_name(self) -> str:
        return self.full_token

    @property
    def version(self) -> str:
        return self.entry["version"]

    pkg_version = version

    @property
    def auto_updates(self) -> bool:
        return self.entry.get("auto_updates", False)

    @property
    def artifact(self) -> tuple[str, str]:
        """Kind and file, such as `app` and `Example.app`."""
        kind, file = self.entry["artifact"]
        return kind, file


class Catalogue:
    """The packages of the core taps and of those that are tapped."""

    def __init__(self, path: str, tapped: list[str]) -> None:
        with open(path, encoding="utf-8") as file:
            self._content = json.load(file)
        self._visible = {CORE, CASK_CORE, *tapped}
        self._aliases: dict[str, str] | None = None

    def formulae(self) -> Iterator[Formula]:
        for name, entry in self._content["formulae"].items():
            if entry.get("tap", CORE) in self._visible:
                yield Formula(name, entry)

    def casks(self) -> Iterator[Cask]:
        for token, entry in self._content["casks"].items():
            if entry.get("tap", CASK_CORE) in self._visible:
                yield Cask(token, entry)

    def of_tap(self, tap: str) -> tuple[list[Formula], list[Cask]]:
        """What a tap offers, tapped or not."""
        formulae = [Formula(n, e) for n, e in self._content["formulae"].items() if e.get("tap") == tap]
        casks = [Cask(n, e) for n, e in self._content["casks"].items() if e.get("tap") == tap]
        return formulae, casks

    def formula(self, wanted: str) -> Formula | None:
        """By name, by alias or as `user/tap/name`, in any case."""
        name, tap = self._split(wanted)
        entry = self._content["formulae"].get(name)
        if entry is None:
            name = self._alias(name)
            entry = self._content["formulae"].get(name)
        if entry is None:
            return None
        formula = Formula(name, entry)
        return formula if self._offers(formula.tap, tap) else None

    def cask(self, wanted: str) -> Cask | None:
        token, tap = self._split(wanted)
        entry = self._content["casks"].get(token)
        if entry is None:
            return None
        cask = Cask(token, entry)
        return cask if self._offers(cask.tap, tap) else None

    def with_dependencies(self, name: str) -> list[Formula]:
        """Everything a formula needs while it runs, each after what it needs itself."""
        found: dict[str, Formula] = {}

        def visit(formula: Formula) -> None:
            for dependency in formula.dependencies:
                if dependency not in found:
                    needed = Formula(dependency, self._content["formulae"][dependency])
                    visit(needed)
                    found[dependency] = needed

        visit(Formula(name, self._content["formulae"][name]))
        return list(found.values())

    @staticmethod
    def _split(wanted: str) -> tuple[str, str | None]:
        tap, slash, name = wanted.lower().rpartition("/")
        return name, (tap if slash else None)

    def _offers(self, tap: str, wanted_tap: str | None) -> bool:
        return tap in self._visible and wanted_tap in (None, tap)

    def _alias(self, name: str) -> str:
        if self._aliases is None:
            self._aliases = {
                alias: formula
                for formula, entry in self._content["formulae"].items()
                for alias in entry.get("aliases", [])
            }
        return self._aliases.get(name, name)
