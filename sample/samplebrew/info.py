# SPDX-License-Identifier: MIT
"""`brew info` and `brew outdated`: reports, and texts for people."""

from __future__ import annotations

import time

from . import installed, reports
from .arguments import KIND_OPTIONS, Arguments
from .catalogue import CASK_CORE, CORE, Cask, Formula
from .context import no_cask, no_formula
from .errors import UsageError
from .figures import cask_size, keg_contents
from .wording import count, readable_contents, readable_size, retirement

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue, Package
    from .context import Brew
    from .installed import Keg, Rack
    from .state import State

JSON = "--json=v2"


def info(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, JSON, "--installed", *KIND_OPTIONS)
    state = brew.states.read()
    catalogue = brew.catalogue(state)
    if "--installed" in arguments:
        packages: list[Package] = []
        if not arguments.only_casks:
            packages += [formula for formula, _ in installed.formulae(state, catalogue)]
        if not arguments.only_formulae:
            packages += [cask for cask, _ in installed.casks(state, catalogue)]
    else:
        packages = [_find(catalogue, name, arguments) for name in arguments.names]
    if JSON in arguments:
        if not packages and "--installed" not in arguments:
            raise UsageError("Invalid usage: This option requires a formula or cask argument.")
        _print_report(brew, packages, state, catalogue)
    elif packages or "--installed" in arguments:
        for position, package in enumerate(packages):
            if position:
                brew.out.line()
            _describe(brew, package, state, catalogue)
    else:
        _print_totals(brew, state)
    return 0


def outdated(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words, JSON, *KIND_OPTIONS)
    state = brew.states.read()
    catalogue = brew.catalogue(state)
    formulae = [] if arguments.only_casks else installed.outdated_formulae(state, catalogue)
    casks = [] if arguments.only_formulae else installed.outdated_casks(state, catalogue)
    if JSON in arguments:
        as_list = brew.switches.get("cask_versions") == "list"
        brew.out.line(
            reports.to_text(
                [reports.outdated_formula(formula, rack) for formula, rack in formulae],
                [reports.outdated_cask(cask, keg, as_list) for cask, keg in casks],
            )
        )
    else:
        brew.out.lines([package.full_name for package, _ in [*formulae, *casks]])
    return 0


def _find(catalogue: Catalogue, name: str, arguments: Arguments) -> Package:
    formula = None if arguments.only_casks else catalogue.formula(name)
    cask = None if arguments.only_formulae else catalogue.cask(name)
    package = formula or cask
    if package is None:
        raise no_cask(name) if arguments.only_casks else no_formula(name)
    return package


def _print_report(brew: Brew, packages: list[Package], state: State, catalogue: Catalogue) -> None:
    formulae = [p for p in packages if isinstance(p, Formula)]
    casks = [p for p in packages if isinstance(p, Cask)]
    brew.out.line(
        reports.to_text(
            [reports.formula_report(f, state, catalogue, brew.prefix) for f in formulae],
            [reports.cask_report(c, state, brew.prefix) for c in casks],
        )
    )


def _print_totals(brew: Brew, state: State) -> None:
    contents = [
        keg_contents(name, version)
        for name, rack in state["formulae"].items()
        for version in installed.versions(rack)
    ]
    files = sum(number for number, _ in contents)
    size = sum(size for _, size in contents)
    brew.out.line(f"{count(len(contents), 'keg', 'kegs')}, {readable_contents(files, size)}")


def _describe(brew: Brew, package: Package, state: State, catalogue: Catalogue) -> None:
    if isinstance(package, Formula):
        _describe_formula(brew, package, state, catalogue)
    else:
        _describe_cask(brew, package, state["casks"].get(package.token))


