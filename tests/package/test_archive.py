# SPDX-License-Identifier: MIT
"""The release archive: what is in it, and that it runs where there is no Qt."""

from __future__ import annotations

import contextlib
import fnmatch
import os
import platform
import plistlib
import re
import shutil
import subprocess
import tarfile
import tempfile
import unittest
from collections.abc import Iterator
from pathlib import Path, PurePosixPath

from driver.application import Application
from driver.compositor import Compositor
from driver.namespaces import own
from driver.testcase import DesktopTest
from driver.waiting import wait_until
from elf import Elf
from own_tool import environment_with

ROOT = Path(__file__).resolve().parents[2]
PACKAGE = ROOT / "scripts/package"
# Belong to the system: its drivers, its fonts, its bus and its security updates.
NEVER_BUNDLED = {
    # fmt: off
    "libc.so.6", "libm.so.6", "libstdc++.so.6", "libgcc_s.so.1", "libGL.so.1", "libEGL.so.1",
    "libX11.so.6", "libxcb.so.1", "libfontconfig.so.1", "libdbus-1.so.3", "libssl.so.3",
    "libcrypto.so.3",
    # fmt: on
}
# What one starts that has brought libraries along: the system's own ones are made unusable
# for it. Parameters: a folder with bundled libraries, and the folder of the system's plugins.
HIDE = """
libraries=$1 plugins=$2
shift 2
for library in "$libraries"/*; do
    for folder in /lib /usr/lib /lib/*-linux-gnu* /usr/lib/*-linux-gnu* /usr/local/lib; do
        [ ! -e "$folder/${library##*/}" ] || mount --bind /dev/null "$folder/${library##*/}"
    done
done
[ ! -d "$plugins" ] || mount -t tmpfs none "$plugins"
exec "$@"
"""


BUILD = Path(os.environ["LUMORA_BUILD_DIR"])
PROGRAMS = ("Lumora", "lumora-askpass", "lumora-fetch")
SIGNER = "releases@lumora.example"
# What nobody has set: .example is the end of a host, or of all.
UNSET = re.compile(r"\.example(/|$)")


def left_to_the_system() -> dict[str, str]:
    """Patterns of names of libraries, and why each of them isn't bundled."""
    lines = (ROOT / "packaging/system-libraries.txt").read_text(encoding="utf-8").splitlines()
    entries = (line.partition(" ") for line in lines if line and not line.startswith("#"))
    return {name: reason.strip() for name, _, reason in entries}


def make_archive(output: Path, environment: dict[str, str], *options: str) -> tuple[Path, str]:
    """The archive, and what there was to be said."""
    command = [PACKAGE, "--build-dir", BUILD, "--output", output, *options]
    result = subprocess.run(command, capture_output=True, check=True, text=True, env=environment)
    return Path(result.stdout.rstrip("\n")), result.stderr


def in_a_hurry(tools: Path) -> dict[str, str]:
    """An environment whose gzip takes a third of the time for a tenth more bytes."""
    return environment_with(tools, "gzip", f'exec {shutil.which("gzip")} "$@" -1')


@contextlib.contextmanager
def throwaway_key() -> Iterator[str]:
    """A home of GnuPG's with a key of the signer's, and no other."""
    with tempfile.TemporaryDirectory(prefix="lumora-") as folder:
        environment = {**os.environ, "GNUPGHOME": folder}
        options = ["--batch", "--quiet", "--passphrase", ""]
        command = ["gpg", *options, "--quick-generate-key", SIGNER, "ed25519", "sign", "never"]
        subprocess.run(command, capture_output=True, check=True, env=environment)
        try:
            yield folder
        finally:
            subprocess.run(["gpgconf", "--kill", "all"], check=True, env=environment)


def addresses(build: Path = BUILD) -> dict[str, str]:
    """What this build opens and asks, by the name it is set with."""
    cache = (build / "CMakeCache.txt").read_text()
    names = "HOMEPAGE_URL|CONTACT_ADDRESS|REPOSITORY_URL|HOMEBREW_URL|RELEASE_API|RELEASE_OWNER"
    return dict(re.findall(rf"^(LUMORA_(?:{names})):STRING=(.*)$", cache, re.MULTILINE))


def system_plugins() -> str:
    command = ["qmake6", "-query", "QT_INSTALL_PLUGINS"]
    return subprocess.run(command, capture_output=True, check=True, text=True).stdout.strip()


