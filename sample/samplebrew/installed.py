# SPDX-License-Identifier: MIT
"""Questions about the installed packages in a state."""

from __future__ import annotations

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    from .catalogue import Cask, Catalogue, Formula
    from .state import State

    Keg = dict[str, Any]
    Rack = dict[str, Any]  # {"kegs": [oldest … newest], "linked": version, "pinned": version}


def formulae(state: State, catalogue: Catalogue) -> list[tuple[Formula, Rack]]:
    racks = state["formulae"]
    return [(f, racks[f.name]) for f in catalogue.formulae() if f.name in racks]


def casks(state: State, catalogue: Catalogue) -> list[tuple[Cask, Keg]]:
    installed = state["casks"]
    return [(c, installed[c.token]) for c in catalogue.casks() if c.token in installed]


def versions(rack: Rack) -> list[str]:
    return [keg["version"] for keg in rack["kegs"]]


def active_keg(rack: Rack) -> Keg:
    """The linked keg, or the newest when none is linked."""
    for keg in rack["kegs"]:
        if keg["version"] == rack["linked"]:
            return keg
    return rack["kegs"][-1]


def is_outdated(formula: Formula, rack: Rack) -> bool:
    return formula.pkg_version not in versions(rack)


def is_outdated_cask(cask: Cask, installed: Keg, greedy: bool = False) -> bool:
    """Casks that update themselves count only when asked for by name."""
    if cask.version == "latest" or (cask.auto_updates and not greedy):
        return False
    return cask.version != installed["version"]


def outdated_formulae(state: State, catalogue: Catalogue) -> list[tuple[Formula, Rack]]:
    return [(f, rack) for f, rack in formulae(state, catalogue) if is_outdated(f, rack)]


def outdated_casks(state: State, catalogue: Catalogue) -> list[tuple[Cask, Keg]]:
    return [(c, keg) for c, keg in casks(state, catalogue) if is_outdated_cask(c, keg)]


def dependents(state: State, catalogue: Catalogue, name: str) -> list[str]:
    """Installed formulae that need this one, directly or not."""
    return [
        formula.name
        for formula, _ in formulae(state, catalogue)
        if any(needed.name == name for needed in catalogue.with_dependencies(formula.name))
    ]


def missing_dependencies(state: State, catalogue: Catalogue) -> list[str]:
    missing = {
        needed.name
        for formula, _ in formulae(state, catalogue)
        for needed in catalogue.with_dependencies(formula.name)
        if needed.name not in state["formulae"]
    }
    return sorted(missing)
