# SPDX-License-Identifier: MIT
"""The shapes of the lines that `brew` prints, whatever names and numbers are in them."""

from __future__ import annotations

import re

# Lines that recordings have for reasons which do not exist here: an untrusted tap and a
# build without a sandbox. Conversely nothing was poured from a bottle in them.
UNTRUSTED = re.compile(
    r"^Warning: The following taps are not trusted:\n.*?^  https://docs\.brew\.sh/Tap-Trust\n\n?", re.M | re.S
)
UNCOMPARED = re.compile(r"Warning: Sandbox unavailable: building without sandboxing!|==> Pouring \S+")

NAME = r"[\w@.+-]+"
FULL = rf"(?:{NAME}/{NAME}/)?{NAME}"
LIST = rf"{FULL}(?:, {FULL})*(?: and {FULL})?"
VERSION = r"[\w.,+-]+"
SIZE = r"[\d.]+(?:B|KB|MB|GB)"
CONTENTS = rf"[\d,]+ files?, {SIZE}"
PATH = r"/\S+"
KIND_OF_ARTIFACT = r"(?:Binary|Font|App)"
SHAPES = {
    "would install": rf"==> Would install \d+ (?:formula|formulae|cask|casks):",
    "would install needed": rf"==> Would install \d+ (?:dependency|dependencies) for {NAME}:",
    "fetching": rf"==> Fetching downloads for: {LIST}",
    "fetched": rf"✔︎ (?:Formula|Cask|Bottle|Bottle Manifest) {NAME} \({VERSION}\)",
    "installing from": rf"==> Installing {NAME} from {NAME}/{NAME}",
    "installing needed": rf"==> Installing {FULL} dependency: {FULL}",
    "installing cask": rf"==> Installing Cask {NAME}",
    "installing": rf"==> Installing {FULL}",
    "beer": rf"🍺  {PATH}/Cellar/{NAME}/{VERSION}: {CONTENTS}(?:, built in \d+ seconds?)?",
    "cask beer": rf"🍺  {NAME} was successfully (?:installed|upgraded)!",
    "running cleanup": rf"==> Running `brew cleanup {NAME}`\.\.\.",
    "hint": r"(?:Disable this behaviour by|Hide these hints with|Some casks with|`HOMEBREW_UPGRADE).*",
    "caveats": r"==> Caveats",
    "summary": r"==> Summary",
    "placing": rf"==> (?:Linking|Moving) {KIND_OF_ARTIFACT} '[^']+' to '{PATH}'",
    "removing artifact": rf"==> (?:Unlinking|Removing) {KIND_OF_ARTIFACT} '{PATH}'",
    "backing up": rf"==> Backing up {KIND_OF_ARTIFACT} '[^']+' to '{PATH}'",
    "purging": rf"==> Purging files for version {VERSION} of Cask {NAME}",
    "no checksum": rf"Warning: No checksum defined for cask '{NAME}', skipping verification\.",
    "already": rf"Warning: {FULL} {VERSION} is already installed and up-to-date\.",
    "to reinstall": rf"To reinstall {VERSION}, run:",
    "reinstall": rf"  brew reinstall {NAME}",
    "cask already": rf"Warning: Not upgrading {NAME}, the latest version is already installed",
    "upgraded already": rf"Warning: {FULL} {VERSION} already installed",
    "not installed": rf"Error: {FULL} not installed",
    "no formula": rf'(?:Error|Warning): No available formula with the name "{NAME}"\.',
    "no cask": rf"Warning: Cask '{NAME}' is unavailable: No Cask with this name exists\.",
    "similar": r"==> Searching for similarly named (?:formulae and )?casks\.\.\.",
    "none found": rf'Error: No (?:formulae or )?casks found for "?{NAME}"?\.',
    "disabled": rf"Error: {FULL} has been disabled because it .*! It was disabled on [\d-]+\.",
    "would upgrade": r"==> Would upgrade \d+ outdated packages?",
    "upgrading all": r"==> Upgrading \d+ outdated packages?:",
    "upgraded all": r"==> Upgraded \d+ outdated packages?",
    "upgrading": rf"==> Upgrading {FULL}",
    "from to": rf"  {VERSION} -> {VERSION} ?",
    "package from to": rf"{FULL} +{VERSION} +-> {VERSION}",
    "pinned": r"==> \d+ Pinned formulae?",
    "pinned package": rf"{FULL} {VERSION}",
    "not upgrading": r"(?:Error|Warning): Not upgrading \d+ pinned packages?:",
    "would remove": rf"Would remove: {PATH} \((?:{CONTENTS}|{SIZE})\)",
    "removing": rf"Removing: {PATH}\.\.\. \((?:{CONTENTS}|{SIZE})\)",
    "freed": rf"==> This operation (?:would free|has freed) approximately {SIZE} of disk space\.",
    "uninstalling": rf"Uninstalling {PATH}\.\.\. \({CONTENTS}\)",
    "uninstalling cask": rf"==> Uninstalling Cask {NAME}",
    "refusing": rf"Error: Refusing to uninstall {PATH}",
    "required": rf"because it is required by {LIST}, which (?:is|are) currently installed\.",
    "override": r"You can override this and force removal with:",
    "force": rf"  brew uninstall --ignore-dependencies {NAME}",
    "no keg": rf"Error: No such keg: {PATH}",
    "tapping": rf"==> Tapping {NAME}/{NAME}",
    "cloning": rf"Cloning into '{PATH}'\.\.\.",
    "tapped": r"(?:Tapped|Untapped) (?:\d+ casks? and )?\d+ formulae? \([\d,]+ files?, [\d.]+KB\)\.",
    "untapping": rf"Untapping {NAME}/{NAME}\.\.\.",
    "bad tap": rf"Error: Invalid tap name: '{NAME}'",
    "no tap": rf"Error: No available tap {NAME}/{NAME}\.",
    "tap-new": rf"Run brew tap-new {NAME}/{NAME} to create a new {NAME}/{NAME} tap!",
    "would untap": rf"==> Would untap {NAME}/{NAME} after uninstalling the following formulae and casks:",
    "untap refused": rf"Error: Refusing to untap {NAME}/{NAME} because it contains .*:",
    "locked": rf"Error: {FULL}: A `brew .*` process has already locked {PATH}/Cellar/{NAME}\.",
    "please wait": r"Please wait for it to finish or terminate it to continue\.",
    "formula title": rf"==> {FULL}: stable {VERSION}(?:, HEAD)?",
    "cask title": rf"==> {NAME} \([^)]+\): {VERSION}",
    "address": r"https://\S+",
    "reason": r"(?:Installed \(on request\)|Not installed)",
    "source": r"From: \S+",
    "tap of": rf"Tap: {NAME}/{NAME}",
    "licence": r"License: .*",
    "installed versions": r"==> Installed Versions",
    "installed version": rf"{FULL} {VERSION} \({CONTENTS}\) \[Linked\]",
    "dependencies": r"==> Dependencies",
    "required ones": rf"Required \(\d+\): {LIST}",
    "runtime ones": r"Recursive Runtime \(\d+\): all installed ✔",
    "options": r"==> Options",
    "head option": r"--HEAD",
    "head text": r"\tInstall HEAD version",
    "cask keg": rf"{PATH}/Caskroom/{NAME}/{VERSION} \({SIZE}\)",
    "cask time": r"  Installed on \d{4}-\d\d-\d\d at \d\d:\d\d:\d\d",
    "artifacts": r"==> Artifacts",
    "artifact": rf".+ \({KIND_OF_ARTIFACT}\)",
    "invalid usage": rf"Error: Invalid usage: Unknown command: brew {NAME}",
    "healthy": r"Your system is ready to brew\.",
    "warning": r"Warning: Some installed formulae are deprecated or disabled\.",
    "warning detail": r"You should find replacements for the following formulae:",
    "warning item": rf"    {FULL}",
    "path warning": r"Warning: Homebrew's \"bin\" was not found in your PATH\.",
    "path advice": r"Consider setting your PATH for example like so:",
    "path line": r"    echo 'export PATH=\"\S+:\$PATH\"' >> ~/\.zshrc",
    "name": FULL,
    "blank": "",
}  # fmt: skip
COMPILED = {name: re.compile(pattern) for name, pattern in SHAPES.items()}


def shapes_of(text: str) -> list[str]:
    """The shapes of the lines, with repetitions of one shape counted once."""
    shapes: list[str] = []
    for line in UNTRUSTED.sub("", text).splitlines():
        if UNCOMPARED.fullmatch(line):
            continue
        found = next((name for name, shape in COMPILED.items() if shape.fullmatch(line)), "free text")
        if not shapes or shapes[-1] != found:
            shapes.append(found)
    return shapes
