# SPDX-License-Identifier: MIT
"""Lays out a prefix: launcher, code, catalogue and the state of a fresh machine."""

from __future__ import annotations

import json
import py_compile
import shutil
import sys
import time
from pathlib import Path
from typing import Any

from samplebrew import figures
from samplebrew.catalogue import Catalogue, Formula

from .tables import read_catalogue

SOURCE = Path(__file__).resolve().parent.parent
_LIBRARY = Path("Library", "sample")
_STATE = Path("var", "sample")
_MARK = _STATE / "state.json"
_DAY = 24 * 60 * 60


class PrefixError(Exception):
    """The folder cannot become a prefix."""


def create(prefix: Path, machine: str, force: bool, pace: float) -> None:
    """Makes a fresh prefix; only a folder that is empty or one of ours is ever touched."""
    _make_room(prefix, force)
    catalogue = read_catalogue(SOURCE / "data")
    library = prefix / _LIBRARY
    package = library / "samplebrew"
    for folder in (prefix / "bin", package, prefix / _STATE, prefix / "var/homebrew/locks"):
        folder.mkdir(parents=True)
    for module in sorted((SOURCE / "samplebrew").glob("*.py")):
        # The application's first four runs begin at the same moment: each would compile them all.
        py_compile.compile(str(shutil.copyfile(module, package / module.name)))
    _write_json(library / "catalogue.json", catalogue)
    launcher = prefix / "bin" / "brew"
    launcher.write_text(_launcher(), encoding="utf-8")
    launcher.chmod(0o755)
    # The mark comes last: what was left half-made is not taken for a prefix.
    _write_json(prefix / _MARK, _fresh_state(library / "catalogue.json", machine, pace))


def _launcher() -> str:
    text = (SOURCE / "launcher.py").read_text(encoding="utf-8")
    # A `python3` on the PATH may be a script that looks for one, which takes it longer than a run.
    return text.replace("python3", f'"{sys.executable}"', 1)


def _make_room(prefix: Path, force: bool) -> None:
    if not prefix.exists() or not any(prefix.iterdir()):
        return
    if not (prefix / _MARK).is_file() or not (prefix / _LIBRARY).is_dir():
        raise PrefixError(f"{prefix} is not empty and was not made by this program")
    if not force:
        raise PrefixError(f"{prefix} holds a sample Homebrew already (--force replaces it)")
    for folder in (_LIBRARY, _STATE, Path("var/homebrew/locks"), Path("bin")):
        shutil.rmtree(prefix / folder, ignore_errors=True)


def _fresh_state(catalogue_file: Path, machine: str, pace: float) -> dict[str, Any]:
    plan = _plan(catalogue_file, machine)
    catalogue = Catalogue(str(catalogue_file), plan["taps"])
    now = int(time.time())
    state: dict[str, Any] = {
        "pace": pace,
        "taps": plan["taps"],
        "formulae": {},
        "casks": {},
        "downloads": [],
    }
    for name, versions in plan["formulae"].items():
        for needed in catalogue.with_dependencies(name):
            if needed.name not in plan["formulae"]:
                older = plan["dependencies"].get(needed.name, [])
                _add_formula(state, needed, older, False, now)
        formula = catalogue.formula(name)
        assert formula, f"{name} is not in the catalogue"
        _add_formula(state, formula, versions, True, now)
    for name in plan["pinned"]:
        rack = state["formulae"][name]
        rack["pinned"] = rack["kegs"][-1]["version"]
    for token, version in plan["casks"].items():
        cask = catalogue.cask(token)
        assert cask, f"{token} is not in the catalogue"
        state["casks"][token] = {"version": version, "time": _install_time(token, now)}
        _add_download(state, "cask", token, version)
    return state


def _plan(catalogue_file: Path, machine: str) -> dict[str, Any]:
    """What is installed, from the data or, for the two extremes, from the catalogue itself."""
    plans = json.loads((SOURCE / "data" / "machine.json").read_text(encoding="utf-8"))
    if machine in plans:
        return plans[machine]
    plan: dict[str, Any] = {
        "taps": plans["developer"]["taps"],
        "formulae": {},
        "dependencies": {},
        "pinned": [],
        "casks": {},
    }
    if machine == "everything":
        catalogue = Catalogue(str(catalogue_file), plan["taps"])
        plan["formulae"] = {formula.name: [] for formula in catalogue.formulae()}
        plan["casks"] = {cask.token: cask.version for cask in catalogue.casks()}
    return plan


def _add_formula(
    state: dict[str, Any], formula: Formula, versions: list[str], on_request: bool, now: int
) -> None:
    if formula.name in state["formulae"]:
        return
    versions = versions or [formula.pkg_version]
    kegs = [
        {
            "version": version,
            "time": _install_time(formula.name + version, now) - _DAY * (len(versions) - position),
            "on_request": on_request,
        }
        for position, version in enumerate(versions)
    ]
    linked = versions[-1] if formula.links else None
    state["formulae"][formula.name] = {"kegs": kegs, "linked": linked, "pinned": None}
    for version in versions:
        _add_download(state, "formula", formula.name, version)


def _add_download(state: dict[str, Any], kind: str, name: str, version: str) -> None:
    size = figures.download_size(name, version)
    state["downloads"].append({"kind": kind, "name": name, "version": version, "size": size})


def _install_time(text: str, now: int) -> int:
    """Some moment of the last year, the same for every prefix made on one day."""
    today = now - now % _DAY
    return today - int(figures.hexadecimal(text, 8), 16) % (360 * _DAY)


def _write_json(path: Path, content: Any) -> None:
    text = json.dumps(content, ensure_ascii=False, separators=(",", ":"))
    path.write_text(text, encoding="utf-8")
