# SPDX-License-Identifier: MIT
"""The JSON reports, with every key of the real ones in the same order."""

from __future__ import annotations

import json
import os

from . import artifacts, installed
from .catalogue import CASK_CORE, CORE
from .figures import hexadecimal

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    from .catalogue import Cask, Catalogue, Formula
    from .installed import Keg, Rack
    from .state import State

    Report = dict[str, Any]

BOTTLE_TAG = "x86_64_linux" if os.uname().sysname == "Linux" else "arm64_sequoia"
_DOWNLOADS = "https://downloads.example.org"


def to_text(formulae: list[Report], casks: list[Report]) -> str:
    return json.dumps({"formulae": formulae, "casks": casks}, indent=2, ensure_ascii=False)


def formula_report(
    formula: Formula, state: State, catalogue: Catalogue, prefix: str
) -> Report:
    entry = formula.entry
    rack: Rack | None = state["formulae"].get(formula.name)
    keg_only = entry.get("keg_only")
    conflicts = entry.get("conflicts", [])
    return {
        "name": formula.name,
        "full_name": formula.full_name,
        "tap": formula.tap,
        "oldnames": [],
        "aliases": entry.get("aliases", []),
        "versioned_formulae": entry.get("versioned_formulae", []),
        "desc": entry["desc"],
        "license": entry["license"],
        "homepage": entry["homepage"],
        "versions": {
            "stable": formula.version,
            "head": "HEAD" if "head" in entry else None,
            "bottle": formula.bottled,
        },
        "urls": _urls(formula),
        "patches": [],
        "revision": formula.revision,
        "version_scheme": 0,
        "compatibility_version": None,
        "autobump": True,
        "no_autobump_message": None,
        "skip_livecheck": False,
        "bottle": _bottle(formula) if formula.bottled else {},
        "pour_bottle_only_if": None,
        "keg_only": formula.keg_only,
        "keg_only_reason": {"reason": keg_only, "explanation": ""} if keg_only else None,
        "options": [],
        "build_dependencies": entry.get("build_dependencies", []),
        "dependencies": formula.dependencies,
        "test_dependencies": [],
        "recommended_dependencies": [],
        "optional_dependencies": [],
        "uses_from_macos": entry.get("uses_from_macos", []),
        "uses_from_macos_bounds": [{} for _ in entry.get("uses_from_macos", [])],
        "requirements": [],
        "conflicts_with": [name for name, _ in conflicts],
        "conflicts_with_reasons": [reason for _, reason in conflicts],
        "link_overwrite": [],
        "caveats": entry.get("caveats"),
        "installed": [_keg(formula, keg, state, catalogue) for keg in rack["kegs"]] if rack else [],
        "linked_keg": rack["linked"] if rack else None,
        "pinned": bool(rack and rack["pinned"]),
        "outdated": bool(rack and installed.is_outdated(formula, rack)),
        **_retirement(entry),
        "post_install_steps": [],
        "post_install_defined": False,
        "service": _service(formula, prefix),
        "tap_git_head": hexadecimal(formula.tap, 40),
        "ruby_source_path": source_path(formula),
        "ruby_source_checksum": {"sha256": hexadecimal("source " + formula.full_name, 64)},
    }


def cask_report(cask: Cask, state: State, prefix: str) -> Report:
    entry = cask.entry
    keg: Keg | None = state["casks"].get(cask.token)
    latest = cask.version == "latest"
    kind, file = cask.artifact
    return {
        "token": cask.token,
        "full_token": cask.full_token,
        "old_tokens": [],
        "tap": cask.tap,
        "name": entry["names"],
        "desc": entry["desc"],
        "homepage": entry["homepage"],
        "url": f"{_DOWNLOADS}/casks/{cask.token}-{cask.version}.zip",
        "url_specs": {},
        "version": cask.version,
        "autobump": not latest,
        "no_autobump_message": "latest_version" if latest else None,
        "skip_livecheck": False,
        "installed": keg["version"] if keg else None,
        "installed_time": keg["time"] if keg else None,
        "bundle_version": None,
        "bundle_short_version": None,
        "pinned": False,
        "pinned_version": None,
        "outdated": bool(keg and installed.is_outdated_cask(cask, keg)),
        "sha256": "no_check" if latest else hexadecimal(cask.token + cask.version, 64),
        "artifacts": [{kind: [file], "target": artifacts.target(cask, prefix)}],
        "caveats": entry.get("caveats"),
        "caveats_rosetta": None,
        "depends_on": {"formula": entry["depends_on"]} if "depends_on" in entry else {},
        "conflicts_with": None,
        "container": None,
        "rename": [],
        "auto_updates": True if cask.auto_updates else None,
        **_retirement(entry),
        "tap_git_head": hexadecimal(cask.tap, 40),
        "languages": [],
        "ruby_source_path": source_path(cask),
        "ruby_source_checksum": {"sha256": hexadecimal("source " + cask.full_token, 64)},
    }


