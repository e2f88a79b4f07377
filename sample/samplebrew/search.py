# SPDX-License-Identifier: MIT
"""`brew search`."""

from __future__ import annotations

import re

from .arguments import KIND_OPTIONS, Arguments
from .errors import BrewError

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Callable

    from .catalogue import Catalogue
    from .context import Brew

_SEPARATORS = re.compile(r"[^a-z\d@+]")


def search(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, *KIND_OPTIONS)
    arguments.require_names("text or regex")
    query = " ".join(arguments.names)
    found = _matcher(query)
    catalogue = brew.catalogue(brew.states.read())
    formulae = [] if arguments.only_casks else matching_formulae(catalogue, found)
    casks = [] if arguments.only_formulae else matching_casks(catalogue, found)
    if not formulae and not casks:
        kinds = "casks" if arguments.only_casks else "formulae"
        if not arguments.only_casks and not arguments.only_formulae:
            kinds = "formulae or casks"
        raise BrewError(f'No {kinds} found for "{query}".')
    # Releases before the present one headed the two lists even when nobody watched.
    headings = brew.switches.get("headings", False)
    if formulae and headings:
        brew.out.heading("Formulae")
    brew.out.lines(formulae)
    if formulae and casks:
        brew.out.line()
    if casks and headings:
        brew.out.heading("Casks")
    brew.out.lines(casks)
    return 0


def similar_names(catalogue: Catalogue, name: str) -> tuple[list[str], list[str]]:
    """Formulae and casks that a mistyped name may have meant."""
    if not name.strip():
        return [], []
    found = _matcher(name, allow_patterns=False)
    return matching_formulae(catalogue, found), matching_casks(catalogue, found)


def matching_formulae(catalogue: Catalogue, found: Callable[[str], bool]) -> list[str]:
    """Full names; an alias is listed only where the name itself does not match."""
    names = []
    for formula in catalogue.formulae():
        if found(formula.full_name):
            names.append(formula.full_name)
        else:
            names += filter(found, formula.entry.get("aliases", []))
    return sorted(names)


def matching_casks(catalogue: Catalogue, found: Callable[[str], bool]) -> list[str]:
    return sorted(cask.full_token for cask in catalogue.casks() if found(cask.full_token))


def _matcher(query: str, allow_patterns: bool = True) -> Callable[[str], bool]:
    """`/pattern/` is a regular expression; otherwise case and separators do not count."""
    query = query.strip()
    if allow_patterns and len(query) > 2 and query.startswith("/") and query.endswith("/"):
        try:
            pattern = re.compile(query[1:-1])
        except re.error as error:
            raise BrewError(f"{error}: {query}") from error
        return lambda name: pattern.search(name) is not None
    if not query:
        return lambda name: True
    wanted = _SEPARATORS.sub("", query.lower())
    # Nothing in the catalogue is written in letters that the comparison ignores.
    return lambda name: bool(wanted) and wanted in _SEPARATORS.sub("", name)
