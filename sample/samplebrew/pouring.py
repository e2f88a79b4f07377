# SPDX-License-Identifier: MIT
"""Puts one version of one package in place: shared by `install` and `upgrade`."""

from __future__ import annotations

import time

from . import artifacts, installed, reports
from .catalogue import CASK_CORE, CORE, Formula
from .cleanup import clean_package, forget_downloads
from .errors import BrewError
from .figures import download_size, keg_contents
from .wording import join_words, readable_contents

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Cask, Catalogue, Package
    from .context import Brew
    from .state import State

_FETCH_SECONDS = 0.25
_POUR_SECONDS = 0.15
_LONGEST_POURING_SECONDS = 0.5


class Step:
    """One package to be put in place, with the dependencies that have to come first."""

    def __init__(self, package: Package, old: str | None, missing: list[Formula]) -> None:
        self.package = package
        self.old = old
        self.missing = missing

    @property
    def name(self) -> str:
        return self.package.full_name


def missing_before(
    formula: Formula, state: State, catalogue: Catalogue, already: set[str]
) -> list[Formula]:
    """Dependencies that are neither installed nor promised by an earlier step."""
    missing = [
        needed
        for needed in catalogue.with_dependencies(formula.name)
        if needed.name not in state["formulae"] and needed.name not in already
    ]
    already.update(needed.name for needed in missing)
    already.add(formula.name)
    return missing


class Pouring:
    """A series of steps; a step that fails does not keep the later ones from being tried."""

    def __init__(self, brew: Brew, steps: list[Step]) -> None:
        self._brew = brew
        self._out = brew.out
        self._steps = steps
        self._hints_given = False
        self.failed = False
        total = sum(1 + len(step.missing) for step in steps)
        self._pour_seconds = min(_POUR_SECONDS, _LONGEST_POURING_SECONDS / max(total, 1))

    def run(self) -> list[Step]:
        """The steps that came to their end."""
        self._fetch()
        done = []
        for step in self._steps:
            try:
                if isinstance(step.package, Formula):
                    self._formula(step, step.package)
                else:
                    self._cask(step, step.package)
                done.append(step)
            except BrewError as error:
                self._out.error(f"{step.name}: {error}")
                self.failed = True
        return done

    def _fetch(self) -> None:
        # Formulae are announced by their short names, casks by their full ones.
        names = [s.package.name if isinstance(s.package, Formula) else s.name for s in self._steps]
        self._out.note_heading(f"Fetching downloads for: {join_words(names)}")
        for step in self._steps:
            for package in [*step.missing, step.package]:
                self._note_download(package)
        self._out.pause(_FETCH_SECONDS)

    def _note_download(self, package: Package) -> None:
        if not isinstance(package, Formula):
            if package.version == "latest":
                self._out.warning(
                    f"No checksum defined for cask '{package.token}', skipping verification."
                )
            self._out.note(f"✔︎ Cask {package.token} ({package.version})")
        elif package.bottled:
            self._out.note(f"✔︎ Bottle Manifest {package.name} ({package.pkg_version})")
            self._out.note(f"✔︎ Bottle {package.name} ({package.pkg_version})")
        else:
            self._out.note(f"✔︎ Formula {package.name} ({package.version})")

    def _formula(self, step: Step, formula: Formula) -> None:
        if step.old:
            self._out.heading(f"Upgrading {formula.full_name}")
            self._out.line(f"  {step.old} -> {formula.pkg_version} ")
        elif formula.tap != CORE:
            self._out.heading(f"Installing {formula.name} from {formula.tap}")
        with self._brew.locked(formula):
            self._refuse_conflicts(formula)
            if len(step.missing) > 1:
                names = join_words([needed.full_name for needed in step.missing])
                self._out.heading(f"Installing dependencies for {formula.full_name}: {names}")
            for needed in step.missing:
                with self._brew.locked(needed).waiting():
                    # Another run may have brought it in the meantime.
                    if needed.name not in self._brew.states.read()["formulae"]:
                        self._out.heading(
                            f"Installing {formula.full_name} dependency: {needed.full_name}"
                        )
                        self._pour(needed, on_request=False)
            if step.missing and not step.old:
                self._out.heading(f"Installing {formula.full_name}")
            self._pour(formula, on_request=None if step.old else True)
            self._clean(formula)

    def _pour(self, formula: Formula, on_request: bool | None) -> None:
        version = formula.pkg_version
        if formula.bottled:
            file = f"{formula.name}--{version}.{reports.BOTTLE_TAG}.bottle.tar.gz"
            self._out.heading(f"Pouring {file}")
        self._out.pause(self._pour_seconds)
        with self._brew.states.changing() as state:
            _refuse_when_uprooted(formula, state)
            _place_keg(state, formula, on_request)
            _remember_download(state, formula)
        self._print_caveats(formula)
        built = "" if formula.bottled else ", built in 1 second"
        contents = readable_contents(*keg_contents(formula.name, version))
        self._out.line(f"🍺  {self._brew.keg(formula.name, version)}: {contents}{built}")

    def _print_caveats(self, formula: Formula) -> None:
        caveats = formula.entry.get("caveats", "").rstrip("\n")
        if formula.keg_only:
            notice = (
                f"{formula.name} is keg-only, which means it was not symlinked into "
                f"{self._brew.prefix}."
            )
            caveats = f"{caveats}\n\n{notice}" if caveats else notice
        if caveats:
            self._out.heading("Caveats")
            self._out.line(caveats)
            self._out.heading("Summary")

    def _refuse_conflicts(self, formula: Formula) -> None:
        state = self._brew.states.read()
        conflicts = [
            (name, reason)
            for name, reason in formula.entry.get("conflicts", [])
            if name in state["formulae"]
        ]
        if conflicts:
            listed = "\n".join(f"  {name}: because {reason}" for name, reason in conflicts)
            advice = " ".join(name for name, _ in conflicts)
            raise BrewError(
                f"Cannot install {formula.full_name} because conflicting formulae are installed.\n"
                f"{listed}\n\nPlease `brew uninstall {advice}` before continuing."
            )

    def _clean(self, formula: Formula) -> None:
        if not self._brew.cleans_after_install:
            return
        self._out.heading(f"Running `brew cleanup {formula.name}`...")
        if not self._hints_given:
            self._out.line("Disable this behaviour by setting `HOMEBREW_NO_INSTALL_CLEANUP=1`.")
            self._out.line("Hide these hints with `HOMEBREW_NO_ENV_HINTS=1` (see `man brew`).")
            self._hints_given = True
        with self._brew.states.changing() as state:
            self._out.lines(clean_package(self._brew, state, formula))

    def _cask(self, step: Step, cask: Cask) -> None:
        out = self._out
        if step.old:
            out.heading(f"Upgrading {cask.token}")
            out.line(f"  {step.old} -> {cask.version}")
        else:
            out.heading(f"Installing Cask {cask.token}")
        with self._brew.locked(cask):
            if step.old:
                for text in artifacts.removing(self._brew, cask, step.old):
                    out.heading(text)
            out.pause(self._pour_seconds)
            out.heading(artifacts.placing(self._brew, cask))
            with self._brew.states.changing() as state:
                _refuse_when_uprooted(cask, state)
                state["casks"][cask.token] = {"version": cask.version, "time": int(time.time())}
                _remember_download(state, cask)
        if step.old:
            out.heading(f"Purging files for version {step.old} of Cask {cask.token}")
        out.line(f"🍺  {cask.token} was successfully {'upgraded' if step.old else 'installed'}!")


