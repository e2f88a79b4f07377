# SPDX-License-Identifier: MIT
"""Splits a sub-command's words into names and options."""

from __future__ import annotations

from .errors import UsageError

_EVERYWHERE = frozenset(
    {"--debug", "-d", "--quiet", "-q", "--verbose", "-v", "--force", "-f"}
)
_FORMULA = frozenset({"--formula", "--formulae"})
_CASK = frozenset({"--cask", "--casks"})
KIND_OPTIONS = tuple(_FORMULA | _CASK)


class Arguments:
    """The words after a sub-command; anything after `--` is a name."""

    def __init__(self, words: list[str], *options: str) -> None:
        self.names: list[str] = []
        self.options: set[str] = set()
        only_names = False
        for word in words:
            if only_names or not word.startswith("-") or word == "-":
                self.names.append(word)
            elif word == "--":
                only_names = True
            elif word in options or word in _EVERYWHERE:
                self.options.add(word)
            else:
                raise UsageError(f"invalid option: {word}")
        if self.only_formulae and self.only_casks:
            raise UsageError("Invalid usage: Options --formula and --cask are mutually exclusive.")

    def __contains__(self, option: str) -> bool:
        return option in self.options

    @property
    def only_formulae(self) -> bool:
        return not self.options.isdisjoint(_FORMULA)

    @property
    def only_casks(self) -> bool:
        return not self.options.isdisjoint(_CASK)

    def require_names(self, kind: str) -> None:
        if not self.names:
            raise UsageError(f"Invalid usage: This command requires at least 1 {kind} argument.")
