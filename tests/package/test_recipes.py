# SPDX-License-Identifier: MIT
"""What can be said of a release's recipes without running them: cask, workflows, property list."""

from __future__ import annotations

import hashlib
import plistlib
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

try:
    import yaml
except ImportError:
    yaml = None

ROOT = Path(__file__).resolve().parents[2]
FILL = ROOT / "packaging/homebrew/fill"
PLACES = ("macos-arm64", "linux-aarch64", "linux-x86_64")
HOMEPAGE = "https://lumora.example/releases"


class Cask(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.archives = {
            place: Path(folder.name) / f"Lumora-1.2.3-{place}.tar.gz" for place in PLACES
        }
        for place, archive in self.archives.items():
            archive.write_text(f"an archive for {place}\n")

    def fill(self, *archives: Path) -> subprocess.CompletedProcess[str]:
        command = [FILL, HOMEPAGE, f"{HOMEPAGE}/download/v1.2.3", *archives]
        return subprocess.run(command, capture_output=True, check=False, text=True)

    def test_it_names_the_release(self) -> None:
        result = self.fill(*self.archives.values())
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertNotIn("@", result.stdout)
        self.assertIn('\n  version "1.2.3"\n', result.stdout)
        self.assertIn(f'\n  homepage "{HOMEPAGE}"\n', result.stdout)
        # Homebrew puts version and processor into them.
        self.assertEqual(
            re.findall(r'\burl "(.*)"', result.stdout),
            [
                HOMEPAGE + "/download/v#{version}/Lumora-#{version}-macos-arm64.tar.gz",
                HOMEPAGE + "/download/v#{version}/Lumora-#{version}-linux-#{arch}.tar.gz",
            ],
        )

    def test_each_archive_has_its_own_checksum(self) -> None:
        # In another order than the cask's.
        cask = self.fill(*reversed(self.archives.values())).stdout
        mac, linux = cask.split("on_linux do")
        for place, part in zip(PLACES, (mac, linux, linux), strict=True):
            key = {"macos-arm64": "", "linux-aarch64": "arm64_linux:", "linux-x86_64": "x86_64_linux:"}
            checksum = hashlib.sha256(self.archives[place].read_bytes()).hexdigest()
            self.assertRegex(part, rf'(sha256|,)\s+{key[place]}\s*"{checksum}"')

    def test_it_is_ruby(self) -> None:
        if shutil.which("ruby") is None:
            self.skipTest("There is no ruby here.")
        cask = self.fill(*self.archives.values()).stdout
        result = subprocess.run(
            ["ruby", "-wc"], input=cask, capture_output=True, check=False, text=True
        )
        self.assertEqual((result.stdout, result.stderr), ("Syntax OK\n", ""))

    def test_no_archive_may_be_missing(self) -> None:
        for place in PLACES:
            with self.subTest(place):
                others = [self.archives[other] for other in PLACES if other != place]
                result = self.fill(*others)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                name = place.replace("-", "_").upper()
                self.assertEqual(result.stderr, f"error: an archive is missing: @SHA256_{name}@\n")

    def test_versions_are_not_mixed(self) -> None:
        newer = self.archives["linux-x86_64"].with_name("Lumora-1.2.4-linux-x86_64.tar.gz")
        self.archives["linux-x86_64"] = self.archives["linux-x86_64"].rename(newer)
        result = self.fill(*self.archives.values())
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertEqual(result.stderr, f"error: {newer.name} is not of version 1.2.3\n")

    def test_a_stranger_has_no_place(self) -> None:
        for name in ("Lumora-1.2.3-macos-x86_64.tar.gz", "Lumora-1.2.3.deb"):
            with self.subTest(name):
                stranger = self.archives["macos-arm64"].with_name(name)
                stranger.write_text("?\n")
                result = self.fill(*self.archives.values(), stranger)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertIn(name, result.stderr)


class PropertyList(unittest.TestCase):
    """What macOS reads of the bundle, where it is known what it was built for."""

    def setUp(self) -> None:
        template = (ROOT / "packaging/Info.plist.in").read_text()
        self.values = {"PROJECT_VERSION": "1.2.3", "LUMORA_MINIMUM_MACOS": "15"}
        filled = re.sub("@([A-Z_]+)@", lambda name: self.values[name[1]], template)
        self.entries = plistlib.loads(filled.encode(), fmt=plistlib.FMT_XML)

    def test_it_says_what_the_bundle_is(self) -> None:
        identity = {
            "CFBundleExecutable": "Lumora",
            "CFBundleIconFile": "Lumora",
            "CFBundleIdentifier": "app.lumora.Lumora",
            "CFBundleName": "Lumora",
            "CFBundlePackageType": "APPL",
            "CFBundleShortVersionString": "1.2.3",
            "CFBundleVersion": "1.2.3",
            "LSApplicationCategoryType": "public.app-category.developer-tools",
            "LSMinimumSystemVersion": "15",
            "NSHighResolutionCapable": True,
            "NSPrincipalClass": "NSApplication",
        }
        self.assertEqual(identity, {key: self.entries.get(key) for key in identity})

    def test_its_languages_are_those_of_the_interface(self) -> None:
        languages = (ROOT / "src/l10n/Lang.h").read_text()
        (names,) = re.findall(r"enum class Lang \{ ([A-Za-z, ]+) \}", languages)
        self.assertEqual(self.entries["CFBundleLocalizations"], names.lower().split(", "))
        self.assertIn(self.entries["CFBundleDevelopmentRegion"], self.entries["CFBundleLocalizations"])


@unittest.skipIf(yaml is None, "There is no python3-yaml here.")
class Workflows(unittest.TestCase):
    """They can't be run here; what they refer to can be looked for."""

    def setUp(self) -> None:
        self.workflows = {
            path.name: yaml.safe_load(path.read_text())
            for path in sorted((ROOT / ".github/workflows").glob("*.yml"))
        }

    def steps(self) -> list[tuple[str, dict]]:
        return [
            (f"{name}: {job}", step)
            for name, workflow in self.workflows.items()
            for job, content in workflow["jobs"].items()
            for step in content["steps"]
        ]

    def test_jobs_wait_for_jobs_that_are_there(self) -> None:
        self.assertEqual(sorted(self.workflows), ["release.yml", "test.yml"])
        for name, workflow in self.workflows.items():
            jobs = workflow["jobs"]
            for job, content in jobs.items():
                needed = content.get("needs", [])
                needed = [needed] if isinstance(needed, str) else needed
                self.assertLessEqual(set(needed), set(jobs), f"{name}: {job}")

    def test_every_step_does_one_thing(self) -> None:
        for place, step in self.steps():
            self.assertEqual(len({"run", "uses"} & set(step)), 1, f"{place}: {step}")

    def test_commands_are_shell(self) -> None:
        for place, step in self.steps():
            if "run" in step:
                command = re.sub(r"\$\{\{.*?\}\}", "expression", step["run"])
                result = subprocess.run(
                    ["bash", "-n"], input=command, capture_output=True, check=False, text=True
                )
                self.assertEqual(result.stderr, "", f"{place}: {command}")

    def test_scripts_are_there_and_know_their_options(self) -> None:
        calls = 0
        for place, step in self.steps():
            pattern = r"(?:\./)?((?:scripts|\.ci|packaging)/[a-z/-]+)([^\n|;&]*)"
            for script, rest in re.findall(pattern, step.get("run", "")):
                calls += 1
                path = ROOT / script
                self.assertTrue(path.stat().st_mode & 0o100, f"{place}: {script}")
                # What is behind a lone -- is somebody else's.
                for option in re.findall(r" (--[a-z-]+)", rest.split(" -- ")[0]):
                    known = re.findall(r"^ +(--[a-z-]+).*\)", path.read_text(), re.MULTILINE)
                    self.assertIn(option, known, f"{place}: {script}")
        self.assertGreater(calls, 10)


if __name__ == "__main__":
    unittest.main()
