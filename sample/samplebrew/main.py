# SPDX-License-Identifier: MIT
"""One run: from the arguments to the exit status, with a line in the log."""

from __future__ import annotations

import json
import os
import signal
import sys
import time
from importlib import import_module

from .context import Brew
from .errors import BrewError, MisbehaviourError, Terminated, UsageError
from .misbehaviour import FILE, switches_for
from .output import Output
from .state import FOLDER, StateFile

TYPE_CHECKING = False
if TYPE_CHECKING:
    from types import FrameType
    from typing import Any

VERSION = "6.0.18-sample"

# Modules are named rather than imported, so that a run loads only what it needs.
_COMMANDS = {
    "cleanup": "cleanup",
    "doctor": "doctor",
    "info": "info",
    "install": "install",
    "outdated": "info",
    "search": "search",
    "tap": "taps",
    "uninstall": "uninstall",
    "untap": "taps",
    "upgrade": "upgrade",
}
_OTHER_NAMES = {"remove": "uninstall", "rm": "uninstall", "abv": "info", "dr": "doctor"}
_PARAMETERS = {
    "cleanup": "[options] [formula|cask ...]",
    "doctor": "[options]",
    "info": "[options] [formula|cask ...]",
    "outdated": "[options]",
    "search": "[options] text|/regex/ [...]",
    "tap": "[options] [user/repo]",
    "untap": "[options] tap [...]",
    "upgrade": "[options] [installed_formula|installed_cask ...]",
}
_HELP = """\
Example usage:
  brew search TEXT|/REGEX/
  brew info [FORMULA|CASK...]
  brew install FORMULA|CASK...
  brew outdated
  brew upgrade [FORMULA|CASK...]
  brew uninstall FORMULA|CASK...

Taps:
  brew tap [USER/REPO]
  brew untap USER/REPO

Troubleshooting:
  brew doctor
  brew cleanup [-n]

This is the sample Homebrew: it keeps a list of what it calls installed and
installs nothing.
"""
_BAD_SWITCHES_STATUS = 78


def main(prefix: str, args: list[str]) -> int:
    started = time.time()
    status = 1
    for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
        # What the caller has shielded the run from stays ignored.
        if signal.getsignal(number) != signal.SIG_IGN:
            signal.signal(number, _end_early)
    try:
        status = _run(prefix, args)
    except Terminated as end:
        status = end.status
    except BrokenPipeError:
        # Nobody listens any more, so there is nobody to tell either.
        status = 1
    finally:
        _log(prefix, args, started, status)
    return status


def _run(prefix: str, args: list[str]) -> int:
    try:
        switches = switches_for(prefix, args)
    except MisbehaviourError as error:
        print(f"Error: {FILE}: {error}", file=sys.stderr)
        return _BAD_SWITCHES_STATUS
    out = Output(switches, _pace(prefix, switches))
    out.begin()
    try:
        if "error" in switches:
            raise BrewError(switches["error"])
        status = _dispatch(Brew(prefix, args, switches, out))
    except UsageError as error:
        if args[0] in {**_COMMANDS, **_OTHER_NAMES}:
            out.note(f"Usage: brew {args[0]} {_parameters(args[0])}\n")
        out.error(str(error))
        status = 1
    except BrewError as error:
        out.error(str(error))
        status = 1
    out.finish()
    return switches.get("status", status)


def _dispatch(brew: Brew) -> int:
    if not brew.args:
        brew.out.note(_HELP.rstrip("\n"))
        return 1
    command, *words = brew.args
    if command.startswith("-") or command == "help":
        return _answer(brew, command)
    command = _OTHER_NAMES.get(command, command)
    module_name = _COMMANDS.get(command)
    if module_name is None:
        brew.out.note(_HELP)
        raise BrewError(f"Invalid usage: Unknown command: brew {command}")
    module = import_module(f".{module_name}", __package__)
    return getattr(module, command)(brew, words)


def _answer(brew: Brew, option: str) -> int:
    answers = {
        "--version": f"Homebrew {VERSION}",
        "-v": f"Homebrew {VERSION}",
        "--prefix": brew.prefix,
        "--repository": brew.prefix,
        "--cellar": os.path.join(brew.prefix, "Cellar"),
        "--caskroom": os.path.join(brew.prefix, "Caskroom"),
        "--cache": os.path.join(brew.prefix, "var", "cache", "Homebrew"),
        "--help": _HELP.rstrip("\n"),
        "-h": _HELP.rstrip("\n"),
        "help": _HELP.rstrip("\n"),
    }
    if option not in answers:
        brew.out.note(_HELP)
        raise BrewError(f"Invalid usage: Unknown command: brew {option}")
    brew.out.line(answers[option])
    return 0


def _parameters(command: str) -> str:
    command = _OTHER_NAMES.get(command, command)
    return _PARAMETERS.get(command, "[options] formula|cask [...]")


def _pace(prefix: str, switches: dict[str, Any]) -> float:
    if "pace" in switches:
        return switches["pace"]
    return StateFile(prefix).read().get("pace", 1.0)


def _end_early(number: int, _frame: FrameType | None) -> None:
    raise Terminated(number)


def _log(prefix: str, args: list[str], started: float, status: int) -> None:
    line = json.dumps({"args": args, "started": started, "ended": time.time(), "status": status})
    flags = os.O_WRONLY | os.O_CREAT | os.O_APPEND
    log = os.open(os.path.join(prefix, FOLDER, "log.jsonl"), flags, 0o644)
    try:
        os.write(log, line.encode() + b"\n")
    finally:
        os.close(log)
