# SPDX-License-Identifier: MIT
"""The catalogue and the fresh machine have the variety that the application is tried on."""

from __future__ import annotations

import json
import re
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

from sample_prefix import SAMPLE, SharedPrefixTest

sys.path.insert(0, str(SAMPLE))

from builder.tables import TableError, read_catalogue  # noqa: E402

HANGUL = re.compile(r"[가-힣]")
KANA = re.compile(r"[ぁ-んァ-ン]")


class Catalogue(unittest.TestCase):
    catalogue: dict[str, dict[str, dict[str, Any]]]

    @classmethod
    def setUpClass(cls) -> None:
        cls.catalogue = read_catalogue(SAMPLE / "data")

    def test_size(self) -> None:
        self.assertGreaterEqual(len(self.catalogue["formulae"]), 350)
        self.assertGreaterEqual(len(self.catalogue["casks"]), 150)

    def test_entries_are_complete(self) -> None:
        for kind, entries in self.catalogue.items():
            for name, entry in entries.items():
                with self.subTest(name):
                    self.assertRegex(name, r"^[a-z0-9][a-z0-9@._+-]*$")
                    self.assertTrue(entry["version"])
                    self.assertRegex(entry["homepage"], r"^https://[\w.-]+\.[a-z]+(/\S*)?$")
                    self.assertNotEqual(entry["desc"], "")
                    if kind == "casks":
                        self.assertEqual(len(entry["artifact"]), 2)

    def test_descriptions_differ_except_between_series(self) -> None:
        seen: dict[str, str] = {}
        for name, entry in self.catalogue["formulae"].items():
            if entry["desc"]:
                self.assertNotIn(entry["desc"], seen, name)
                seen[entry["desc"]] = name

    def test_dependencies_have_no_circle(self) -> None:
        formulae = self.catalogue["formulae"]
        done: set[str] = set()

        def visit(name: str, path: tuple[str, ...]) -> None:
            self.assertNotIn(name, path)
            if name not in done:
                for needed in formulae[name].get("dependencies", []):
                    visit(needed, (*path, name))
                done.add(name)

        for name in formulae:
            visit(name, ())

    def test_conflicts_and_aliases_name_something(self) -> None:
        formulae = self.catalogue["formulae"]
        for name, entry in formulae.items():
            for other, _ in entry.get("conflicts", []):
                self.assertIn(name, [back for back, _ in formulae[other]["conflicts"]])
            for alias in entry.get("aliases", []):
                self.assertNotIn(alias, formulae)

    def test_bad_tables_are_refused(self) -> None:
        good = "a | 1 | MIT | a.org | - | A\n"
        for text in (
            "a | 1 | MIT | a.org | -\n",
            good + "    nonsense: x\n",
            good + good,
            "a | 1 | MIT | a.org | b | A\n",
            "    head: x\n" + good,
        ):
            with self.subTest(text), tempfile.TemporaryDirectory() as folder:
                Path(folder, "formulae.txt").write_text(text)
                Path(folder, "casks.txt").write_text("")
                with self.assertRaises(TableError):
                    read_catalogue(Path(folder))


class FreshMachine(SharedPrefixTest):
    formulae: dict[str, dict[str, Any]]
    casks: dict[str, dict[str, Any]]

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        report = json.loads(cls.prefix.run("info", "--json=v2", "--installed").out)
        cls.formulae = {entry["name"]: entry for entry in report["formulae"]}
        cls.casks = {entry["token"]: entry for entry in report["casks"]}

    def test_everything_needed_is_there(self) -> None:
        for entry in self.formulae.values():
            self.assertLessEqual(set(entry["dependencies"]), set(self.formulae))

    def test_reasons_for_being_installed(self) -> None:
        requested = {
            name for name, entry in self.formulae.items() if entry["installed"][-1]["installed_on_request"]
        }
        self.assertEqual(len(requested), 42)
        needed = {name for entry in self.formulae.values() for name in entry["dependencies"]}
        self.assertLessEqual(set(self.formulae) - requested, needed)

    def test_variety(self) -> None:
        formulae, casks = self.formulae, self.casks
        self.assertIsNone(formulae["skhd"]["desc"])
        self.assertIsNone(formulae["terraform"]["license"])
        self.assertEqual(formulae["terraform"]["full_name"], "hashicorp/tap/terraform")
        self.assertEqual(
            [keg["version"] for keg in formulae["python@3.13"]["installed"]], ["3.13.7", "3.13.9"]
        )
        self.assertEqual(formulae["python@3.13"]["linked_keg"], "3.13.9")
        self.assertIs(formulae["python@3.13"]["outdated"], False)
        self.assertEqual(formulae["git-delta"]["installed"][0]["version"], "0.18.2_3")
        self.assertEqual(formulae["git-delta"]["versions"]["stable"], "0.18.2")
        self.assertEqual((formulae["libpq"]["keg_only"], formulae["libpq"]["linked_keg"]), (True, None))
        self.assertEqual(formulae["openjdk@21"]["linked_keg"], "21.0.8")
        self.assertIs(formulae["postgresql@16"]["pinned"], True)
        self.assertIs(formulae["postgresql@16"]["outdated"], True)
        self.assertIs(formulae["neofetch"]["deprecated"], True)
        self.assertGreater(len(formulae["ffmpeg"]["desc"]), 180)
        self.assertRegex(formulae["mecab-ko"]["desc"], HANGUL)
        self.assertRegex(formulae["cmigemo"]["desc"], KANA)
        for sign in "<>&%\"":
            self.assertIn(sign, formulae["miniserve"]["desc"])
        self.assertEqual(casks["android-platform-tools"]["name"], [])
        self.assertIsNone(casks["font-jetbrains-mono"]["desc"])
        self.assertEqual(casks["font-nanum-gothic"]["version"], "latest")
        self.assertEqual(casks["temurin"]["installed"], "24.0.2,12")
        self.assertEqual(casks["aerospace"]["full_token"], "nikitabobko/tap/aerospace")
        self.assertRegex(casks["font-d2coding"]["desc"], HANGUL)
        self.assertRegex(casks["google-japanese-ime"]["desc"], KANA)
        self.assertGreater(len(casks["visual-studio-code"]["desc"]), 150)


if __name__ == "__main__":
    unittest.main()
