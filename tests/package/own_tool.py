# SPDX-License-Identifier: MIT
"""Programs of the system that a test has another in the place of."""

from __future__ import annotations

import os
from pathlib import Path


def environment_with(folder: Path, name: str, script: str) -> dict[str, str]:
    """Where a shell script in this folder is the program of that name."""
    folder.mkdir(exist_ok=True)
    program = folder / name
    program.write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
    program.chmod(0o755)
    return {**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"}
