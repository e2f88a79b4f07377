# SPDX-License-Identifier: MIT
"""What the scripts need of the system that they run on: macOS's shell and tools are older ones."""

from __future__ import annotations

import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from own_tool import environment_with

ROOT = Path(__file__).resolve().parents[2]
FOLDERS = ("scripts", "packaging", ".ci")
# What isn't for macOS: these are sourced or started on Linux alone, the others say so themselves.
FOR_LINUX = re.compile(r"packaging/(linux|debian)\.sh|scripts/(system\.sh|try-.*)")
ONLY_ON_LINUX: dict[str, list[str]] = {
    "bench": [],
    "fuzz": [],
    "lint": [],
    "run": ["--screenshots", "/nonexistent/pictures"],
    "soak": [],
    "stumble": [],
}
# What can't be meant, and what is said to it.
REFUSED: dict[tuple[str, ...], str] = {
    ("run", "--screenshots", "/nonexistent/pictures", "--", "--version"):
        "options for Lumora don't go with --screenshots: --version",
    ("package", "--deb", "--sign-with", "KEY"):
        "--sign-with signs the archive, and --deb makes none",
    ("package", "--build-dir", "/nonexistent/build"):
        "there is no Lumora.app in /nonexistent/build",
    ("package", "--deb", "--build-dir", "/nonexistent/build"):
        "there is no whole build in /nonexistent/build",
}

# macOS has 3.2.
NEWER_BASH = re.compile(
    r"""
      \b(mapfile|readarray|coproc|BASHPID|EPOCHSECONDS|EPOCHREALTIME|globstar|lastpipe)\b
    | \b(declare|local|typeset)\ -[a-z]*[Agnlu]
    | \$\{!?\w+(\[[@*]\])?(,|\^|@[A-Za-z]\})
    | \[\[\ -v\ |\bwait\ -[np]|&>>|\|&|;;&|;&
    | \bprintf\ .*%\(
    """,
    re.VERBOSE,
)
OTHER_TOOLS = re.compile(
    r"""
      \bsed\ (-i|-r|--)|\bgrep\ -[a-zA-Z]*[PZ]|\bdate\ (-d|--)|\bstat\ (-c|--)|\bxargs\ -[a-z0-9]*d
    | \bhead\ -n\ ?-|\bfind\ .*-printf|\b(mktemp|cp)\ --|\bps\ .*-o\ \w+=,
    | (^|[|;(&])\s*(timeout|tac|md5sum|sha256sum|setsid|flock|ldd|readelf)\s
    """,
    re.VERBOSE,
)


def shell_scripts() -> dict[str, str]:
    texts = {}
    for path in (path for folder in FOLDERS for path in sorted((ROOT / folder).rglob("*"))):
        text = path.read_text(encoding="utf-8", errors="replace") if path.is_file() else ""
        if re.match(r"#!.*sh\n", text) or "shellcheck shell=" in text:
            texts[path.relative_to(ROOT).as_posix()] = text
    return texts


def says_so(text: str) -> bool:
    return re.search(r"^ *require_linux$", text, re.MULTILINE) is not None


class Portable(unittest.TestCase):
    def setUp(self) -> None:
        self.scripts = {
            name: text
            for name, text in shell_scripts().items()
            if FOR_LINUX.fullmatch(name) is None and (name == "scripts/run" or not says_so(text))
        }

    def verify_none_has(self, pattern: re.Pattern[str]) -> None:
        found = [
            f"{name}:{number}: {line.strip()}"
            for name, text in self.scripts.items()
            for number, line in enumerate(text.splitlines(), 1)
            if not line.lstrip().startswith("#") and pattern.search(line)
        ]
        self.assertEqual(found, [])

    def test_what_macos_runs_is_among_them(self) -> None:
        for name in ("lib.sh", "run", "test", "package", "hooks/pre-commit"):
            self.assertIn(f"scripts/{name}", self.scripts)
        self.assertIn("packaging/macos.sh", self.scripts)
        self.assertIn(".ci/set-addresses", self.scripts)

    def test_they_use_nothing_of_a_newer_bash(self) -> None:
        self.verify_none_has(NEWER_BASH)

    def test_they_use_only_what_tools_have_in_common(self) -> None:
        self.verify_none_has(OTHER_TOOLS)


class ScriptsTest(unittest.TestCase):
    def verify_fails(
        self, name: str, *arguments: str, error: str, environment: dict[str, str] | None = None
    ) -> None:
        with self.subTest(name, arguments=arguments):
            command = [ROOT / "scripts" / name, *arguments]
            result = subprocess.run(
                command, capture_output=True, check=False, env=environment, text=True
            )
            self.assertEqual(result.stderr, f"error: {error}\n")
            self.assertEqual((result.returncode, result.stdout), (1, ""))


class Refused(ScriptsTest):
    def test_it_is_said_before_anything_is_done(self) -> None:
        for command, error in REFUSED.items():
            self.verify_fails(*command, error=error)


class OnlyOnLinux(ScriptsTest):
    def test_it_is_said_before_anything_is_done(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        environment = environment_with(Path(folder.name), "uname", "echo Darwin")
        for name, arguments in ONLY_ON_LINUX.items():
            self.verify_fails(
                name, *arguments, error=f"{name} runs on Linux only", environment=environment
            )

    def test_all_that_say_so_are_tried(self) -> None:
        names = {name for name, text in shell_scripts().items() if says_so(text)}
        self.assertEqual(names, {f"scripts/{name}" for name in ONLY_ON_LINUX})


if __name__ == "__main__":
    unittest.main()
