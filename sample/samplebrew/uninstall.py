# SPDX-License-Identifier: MIT
"""`brew uninstall`."""

from __future__ import annotations

from . import artifacts, installed
from .arguments import KIND_OPTIONS, Arguments
from .catalogue import Cask, Formula
from .context import no_cask
from .errors import BrewError
from .figures import keg_contents
from .wording import join_words, readable_contents

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue, Package
    from .context import Brew
    from .state import State

_IGNORE = "--ignore-dependencies"
_SECONDS = 0.2


def uninstall(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, _IGNORE, *KIND_OPTIONS)
    arguments.require_names("installed formula or cask")
    state = brew.states.read()
    catalogue = brew.catalogue(state)
    packages = [
        _find_installed(brew, arguments, name, state, catalogue)
        for name in dict.fromkeys(arguments.names)
    ]
    removed = [package.name for package in packages if isinstance(package, Formula)]
    every_keg = not arguments.options.isdisjoint(("--force", "-f"))
    for package in packages:
        with brew.locked(package):
            if isinstance(package, Cask):
                _remove_cask(brew, package)
            else:
                heedless = _IGNORE in arguments
                _remove_formula(brew, package, catalogue, None if heedless else removed, every_keg)
    return 0


def _find_installed(
    brew: Brew, arguments: Arguments, name: str, state: State, catalogue: Catalogue
) -> Package:
    formula = None if arguments.only_casks else catalogue.formula(name)
    if formula and formula.name in state["formulae"]:
        return formula
    cask = None if arguments.only_formulae else catalogue.cask(name)
    if cask and cask.token in state["casks"]:
        return cask
    if arguments.only_casks:
        raise BrewError(f"Cask '{cask.token}' is not installed.") if cask else no_cask(name)
    raise BrewError(f"No such keg: {brew.keg(name.rpartition('/')[2])}")


def _remove_formula(
    brew: Brew,
    formula: Formula,
    catalogue: Catalogue,
    removed_together: list[str] | None,
    every_keg: bool,
) -> None:
    """Removes the active keg or all of them; the check and the change share one lock."""
    name = formula.name
    brew.out.pause(_SECONDS)
    with brew.states.changing() as state:
        rack = state["formulae"].get(name)
        if rack is None:
            raise BrewError(f"No such keg: {brew.keg(name)}")
        active = installed.active_keg(rack)
        kegs = rack["kegs"] if every_keg else [active]
        remaining = [keg["version"] for keg in rack["kegs"] if keg not in kegs]
        if removed_together is not None and not remaining:
            _refuse_needed(brew, formula, active["version"], state, catalogue, removed_together)
        for keg in kegs:
            contents = readable_contents(*keg_contents(name, keg["version"]))
            brew.out.line(f"Uninstalling {brew.keg(name, keg['version'])}... ({contents})")
        if remaining:
            rack["kegs"] = [keg for keg in rack["kegs"] if keg["version"] in remaining]
            rack["linked"] = rack["pinned"] = None
            verb = "is" if len(remaining) == 1 else "are"
            brew.out.line(f"{name} {join_words(remaining)} {verb} still installed.")
            brew.out.line("To remove all versions, run:")
            brew.out.line(f"  brew uninstall --force {name}")
        else:
            del state["formulae"][name]


def _refuse_needed(
    brew: Brew,
    formula: Formula,
    version: str,
    state: State,
    catalogue: Catalogue,
    removed_together: list[str],
) -> None:
    needing = [
        dependent
        for dependent in installed.dependents(state, catalogue, formula.name)
        if dependent not in removed_together
    ]
    if needing:
        verb = "is" if len(needing) == 1 else "are"
        raise BrewError(
            f"Refusing to uninstall {brew.keg(formula.name, version)}\n"
            f"because it is required by {join_words(needing)}, which {verb} currently installed.\n"
            "You can override this and force removal with:\n"
            f"  brew uninstall {_IGNORE} {formula.name}"
        )


def _remove_cask(brew: Brew, cask: Cask) -> None:
    brew.out.pause(_SECONDS)
    with brew.states.changing() as state:
        keg = state["casks"].pop(cask.token, None)
        if keg is None:
            raise BrewError(f"Cask '{cask.token}' is not installed.")
    brew.out.heading(f"Uninstalling Cask {cask.token}")
    for text in artifacts.removing(brew, cask, keg["version"]):
        brew.out.heading(text)
    brew.out.heading(f"Purging files for version {keg['version']} of Cask {cask.token}")
