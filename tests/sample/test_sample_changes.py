# SPDX-License-Identifier: MIT
"""What `install`, `uninstall`, `upgrade`, `cleanup`, `tap` and `untap` change."""

from __future__ import annotations

import time
import unittest

from sample_prefix import SampleTest


class Install(SampleTest):
    options = ("--small",)

    def test_formula_with_dependencies(self) -> None:
        result = self.assert_ok(self.prefix.run("install", "tmux"))
        self.assertIn("==> Would install 3 dependencies for tmux:\nlibevent ncurses utf8proc", result.out)
        self.assertIn("==> Fetching downloads for: tmux\n", result.err)
        tmux, libevent = self.prefix.formula("tmux"), self.prefix.formula("libevent")
        assert tmux and libevent
        self.assertIs(tmux["installed"][0]["installed_on_request"], True)
        self.assertIs(libevent["installed"][0]["installed_on_request"], False)
        self.assertEqual(tmux["linked_keg"], "3.5a")
        needed = {entry["full_name"] for entry in tmux["installed"][0]["runtime_dependencies"]}
        self.assertEqual(
            needed, {"libevent", "openssl@3", "ca-certificates", "ncurses", "utf8proc"}
        )
        self.assertLess(abs(tmux["installed"][0]["time"] - time.time()), 60)

    def test_already_installed_is_a_warning(self) -> None:
        result = self.assert_ok(self.prefix.run("install", "tree"))
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.startswith("Warning: tree 2.2.1 is already installed"))

    def test_asking_for_a_dependency_makes_it_requested(self) -> None:
        before = self.prefix.formula("oniguruma")
        self.assert_ok(self.prefix.run("install", "oniguruma"))
        after = self.prefix.formula("oniguruma")
        assert before and after
        self.assertIs(before["installed"][0]["installed_on_request"], False)
        self.assertIs(after["installed"][0]["installed_on_request"], True)

    def test_outdated_is_upgraded(self) -> None:
        result = self.assert_ok(self.prefix.run("install", "bat"))
        self.assertIn("bat 0.25.0 is installed but outdated", result.out)
        self.assertNotIn("bat", self.prefix.outdated())

    def test_casks(self) -> None:
        for words, token in ((["--cask", "vlc"], "vlc"), (["zotero"], "zotero")):
            with self.subTest(words):
                result = self.assert_ok(self.prefix.run("install", *words))
                self.assertIn(f"🍺  {token} was successfully installed!\n", result.out)
                cask = self.prefix.cask(token)
                assert cask
                self.assertEqual(cask["installed"], cask["version"])
        again = self.assert_ok(self.prefix.run("install", "--cask", "vlc"))
        message = "Warning: Not upgrading vlc, the latest version is already installed\n"
        self.assertEqual((again.out, again.err), ("", message))

    def test_a_name_of_both_kinds(self) -> None:
        self.assert_ok(self.prefix.run("install", "--cask", "wireshark"))
        self.assertIsNone(self.prefix.formula("wireshark"))
        self.assert_ok(self.prefix.run("install", "wireshark"))
        self.assertIsNotNone(self.prefix.formula("wireshark"))
        self.assertIsNotNone(self.prefix.cask("wireshark"))

    def test_unknown_changes_nothing(self) -> None:
        before = self.prefix.state()
        self.assert_fails(
            self.prefix.run("install", "hello", "zzz"), "Error: No formulae or casks found for zzz."
        )
        self.assert_fails(self.prefix.run("install", "--cask", "hello"), "Cask 'hello' is unavailable")
        self.assert_fails(
            self.prefix.run("install", "--formula", "vlc"), 'No available formula with the name "vlc"'
        )
        self.assertEqual(self.prefix.state(), before)

    def test_similar_names_are_proposed(self) -> None:
        result = self.assert_fails(self.prefix.run("install", "wge"), "No available formula")
        self.assertIn("==> Formulae\nwget\nwget2\n\nTo install wget, run:\n", result.out)

    def test_conflict_and_retirement(self) -> None:
        self.assert_ok(self.prefix.run("install", "redis"))
        self.assert_fails(self.prefix.run("install", "valkey"), "Error: valkey: Cannot install valkey")
        self.assertIsNone(self.prefix.formula("valkey"))
        self.assert_fails(self.prefix.run("install", "docker-machine"), "has been disabled because")
        result = self.assert_ok(self.prefix.run("install", "neofetch"))
        self.assertIn("Warning: neofetch has been deprecated because", result.err)

    def test_full_name_brings_its_tap(self) -> None:
        self.assert_ok(self.prefix.run("install", "stripe/stripe-cli/stripe"))
        self.assertIn("stripe/stripe-cli", self.prefix.run("tap").out.split())
        stripe = self.prefix.formula("stripe")
        assert stripe
        self.assertEqual(stripe["full_name"], "stripe/stripe-cli/stripe")
        self.assertEqual(stripe["tap"], "stripe/stripe-cli")
        self.assert_fails(self.prefix.run("install", "nobody/nothing/x"), "No formulae or casks")


