# SPDX-License-Identifier: MIT
"""`brew install`."""

from __future__ import annotations

from . import installed
from .arguments import KIND_OPTIONS, Arguments
from .catalogue import Cask, Formula
from .errors import BrewError
from .pouring import Pouring, Step, missing_before
from .search import similar_names
from .taps import add_tap
from .upgrade import carry_out, refuse_pinned
from .wording import count, retirement

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue, Package
    from .context import Brew
    from .state import State


def install(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, *KIND_OPTIONS)
    arguments.require_names("formula or cask")
    for name in arguments.names:
        _tap_of_full_name(brew, name)
    state = brew.states.read()
    catalogue = brew.catalogue(state)
    packages = []
    for name in dict.fromkeys(arguments.names):
        package = _find(catalogue, name, arguments)
        if package is None:
            return _not_found(brew, catalogue, name, arguments)
        packages.append(package)
    for package in packages:
        _refuse_retired(brew, package)
    status = 0
    fresh: list[Package] = []
    stale: list[Package] = []
    for package in packages:
        old = _installed_version(state, package)
        if old is None:
            fresh.append(package)
        elif not _can_be_upgraded(state, package):
            _already_there(brew, package, old)
        elif isinstance(package, Formula) and state["formulae"][package.name]["pinned"]:
            status = refuse_pinned(brew, [package])
        else:
            new = package.pkg_version
            brew.out.line(
                f"{package.full_name} {old} is installed but outdated "
                f"(so it will be upgraded to {new})."
            )
            stale.append(package)
    if fresh:
        status = _install_fresh(brew, fresh, state, catalogue) or status
    if stale:
        status = carry_out(brew, stale, state, catalogue) or status
    return status


def _find(catalogue: Catalogue, name: str, arguments: Arguments) -> Package | None:
    """A name of both kinds means the formula unless a cask is asked for."""
    if arguments.only_casks:
        return catalogue.cask(name)
    formula = catalogue.formula(name)
    if formula or arguments.only_formulae:
        return formula
    return catalogue.cask(name)


def _tap_of_full_name(brew: Brew, name: str) -> None:
    """`user/tap/name` adds the tap when it is one that is known to offer the name."""
    tap, _, short = name.lower().rpartition("/")
    if tap.count("/") != 1:
        return
    state = brew.states.read()
    offered = [package.name for kind in brew.catalogue(state).of_tap(tap) for package in kind]
    if tap not in state["taps"] and short in offered:
        add_tap(brew, tap)


def _not_found(brew: Brew, catalogue: Catalogue, name: str, arguments: Arguments) -> int:
    out = brew.out
    formulae, casks = similar_names(catalogue, name)
    if arguments.only_casks:
        out.warning(f"Cask '{name}' is unavailable: No Cask with this name exists.")
        kinds, either = "casks", "casks"
        formulae = []
    else:
        out.warning(f'No available formula with the name "{name}".')
        kinds, either = "formulae and casks", "formulae or casks"
    out.heading(f"Searching for similarly named {kinds}...")
    if not formulae and not casks:
        raise BrewError(f"No {either} found for {name}.")
    for heading, names, option in (("Formulae", formulae, ""), ("Casks", casks, "--cask ")):
        if not names:
            continue
        if heading == "Casks" and formulae:
            out.line()
        out.heading(heading)
        out.lines(names)
        out.line()
        out.line(f"To install {names[0]}, run:")
        out.line(f"  brew install {option}{names[0]}")
    return 1


def _refuse_retired(brew: Brew, package: Package) -> None:
    if "disabled" in package.entry:
        text = retirement("disabled", *package.entry["disabled"])
        raise BrewError(f"{package.full_name} has been {text}")
    if "deprecated" in package.entry:
        text = retirement("deprecated", *package.entry["deprecated"])
        brew.out.warning(f"{package.full_name} has been {text}")


def _installed_version(state: State, package: Package) -> str | None:
    if isinstance(package, Cask):
        installed_cask = state["casks"].get(package.token)
        return installed_cask["version"] if installed_cask else None
    rack = state["formulae"].get(package.name)
    return installed.active_keg(rack)["version"] if rack else None


def _can_be_upgraded(state: State, package: Package) -> bool:
    if isinstance(package, Cask):
        return installed.is_outdated_cask(package, state["casks"][package.token])
    return installed.is_outdated(package, state["formulae"][package.name])


def _already_there(brew: Brew, package: Package, version: str) -> None:
    if isinstance(package, Cask):
        brew.out.warning(
            f"Not upgrading {package.token}, the latest version is already installed"
        )
        return
    brew.out.warning(f"{package.full_name} {version} is already installed and up-to-date.")
    brew.out.note(f"To reinstall {version}, run:")
    brew.out.note(f"  brew reinstall {package.name}")
    # Asking for what came as a dependency makes it one's own.
    with brew.states.changing() as state:
        rack = state["formulae"].get(package.name)
        if rack:
            installed.active_keg(rack)["on_request"] = True


def _install_fresh(
    brew: Brew, packages: list[Package], state: State, catalogue: Catalogue
) -> int:
    promised: set[str] = set()
    steps = []
    for package in packages:
        missing: list[Formula] = []
        if isinstance(package, Formula):
            missing = missing_before(package, state, catalogue, promised)
        steps.append(Step(package, None, missing))
    _announce(brew, steps)
    pouring = Pouring(brew, steps)
    pouring.run()
    return 1 if pouring.failed else 0


def _announce(brew: Brew, steps: list[Step]) -> None:
    out = brew.out
    formulae = [step.package.name for step in steps if isinstance(step.package, Formula)]
    casks = [step.name for step in steps if isinstance(step.package, Cask)]
    if formulae:
        out.heading(f"Would install {count(len(formulae), 'formula', 'formulae')}:")
        out.line(" ".join(formulae))
    if casks:
        out.heading(f"Would install {count(len(casks), 'cask', 'casks')}:")
        out.line(" ".join(casks))
    for step in steps:
        if step.missing:
            number = count(len(step.missing), "dependency", "dependencies")
            out.heading(f"Would install {number} for {step.package.name}:")
            out.line(" ".join(needed.name for needed in step.missing))
