# SPDX-License-Identifier: MIT
"""The switches that make a run misbehave, read from `var/sample/misbehave.json`."""

from __future__ import annotations

import json
import os

from .errors import MisbehaviourError

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

FILE = os.path.join("var", "sample", "misbehave.json")

_NUMBER = (int, float)
SWITCHES: dict[str, tuple[type, ...]] = {
    "status": (int,),
    "error": (str,),
    "delay": _NUMBER,
    "delay_after": _NUMBER,
    "noise": (str,),
    "noise_stderr": (str,),
    "stderr_flood": (int,),
    "long_line": _NUMBER,
    "invalid_utf8": (bool,),
    "truncate": _NUMBER,
    "colour": (bool,),
    "close": (str,),
    "cask_versions": (str,),
    "headings": (bool,),
    "healthy": (bool,),
    "pace": _NUMBER,
}
_CHOICES = {"close": ("stdout", "stderr"), "cask_versions": ("text", "list")}


def check(switches: dict[str, Any]) -> None:
    """A switch misspelt in a test would leave the test with nothing to fail on, so it is refused."""
    for name, value in switches.items():
        kinds = SWITCHES.get(name)
        if kinds is None:
            raise MisbehaviourError(f"unknown switch {name!r}")
        if not isinstance(value, kinds) or (isinstance(value, bool) and bool not in kinds):
            raise MisbehaviourError(f"switch {name!r} cannot be {value!r}")
        if name in _CHOICES and value not in _CHOICES[name]:
            raise MisbehaviourError(f"switch {name!r} is one of {', '.join(_CHOICES[name])}")
        if int in kinds and value < 0:
            raise MisbehaviourError(f"switch {name!r} cannot be negative")


def read_file(prefix: str) -> dict[str, dict[str, Any]]:
    """Everything that is switched on, by the command it holds for."""
    try:
        with open(os.path.join(prefix, FILE), encoding="utf-8") as file:
            content = json.load(file)
    except FileNotFoundError:
        return {}
    except ValueError as error:
        raise MisbehaviourError(f"not JSON: {error}") from error
    if not isinstance(content, dict) or not all(isinstance(v, dict) for v in content.values()):
        raise MisbehaviourError("expected an object of objects")
    for switches in content.values():
        check(switches)
    return content


def matches(command: str, args: list[str]) -> bool:
    """`*`, a sub-command, or a sub-command followed by arguments that must be present."""
    words = command.split()
    if words == ["*"]:
        return True
    return bool(words) and args[:1] == words[:1] and all(word in args for word in words[1:])


def switches_for(prefix: str, args: list[str]) -> dict[str, Any]:
    """The switches of one run; a command with more words overrides one with fewer."""
    merged: dict[str, Any] = {}
    content = read_file(prefix)
    for command in sorted(content, key=lambda name: (name != "*", len(name.split()))):
        if matches(command, args):
            merged.update(content[command])
    return merged