class Uninstall(SampleTest):
    def test_formula_and_cask(self) -> None:
        result = self.assert_ok(self.prefix.run("uninstall", "tree"))
        self.assertRegex(result.out, r"^Uninstalling .*/Cellar/tree/2\.2\.1\.\.\. \(\d+ files, .*\)\n$")
        self.assertIsNone(self.prefix.formula("tree"))
        self.assert_fails(self.prefix.run("uninstall", "tree"), "No such keg: ")
        for words in (["--cask", "gimp"], ["rectangle"]):
            result = self.assert_ok(self.prefix.run("uninstall", *words))
            self.assertIn(f"==> Uninstalling Cask {words[-1]}\n", result.out)
            self.assertIsNone(self.prefix.cask(words[-1]))
        self.assert_fails(self.prefix.run("uninstall", "--cask", "gimp"), "Cask 'gimp' is not installed.")
        self.assert_fails(self.prefix.run("uninstall", "--cask", "zzz"), "Cask 'zzz' is unavailable")
        self.assert_fails(self.prefix.run("uninstall", "zzz"), "No such keg: ")

    def test_full_name(self) -> None:
        self.assert_ok(self.prefix.run("uninstall", "koekeishiya/formulae/skhd"))
        self.assertIsNone(self.prefix.formula("skhd"))

    def test_required_by_others(self) -> None:
        result = self.assert_fails(self.prefix.run("uninstall", "libgit2"), "Refusing to uninstall ")
        self.assertIn(
            "because it is required by bat, eza and git-delta, which are currently installed.", result.err
        )
        self.assertIn("\n  brew uninstall --ignore-dependencies libgit2\n", result.err)
        self.assertIsNotNone(self.prefix.formula("libgit2"))
        indirect = self.assert_fails(self.prefix.run("uninstall", "mpdecimal"), "Refusing")
        self.assertIn("required by certifi, python@3.13 and yt-dlp, which", indirect.err)
        self.assert_ok(self.prefix.run("uninstall", "libgit2", "bat", "eza", "git-delta"))
        self.assert_ok(self.prefix.run("uninstall", "--ignore-dependencies", "mpdecimal"))

    def test_two_kegs(self) -> None:
        result = self.assert_ok(self.prefix.run("uninstall", "python@3.13"))
        self.assertIn("python@3.13 3.13.7 is still installed.\n", result.out)
        python = self.prefix.formula("python@3.13")
        assert python
        self.assertEqual([keg["version"] for keg in python["installed"]], ["3.13.7"])
        self.assertIsNone(python["linked_keg"])
        self.assertIs(python["outdated"], True)
        self.assert_fails(self.prefix.run("uninstall", "--force", "python@3.13"), "required by")
        self.assert_ok(self.prefix.run("uninstall", "--force", "python@3.13", "yt-dlp", "certifi"))
        self.assertIsNone(self.prefix.formula("python@3.13"))


