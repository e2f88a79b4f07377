# SPDX-License-Identifier: MIT
"""Questions put to the sample `brew`."""

from __future__ import annotations

import os
import unittest

from sample_prefix import SampleTest, SharedPrefixTest


class Reports(SharedPrefixTest):
    def test_each_installed_report_fills_only_its_own_list(self) -> None:
        formulae = self.prefix.report("info", "--json=v2", "--installed", "--formula")
        casks = self.prefix.report("info", "--json=v2", "--installed", "--cask")
        both = self.prefix.report("info", "--json=v2", "--installed")
        self.assertEqual(casks["formulae"], [])
        self.assertEqual(formulae["casks"], [])
        self.assertGreaterEqual(len(formulae["formulae"]), 60)
        self.assertGreaterEqual(len(casks["casks"]), 12)
        self.assertEqual(both, {"formulae": formulae["formulae"], "casks": casks["casks"]})

    def test_reports_are_indented_utf8_with_a_final_newline(self) -> None:
        out, err, _ = self.prefix.run_bytes("info", "--json=v2", "--installed", "--formula")
        self.assertTrue(out.startswith(b'{\n  "formulae": [\n    {\n      "name": '))
        self.assertTrue(out.endswith(b"\n}\n"))
        self.assertIn("한국어".encode(), out)
        self.assertEqual(err, b"")

    def test_outdated_gives_list_for_formulae_and_text_for_casks(self) -> None:
        report = self.prefix.report("outdated", "--json=v2")
        formulae = {entry["name"]: entry for entry in report["formulae"]}
        casks = {entry["name"]: entry for entry in report["casks"]}
        self.assertEqual(
            set(formulae),
            {"bat", "ffmpeg", "gh", "git", "libpng", "node", "postgresql@16", "hashicorp/tap/terraform"},
        )
        self.assertEqual(set(casks), {"android-platform-tools", "keepassxc", "temurin"})
        self.assertEqual(formulae["ffmpeg"]["installed_versions"], ["8.0"])
        self.assertEqual(formulae["ffmpeg"]["current_version"], "8.0_1")
        self.assertEqual(casks["temurin"]["installed_versions"], "24.0.2,12")
        pinned = [name for name, entry in formulae.items() if entry["pinned"]]
        self.assertEqual(pinned, ["postgresql@16"])
        self.assertEqual(formulae["postgresql@16"]["pinned_version"], "16.9")

    def test_info_and_outdated_agree(self) -> None:
        report = self.prefix.report("info", "--json=v2", "--installed")
        flagged = {entry["full_name"] for entry in report["formulae"] if entry["outdated"]}
        flagged |= {entry["token"] for entry in report["casks"] if entry["outdated"]}
        self.assertEqual(flagged, self.prefix.outdated())

    def test_plain_outdated_lists_names(self) -> None:
        result = self.prefix.run("outdated")
        self.assertEqual(set(result.out.split()), self.prefix.outdated())

    def test_report_of_a_package_that_is_not_installed(self) -> None:
        report = self.prefix.report("info", "--json=v2", "hello")
        self.assertEqual(report["formulae"][0]["installed"], [])
        self.assertIsNone(report["formulae"][0]["linked_keg"])
        self.assertIs(report["formulae"][0]["outdated"], False)

    def test_self_updating_casks_are_never_outdated(self) -> None:
        firefox = self.prefix.cask("firefox")
        assert firefox
        self.assertNotEqual(firefox["installed"], firefox["version"])
        self.assertIs(firefox["auto_updates"], True)
        self.assertIs(firefox["outdated"], False)


class Search(SharedPrefixTest):
    CASES = {
        "formulae only": ("wget", ["wget", "wget2"]),
        "casks only": ("firefox", ["firefox", "firefox@developer-edition"]),
        "both kinds": ("ollama", ["ollama", "", "ollama-app"]),
        "case and separators do not count": ("Z-SH_auto", ["zsh-autosuggestions"]),
        "taps give full names": ("skhd", ["koekeishiya/formulae/skhd"]),
        "alias of another name": ("gtar", ["gtar"]),
        "alias beside its own name": ("postgresql", ["postgresql@16", "postgresql@17"]),
        "pattern": ("/^git-[dl]/", ["git-delta", "git-lfs"]),
        "option-like words after --": (["--", "--wget2"], ["wget2"]),
        "restricted to casks": (["--cask", "ollama"], ["ollama-app"]),
        "restricted to formulae": (["--formula", "ollama"], ["ollama"]),
        "several words": (["git", "delta"], ["git-delta"]),
        "blanks around": (" wget2 ", ["wget2"]),
    }

    def test_matches(self) -> None:
        for name, (query, expected) in self.CASES.items():
            with self.subTest(name):
                words = query if isinstance(query, list) else [query]
                result = self.prefix.run("search", *words)
                self.assertEqual(result, ("\n".join(expected) + "\n", "", 0))

    def test_blank_query_lists_everything(self) -> None:
        for query in ("", " "):
            result = self.prefix.run("search", query)
            formulae, empty, casks = result.out.partition("\n\n")
            self.assertEqual(result.status, 0)
            self.assertTrue(empty)
            self.assertGreater(len(formulae.splitlines()), 350)
            self.assertGreater(len(casks.splitlines()), 150)

    def test_nothing_found(self) -> None:
        for query in ("zzzznothing", "한글", "'\"$`", "/^nothing$/", "-"):
            result = self.prefix.run("search", "--", query)
            message = f'Error: No formulae or casks found for "{query}".\n'
            self.assertEqual(result, ("", message, 1))

    def test_bad_pattern_is_an_error(self) -> None:
        result = self.prefix.run("search", "/[/")
        self.assertEqual((result.out, result.status), ("", 1))
        self.assertTrue(result.err.startswith("Error: "))
        self.assertNotIn("Traceback", result.err)

    def test_untapped_packages_are_not_found(self) -> None:
        self.assertEqual(self.prefix.run("search", "stripe").status, 1)


