# SPDX-License-Identifier: MIT
"""`brew doctor`."""

from __future__ import annotations

import os

from . import installed
from .arguments import Arguments

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue
    from .context import Brew
    from .state import State

_PREFACE = (
    "The warnings below are hints for whoever looks into a problem report about",
    "Homebrew. As long as everything you use it for works, there is nothing you",
    "need to do about them.",
)


def doctor(brew: Brew, words: list[str]) -> int:
    Arguments(words)
    state = brew.states.read()
    findings = _findings(brew, state, brew.catalogue(state))
    if brew.switches.get("healthy") or not findings:
        brew.out.line("Your system is ready to brew.")
        return 0
    brew.out.line()
    for text in _PREFACE:
        brew.out.note(text)
    for finding in findings:
        brew.out.note()
        brew.out.warning(finding)
    return 1


def _findings(brew: Brew, state: State, catalogue: Catalogue) -> list[str]:
    findings = []
    retired = [
        formula.full_name
        for formula, _ in installed.formulae(state, catalogue)
        if "deprecated" in formula.entry or "disabled" in formula.entry
    ]
    if retired:
        findings.append(
            "Some installed formulae are deprecated or disabled.\n"
            "You should find replacements for the following formulae:\n" + _indented(retired)
        )
    missing = installed.missing_dependencies(state, catalogue)
    if missing:
        findings.append(
            "Some installed formulae are missing dependencies.\n"
            "You should `brew install` the missing dependencies:\n"
            f"  brew install {' '.join(missing)}"
        )
    unlinked = [
        formula.name
        for formula, rack in installed.formulae(state, catalogue)
        if formula.links and rack["linked"] is None
    ]
    if unlinked:
        findings.append(
            "You have unlinked kegs in your Cellar.\n"
            "What depends on them may fail to build until you link them:\n" + _indented(unlinked)
        )
    folder = os.path.join(brew.prefix, "bin")
    if folder not in os.environ.get("PATH", "").split(os.pathsep):
        findings.append(
            'Homebrew\'s "bin" was not found in your PATH.\n\n'
            "Consider setting your PATH for example like so:\n"
            f"    echo 'export PATH=\"{folder}:$PATH\"' >> ~/.zshrc"
        )
    return findings


def _indented(names: list[str]) -> str:
    return "\n".join("    " + name for name in names)