def outdated_formula(formula: Formula, rack: Rack) -> Report:
    return {
        "name": formula.full_name,
        "installed_versions": installed.versions(rack),
        "current_version": formula.pkg_version,
        "pinned": bool(rack["pinned"]),
        "pinned_version": rack["pinned"],
    }


def outdated_cask(cask: Cask, keg: Keg, as_list: bool) -> Report:
    """Older releases gave the versions of a cask as one text, newer ones as a list."""
    return {
        "name": cask.token,
        "installed_versions": [keg["version"]] if as_list else keg["version"],
        "current_version": cask.version,
        "pinned": False,
        "pinned_version": None,
    }


def source_path(package: Formula | Cask) -> str:
    """The file of a package inside its tap; only the core taps sort theirs by letter."""
    kind = "Casks" if hasattr(package, "token") else "Formula"
    if package.tap not in (CORE, CASK_CORE):
        return f"{kind}/{package.name}.rb"
    letter = "font/font-" + package.name[5] if package.name.startswith("font-") else package.name[0]
    return f"{kind}/{letter}/{package.name}.rb"


def _urls(formula: Formula) -> Report:
    urls: Report = {
        "stable": {
            "url": f"{_DOWNLOADS}/{formula.name}-{formula.version}.tar.gz",
            "tag": None,
            "revision": None,
            "using": None,
            "checksum": hexadecimal(formula.name + formula.version, 64),
        }
    }
    if "head" in formula.entry:
        urls["head"] = {"url": formula.entry["head"], "branch": "main", "using": None}
    return urls


def _bottle(formula: Formula) -> Report:
    file = f"{formula.name}-{formula.pkg_version}.{BOTTLE_TAG}.bottle.tar.gz"
    return {
        "stable": {
            "rebuild": 0,
            "root_url": f"{_DOWNLOADS}/bottles",
            "files": {
                BOTTLE_TAG: {
                    "cellar": ":any",
                    "url": f"{_DOWNLOADS}/bottles/{file}",
                    "sha256": hexadecimal(file, 64),
                }
            },
        }
    }


def _keg(formula: Formula, keg: Keg, state: State, catalogue: Catalogue) -> Report:
    direct = set(formula.dependencies)
    needed = [
        _runtime_dependency(dependency, state, dependency.name in direct)
        for dependency in catalogue.with_dependencies(formula.name)
    ]
    return {
        "version": keg["version"],
        "used_options": [],
        "built_as_bottle": formula.bottled,
        "poured_from_bottle": formula.bottled,
        "time": keg["time"],
        "runtime_dependencies": needed,
        "installed_on_request": keg["on_request"],
    }


def _runtime_dependency(dependency: Formula, state: State, direct: bool) -> Report:
    rack = state["formulae"].get(dependency.name)
    keg_version = installed.active_keg(rack)["version"] if rack else dependency.pkg_version
    version, _, revision = keg_version.partition("_")
    return {
        "full_name": dependency.full_name,
        "version": version,
        "revision": int(revision or 0),
        "pkg_version": keg_version,
        "declared_directly": direct,
    }


def _service(formula: Formula, prefix: str) -> Report | None:
    command = formula.entry.get("service")
    if command is None:
        return None
    program, *words = command.split()
    return {
        "run": [f"{prefix}/opt/{formula.name}/bin/{program}", *words],
        "run_type": "immediate",
        "keep_alive": {"always": True},
        "working_dir": f"{prefix}/var",
        "log_path": f"{prefix}/var/log/{formula.name}.log",
        "error_log_path": f"{prefix}/var/log/{formula.name}.log",
    }


def _retirement(entry: Report) -> Report:
    """Deprecation and disabling share one set of keys."""
    report: Report = {}
    for name, state in (("deprecat", "deprecated"), ("disabl", "disabled")):
        date, reason = entry.get(state, (None, None))
        report[state] = date is not None
        noun = "deprecation" if state == "deprecated" else "disable"
        report[f"{noun}_date"] = date
        report[f"{noun}_reason"] = reason
        report[f"{noun}_replacement_formula"] = None
        report[f"{noun}_replacement_cask"] = None
        report[f"{name}e_args"] = date and {
            "date": date,
            "because": reason,
            "replacement_formula": None,
            "replacement_cask": None,
        }
    return report
