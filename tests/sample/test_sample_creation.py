# SPDX-License-Identifier: MIT
"""The life of a prefix: creating, moving and replacing it, and the log it keeps."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import sys
import unittest

from sample_prefix import SAMPLE, TIMEOUT, SamplePrefix, SampleTest


class LifeOfAPrefix(SampleTest):
    options = ("--small",)

    def create(self, *words: str) -> subprocess.CompletedProcess[str]:
        command = [sys.executable, str(SAMPLE / "create-prefix"), *words]
        return subprocess.run(command, capture_output=True, text=True, timeout=TIMEOUT)

    def test_survives_being_moved(self) -> None:
        self.assert_ok(self.prefix.run("install", "hello"))
        elsewhere = self.temporary / "a place with blanks"
        self.prefix.folder.rename(elsewhere)
        self.prefix.folder = elsewhere
        self.assertEqual(self.prefix.run("--prefix").out, f"{elsewhere}\n")
        self.assertIn(f"Uninstalling {elsewhere}/", self.prefix.run("uninstall", "hello").out)
        self.assertIsNone(self.prefix.formula("hello"))

    def test_needs_no_source_tree_and_no_environment(self) -> None:
        copy = self.temporary / "sample"
        shutil.copytree(SAMPLE, copy, ignore=shutil.ignore_patterns("__pycache__"))
        folder = self.temporary / "independent"
        command = [sys.executable, str(copy / "create-prefix"), str(folder), "--small"]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, timeout=TIMEOUT)
        shutil.rmtree(copy)
        environment = {"PATH": "/nowhere", "PYTHONPATH": "/nowhere", "LC_ALL": "C"}
        result = subprocess.run(
            [folder / "bin" / "brew", "tap"], env=environment, capture_output=True, timeout=TIMEOUT
        )
        self.assertEqual((result.stdout, result.returncode), (b"koekeishiya/formulae\n", 0))

    def test_is_found_through_a_link(self) -> None:
        link = self.temporary / "brew"
        link.symlink_to(self.prefix.brew)
        result = subprocess.run([link, "--prefix"], capture_output=True, text=True, timeout=TIMEOUT)
        self.assertEqual(result.stdout, f"{self.prefix.folder}\n")

    def test_creating_prints_the_path_of_brew_and_leaves_no_trace_in_the_source(self) -> None:
        source, folder = self.temporary / "sample", self.temporary / "new"
        shutil.copytree(SAMPLE, source, ignore=shutil.ignore_patterns("__pycache__"))
        before = sorted(source.rglob("*"))
        environment = {k: v for k, v in os.environ.items() if k != "PYTHONDONTWRITEBYTECODE"}
        result = subprocess.run(
            [source / "create-prefix", folder],
            env=environment,
            capture_output=True,
            text=True,
            timeout=TIMEOUT,
        )
        self.assertEqual((result.stdout, result.returncode), (f"{folder}/bin/brew\n", 0))
        self.assertEqual(sorted(source.rglob("*")), before)

    def test_only_its_own_folders_are_replaced(self) -> None:
        self.assert_ok(self.prefix.run("install", "hello"))
        folder = str(self.prefix.folder)
        self.assertEqual(self.create(folder, "--small").returncode, 1)
        self.assertIsNotNone(self.prefix.formula("hello"))
        self.assertEqual(self.create(folder, "--small", "--force").returncode, 0)
        self.assertIsNone(self.prefix.formula("hello"))
        strange = self.temporary / "strange"
        strange.mkdir()
        (strange / "precious").write_text("data")
        for options in ([], ["--force"]):
            result = self.create(str(strange), *options)
            self.assertEqual(result.returncode, 1)
            self.assertIn("not made by this program", result.stderr)
        self.assertEqual([path.name for path in strange.iterdir()], ["precious"])

    def test_empty_folder_and_file(self) -> None:
        folder = self.temporary / "empty"
        folder.mkdir()
        self.assertEqual(self.create(str(folder)).returncode, 0)
        file = self.temporary / "file"
        file.write_text("")
        result = self.create(str(file))
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.startswith("create-prefix: "))

    def test_machines(self) -> None:
        for option, formulae, casks in (("--empty", 0, 0), ("--everything", 450, 170)):
            prefix = SamplePrefix(self.temporary / option, option)
            state = prefix.state()
            self.assertGreaterEqual(len(state["formulae"]), formulae)
            self.assertGreaterEqual(len(state["casks"]), casks)
            if option == "--empty":
                self.assertEqual((state["formulae"], state["casks"]), ({}, {}))
            self.assertEqual(prefix.outdated(), set())
            self.assertEqual(prefix.run("upgrade"), ("", "", 0))

    def test_every_run_is_logged(self) -> None:
        words = ["search", "it's $HOME; `x`\n\"é\\"]
        self.prefix.run(*words)
        self.prefix.run("tap")
        self.prefix.run()
        first, second, third = self.prefix.log()
        self.assertEqual((first["args"], first["status"]), (words, 1))
        self.assertEqual((second["args"], second["status"]), (["tap"], 0))
        self.assertEqual(third["args"], [])
        self.assertEqual(set(first), {"args", "started", "ended", "status"})
        self.assertLessEqual(first["started"], first["ended"])
        self.assertLessEqual(first["ended"], second["started"])


class ThroughTheShell(SampleTest):
    options = ("--small",)

    @unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
    def test_report_through_a_login_shell(self) -> None:
        line = f"{self.prefix.brew} 'info' '--json=v2' '--installed' '--cask'"
        # The profile is this home's own; that of the system would be read after this file.
        (self.temporary / ".zshenv").write_text("unsetopt global_rcs\n", encoding="utf-8")
        child = subprocess.Popen(
            ["zsh", "-l", "-c", line],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env={**os.environ, "HOME": str(self.temporary), "ZDOTDIR": str(self.temporary)},
        )
        out, _ = child.communicate(timeout=TIMEOUT)
        self.assertEqual(child.returncode, 0)
        self.assertEqual(len(json.loads(out)["casks"]), 2)


if __name__ == "__main__":
    unittest.main()