class Upgrade(SampleTest):
    def test_one_formula(self) -> None:
        result = self.assert_ok(self.prefix.run("upgrade", "bat"))
        self.assertIn("==> Upgrading bat\n  0.25.0 -> 0.26.0 \n", result.out)
        bat = self.prefix.formula("bat")
        assert bat
        self.assertEqual([keg["version"] for keg in bat["installed"]], ["0.26.0"])
        self.assertIs(bat["installed"][0]["installed_on_request"], True)
        self.assertEqual((bat["linked_keg"], bat["outdated"]), ("0.26.0", False))
        self.assertNotIn("bat", self.prefix.outdated())
        again = self.prefix.run("upgrade", "bat")
        self.assertEqual(again, ("", "Warning: bat 0.26.0 already installed\n", 0))

    def test_a_dependency_stays_a_dependency(self) -> None:
        self.assert_ok(self.prefix.run("upgrade", "libpng"))
        libpng = self.prefix.formula("libpng")
        assert libpng
        self.assertIs(libpng["installed"][0]["installed_on_request"], False)

    def test_one_cask(self) -> None:
        result = self.assert_ok(self.prefix.run("upgrade", "--cask", "temurin"))
        self.assertIn("==> Upgrading temurin\n  24.0.2,12 -> 25,36\n", result.out)
        temurin = self.prefix.cask("temurin")
        assert temurin
        self.assertEqual((temurin["installed"], temurin["outdated"]), ("25,36", False))
        again = self.prefix.run("upgrade", "--cask", "temurin")
        message = "Warning: Not upgrading temurin, the latest version is already installed\n"
        self.assertEqual(again, ("", message, 0))

    def test_self_updating_cask_only_by_name(self) -> None:
        self.assert_ok(self.prefix.run("upgrade"))
        before = self.prefix.cask("firefox")
        self.assert_ok(self.prefix.run("upgrade", "--cask", "firefox"))
        after = self.prefix.cask("firefox")
        assert before and after
        self.assertEqual((before["installed"], after["installed"]), ("142.0.1", "144.0"))

    def test_pinned(self) -> None:
        result = self.prefix.run("upgrade", "postgresql@16")
        line = "postgresql@16 16.10\n"
        self.assertEqual(
            result,
            (f"{line}==> 1 Pinned formula\n{line}", "Error: Not upgrading 1 pinned package:\n", 1),
        )

    def test_everything_but_the_pinned(self) -> None:
        result = self.assert_ok(self.prefix.run("upgrade"))
        self.assertIn("==> Would upgrade 10 outdated packages\n", result.out)
        self.assertIn("hashicorp/tap/terraform  1.12.2    -> 1.13.3\n", result.out)
        self.assertLess(result.out.index("Upgrading libpng"), result.out.index("Upgrading ffmpeg"))
        self.assertEqual(self.prefix.outdated(), {"postgresql@16"})
        again = self.assert_ok(self.prefix.run("upgrade"))
        self.assertEqual(again.out.count("postgresql@16 16.10\n"), 4)
        self.assertNotIn("Would upgrade", again.out)

    def test_failures(self) -> None:
        for words, message in {
            ("vim",): "Error: vim not installed\n",
            ("mongodb-community",): "Error: mongodb/brew/mongodb-community not installed\n",
            ("zzz",): 'Error: No available formula with the name "zzz".\n',
            ("--cask", "zzz"): "Error: Cask 'zzz' is unavailable: No Cask with this name exists.\n",
            ("--cask", "vlc"): "Error: Cask 'vlc' is not installed.\n",
        }.items():
            self.assertEqual(self.prefix.run("upgrade", *words), ("", message, 1))

    def test_without_cleaning_the_old_keg_stays(self) -> None:
        result = self.prefix.run("upgrade", "bat", HOMEBREW_NO_INSTALL_CLEANUP="1")
        self.assertNotIn("Removing", result.out)
        bat = self.prefix.formula("bat")
        assert bat
        self.assertEqual([keg["version"] for keg in bat["installed"]], ["0.25.0", "0.26.0"])
        self.assertEqual((bat["linked_keg"], bat["outdated"]), ("0.26.0", False))


