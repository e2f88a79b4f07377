# SPDX-License-Identifier: MIT
"""What has to be installed before anything can be driven, and how to get it."""

from __future__ import annotations

import importlib.util
import shutil
import sys
from pathlib import Path

# Program, module or file, and the Debian package it comes in.
_PROGRAMS = {"Xvfb": "xvfb", "dbus-daemon": "dbus-daemon", "zsh": "zsh"}
_MODULES = {"dbus": "python3-dbus", "gi": "python3-gi", "Xlib": "python3-xlib"}
ACCESSIBILITY_SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")


def missing_packages() -> list[str]:
    missing = [package for name, package in _PROGRAMS.items() if shutil.which(name) is None]
    missing += [
        package for name, package in _MODULES.items() if importlib.util.find_spec(name) is None
    ]
    if not ACCESSIBILITY_SERVICE.exists():
        missing.append("at-spi2-core")
    return missing


def require_programs_and_modules() -> None:
    """Ends the process with the command that helps, if there is anything missing."""
    packages = missing_packages()
    if not packages:
        return
    message = f"Driving the application needs: apt-get install {' '.join(packages)}"
    if sys.executable != "/usr/bin/python3" and any(name in packages for name in _MODULES.values()):
        message += f"\n({sys.executable} has no Debian modules; /usr/bin/python3 has.)"
    sys.exit(message)
