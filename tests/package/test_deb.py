# SPDX-License-Identifier: MIT
"""The Debian package: what is in it, what lintian says, that it runs."""

from __future__ import annotations

import gzip
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from elf import Elf
from own_tool import environment_with

SOURCE = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["LUMORA_BUILD_DIR"])
VERSION = os.environ["LUMORA_VERSION"]
PROGRAMS = ("usr/bin/lumora", "usr/libexec/lumora-askpass", "usr/libexec/lumora-fetch")


def make_deb(output: Path, environment: dict[str, str] | None = None) -> Path:
    command = [SOURCE / "scripts/package", "--deb", "--build-dir", BUILD, "--output", output]
    # As on systems where everybody has a group of their own.
    result = subprocess.run(
        command, capture_output=True, check=True, text=True, umask=0o002, env=environment
    )
    return Path(result.stdout.rstrip("\n"))


def run(*command: str | Path) -> str:
    return subprocess.run(command, capture_output=True, check=True, text=True).stdout


@unittest.skipUnless(shutil.which("dpkg-shlibdeps"), "dpkg-shlibdeps is not installed.")
class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        folder = Path(tempfile.mkdtemp(prefix="lumora-deb-"))
        cls.addClassCleanup(shutil.rmtree, folder)
        cls.folder = folder
        cls.package = make_deb(folder / "made")
        cls.root = folder / "root"
        run("dpkg", "--extract", cls.package, cls.root)
        cls.documents = cls.root / "usr/share/doc/lumora"

    def field(self, name: str) -> str:
        return run("dpkg-deb", "--field", self.package, name).rstrip("\n")

    def test_its_name_says_what_it_is_for(self) -> None:
        self.assertEqual(self.field("Package"), "lumora")
        architecture = run("dpkg", "--print-architecture").rstrip("\n")
        self.assertEqual(self.field("Architecture"), architecture)
        self.assertRegex(self.field("Version"), rf"^{re.escape(VERSION)}-1~[a-z]+[0-9.]*$")
        name = f"lumora_{self.field('Version')}_{architecture}.deb"
        self.assertEqual(self.package.name, name)
        self.assertEqual(os.listdir(self.package.parent), [name])

    def test_it_depends_on_what_it_runs_on(self) -> None:
        depends = re.split(r", ", self.field("Depends"))
        self.assertIn("zsh", depends)
        packages = {dependency.split()[0] for dependency in depends}
        for library in ("libqt6widgets6", "libsimdjson", "libqcoro6core0", "libstdc++6"):
            self.assertTrue(any(name.startswith(library) for name in packages), library)

    def test_lintian_has_nothing_to_say(self) -> None:
        if shutil.which("lintian") is None:
            self.skipTest("lintian is not installed.")
        result = subprocess.run(
            ["lintian", "--fail-on", "error,warning", "--allow-root", self.package],
            capture_output=True,
            check=False,
            text=True,
        )
        self.assertEqual((result.returncode, result.stdout), (0, ""), result.stderr)

    def test_its_documents_are_as_debian_has_them(self) -> None:
        self.assertEqual(
            set(os.listdir(self.documents)),
            {"README.md", "changelog.Debian.gz", "changelog.gz", "copyright"},
        )
        changes = gzip.decompress((self.documents / "changelog.gz").read_bytes())
        self.assertEqual(changes, (SOURCE / "CHANGELOG.md").read_bytes())
        own = self.folder / "changelog"
        own.write_bytes(gzip.decompress((self.documents / "changelog.Debian.gz").read_bytes()))
        parsed = run("dpkg-parsechangelog", "-l", own)
        self.assertIn(f"Version: {self.field('Version')}\n", parsed)
        self.assertIn(f"Maintainer: {self.field('Maintainer')}\n", parsed)
        licence = (SOURCE / "LICENSE").read_text().split("\n\n", 2)[2]
        copyright = (self.documents / "copyright").read_text()
        self.assertIn(
            " ".join(licence.split()), " ".join(copyright.replace("\n .\n", "\n").split())
        )

    def test_its_programs_are_there_and_stripped(self) -> None:
        for name in PROGRAMS:
            program = self.root / name
            self.assertNotIn(" .symtab ", run("readelf", "--wide", "--sections", program), name)
            self.assertEqual(Elf(program).run_paths(), [], name)
        self.assertEqual(run(self.root / PROGRAMS[0], "--version"), f"Lumora {VERSION}\n")

    def test_it_needs_no_scripts_of_its_own(self) -> None:
        control = self.folder / "control"
        run("dpkg", "--control", self.package, control)
        self.assertEqual(set(os.listdir(control)), {"control", "md5sums"})

    def test_it_is_the_same_every_time(self) -> None:
        # What it depends on is known, and takes longer to find out than all else.
        depends = self.field("Depends").removesuffix(", zsh").removeprefix("zsh, ")
        answer = f"echo 'shlibs:Depends={depends}'"
        environment = environment_with(self.folder / "tools", "dpkg-shlibdeps", answer)
        again = make_deb(self.folder / "again", environment)
        self.assertTrue(again.read_bytes() == self.package.read_bytes(), "other bytes")


if __name__ == "__main__":
    unittest.main()
