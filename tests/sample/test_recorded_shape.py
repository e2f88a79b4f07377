# SPDX-License-Identifier: MIT
"""Holds reports and texts of the sample `brew` against recordings of the real one.

LUMORA_RECORDED names a folder that contains `brew-6.0/` with five files per command, of
which `.stdout`, `.stderr` and `.status` are used here, and optionally `scale/` with a large
report. Names, versions and numbers differ of course; keys, kinds of values and shapes of
lines do not.

What is compared is a session of some seventy commands on formulae made for it; what
`tools/record-brew` records of somebody's machine doesn't have all of it.
"""

from __future__ import annotations

import fcntl
import json
import lzma
import os
import re
import unittest
from pathlib import Path
from typing import Any

from line_shapes import shapes_of
from sample_prefix import Result, SampleTest, SharedPrefixTest

RECORDED = os.environ.get("LUMORA_RECORDED", "")
HAS_SESSION = Path(RECORDED, "brew-6.0", "061-info-json-installed-formula.args").exists()
Kinds = dict[str, set[str]]

# Objects whose keys are names of their own rather than a fixed set.
OPEN_OBJECTS = re.compile(r"\.(files|url_specs|depends_on|keep_alive|environment_variables)$")
# What none of the recorded packages happened to have.
NEVER_RECORDED = {
    ".casks[].installed": {"NoneType"},
    ".casks[].installed_time": {"NoneType"},
    ".casks[].depends_on.*": {"list"},
    ".casks[].depends_on.*[]": {"str"},
    ".casks[].caveats": {"str"},
    ".casks[].deprecation_date": {"str"},
    ".casks[].deprecation_reason": {"str"},
    ".casks[].deprecate_args": {"dict"},
    ".casks[].disable_date": {"str"},
    ".casks[].disable_reason": {"str"},
    ".casks[].disable_args": {"dict"},
    ".casks[].artifacts[].app": {"list"},
    ".casks[].artifacts[].app[]": {"str"},
    ".casks[].artifacts[].pkg": {"list"},
    ".casks[].artifacts[].pkg[]": {"str"},
}


def recorded(name: str, suffix: str) -> str:
    path = Path(RECORDED, "brew-6.0", name + suffix)
    return path.read_text(encoding="utf-8")


def kinds_of(value: Any, path: str, kinds: Kinds, key_orders: dict[str, set[tuple[str, ...]]]) -> None:
    """Collects, for every place in a report, the kinds of values and the orders of keys."""
    kinds.setdefault(path, set()).add(type(value).__name__)
    if isinstance(value, list):
        for item in value:
            kinds_of(item, path + "[]", kinds, key_orders)
    elif isinstance(value, dict):
        open_object = OPEN_OBJECTS.search(path) is not None
        if not open_object:
            key_orders.setdefault(path, set()).add(tuple(value))
        for key, item in value.items():
            kinds_of(item, f"{path}.{'*' if open_object else key}", kinds, key_orders)