class Cleanup(SampleTest):
    def test_preview_then_removal_then_nothing(self) -> None:
        preview = self.assert_ok(self.prefix.run("cleanup", "-n"))
        self.assertEqual(preview, self.prefix.run("cleanup", "--dry-run"))
        self.assertIn("/Cellar/python@3.13/3.13.7 (", preview.out)
        result = self.assert_ok(self.prefix.run("cleanup"))

        def paths(text: str) -> list[str]:
            return [line.split(": ")[1].split(" ")[0].rstrip(".") for line in text.splitlines()[:-1]]

        self.assertEqual(paths(result.out), paths(preview.out))
        freed = r"approximately [\d.]+MB of disk space\.\n$"
        self.assertRegex(preview.out, r"\n==> This operation would free " + freed)
        self.assertRegex(result.out, r"\n==> This operation has freed " + freed)
        python = self.prefix.formula("python@3.13")
        assert python
        self.assertEqual([keg["version"] for keg in python["installed"]], ["3.13.9"])
        for words in (["cleanup"], ["cleanup", "-n"]):
            self.assertEqual(self.prefix.run(*words), ("", "", 0))

    def test_upgrades_leave_work_behind(self) -> None:
        self.assert_ok(self.prefix.run("upgrade", "--cask", "keepassxc"))
        self.assert_ok(self.prefix.run("upgrade", "bat", HOMEBREW_NO_INSTALL_CLEANUP="1"))
        preview = self.prefix.run("cleanup", "-n").out
        self.assertIn("/Cask/keepassxc--2.7.10.zip (", preview)
        self.assertIn("/Cellar/bat/0.25.0 (", preview)
        self.assertIn("/bat--0.25.0.bottle.tar.gz (", preview)
        for current in ("keepassxc--2.7.11", "bat/0.26.0", "bat--0.26.0"):
            self.assertNotIn(current, preview)

    def test_single_packages(self) -> None:
        result = self.assert_ok(self.prefix.run("cleanup", "bat"))
        self.assertIn("/bat--0.25.0.bottle.tar.gz... (", result.out)
        self.assertNotIn("python", result.out)
        self.assertIn("python@3.13", self.prefix.run("cleanup", "-n").out)
        self.assert_fails(self.prefix.run("cleanup", "zzz"), "No available formula")


class Taps(SampleTest):
    def test_adding_and_removing(self) -> None:
        before = self.prefix.run("tap").out.split()
        self.assertEqual(before, sorted(before))
        self.assertEqual(len(before), 4)
        added = self.assert_ok(self.prefix.run("tap", "Stripe/homebrew-stripe-cli"))
        self.assertEqual(added.out, "")
        self.assertTrue(added.err.startswith("==> Tapping stripe/stripe-cli\nCloning into '"))
        self.assertRegex(added.err, r"\nTapped 1 formula \(\d+ files, [\d.]+KB\)\.\n$")
        self.assertEqual(set(self.prefix.run("tap").out.split()), {*before, "stripe/stripe-cli"})
        self.assertEqual(self.prefix.run("search", "stripe").out, "stripe/stripe-cli/stripe\n")
        self.assertEqual(self.prefix.run("tap", "stripe/stripe-cli"), ("", "", 0))
        removed = self.assert_ok(self.prefix.run("untap", "stripe/stripe-cli"))
        self.assertRegex(removed.err, r"^Untapping stripe/stripe-cli\.\.\.\nUntapped 1 formula \(")
        self.assertEqual(removed.out, "")
        self.assertEqual(self.prefix.run("tap").out.split(), before)

    def test_any_wellformed_name_can_be_tapped(self) -> None:
        self.assert_ok(self.prefix.run("tap", "someone/something"))
        self.assertIn("someone/something", self.prefix.run("tap").out.split())

    def test_needed_tap_stays(self) -> None:
        result = self.assert_fails(
            self.prefix.run("untap", "nikitabobko/tap"),
            "Error: Refusing to untap nikitabobko/tap because it contains",
        )
        self.assertTrue(result.err.endswith("\nnikitabobko/tap/aerospace\n"))
        self.assertIn("nikitabobko/tap", self.prefix.run("tap").out.split())

    def test_failures(self) -> None:
        before = self.prefix.state()
        for name in ("nonsense", "", "/", "a/b/c", "a b/c", "a/b\n", "-x/y", "../x", "é/x", "a/$(x)"):
            for command in ("tap", "untap"):
                with self.subTest(command=command, name=name):
                    result = self.assert_fails(self.prefix.run(command, "--", name), "Error: ")
                    self.assertIn(f"Invalid tap name: '{name}'", result.err)
        self.assert_fails(self.prefix.run("untap", "not/tapped"), "No available tap not/tapped.\n")
        self.assert_fails(self.prefix.run("tap", "missing/tap"), "exited with 128.")
        self.assert_fails(self.prefix.run("tap", "homebrew/core"), "no longer typically necessary")
        self.assertEqual(self.prefix.state(), before)


if __name__ == "__main__":
    unittest.main()
