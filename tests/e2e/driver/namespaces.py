# SPDX-License-Identifier: MIT
"""Programs that see less of the system than there is."""

from __future__ import annotations

import functools
import os
import subprocess


@functools.lru_cache(maxsize=None)
def own(*kinds: str) -> list[str] | None:
    """The beginning of a command line whose command has `mount` or `net` to itself; none where
    the system grants that to nobody."""
    command = ["unshare", *(f"--{kind}" for kind in kinds)]
    if os.geteuid() != 0:
        # As oneself: the buses know their users by number.
        command += ["--user", "--map-current-user", "--keep-caps"]
    probe = subprocess.run([*command, "true"], capture_output=True, check=False)
    return command if probe.returncode == 0 else None


def without_network() -> list[str]:
    """For programs that would ask the world for news of themselves: nobody answers them."""
    return own("net") or []