@unittest.skipUnless(HAS_SESSION, "LUMORA_RECORDED names no session to compare with")
class ShapeOfReports(SharedPrefixTest):
    # The cask forms differ by design; the recordings have the list.
    ours_kinds: Kinds
    theirs_kinds: Kinds

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.prefix.misbehave(outdated={"cask_versions": "list"})
        cls.ours_kinds, cls.ours_orders = {}, {}
        cls.theirs_kinds, cls.theirs_orders = {}, {}
        everything = [line for line in cls.prefix.run("search", "").out.splitlines() if line]
        for words in (["--installed"], everything):
            out = cls.prefix.run("info", "--json=v2", *words).out
            kinds_of(json.loads(out), "", cls.ours_kinds, cls.ours_orders)
        out = cls.prefix.run("outdated", "--json=v2").out
        kinds_of({"outdated": json.loads(out)}, "", cls.ours_kinds, cls.ours_orders)
        for name in ("061-info-json-installed-formula", "111-info-json-installed-formula",
                     "062-info-json-installed-cask", "112-info-json-installed-cask"):  # fmt: skip
            kinds_of(json.loads(recorded(name, ".stdout")), "", cls.theirs_kinds, cls.theirs_orders)
        report = json.loads(recorded("102-outdated-json", ".stdout"))
        kinds_of({"outdated": report}, "", cls.theirs_kinds, cls.theirs_orders)
        large = Path(RECORDED, "scale", "all-formulae.json.xz")
        cls.has_large = large.exists()
        if cls.has_large:
            with lzma.open(large) as file:
                kinds_of(json.load(file), "", cls.theirs_kinds, cls.theirs_orders)

    def test_keys_and_their_order(self) -> None:
        compared = 0
        for path, orders in self.ours_orders.items():
            theirs = self.theirs_orders.get(path)
            if theirs is None:
                self.assertTrue(path in NEVER_RECORDED or not self.has_large, f"{path} was never recorded")
                continue
            if path == ".casks[].artifacts[]":
                # Named after its kind, of which few were recorded; the second key is fixed.
                self.assertEqual({keys[1:] for keys in orders}, {keys[1:] for keys in theirs})
                continue
            with self.subTest(path):
                self.assertLessEqual(orders, theirs)
                compared += 1
        self.assertGreater(compared, 12)
        for path in (".formulae[]", ".casks[]", ".formulae[].installed[]", ".outdated.formulae[]",
                     ".outdated.casks[]", ".formulae[].installed[].runtime_dependencies[]"):  # fmt: skip
            self.assertIn(path, self.ours_orders)

    def test_kinds_of_values(self) -> None:
        self.assertGreater(len(self.ours_kinds), 120)
        for path, kinds in self.ours_kinds.items():
            theirs = self.theirs_kinds.get(path, set()) | NEVER_RECORDED.get(path, set())
            if ".*" in path or path.startswith(".casks[].deprecate_args.") or path.startswith(
                ".casks[].disable_args."
            ):
                continue
            with self.subTest(path):
                if theirs or self.has_large:
                    self.assertLessEqual(kinds, theirs)

    def test_no_recorded_place_is_missing(self) -> None:
        small: Kinds = {}
        for name in ("111-info-json-installed-formula", "112-info-json-installed-cask"):
            kinds_of(json.loads(recorded(name, ".stdout")), "", small, {})
        missing = {path for path in small if path not in self.ours_kinds}
        self.assertEqual(missing, set())

    def test_text_form_differs_only_in_the_kind(self) -> None:
        self.prefix.misbehave(outdated={"cask_versions": "text"})
        self.addCleanup(self.prefix.misbehave, outdated={"cask_versions": "list"})
        ours = self.prefix.report("outdated", "--json=v2")["casks"][0]
        theirs = json.loads(recorded("102-outdated-json", ".stdout"))["casks"][0]
        self.assertEqual(list(ours), list(theirs))
        self.assertIsInstance(ours["installed_versions"], str)

    def test_indentation(self) -> None:
        ours = self.prefix.run("info", "--json=v2", "--installed", "--formula").out.splitlines()
        theirs = recorded("061-info-json-installed-formula", ".stdout").splitlines()
        self.assertEqual(ours[:3], ["{", '  "formulae": [', "    {"])
        self.assertEqual(theirs[:3] + theirs[-3:], ours[:3] + ours[-3:])