def mapped_files(process: int) -> set[Path]:
    """The libraries and plugins that a process has loaded."""
    lines = Path(f"/proc/{process}/maps").read_text().splitlines()
    paths = (line.split(maxsplit=5)[5] for line in lines if ".so" in line)
    return {Path(path) for path in paths}


class ReleaseArchive(DesktopTest):
    prefix_options = ("--small", "--pace", "0")
    environment: dict[str, str]
    archive: Path
    notes: str
    bundle: Path

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.environment = in_a_hurry(cls.desk.folder / "tools")
        signing = []
        if shutil.which("gpg"):
            cls.environment["GNUPGHOME"] = cls.enter(throwaway_key())
            signing = ["--sign-with", SIGNER]
        archive = cls.desk.folder / "archive"
        cls.archive, cls.notes = make_archive(archive, cls.environment, *signing)
        elsewhere = cls.desk.folder / "où que ce soit"
        elsewhere.mkdir()
        subprocess.run(["tar", "-xzf", cls.archive, "-C", elsewhere], check=True)
        cls.bundle = elsewhere / "Lumora.app"
        cls.contents = cls.bundle / "Contents"
        cls.libraries = {path.name for path in (cls.contents / "lib").iterdir()}

    def test_addresses_that_nobody_has_set_are_named(self) -> None:
        self.assertEqual(len(addresses()), 6)
        self.assert_names_the_unset(self.notes, addresses())

    def assert_names_the_unset(self, notes: str, addresses: dict[str, str]) -> None:
        unset = [
            f"{name} is not set: {address}"
            for name, address in addresses.items()
            if UNSET.search(address)
        ]
        said = [line for line in notes.splitlines() if " is not set: " in line]
        self.assertCountEqual(said, unset)

    def test_addresses_that_somebody_has_set_are_not_named(self) -> None:
        build = self.desk.folder / "build"
        # An empty bundle can't be packed, but that is seen only after this has been said.
        (build / "Lumora.app").mkdir(parents=True)
        cache = (BUILD / "CMakeCache.txt").read_text()
        given = {
            "LUMORA_HOMEPAGE_URL": "https://lumora.example.org/releases",
            "LUMORA_CONTACT_ADDRESS": "mailto:hello@lumora.example",
            "LUMORA_REPOSITORY_URL": "https://code.test/lumora.example.git",
            "LUMORA_RELEASE_API": "https://api.lumora.example/v3",
            "LUMORA_RELEASE_OWNER": "example",
        }
        for name, address in given.items():
            cache = re.sub(rf"^{name}:STRING=.*$", f"{name}:STRING={address}", cache, flags=re.M)
        (build / "CMakeCache.txt").write_text(cache)
        self.assertLessEqual(given.items(), addresses(build).items())
        command = [PACKAGE, "--build-dir", build, "--output", self.desk.folder / "nothing"]
        packing = subprocess.run(command, capture_output=True, check=False, text=True)
        self.assertNotEqual(packing.returncode, 0)
        notes = packing.stderr
        self.assert_names_the_unset(notes, addresses(build))
        self.assertEqual(notes.count(" is not set: "), 2)

    def test_its_name_says_what_it_is_for(self) -> None:
        version = os.environ["LUMORA_VERSION"]
        self.assertEqual(
            self.archive.name, f"Lumora-{version}-linux-{platform.machine()}.tar.gz"
        )

    def test_it_keeps_to_its_one_folder(self) -> None:
        with tarfile.open(self.archive) as archive:
            members = archive.getmembers()
        self.assertGreater(len(members), 50)
        for member in members:
            path = PurePosixPath(member.name)
            with self.subTest(member.name):
                self.assertEqual(path.parts[0], "Lumora.app")
                self.assertNotIn("..", path.parts)
                self.assertTrue(member.isfile() or member.isdir(), "neither file nor folder")
                self.assertEqual((member.uid, member.gid), (0, 0))
                self.assertEqual(member.mode & 0o7022, 0, f"mode {member.mode:o}")
        self.assertEqual(len({member.name for member in members}), len(members))

    def test_it_is_a_bundle(self) -> None:
        entries = plistlib.loads((self.contents / "Info.plist").read_bytes())
        self.assertEqual(entries["CFBundleShortVersionString"], os.environ["LUMORA_VERSION"])
        self.assertEqual(entries["CFBundleExecutable"], "Lumora")
        for program in PROGRAMS:
            self.assertTrue(os.access(self.contents / "bin" / program, os.X_OK), program)
        picture = (self.contents / "Resources/Lumora.png").read_bytes()
        self.assertTrue(picture.startswith(b"\x89PNG"))

    def test_its_manifest_names_every_file(self) -> None:
        manifest = self.contents / "Resources/manifest.txt"
        number, *lines = manifest.read_text(encoding="utf-8").splitlines()
        listed = {line.partition(" ")[2]: int(line.partition(" ")[0]) for line in lines}
        self.assertEqual(int(number), len(listed))
        files = {
            str(path.relative_to(self.bundle)): path.stat().st_size
            for path in self.bundle.rglob("*")
            if path.is_file() and path not in (manifest, self.contents / "Info.plist")
        }
        self.assertEqual(listed, files)

    def test_it_is_the_same_every_time(self) -> None:
        again, _ = make_archive(self.desk.folder / "again", self.environment)
        self.assertTrue(again.read_bytes() == self.archive.read_bytes(), "other bytes")
        # Nobody has asked for a signature this time.
        self.assertCountEqual(os.listdir(again.parent), [again.name, f"{again.name}.sha256"])

    def damaged_copy(self) -> Path:
        """The archive with what lies beside it, after a bad journey."""
        folder = Path(tempfile.mkdtemp(dir=self.desk.folder))
        for path in self.archive.parent.iterdir():
            shutil.copy(path, folder)
        with (folder / self.archive.name).open("r+b") as file:
            file.seek(1000)
            file.write(b"damage")
        return folder

    def test_its_checksum_tells_what_was_damaged(self) -> None:
        command = ["sha256sum", "--check", f"{self.archive.name}.sha256"]
        for folder, status in ((self.archive.parent, 0), (self.damaged_copy(), 1)):
            result = subprocess.run(command, cwd=folder, capture_output=True, check=False)
            self.assertEqual(result.returncode, status, result.stderr)

    def test_its_signature_tells_who_made_it(self) -> None:
        if shutil.which("gpg") is None:
            self.skipTest("There is no gpg.")
        command = ["gpg", "--batch", "--status-fd", "1", "--verify", f"{self.archive.name}.asc"]
        for folder, verdict in ((self.archive.parent, "GOODSIG"), (self.damaged_copy(), "BADSIG")):
            result = subprocess.run(
                [*command, self.archive.name],
                cwd=folder, env=self.environment, capture_output=True, check=False, text=True
            )
            self.assertRegex(result.stdout, rf"\[GNUPG:\] {verdict} \w+ {SIGNER}")

    def test_it_leaves_to_the_system_what_is_the_systems(self) -> None:
        self.assertEqual(self.libraries & NEVER_BUNDLED, set())

    def files(self) -> dict[str, Elf]:
        """Programs, libraries and plugins, by their path in the bundle."""
        paths = [self.contents / "bin" / name for name in PROGRAMS]
        paths += [path for path in self.contents.rglob("*.so*") if path.is_file()]
        self.assertGreater(len(paths), 40)
        return {str(path.relative_to(self.contents)): Elf(path) for path in paths}

    def test_what_it_needs_is_in_it_or_known_to_be_the_systems(self) -> None:
        system = left_to_the_system()
        for pattern, reason in system.items():
            self.assertGreater(len(reason), 10, pattern)
        missing = {
            (path, needed)
            for path, file in self.files().items()
            for needed in file.needed()
            if needed not in self.libraries
            and not any(fnmatch.fnmatchcase(needed, pattern) for pattern in system)
        }
        self.assertEqual(missing, set())

    def test_it_brings_nothing_that_nobody_needs(self) -> None:
        needed = {name for file in self.files().values() for name in file.needed()}
        self.assertEqual(self.libraries - needed, set())

    def test_it_has_plugins_for_displays_and_for_writing_korean_and_japanese(self) -> None:
        plugins = self.contents / "plugins"
        wanted = {
            # fmt: off
            "platforms": {"qxcb", "qwayland-generic", "qoffscreen"},
            "wayland-shell-integration": {"xdg-shell"},
            "wayland-decoration-client": {"bradient"},
            "wayland-graphics-integration-client": {"qt-plugin-wayland-egl"},
            "platforminputcontexts": {
                "composeplatforminputcontextplugin", "ibusplatforminputcontextplugin",
                "fcitx5platforminputcontextplugin",
            },
            "platformthemes": {"qxdgdesktopportal"},
            "tls": {"qopensslbackend"},
            # fmt: on
        }
        found = {
            folder.name: {path.name[len("lib") : -len(".so")] for path in folder.iterdir()}
            for folder in plugins.iterdir()
        }
        self.assertEqual(found, wanted)

    def test_it_has_the_licences_of_what_it_brings(self) -> None:
        licences = self.contents / "Resources/licences"
        packages = {path.stem for path in licences.glob("*.txt")}
        names = [*self.libraries, *(path.name for path in self.contents.glob("plugins/*/*"))]
        command = ["dpkg-query", "--listfiles", *packages]
        result = subprocess.run(command, capture_output=True, check=True, text=True)
        known = {path.rpartition("/")[2] for path in result.stdout.splitlines()}
        self.assertEqual({*names} - known, set())
        self.assertIn("qt6-translations-l10n", packages)
        self.assertIn("LGPL-3", {path.name for path in licences.iterdir()})

    def test_it_offers_the_source_of_what_it_brings(self) -> None:
        licences = self.contents / "Resources/licences"
        *_, text, listed = (licences / "SOURCES").read_text(encoding="utf-8").split("\n\n")
        self.assertIn(addresses()["LUMORA_CONTACT_ADDRESS"], text)
        packages = [path.stem for path in licences.glob("*.txt")]
        command = ["dpkg-query", "-W", "-f", "${source:Package} ${source:Version}\n", *packages]
        sources = subprocess.run(command, capture_output=True, check=True, text=True).stdout
        self.assertEqual(listed.splitlines(), sorted({*sources.splitlines()}))

    def programs(self) -> dict[str, Elf]:
        return {name: Elf(self.contents / "bin" / name) for name in PROGRAMS}

    def test_its_programs_lie_anywhere(self) -> None:
        for name, program in self.programs().items():
            self.assertIn("PIE", program.flags(), name)

    def test_its_programs_are_bound_for_good_at_the_start(self) -> None:
        for name, program in self.programs().items():
            self.assertEqual(program.segments().get("GNU_RELRO"), "R", name)
            self.assertIn("NOW", program.flags(), name)

    def test_its_programs_guard_their_stack(self) -> None:
        for name, program in self.programs().items():
            self.assertTrue("__stack_chk_fail" in program.imports(), name)

    def test_its_programs_let_the_c_library_check_sizes(self) -> None:
        if "-O0" in os.environ["LUMORA_COMPILER_FLAGS"]:
            self.skipTest("The C library checks nothing in a build without optimisation.")
        # Both may print an error, and printing is checked.
        for name, program in self.programs().items():
            checked = {symbol for symbol in program.imports() if symbol.endswith("_chk")}
            self.assertNotEqual(checked, set(), name)

    def test_its_programs_are_called_only_where_functions_begin(self) -> None:
        if platform.machine() != "x86_64":
            self.skipTest("Only x86-64 is known to mark functions.")
        begin = bytes.fromhex("f30f1efa")  # endbr64
        for name, program in self.programs().items():
            entries = program.entries()
            self.assertGreater(len(entries), 50, name)
            # All but those of the C run-time's own object files.
            unmarked = [entry for entry in entries if entry != begin]
            self.assertLess(len(unmarked), 5, name)

    def test_nothing_in_it_runs_from_a_stack(self) -> None:
        for name, file in self.files().items():
            self.assertEqual(file.segments().get("GNU_STACK"), "RW", name)

    def test_it_looks_for_libraries_in_itself_only(self) -> None:
        for name, program in self.programs().items():
            self.assertEqual(program.run_paths(), ["$ORIGIN/../lib"], name)
        for path in self.bundle.rglob("*.so*"):
            self.assertEqual(Elf(path).run_paths(), [], path.name)

    def start_bundle(self, *wrapper: str, environment: dict[str, str] | None = None) -> Application:
        app = Application(
            self.desk,
            self.contents / "bin/Lumora",
            self.home,
            ["--brew", self.prefix.brew, "--appearance", "light"],
            {"QT_IM_MODULE": "ibus", **(environment or {})},
            list(wrapper),
        )
        self._application = app
        self.addCleanup(app.stop)
        return app

    def wait_for_plugins(self, app: Application, *names: str) -> None:
        expected = {self.contents / "plugins" / name for name in names}
        wait_until(
            lambda: expected <= mapped_files(app.process_id),
            lambda: f"it loads {expected} among {mapped_files(app.process_id)}",
        )

    def assert_runs_on_its_own(self, app: Application, *display: str) -> None:
        """`display` are the plugins that bring it to the screen."""
        app.find(re.compile("^Formulae, [0-9]+"), role="list item")
        self.wait_for_plugins(
            app, *display, "platforminputcontexts/libibusplatforminputcontextplugin.so"
        )
        strangers = {
            path
            for path in mapped_files(app.process_id)
            if self.bundle not in path.parents
            and (path.name in self.libraries or re.search("[Qq]t|QCoro|simdjson", str(path)))
        }
        self.assertEqual(strangers, set())
        self.assertIn("libQt6Widgets.so.6", self.libraries)
        # What speaks with servers is in a process of its own.
        networks = {path for path in mapped_files(app.process_id) if "Qt6Network" in path.name}
        self.assertEqual(networks, set())

    def assert_knows_encryption(self, *command: str) -> None:
        """Needed for the release check. Nobody listens, but that is seen only after it."""
        program = [*command, self.contents / "bin/lumora-fetch", "9000", "https://127.0.0.1:1"]
        environment = {"PATH": os.environ["PATH"], "HOME": str(self.home.folder)}
        # It goes once its standard input has ended.
        with subprocess.Popen(
            program, env=environment, stdin=subprocess.PIPE, stderr=subprocess.PIPE, text=True
        ) as fetching:
            reason = fetching.stderr.read()
        self.assertRegex(reason, "^(Connection refused|Network unreachable)\n$")

    def test_it_prefers_what_it_has_brought(self) -> None:
        app = self.start_bundle(*(own("net") or []))
        self.assert_runs_on_its_own(app, "platforms/libqxcb.so")

    def without_qt(self) -> list[str]:
        """The beginning of a command line whose command sees neither Qt nor what is bundled."""
        alone = own("mount", "net")
        if alone is None:
            self.skipTest("This system lets nobody have a mount namespace.")
        return [*alone, "sh", "-ec", HIDE, "sh", str(self.contents / "lib"), system_plugins()]

    def test_it_runs_where_there_is_no_qt(self) -> None:
        without_qt = self.without_qt()
        # The built application needs what is hidden.
        built = subprocess.run(
            [*without_qt, os.environ["LUMORA_APP"], "--version"],
            capture_output=True,
            check=False,
            text=True,
        )
        self.assertEqual(built.returncode, 127, built.stdout + built.stderr)
        self.assertIn("error while loading shared libraries", built.stderr)
        asking = subprocess.run(
            [*without_qt, self.contents / "bin/lumora-askpass", "Password:"],
            env={"PATH": os.environ["PATH"], "HOME": str(self.home.folder)},
            capture_output=True,
            check=False,
            text=True,
        )
        self.assertEqual(asking.stderr, "lumora-askpass: there is no display to ask on\n")
        self.assert_knows_encryption(*without_qt)
        app = self.start_bundle(*without_qt)
        self.assert_runs_on_its_own(app, "platforms/libqxcb.so")
        app.close_window()
        self.assertEqual(app.wait_ended()[0], 0)

    def test_it_runs_on_wayland_where_there_is_no_qt(self) -> None:
        without_qt = self.without_qt()
        with Compositor(self.desk.folder / "compositor") as compositor:
            app = self.start_bundle(*without_qt, environment=compositor.environment)
            self.assert_runs_on_its_own(
                app,
                "platforms/libqwayland-generic.so",
                "wayland-shell-integration/libxdg-shell.so",
                "wayland-decoration-client/libbradient.so",
            )

    def test_it_takes_the_plugins_that_the_session_names(self) -> None:
        names = {"QT_IM_MODULE": "fcitx", "QT_QPA_PLATFORMTHEME": "xdgdesktopportal"}
        app = self.start_bundle(environment=names)
        self.wait_for_plugins(
            app,
            "platforminputcontexts/libfcitx5platforminputcontextplugin.so",
            "platformthemes/libqxdgdesktopportal.so",
        )

    def test_it_runs_without_a_display(self) -> None:
        result = subprocess.run(
            [self.contents / "bin/Lumora", "--version"],
            env={"HOME": str(self.home.folder)},
            capture_output=True,
            check=False,
            text=True,
        )
        self.assertEqual(result.stdout, f"Lumora {os.environ['LUMORA_VERSION']}\n", result.stderr)


if __name__ == "__main__":
    unittest.main()
