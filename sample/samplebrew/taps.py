# SPDX-License-Identifier: MIT
"""`brew tap` and `brew untap`; both talk on standard error only, like the real ones."""

from __future__ import annotations

from .arguments import Arguments
from .errors import BrewError
from .figures import tap_contents
from .wording import count, join_words, readable_contents

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .catalogue import Catalogue
    from .context import Brew
    from .state import State

_CLONE_SECONDS = 0.4
_LETTERS = frozenset("abcdefghijklmnopqrstuvwxyz0123456789_.-")
# Repositories of this owner play those that do not exist.
_OWNER_OF_NOTHING = "missing"


def tap(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words)
    if not arguments.names:
        brew.out.lines(sorted(brew.states.read()["taps"]))
        return 0
    add_tap(brew, _tap_name(arguments.names[0]))
    return 0


def untap(brew: Brew, words: list[str]) -> int:
    arguments = Arguments(words)
    arguments.require_names("tap")
    for name in map(_tap_name, arguments.names):
        _remove_tap(brew, name)
    return 0


def add_tap(brew: Brew, name: str) -> None:
    state = brew.states.read()
    if name in state["taps"]:
        return
    owner, _, repository = name.partition("/")
    if owner == "homebrew" and repository in ("core", "cask"):
        raise BrewError(
            f"Tapping {name} is no longer typically necessary.\n"
            "Add `--force` if you are sure you need it for contributing to Homebrew."
        )
    folder = f"{brew.prefix}/Library/Taps/{owner}/homebrew-{repository}"
    brew.out.note_heading(f"Tapping {name}")
    brew.out.note(f"Cloning into '{folder}'...")
    brew.out.pause(_CLONE_SECONDS)
    if owner == _OWNER_OF_NOTHING:
        address = f"https://github.com/{owner}/homebrew-{repository}"
        brew.out.note("remote: Repository not found.")
        brew.out.note(f"fatal: repository '{address}/' not found")
        raise BrewError(f"Failure while executing; `git clone {address} {folder}` exited with 128.")
    with brew.states.changing() as state:
        if name not in state["taps"]:
            state["taps"].append(name)
    brew.out.note(f"Tapped{_contents(brew.catalogue(state), name)}.")


def _remove_tap(brew: Brew, name: str) -> None:
    with brew.states.changing() as state:
        if name not in state["taps"]:
            raise BrewError(
                f"No available tap {name}.\nRun brew tap-new {name} to create a new {name} tap!"
            )
        catalogue = brew.catalogue(state)
        used = _installed_from(state, catalogue, name)
        if used:
            brew.out.heading(
                f"Would untap {name} after uninstalling the following formulae and casks:"
            )
            brew.out.lines(used)
            listed = "\n".join(used)
            raise BrewError(
                f"Refusing to untap {name} because it contains the following installed "
                f"formulae and casks:\n{listed}"
            )
        state["taps"].remove(name)
    brew.out.note(f"Untapping {name}...")
    brew.out.note(f"Untapped{_contents(catalogue, name)}.")


def _tap_name(text: str) -> str:
    """`user/repo` as brew keeps it: in lower case and without `homebrew-`."""
    owner, _, repository = text.lower().partition("/")
    repository = repository.removeprefix("homebrew-")
    for part in (owner, repository):
        if not part or not _LETTERS.issuperset(part) or part.startswith((".", "-")):
            raise BrewError(f"Invalid tap name: '{text}'")
    return f"{owner}/{repository}"


def _contents(catalogue: Catalogue, name: str) -> str:
    formulae, casks = catalogue.of_tap(name)
    kinds = []
    if casks:
        kinds.append(count(len(casks), "cask", "casks"))
    if formulae:
        kinds.append(count(len(formulae), "formula", "formulae"))
    size = readable_contents(*tap_contents(name, len(casks) + len(formulae)), keep_zero=True)
    return f" {join_words(kinds)} ({size})" if kinds else f" ({size})"


def _installed_from(state: State, catalogue: Catalogue, name: str) -> list[str]:
    formulae, casks = catalogue.of_tap(name)
    return [formula.full_name for formula in formulae if formula.name in state["formulae"]] + [
        cask.full_token for cask in casks if cask.token in state["casks"]
    ]