def _refuse_when_uprooted(package: Package, state: State) -> None:
    """Another run may have taken away what this one had found in place."""
    if package.tap not in (CORE, CASK_CORE, *state["taps"]):
        raise BrewError(f"{package.full_name} comes from {package.tap}, which has been untapped.")
    for name in package.dependencies if isinstance(package, Formula) else []:
        if name not in state["formulae"]:
            raise BrewError(f"{package.full_name} needs {name}, which has been uninstalled.")


def _place_keg(state: State, formula: Formula, on_request: bool | None) -> None:
    """Adds the keg; an upgrade (`None`) keeps the reason for which the old one was installed."""
    rack = state["formulae"].setdefault(formula.name, {"kegs": [], "linked": None, "pinned": None})
    if on_request is None:
        on_request = bool(rack["kegs"]) and installed.active_keg(rack)["on_request"]
    version = formula.pkg_version
    rack["kegs"] = [keg for keg in rack["kegs"] if keg["version"] != version]
    rack["kegs"].append({"version": version, "time": int(time.time()), "on_request": on_request})
    rack["linked"] = version if formula.links else None


def _remember_download(state: State, package: Package) -> None:
    version = package.pkg_version
    kind = "formula" if isinstance(package, Formula) else "cask"
    forget_downloads(state, kind, package.name, version)
    size = download_size(package.name, version)
    state["downloads"].append(
        {"kind": kind, "name": package.name, "version": version, "size": size}
    )
