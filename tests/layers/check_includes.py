#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the #include lines of src/ to the table of layers.

A header that needs no linking can be included from anywhere without the linker's
noticing, so the directions between the layers are read from the sources themselves.

The table has a line for each layer, as the build writes it: `name: layer;layer`. A layer
includes its own headers and those of the layers on its line, no others. Behind a bar stand
the floors of a layer that has some, `name: layer;layer | floor;floor`, from the ground up:
each is a folder that includes itself and those before it, and whose headers are included
with the name of their folder. The folder of the program (--program) has no line: it puts
the layers together and nobody includes it. Headers that the build generates (--generated)
belong to no layer and to all. Where a layer depends on floors of another only, the highest
of these stands behind the other's name, `name: layer/floor`.
"""

import argparse
import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
SPDX = re.compile(r"^// SPDX-License-Identifier: \S+$", re.MULTILINE)
PRAGMA_ONCE = re.compile(r"^#pragma once$", re.MULTILINE)
QT_NAME = re.compile(r"^(Q\w+(/.*)?|q[a-z]\w*\.h)$")

# Which of Qt's modules a layer may include; a layer that isn't named here may use any.
QT_MODULES = {"core": set(), "published": {"QtCore"}, "model": {"QtCore"}, "l10n": {"QtCore"}}


def parts_of(text):
    return [part.strip() for part in text.split(";") if part.strip()]


def read_table(text):
    """The layers and what each depends on."""
    table = {}
    for line in text.splitlines():
        name, _, dependencies = line.partition("|")[0].partition(":")
        table[name.strip()] = set(parts_of(dependencies))
    return table


def read_floors(text):
    """The layers that have floors, and those from the ground up."""
    floors = {}
    for line in text.splitlines():
        name = line.partition(":")[0].strip()
        if names := parts_of(line.partition("|")[2]):
            floors[name] = names
    return floors


def layer_of(dependency):
    return dependency.partition("/")[0]


def table_problems(table):
    """Dependencies on unknown layers, and cycles."""
    table = {name: {layer_of(need) for need in needs} for name, needs in table.items()}
    problems = []
    for name, dependencies in table.items():
        for unknown in sorted(dependencies - table.keys()):
            problems.append(f"layer table: {name} depends on {unknown}, which is no layer")
    remaining = dict(table)
    while remaining:
        lowest = [name for name, needs in remaining.items() if not needs & remaining.keys()]
        if not lowest:
            problems.append("layer table: a cycle through " + ", ".join(sorted(remaining)))
            break
        for name in lowest:
            del remaining[name]
    return problems


def sources_of(root):
    """Every header and source below `root` with the layer it belongs to."""
    for path in sorted(root.rglob("*")):
        if path.suffix in (".h", ".cpp") or path.name.endswith(".h.in"):
            yield path, path.relative_to(root).parts[0]


def qt_modules_of(name, qt_headers):
    """The modules that an include of `name` reaches into; none if it isn't Qt's.

    Without the folder of Qt's headers only a name that spells its module gives it away.
    """
    if not QT_NAME.match(name):
        return set()
    module, slash, _ = name.partition("/")
    if slash:
        return {module}
    if qt_headers is None:
        return {"QtCore"}
    found = {path.parent.name for path in qt_headers.glob(f"*/{name}")}
    return found or {"a module of Qt's that wasn't found"}


class Tree:
    """The sources of one tree and what is wrong with their includes."""

    def __init__(self, root, table, program=None, qt_headers=None, generated=None, floors=None):
        self.root = root
        self.table = table
        self.floors = floors or {}
        self.program = program
        self.qt_headers = qt_headers
        self.generated = {path.name for path in generated.glob("*.h")} if generated else set()
        self.problems = table_problems(table)
        self.checked = 0
        self.layer_of_header = {}
        self.folder_of_header = {}

    def check(self):
        files = list(sources_of(self.root))
        for path, layer in files:
            self.register(path, layer)
        for path, layer in files:
            self.checked += 1
            text = path.read_text(encoding="utf-8")
            if path.suffix != ".cpp":
                self.check_header(path, text)
            for number, line in enumerate(text.splitlines(), 1):
                if match := INCLUDE.match(line):
                    self.check_include(path, layer, number, *match.groups())
        if not files:
            self.problems.append(f"{self.root}: no sources found")
        return self.problems

    def complain(self, path, number, text):
        self.problems.append(f"{path.relative_to(self.root)}:{number}: {text}")

    def register(self, path, layer):
        if layer not in self.table and layer != self.program:
            self.complain(path, 1, f"{layer} has no line in the layer table")
        if path.suffix == ".cpp":
            return
        name = path.name.removesuffix(".in")
        if name in self.layer_of_header:
            self.complain(path, 1, f"there is another {name}: which one is meant can't be told")
        self.layer_of_header.setdefault(name, layer)
        self.folder_of_header.setdefault(name, path.parent.name)
        if layer in self.floors and path.parent.name not in self.floors[layer]:
            self.complain(path, 1, f"{path.parent.name} is no floor of {layer}")

    def check_header(self, path, text):
        if len(PRAGMA_ONCE.findall(text)) != 1:
            self.complain(path, 1, "a header has one #pragma once")
        if len(SPDX.findall(text)) != 1:
            self.complain(path, 1, "a header has exactly one SPDX line")

    def check_include(self, path, layer, number, quote, name):
        allowed_modules = QT_MODULES.get(layer)
        if allowed_modules is not None:
            for module in sorted(qt_modules_of(name, self.qt_headers) - allowed_modules):
                self.complain(path, number, f"{layer} includes {name} of {module}")
        target = self.layer_of_header.get(Path(name).name)
        if target is None:
            known = name in self.generated or name in (f"{path.stem}.moc", f"moc_{path.stem}.cpp")
            if quote == '"' and not known:
                self.complain(path, number, f"{name} is no header of src/")
        elif target != layer and not self.may_include(layer, target):
            self.complain(path, number, f"{layer} includes {name} of {target}")
        elif target in self.floors:
            self.check_floor(path, layer, number, name, target)

    def check_floor(self, path, layer, number, name, target):
        """An include of a header that stands on a floor of the layer `target`."""
        folder = self.folder_of_header[Path(name).name]
        if name != f"{folder}/{Path(name).name}":
            self.complain(path, number, f"{name} is included without its folder {folder}/")
        floors = self.floors[target]
        for highest in self.highest_floors(layer, target):
            if floors.index(folder) > floors.index(highest):
                self.complain(path, number, f"{layer} includes {name}, above the floor {highest}")
        if layer == target and {folder, path.parent.name} <= set(floors):
            if floors.index(folder) > floors.index(path.parent.name):
                self.complain(path, number, f"{path.parent.name} includes {name}, a floor above")

    def may_include(self, layer, target):
        if layer == self.program:
            return True
        return target in {layer_of(need) for need in self.table.get(layer, set())}

    def highest_floors(self, layer, target):
        """Where a layer depends on some floors of another only, the uppermost of them."""
        needs = (need.partition("/") for need in self.table.get(layer, set()))
        return [floor for name, _, floor in needs if name == target and floor]


def main():
    parser = argparse.ArgumentParser(description="Holds #include lines to the table of layers.")
    parser.add_argument("table", type=Path)
    parser.add_argument("source", type=Path)
    parser.add_argument("--program", help="the folder that may include every layer")
    parser.add_argument("--qt-headers", type=Path, help="the folder of QtCore/, QtWidgets/ …")
    parser.add_argument("--generated", type=Path, help="the folder of headers made by the build")
    options = parser.parse_args()
    if options.qt_headers and not (options.qt_headers / "QtCore").is_dir():
        parser.error(f"{options.qt_headers} has no QtCore/")

    text = options.table.read_text(encoding="utf-8")
    table = read_table(text)
    tree = Tree(
        options.source,
        table,
        options.program,
        options.qt_headers,
        options.generated,
        read_floors(text),
    )
    for problem in tree.check():
        print(problem)
    print(f"{tree.checked} files of {len(table)} layers, {len(tree.problems)} problems")
    return 1 if tree.problems else 0


if __name__ == "__main__":
    sys.exit(main())
