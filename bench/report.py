#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks and prints what came out beside its reference and its goal."""

from __future__ import annotations

import argparse
import json
import os
import platform
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from measures import (  # noqa: E402
    growth, idle, interaction, launch, memory, overhead, reports)
from measures.setting import Setting  # noqa: E402
from measures.table import Line, as_json, markdown, replace_block  # noqa: E402

PARTS = {
    "launch": launch.measure,
    "memory": memory.measure,
    "idle": idle.measure,
    "reports": reports.measure,
    "interaction": interaction.measure,
    "overhead": overhead.measure,
    "growth": growth.measure,
}


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("parts", nargs="*", metavar="PART", help=f"of {', '.join(PARTS)}")
    parser.add_argument("--programs", type=Path, required=True, help="where they were built")
    parser.add_argument("--create-prefix", type=Path, required=True, help="of the sample Homebrew")
    parser.add_argument("--json", type=Path, required=True, help="the file for all results")
    parser.add_argument("--report", type=Path, help="the document whose tables are to be renewed")
    options = parser.parse_args()
    if unknown := set(options.parts) - set(PARTS):
        parser.error(f"there is no part {', '.join(sorted(unknown))}")
    return options


def surroundings() -> str:
    def said(*command: str) -> str:
        return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout.strip()

    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    report = "the recorded" if "LUMORA_RECORDED" in os.environ else "a synthetic"
    return (f"{os.cpu_count()} processors, {system}, GCC {said('c++', '-dumpfullversion')}, "
            f"Qt {said('pkg-config', '--modversion', 'Qt6Core')}, {report} report of all formulae.")


def main() -> None:
    options = parse_arguments()
    results: dict[str, list[Line]] = {}
    with Setting(options.programs, options.create_prefix) as setting:
        for part in options.parts or PARTS:
            print(f"measuring: {part}", file=sys.stderr)
            results[part] = list(PARTS[part](setting))
    print(markdown([line for lines in results.values() for line in lines]))
    told = {part: [as_json(line) for line in lines] for part, lines in results.items()}
    options.json.write_text(json.dumps({"surroundings": surroundings(), "parts": told}, indent=2))
    if options.report:
        for part, lines in results.items():
            picture = ["", growth.draw(lines, options.report)] if part == "growth" else []
            replace_block(options.report, part, "\n".join([markdown(lines), *picture]))
        if not options.parts:
            replace_block(options.report, "surroundings", surroundings())


if __name__ == "__main__":
    main()
