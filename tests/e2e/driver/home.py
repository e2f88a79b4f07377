# SPDX-License-Identifier: MIT
"""A home folder of its own, with its own preferences."""

from __future__ import annotations

import configparser
from pathlib import Path


class Home:
    def __init__(self, folder: Path, language: str | None = "en") -> None:
        """Without a language, the application is left to find one itself."""
        self.folder = folder
        self.runtime = folder / ".runtime"
        self.temporary = folder / ".tmp"
        folder.mkdir(parents=True)
        # Sockets are refused in a folder that others may enter.
        self.runtime.mkdir(mode=0o700)
        self.temporary.mkdir(mode=0o700)
        # Read before the system's own profile, which may print and set what it likes.
        (folder / ".zshenv").write_text("unsetopt global_rcs\n", encoding="utf-8")
        if language:
            self.write_preferences(appLanguage=language)

    @property
    def _preferences(self) -> Path:
        return self.folder / ".config/Lumora/Lumora.conf"

    def write_preferences(self, **values: str) -> None:
        self._preferences.parent.mkdir(parents=True, exist_ok=True)
        lines = ["[General]", *(f"{key}={value}" for key, value in values.items())]
        self._preferences.write_text("\n".join(lines) + "\n", encoding="utf-8")

    def preferences(self) -> dict[str, str]:
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str  # type: ignore[assignment]
        parser.read(self._preferences, encoding="utf-8")
        return dict(parser["General"]) if "General" in parser else {}
