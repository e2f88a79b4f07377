# SPDX-License-Identifier: MIT
"""A fresh prefix of the sample Homebrew for each test."""

from __future__ import annotations

import atexit
import functools
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any, NamedTuple

SAMPLE = Path(__file__).resolve().parents[2] / "sample"
# Far above anything that a run takes; only a run that hangs ever meets it.
TIMEOUT = 60


class Result(NamedTuple):
    out: str
    err: str
    status: int


@functools.cache
def fresh_prefix(*options: str) -> Path:
    """A prefix that nothing has been done with, to be copied."""
    temporary = tempfile.TemporaryDirectory()
    atexit.register(temporary.cleanup)
    folder = Path(temporary.name) / "prefix"
    command = [sys.executable, str(SAMPLE / "create-prefix"), str(folder), *options]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, timeout=TIMEOUT)
    return folder


class SamplePrefix:
    def __init__(self, folder: Path, *options: str) -> None:
        self.folder = folder
        shutil.copytree(fresh_prefix(*options), folder, dirs_exist_ok=True)

    @property
    def brew(self) -> str:
        return str(self.folder / "bin" / "brew")

    def start(self, *args: str | bytes, **options: Any) -> subprocess.Popen[bytes]:
        return subprocess.Popen(
            [self.brew, *args], stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options
        )

    def run_bytes(self, *args: str | bytes, **environment: str) -> tuple[bytes, bytes, int]:
        child = self.start(*args, env={**os.environ, **environment})
        out, err = child.communicate(timeout=TIMEOUT)
        return out, err, child.returncode

    def run(self, *args: str | bytes, **environment: str) -> Result:
        out, err, status = self.run_bytes(*args, **environment)
        return Result(out.decode(errors="surrogateescape"), err.decode(errors="surrogateescape"), status)

    def report(self, *args: str) -> dict[str, list[dict[str, Any]]]:
        result = self.run(*args)
        assert result.status == 0, result
        return json.loads(result.out)

    def formula(self, name: str) -> dict[str, Any] | None:
        report = self.report("info", "--json=v2", "--installed", "--formula")
        return next((entry for entry in report["formulae"] if entry["name"] == name), None)

    def cask(self, token: str) -> dict[str, Any] | None:
        report = self.report("info", "--json=v2", "--installed", "--cask")
        return next((entry for entry in report["casks"] if entry["token"] == token), None)

    def outdated(self) -> set[str]:
        report = self.report("outdated", "--json=v2")
        return {entry["name"] for kind in report.values() for entry in kind}

    def misbehave(self, **switches: dict[str, Any]) -> None:
        """Keyword `every` stands for `*`, and `_` in a keyword for a blank."""
        content = {
            "*" if key == "every" else key.replace("_", " "): value
            for key, value in switches.items()
        }
        self.misbehave_text(json.dumps(content))

    def misbehave_text(self, text: str) -> None:
        (self.folder / "var/sample/misbehave.json").write_text(text, encoding="utf-8")

    def state(self) -> dict[str, Any]:
        return json.loads((self.folder / "var/sample/state.json").read_text(encoding="utf-8"))

    def log(self) -> list[dict[str, Any]]:
        text = (self.folder / "var/sample/log.jsonl").read_text(encoding="utf-8")
        return [json.loads(line) for line in text.splitlines()]


class SampleTest(unittest.TestCase):
    """`options` chooses the machine; every test gets a prefix of its own."""

    options: tuple[str, ...] = ()

    def setUp(self) -> None:
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.temporary = Path(temporary.name).resolve()
        self.prefix = SamplePrefix(self.temporary / "prefix", "--pace", "0", *self.options)

    def assert_ok(self, result: Result) -> Result:
        self.assertEqual(result.status, 0, result)
        return result

    def assert_fails(self, result: Result, message: str) -> Result:
        self.assertEqual(result.status, 1, result)
        self.assertIn(message, result.err)
        self.assertNotIn("Traceback", result.err)
        return result


class SharedPrefixTest(unittest.TestCase):
    """For tests that only ask questions: one prefix serves the whole class."""

    options: tuple[str, ...] = ()
    prefix: SamplePrefix

    @classmethod
    def setUpClass(cls) -> None:
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        folder = Path(temporary.name).resolve() / "prefix"
        cls.prefix = SamplePrefix(folder, "--pace", "0", *cls.options)