def _describe_formula(brew: Brew, formula: Formula, state: State, catalogue: Catalogue) -> None:
    out, entry = brew.out, formula.entry
    rack: Rack | None = state["formulae"].get(formula.name)
    attributes = []
    if rack and rack["pinned"]:
        attributes.append(f"pinned at {rack['pinned']}")
    if formula.keg_only:
        attributes.append("keg-only")
    head = ", HEAD" if "head" in entry else ""
    suffix = f" [{', '.join(attributes)}]" if attributes else ""
    out.heading(f"{formula.full_name}: stable {formula.version}{head}{suffix}")
    if entry["desc"]:
        out.line(entry["desc"])
    out.line(entry["homepage"])
    _print_retirement(brew, formula)
    if rack is None:
        out.line("Not installed")
    elif installed.active_keg(rack)["on_request"]:
        out.line("Installed (on request)")
    else:
        out.line("Installed (as dependency)")
    out.line(f"From: {_source_address(formula)}")
    if formula.tap != CORE:
        out.line(f"Tap: {formula.tap}")
    if entry["license"]:
        out.line(f"License: {entry['license']}")
    if rack:
        out.heading("Installed Versions")
        for version in installed.versions(rack):
            linked = " [Linked]" if version == rack["linked"] else ""
            contents = readable_contents(*keg_contents(formula.name, version))
            out.line(f"{formula.full_name} {version} ({contents}){linked}")
    _print_dependencies(brew, formula, state, catalogue, rack is not None)
    if head:
        out.heading("Options")
        out.line("--HEAD")
        out.line("\tInstall HEAD version")
    if entry.get("caveats"):
        out.heading("Caveats")
        out.line(entry["caveats"].rstrip("\n"))


def _print_dependencies(
    brew: Brew, formula: Formula, state: State, catalogue: Catalogue, with_runtime: bool
) -> None:
    direct = formula.dependencies
    if not direct:
        return
    brew.out.heading("Dependencies")
    brew.out.line(f"Required ({len(direct)}): {', '.join(direct)}")
    if with_runtime:
        runtime = catalogue.with_dependencies(formula.name)
        missing = [needed.name for needed in runtime if needed.name not in state["formulae"]]
        verdict = f"{len(missing)} missing ✘" if missing else "all installed ✔"
        brew.out.line(f"Recursive Runtime ({len(runtime)}): {verdict}")


def _describe_cask(brew: Brew, cask: Cask, keg: Keg | None) -> None:
    out, entry = brew.out, cask.entry
    names = f" ({', '.join(entry['names'])})" if entry["names"] else ""
    updates = " (auto_updates)" if cask.auto_updates else ""
    out.heading(f"{cask.token}{names}: {cask.version}{updates}")
    if entry["desc"]:
        out.line(entry["desc"])
    out.line(entry["homepage"])
    _print_retirement(brew, cask)
    if keg is None:
        out.line("Not installed")
    else:
        size = readable_size(cask_size(cask.token, keg["version"]))
        when = time.strftime("%Y-%m-%d at %H:%M:%S", time.localtime(keg["time"]))
        out.line("Installed (on request)")
        out.line(f"{brew.caskroom(cask.token, keg['version'])} ({size})")
        out.line(f"  Installed on {when}")
    out.line(f"From: {_source_address(cask)}")
    kind, file = cask.artifact
    out.heading("Artifacts")
    out.line(f"{file} ({kind.capitalize()})")
    if entry.get("caveats"):
        out.heading("Caveats")
        out.line(entry["caveats"].rstrip("\n"))


def _print_retirement(brew: Brew, package: Package) -> None:
    for state in ("deprecated", "disabled"):
        if state in package.entry:
            text = retirement(state, *package.entry[state])
            brew.out.line(text[0].upper() + text[1:])


def _source_address(package: Package) -> str:
    if package.tap in (CORE, CASK_CORE):
        owner, repository = "Homebrew", "homebrew-" + package.tap.partition("/")[2]
    else:
        owner, _, name = package.tap.partition("/")
        repository = "homebrew-" + name
    return f"https://github.com/{owner}/{repository}/blob/HEAD/{reports.source_path(package)}"
