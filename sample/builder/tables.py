# SPDX-License-Identifier: MIT
"""Reads the tables in `data/` into the catalogue that a prefix carries."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

Entry = dict[str, Any]


class TableError(Exception):
    """A line of a table that cannot be read."""


def read_catalogue(folder: Path) -> dict[str, dict[str, Entry]]:
    formulae = dict(sorted(_read(folder / "formulae.txt", _formula, _FORMULA_PROPERTIES)))
    casks = dict(sorted(_read(folder / "casks.txt", _cask, _CASK_PROPERTIES)))
    for name, entry in formulae.items():
        base, at, _ = name.partition("@")
        for needed in entry.get("dependencies", []):
            if needed not in formulae:
                raise TableError(f"{name} depends on {needed}, which is not in the table")
        if at and base in formulae:
            formulae[base].setdefault("versioned_formulae", []).append(name)
    return {"formulae": formulae, "casks": casks}


def _formula(fields: list[str]) -> tuple[str, Entry]:
    name, version, licence, homepage, dependencies, description = fields
    entry = _named(name)
    entry["version"], _, revision = version.partition("_")
    if revision:
        entry["revision"] = int(revision)
    entry["desc"] = _optional(description)
    entry["license"] = _optional(licence)
    entry["homepage"] = "https://" + homepage
    if dependencies != "-":
        entry["dependencies"] = dependencies.split()
    return name.rpartition("/")[2], entry


def _cask(fields: list[str]) -> tuple[str, Entry]:
    token, version, homepage, names, description = fields
    entry = _named(token)
    token = token.rpartition("/")[2]
    entry["version"] = version
    entry["names"] = [] if names == "-" else names.split(", ")
    entry["desc"] = _optional(description)
    entry["homepage"] = "https://" + homepage
    if token.startswith("font-"):
        entry["artifact"] = ["font", entry["names"][0].split(" (")[0].replace(" ", "") + ".ttf"]
    elif entry["names"]:
        entry["artifact"] = ["app", entry["names"][0] + ".app"]
    return token, entry


def _named(name: str) -> Entry:
    tap = name.rpartition("/")[0]
    return {"tap": tap} if tap else {}


def _optional(text: str) -> str | None:
    return None if text == "-" else text


def _words(key: str) -> Callable[[Entry, str], None]:
    def add(entry: Entry, value: str) -> None:
        entry[key] = value.split()

    return add


def _text(key: str) -> Callable[[Entry, str], None]:
    def add(entry: Entry, value: str) -> None:
        entry[key] = value

    return add


def _paragraph(key: str) -> Callable[[Entry, str], None]:
    def add(entry: Entry, value: str) -> None:
        entry[key] = entry.get(key, "") + value + "\n"

    return add


def _artifact(kind: str) -> Callable[[Entry, str], None]:
    def add(entry: Entry, value: str) -> None:
        entry["artifact"] = [kind, value]

    return add


def _conflict(entry: Entry, value: str) -> None:
    name, _, reason = value.partition(" ")
    entry.setdefault("conflicts", []).append([name, reason])


def _updates(entry: Entry, value: str) -> None:
    entry["auto_updates"] = value == "yes"


Property = Callable[[Entry, str], None]
_RETIREMENT: dict[str, Property] = {
    "deprecated": _words("deprecated"),
    "disabled": _words("disabled"),
    "caveats": _paragraph("caveats"),
}
_FORMULA_PROPERTIES: dict[str, Property] = {
    **_RETIREMENT,
    "aliases": _words("aliases"),
    "build": _words("build_dependencies"),
    "macos": _words("uses_from_macos"),
    "keg-only": _text("keg_only"),
    "conflicts": _conflict,
    "service": _text("service"),
    "head": _text("head"),
}
_CASK_PROPERTIES: dict[str, Property] = {
    **_RETIREMENT,
    "updates": _updates,
    "depends": _words("depends_on"),
    "app": _artifact("app"),
    "binary": _artifact("binary"),
    "font": _artifact("font"),
    "pkg": _artifact("pkg"),
}


def _read(
    path: Path,
    make: Callable[[list[str]], tuple[str, Entry]],
    properties: dict[str, Property],
) -> list[tuple[str, Entry]]:
    found: list[tuple[str, Entry]] = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        try:
            if line.startswith(" "):
                # Only the first blank after the colon separates: caveats may be indented.
                key, _, value = line.strip().partition(": ")
                properties[key](found[-1][1], value)
            else:
                found.append(make(line.split(" | ")))
        except (IndexError, KeyError, ValueError) as error:
            raise TableError(f"{path.name}:{number}: {line}") from error
    names = [name for name, _ in found]
    if len(set(names)) != len(names):
        raise TableError(f"{path.name}: a name stands there twice")
    return found