class Info(SharedPrefixTest):
    def test_formula(self) -> None:
        result = self.prefix.run("info", "git")
        lines = result.out.splitlines()
        self.assertEqual(lines[0], "==> git: stable 2.51.0, HEAD")
        self.assertIn("Installed (on request)", lines)
        self.assertIn("==> Installed Versions", lines)
        self.assertIn("Required (2): gettext, pcre2", lines)
        self.assertIn("Recursive Runtime (3): all installed ✔", lines)
        self.assertEqual((result.err, result.status), ("", 0))

    def test_markings(self) -> None:
        cases = {
            "postgresql@16": "[pinned at 16.9, keg-only]",
            "libpng": "Installed (as dependency)",
            "hello": "Not installed",
            "neofetch": "Deprecated because ",
            "hashicorp/tap/terraform": "Tap: hashicorp/tap",
            "terraform": "==> hashicorp/tap/terraform: stable 1.13.3",
            "openssl": "==> openssl@3: stable",
            "GIT": "==> git: stable",
            "iterm2": "==> iterm2 (iTerm2): 3.6.4 (auto_updates)",
            "vlc": "Not installed",
            "android-platform-tools": "==> android-platform-tools: 36.0.0",
        }
        for name, expected in cases.items():
            with self.subTest(name):
                result = self.prefix.run("info", name)
                self.assertIn(expected, result.out)
                self.assertEqual(result.status, 0)

    def test_a_name_of_both_kinds_means_the_formula(self) -> None:
        self.assertIn("wireshark: stable", self.prefix.run("info", "wireshark").out)
        self.assertIn("wireshark (Wireshark)", self.prefix.run("info", "--cask", "wireshark").out)

    def test_every_package_can_be_described(self) -> None:
        names = [name for name in self.prefix.run("search", "").out.splitlines() if name]
        result = self.prefix.run("info", *names)
        self.assertEqual((result.err, result.status), ("", 0))
        self.assertEqual(sum(line.startswith("From: ") for line in result.out.splitlines()), len(names))

    def test_unknown(self) -> None:
        result = self.prefix.run("info", "no-such-thing")
        self.assertEqual(
            result, ("", 'Error: No available formula with the name "no-such-thing".\n', 1)
        )

    def test_totals(self) -> None:
        self.assertRegex(self.prefix.run("info").out, r"^\d+ kegs, [\d,]+ files, [\d.]+[MG]B\n$")


class OtherAnswers(SharedPrefixTest):
    def test_global_options(self) -> None:
        folder = self.prefix.folder
        for option, expected in {
            "--version": "Homebrew 6.0.18-sample",
            "--prefix": str(folder),
            "--cellar": str(folder / "Cellar"),
            "--caskroom": str(folder / "Caskroom"),
            "--repository": str(folder),
        }.items():
            self.assertEqual(self.prefix.run(option), (expected + "\n", "", 0))

    def test_unknown_command(self) -> None:
        for words in (["frobnicate"], ["--frobnicate"], ["frob nicate", "x"], [""]):
            result = self.prefix.run(*words)
            last = result.err.splitlines()[-1]
            self.assertEqual(last, f"Error: Invalid usage: Unknown command: brew {words[0]}")
            self.assertEqual((result.out, result.status), ("", 1))

    def test_no_command(self) -> None:
        result = self.prefix.run()
        self.assertTrue(result.err.startswith("Example usage:\n"))
        self.assertEqual((result.out, result.status), ("", 1))

    def test_usage_errors(self) -> None:
        for words, message in {
            ("install",): "This command requires at least 1 formula or cask argument.",
            ("uninstall",): "This command requires at least 1 installed formula or cask argument.",
            ("untap",): "This command requires at least 1 tap argument.",
            ("search",): "This command requires at least 1 text or regex argument.",
            ("info", "--json=v2"): "This option requires a formula or cask argument.",
            ("install", "--nonsense"): "invalid option: --nonsense",
            ("outdated", "--json=v1"): "invalid option: --json=v1",
            ("install", "--cask", "--formula", "x"): "mutually exclusive",
        }.items():
            with self.subTest(words):
                result = self.prefix.run(*words)
                self.assertTrue(result.err.startswith(f"Usage: brew {words[0]} "))
                self.assertIn(message, result.err.splitlines()[-1])
                self.assertEqual((result.out, result.status), ("", 1))


class Doctor(SampleTest):
    options = ("--small",)

    def test_finds_what_is_wrong_until_nothing_is(self) -> None:
        self.assert_ok(self.prefix.run("install", "neofetch"))
        folder = str(self.prefix.folder / "bin")
        result = self.prefix.run("doctor", PATH=os.environ["PATH"])
        self.assertEqual((result.out, result.status), ("\n", 1))
        self.assertIn("\n    neofetch\n", result.err)
        self.assertIn(f'export PATH="{folder}:$PATH"', result.err)
        self.assert_ok(self.prefix.run("uninstall", "neofetch"))
        path = folder + os.pathsep + os.environ["PATH"]
        self.assertEqual(
            self.prefix.run("doctor", PATH=path), ("Your system is ready to brew.\n", "", 0)
        )
        self.assert_ok(self.prefix.run("uninstall", "--ignore-dependencies", "oniguruma"))
        result = self.prefix.run("doctor", PATH=path)
        self.assertIn("brew install oniguruma", result.err)
        self.assertEqual((result.out, result.status), ("\n", 1))


if __name__ == "__main__":
    unittest.main()
