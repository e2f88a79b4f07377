# SPDX-License-Identifier: MIT
"""`brew upgrade`."""

from __future__ import annotations

from . import installed
from .arguments import KIND_OPTIONS, Arguments
from .catalogue import Cask, Formula
from .context import no_cask, no_formula
from .errors import BrewError
from .pouring import Pouring, Step, missing_before
from .wording import columns, count

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue, Package
    from .context import Brew
    from .state import State

_GREEDY_HINT = (
    "Some casks with `auto_updates true` or `version :latest` may still require `--greedy`,",
    "`HOMEBREW_UPGRADE_GREEDY` or `HOMEBREW_UPGRADE_GREEDY_CASKS` to be upgraded.",
    "Hide these hints with `HOMEBREW_NO_ENV_HINTS=1` (see `man brew`).",
)


def upgrade(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, "--greedy", *KIND_OPTIONS)
    state = brew.states.read()
    catalogue = brew.catalogue(state)
    if arguments.names:
        return _upgrade_named(brew, arguments, state, catalogue)
    return _upgrade_all(brew, arguments, state, catalogue)


def refuse_pinned(brew: Brew, pinned: list[Formula]) -> int:
    """Asked for by name, a pinned formula is a failure; among others it is only left out."""
    brew.out.error(f"Not upgrading {count(len(pinned), 'pinned package', 'pinned packages')}:")
    brew.out.lines(_pinned_lines(pinned))
    _summarise_pinned(brew, pinned)
    return 1


def carry_out(
    brew: Brew,
    packages: list[Package],
    state: State,
    catalogue: Catalogue,
    pinned: list[Formula] | None = None,
) -> int:
    """Upgrades installed packages, dependencies before what needs them."""
    steps = _steps(packages, state, catalogue)
    out = brew.out
    number = count(len(steps), "outdated package", "outdated packages")
    listing = _listing(steps)
    out.heading(f"Would upgrade {number}")
    out.lines(listing)
    if pinned:
        _summarise_pinned(brew, pinned)
    out.heading(f"Upgrading {number}:")
    out.lines(listing)
    if pinned:
        _leave_out_pinned(brew, pinned)
    pouring = Pouring(brew, steps)
    done = pouring.run()
    if done:
        out.heading(f"Upgraded {count(len(done), 'outdated package', 'outdated packages')}")
        out.lines(_listing(done))
    if pinned:
        _summarise_pinned(brew, pinned)
    return 1 if pouring.failed else 0


def _upgrade_named(
    brew: Brew, arguments: Arguments, state: State, catalogue: Catalogue
) -> int:
    wanted: list[Package] = []
    pinned: list[Formula] = []
    for name in dict.fromkeys(arguments.names):
        package = _find_installed(arguments, name, state, catalogue)
        if isinstance(package, Cask):
            # A cask that updates itself is upgraded when it is asked for.
            if installed.is_outdated_cask(package, state["casks"][package.token], greedy=True):
                wanted.append(package)
            else:
                brew.out.warning(
                    f"Not upgrading {package.token}, the latest version is already installed"
                )
        elif not installed.is_outdated(package, state["formulae"][package.name]):
            brew.out.warning(f"{package.full_name} {package.pkg_version} already installed")
        elif state["formulae"][package.name]["pinned"]:
            pinned.append(package)
        else:
            wanted.append(package)
    status = refuse_pinned(brew, pinned) if pinned else 0
    if wanted:
        status = carry_out(brew, wanted, state, catalogue) or status
    return status


def _upgrade_all(brew: Brew, arguments: Arguments, state: State, catalogue: Catalogue) -> int:
    formulae: list[Formula] = []
    pinned: list[Formula] = []
    casks: list[Cask] = []
    if not arguments.only_casks:
        for formula, rack in installed.outdated_formulae(state, catalogue):
            (pinned if rack["pinned"] else formulae).append(formula)
    if not arguments.only_formulae:
        greedy = "--greedy" in arguments
        for cask, keg in installed.casks(state, catalogue):
            if installed.is_outdated_cask(cask, keg, greedy):
                casks.append(cask)
    if pinned:
        _leave_out_pinned(brew, pinned)
    packages = [*formulae, *casks]
    if packages:
        if casks:
            brew.out.lines(list(_GREEDY_HINT))
        return carry_out(brew, packages, state, catalogue, pinned)
    if pinned:
        _summarise_pinned(brew, pinned)
        _leave_out_pinned(brew, pinned)
        _summarise_pinned(brew, pinned)
    return 0


def _find_installed(
    arguments: Arguments, name: str, state: State, catalogue: Catalogue
) -> Package:
    formula = None if arguments.only_casks else catalogue.formula(name)
    if formula and formula.name in state["formulae"]:
        return formula
    cask = None if arguments.only_formulae else catalogue.cask(name)
    if cask and cask.token in state["casks"]:
        return cask
    if formula:
        raise BrewError(f"{formula.full_name} not installed")
    if cask:
        raise BrewError(f"Cask '{cask.token}' is not installed.")
    raise no_cask(name) if arguments.only_casks else no_formula(name)


def _steps(packages: list[Package], state: State, catalogue: Catalogue) -> list[Step]:
    ordered: list[Package] = []
    wanted = {package.name: package for package in packages if isinstance(package, Formula)}
    for formula in wanted.values():
        for needed in [*catalogue.with_dependencies(formula.name), formula]:
            if needed.name in wanted and wanted[needed.name] not in ordered:
                ordered.append(wanted[needed.name])
    ordered += [package for package in packages if isinstance(package, Cask)]
    promised: set[str] = set()
    steps = []
    for package in ordered:
        if isinstance(package, Formula):
            old = installed.active_keg(state["formulae"][package.name])["version"]
            steps.append(Step(package, old, missing_before(package, state, catalogue, promised)))
        else:
            steps.append(Step(package, state["casks"][package.token]["version"], []))
    return steps


def _listing(steps: list[Step]) -> list[str]:
    return columns([(step.name, step.old or "", step.package.pkg_version) for step in steps])


def _pinned_lines(pinned: list[Formula]) -> list[str]:
    return [f"{formula.full_name} {formula.pkg_version}" for formula in pinned]


def _leave_out_pinned(brew: Brew, pinned: list[Formula]) -> None:
    brew.out.warning(f"Not upgrading {count(len(pinned), 'pinned package', 'pinned packages')}:")
    brew.out.lines(_pinned_lines(pinned))


def _summarise_pinned(brew: Brew, pinned: list[Formula]) -> None:
    brew.out.heading(f"{len(pinned)} Pinned {'formula' if len(pinned) == 1 else 'formulae'}")
    brew.out.lines(_pinned_lines(pinned))