@unittest.skipUnless(HAS_SESSION, "LUMORA_RECORDED names no session to compare with")
class ShapeOfTexts(SampleTest):
    def compare(self, name: str, *words: str, **environment: str) -> Result:
        with self.subTest(name):
            ours = self.prefix.run(*words, **environment)
            self.assertEqual(str(ours.status), recorded(name, ".status").strip())
            self.assertEqual(shapes_of(ours.out), shapes_of(recorded(name, ".stdout")))
            self.assertEqual(shapes_of(ours.err), shapes_of(recorded(name, ".stderr")))
        return ours

    def test_shapes_do_not_swallow_each_other(self) -> None:
        # A comparison of nothing but free text would compare nothing.
        free = 0
        total = 0
        for path in sorted(Path(RECORDED, "brew-6.0").glob("1[2-6]*.std*")):
            shapes = shapes_of(path.read_text(encoding="utf-8")) if "json" not in path.name else []
            total += len(shapes)
            free += shapes.count("free text")
        self.assertGreater(total, 80)
        self.assertLess(free, 10)

    def test_taps(self) -> None:
        self.compare("010-tap-add", "tap", "stripe/stripe-cli")
        self.compare("012-tap-list", "tap")
        self.compare("013-tap-bad-name", "tap", "nonsense")
        self.compare("161-untap", "untap", "stripe/stripe-cli")
        self.compare("162-untap-again", "untap", "stripe/stripe-cli")
        self.compare("163-untap-bad-name", "untap", "nonsense")
        self.compare("160-untap-needed", "untap", "hashicorp/tap")

    def test_install(self) -> None:
        self.compare("030-install-alpha-with-dependency", "install", "mongodb-community")
        self.compare("031-install-beta-caveats", "install", "vault")
        self.compare("039-install-unicode", "install", "yabai")
        self.compare("045-install-nonexistent", "install", "no-such-formula-xyz")
        self.compare("046-install-already", "install", "vault")
        self.compare("048-install-two-one-bad", "install", "tree", "no-such-formula-xyz")
        self.compare("036-install-disabled", "install", "docker-machine")

    def test_install_casks(self) -> None:
        self.compare("050-cask-install-tool", "install", "--cask", "powershell")
        self.compare("051-cask-install-auto", "install", "--cask", "zotero")
        self.compare("052-cask-install-latest", "install", "--cask", "font-noto-sans-kr")
        self.compare("053-cask-install-font", "install", "--cask", "font-hackgen")
        self.compare("055-cask-install-by-name-only", "install", "zotero")
        self.compare("056-cask-install-nonexistent", "install", "--cask", "no-such-cask-xyz")

    def test_info(self) -> None:
        self.prefix.run("install", "mongodb-community", "vault", "powershell")
        self.compare_described("070-info-formula", "mongodb-community")
        self.compare_described("071-info-caveats", "vault")
        self.compare_described("072-info-cask", "powershell")
        self.compare_described("074-info-core", "imagemagick")
        self.compare("077-info-nonexistent", "info", "no-such-formula-xyz")

    def compare_described(self, name: str, package: str) -> None:
        """The second line is the description, which may have any shape."""
        with self.subTest(name):
            ours = self.prefix.run("info", package)
            texts = (ours.out, recorded(name, ".stdout"))
            ours_lines, theirs_lines = (text.splitlines() for text in texts)
            del ours_lines[1], theirs_lines[1]
            self.assertEqual(shapes_of("\n".join(ours_lines)), shapes_of("\n".join(theirs_lines)))
            self.assertEqual((ours.err, ours.status), ("", 0))

    def test_search(self) -> None:
        self.compare("080-search-demo", "search", "ollama")
        self.compare("081-search-wget", "search", "wget")
        self.compare("084-search-none", "search", "zzzznothingzzzz")
        self.compare("093-search-dash", "search", "--", "--tail-scale")

    def test_upgrade(self) -> None:
        self.compare("121-upgrade-one", "upgrade", "terraform")
        self.compare("122-upgrade-one-again", "upgrade", "terraform")
        self.compare("123-upgrade-pinned", "upgrade", "postgresql@16")
        self.compare("124-upgrade-not-installed", "upgrade", "vim")
        self.compare("125-upgrade-nonexistent", "upgrade", "no-such-formula-xyz")
        self.compare("126-upgrade-cask", "upgrade", "--cask", "android-platform-tools")

    def test_upgrade_all(self) -> None:
        # What is left has four formulae without caveats, one cask and the pinned one, like theirs.
        self.prefix.run("upgrade", "git", "ffmpeg", "libpng", "temurin", "android-platform-tools")
        self.compare("127-upgrade-all", "upgrade")
        self.compare("128-upgrade-all-again", "upgrade")
        self.prefix.run("uninstall", "postgresql@16")
        self.compare("218-upgrade-untrusted", "upgrade")

    def test_locked(self) -> None:
        lock = self.prefix.folder / "var/homebrew/locks/yabai.formula.lock"
        with lock.open("w") as file:
            file.write("install yabai")
            file.flush()
            fcntl.flock(file, fcntl.LOCK_EX)
            self.compare("261-second-install-same", "install", "yabai")

    def test_cleanup(self) -> None:
        self.compare("130-cleanup-dry-run", "cleanup", "-n")
        self.compare("131-cleanup", "cleanup")
        self.compare("132-cleanup-again", "cleanup")

    def test_doctor(self) -> None:
        self.compare("140-doctor", "doctor")
        self.prefix.misbehave(doctor={"healthy": True})
        self.compare("290-doctor-ready-with-shellenv", "doctor")

    def test_uninstall(self) -> None:
        self.compare("150-uninstall-needed", "uninstall", "pcre2")
        self.compare("151-uninstall", "uninstall", "tree")
        self.compare("152-uninstall-again", "uninstall", "tree")
        self.prefix.run("install", "powershell", "ngrok")
        self.compare("154-uninstall-cask", "uninstall", "--cask", "powershell")
        self.compare("155-uninstall-cask-by-name", "uninstall", "ngrok")

    def test_unknown_command(self) -> None:
        ours = self.prefix.run("frobnicate")
        self.assertEqual((ours.out, ours.status), ("", 1))
        ours_last, theirs_last = (
            text.splitlines()[-1] for text in (ours.err, recorded("173-unknown-command", ".stderr"))
        )
        self.assertEqual(ours_last, theirs_last)


if __name__ == "__main__":
    unittest.main()
