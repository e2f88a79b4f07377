# SPDX-License-Identifier: MIT
"""`brew cleanup`, and the cleaning that follows an installation."""

from __future__ import annotations

from . import installed
from .arguments import Arguments
from .context import no_formula
from .figures import keg_contents
from .wording import readable_contents, readable_size

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any

    from .catalogue import Catalogue, Formula, Package
    from .context import Brew
    from .installed import Keg, Rack
    from .state import State

    Download = dict[str, Any]


def cleanup(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, "-n", "--dry-run", "-s", "--prune=all")
    if "-n" in arguments or "--dry-run" in arguments:
        _clean(brew, arguments.names, brew.states.read(), "Would remove: {} ({})", "would free")
    else:
        with brew.states.changing() as state:
            _clean(brew, arguments.names, state, "Removing: {}... ({})", "has freed")
    return 0


def clean_package(brew: Brew, state: State, formula: Formula) -> list[str]:
    """Removes what an installation made superfluous, as lines to be printed."""
    removed = []
    rack = state["formulae"][formula.name]
    for keg in list(_old_kegs(formula, rack)):
        removed.append((brew.keg(formula.name, keg["version"]), _keg_contents(formula, keg)))
        rack["kegs"].remove(keg)
    for download in list(state["downloads"]):
        if download["kind"] == "formula" and download["name"] == formula.name:
            if download["version"] != formula.pkg_version:
                removed.append(_described(brew, formula, download))
                state["downloads"].remove(download)
    return [f"Removing: {path}... ({contents})" for path, contents in removed]


def forget_downloads(state: State, kind: str, name: str, version: str) -> None:
    unwanted = (kind, name, version)
    state["downloads"] = [
        download
        for download in state["downloads"]
        if (download["kind"], download["name"], download["version"]) != unwanted
    ]


def _clean(brew: Brew, names: list[str], state: State, line: str, verb: str) -> None:
    """Removes from the state it is given; a preview is given one that is then thrown away."""
    catalogue = brew.catalogue(state)
    wanted = {_known(catalogue, name).name for name in names}
    freed = 0
    for formula, rack in installed.formulae(state, catalogue):
        if wanted and formula.name not in wanted:
            continue
        for keg in list(_old_kegs(formula, rack)):
            path = brew.keg(formula.name, keg["version"])
            brew.out.line(line.format(path, _keg_contents(formula, keg)))
            freed += keg_contents(formula.name, keg["version"])[1]
            rack["kegs"].remove(keg)
    for download in list(state["downloads"]):
        package = _package(catalogue, download)
        if package is None or (wanted and package.name not in wanted):
            continue
        if download["version"] != package.pkg_version:
            brew.out.line(line.format(*_described(brew, package, download)))
            freed += download["size"]
            state["downloads"].remove(download)
    if freed:
        size = readable_size(freed)
        brew.out.heading(f"This operation {verb} approximately {size} of disk space.")


def _old_kegs(formula: Formula, rack: Rack) -> Iterator[Keg]:
    """Kegs beside the active one; a pinned formula keeps all of its kegs."""
    if rack["pinned"]:
        return
    active = installed.active_keg(rack)
    for keg in rack["kegs"]:
        if keg is not active and keg["version"] != formula.pkg_version:
            yield keg


def _keg_contents(formula: Formula, keg: Keg) -> str:
    return readable_contents(*keg_contents(formula.name, keg["version"]))


def _described(brew: Brew, package: Package, download: Download) -> tuple[str, str]:
    return brew.download(package, download["version"]), readable_size(download["size"])


def _package(catalogue: Catalogue, download: Download) -> Package | None:
    find = catalogue.formula if download["kind"] == "formula" else catalogue.cask
    return find(download["name"])


def _known(catalogue: Catalogue, name: str) -> Package:
    package = catalogue.formula(name) or catalogue.cask(name)
    if package is None:
        raise no_formula(name)
    return package
