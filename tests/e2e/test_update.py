# SPDX-License-Identifier: MIT
"""The application replaces itself with the release that a service on this machine offers."""

from __future__ import annotations

import json
import os
import plistlib
import re
import shutil
import signal
import subprocess
import sys
import tarfile
import tempfile
import unittest
from pathlib import Path
from typing import Any

from driver.application import Application
from driver.testcase import DesktopTest
from driver.waiting import wait_until

SERVER = Path(__file__).resolve().parents[1] / "update/support/release_server.py"
LATEST = "/repos/someone/Lumora-releases/releases/latest"
ARCHIVE = "/Lumora.tar.gz"
PREFERENCE = "Lumora.updatedToVersion"
RESTART_PATIENCE = 60


class ReleaseService:
    """A web server in a process of its own; what it answers is in a file that it reads."""

    def __init__(self, folder: Path) -> None:
        folder.mkdir()
        self._folder = folder
        self.answer({})
        self._process = subprocess.Popen(
            [sys.executable, "-B", str(SERVER), str(folder)],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        self.address = f"http://127.0.0.1:{int(self._process.stdout.readline())}"

    def stop(self) -> None:
        self._process.communicate()

    def answer(self, plan: dict[str, dict[str, Any]]) -> None:
        draft = self._folder / "plan.draft"
        draft.write_text(json.dumps(plan), encoding="utf-8")
        draft.replace(self._folder / "plan.json")

    def offer(self, version: str, **archive: Any) -> None:
        asset = {"name": ARCHIVE[1:], "browser_download_url": self.address + ARCHIVE}
        release = {"tag_name": f"v{version}", "assets": [asset], "body": "What is new"}
        self.answer({LATEST: {"text": json.dumps(release)}, ARCHIVE: archive})

    def requests(self) -> list[str]:
        log = self._folder / "requests.jsonl"
        if not log.exists():
            return []
        return [json.loads(line)["path"] for line in log.read_text().splitlines()]


class AdoptedProcess:
    """A process that the update's script has started, and that became ours at its end."""

    def __init__(self, pid: int) -> None:
        self.pid = pid
        self.returncode: int | None = None

    def poll(self) -> int | None:
        if self.returncode is None:
            try:
                pid, status = os.waitpid(self.pid, os.WNOHANG)
            except ChildProcessError:
                # The script has not ended yet.
                return None
            if pid:
                self.returncode = os.waitstatus_to_exitcode(status)
        return self.returncode

    def end(self) -> None:
        if self.poll() is None:
            os.kill(self.pid, signal.SIGKILL)
            wait_until(lambda: self.poll() is not None, "the restarted application ends")


class Restarted(Application):
    """The application that has come back by itself, on the desk of the one that went."""

    def __init__(self, before: Application, process: AdoptedProcess) -> None:
        self.__dict__.update(before.__dict__)
        self._process = process
        self._accessible = self._wait(
            lambda: self.desk.accessibility.application_of(process.pid),
            lambda: "the restarted application appears on the accessibility bus",
        )


def program_in(bundle: Path) -> Path:
    return bundle / "Contents/bin/Lumora"


def version_of(bundle: Path) -> str:
    with (bundle / "Contents/Info.plist").open("rb") as file:
        return plistlib.load(file)["CFBundleShortVersionString"]


def stamp(bundle: Path, version: str) -> None:
    path = bundle / "Contents/Info.plist"
    entries = plistlib.loads(path.read_bytes())
    entries["CFBundleShortVersionString"] = version
    path.write_bytes(plistlib.dumps(entries))


def content_of(folder: Path) -> dict[str, bytes]:
    return {
        str(path.relative_to(folder)): path.read_bytes()
        for path in sorted(folder.rglob("*"))
        if path.is_file()
    }


def process_running(program: Path) -> int | None:
    for folder in Path("/proc").glob("[0-9]*"):
        try:
            if os.readlink(folder / "exe") == str(program):
                return int(folder.name)
        except OSError:
            continue
    return None


def arguments_of(process: int) -> list[str]:
    words = Path(f"/proc/{process}/cmdline").read_text(encoding="utf-8").split("\0")
    return words[1:-1]


class SelfUpdate(DesktopTest):
    prefix_options = ("--small", "--pace", "0")

    def setUp(self) -> None:
        super().setUp()
        self.place = Path(tempfile.mkdtemp(prefix="update-", dir=self.desk.folder))
        self.service = ReleaseService(self.place / "service")
        self.addCleanup(self.service.stop)
        # The program lies in Contents/bin of the bundle.
        built = Path(os.environ["LUMORA_UPDATING_APP"]).parents[2]
        self.bundle = self.place / "apps/Lumora.app"
        shutil.copytree(built, self.bundle, symlinks=True)
        stamp(self.bundle, "0.1.9")

    def make_archive(self) -> Path:
        """Of a copy of the bundle that calls itself 0.2.0."""
        newer = self.place / "newer/Lumora.app"
        shutil.copytree(self.bundle, newer, symlinks=True)
        stamp(newer, "0.2.0")
        (newer / "Contents/Resources/new").write_text("new\n")
        archive = self.place / "Lumora.tar.gz"
        with tarfile.open(archive, "w:gz", compresslevel=1) as file:
            file.add(newer, "Lumora.app")
        return archive

    def start_bundle(self) -> Application:
        app = Application(
            self.desk,
            program_in(self.bundle),
            self.home,
            ["--brew", self.prefix.brew, "--appearance", "light"],
            {
                "LUMORA_RELEASE_API": self.service.address,
                "PATH": f"{self.own_tools()}:{self.desk.environment(self.home)['PATH']}",
            },
        )
        self._application = app
        self.addCleanup(app.stop)
        return app

    def own_tools(self) -> Path:
        """A folder with a `pgrep` that sees the applications of this test only: the update's
        script waits for every one of that name."""
        folder = self.place / "tools"
        folder.mkdir(exist_ok=True)
        pgrep = folder / "pgrep"
        pgrep.write_text(f'#!/bin/sh\nexec {shutil.which("pgrep")} -P {os.getpid()} "$@"\n')
        pgrep.chmod(0o700)
        return folder

    def wait_for_restart(self, app: Application) -> Restarted:
        self.assertEqual(app.wait_ended()[0], 0)
        pid = wait_until(
            lambda: process_running(program_in(self.bundle)),
            lambda: f"it comes back; there is {self.left_behind()}",
            RESTART_PATIENCE,
        )
        process = AdoptedProcess(pid)
        self.addCleanup(process.end)
        restarted = Restarted(app, process)
        self._application = restarted
        return restarted

    def left_behind(self) -> list[Path]:
        """The files in the update's folder."""
        return list(self.home.temporary.glob("lumora-*/*"))

    def close(self, app: Application) -> None:
        app.close_window()
        self.assertEqual(app.wait_ended()[0], 0)

    def test_it_becomes_the_release(self) -> None:
        self.service.offer("0.2.0", file=str(self.make_archive()))
        (self.bundle / "Contents/Resources/old").write_text("old\n")
        app = self.start_bundle()
        arguments = arguments_of(app.process_id)
        self.assertIn("--brew", arguments)
        app.find("New Version v0.2.0 Available", role="label")
        app.find(re.compile("^Current: v0.1.9\n"), role="label")
        self.assertEqual(self.service.requests(), [LATEST])
        app.answer("Update Now")

        restarted = self.wait_for_restart(app)
        self.assertEqual(arguments_of(restarted.process_id), arguments)
        restarted.find("Update Complete", role="label")
        restarted.find("Updated to v0.2.0.", role="label")
        self.assertEqual(version_of(self.bundle), "0.2.0")
        self.assertFalse((self.bundle / "Contents/Resources/old").exists())
        self.assertTrue((self.bundle / "Contents/Resources/new").exists())
        self.assertEqual(os.listdir(self.bundle.parent), ["Lumora.app"])
        self.assertEqual(self.left_behind(), [])
        self.assertNotIn(PREFERENCE, self.home.preferences())

        restarted.answer("OK")
        restarted.wait_gone("Update Complete")
        # It is the latest now, and says nothing of its own accord.
        wait_until(
            lambda: self.service.requests() == [LATEST, ARCHIVE, LATEST],
            lambda: f"another check; there were {self.service.requests()}",
        )
        restarted.open_application_menu()
        restarted.press("Up", "Up", "Return")
        restarted.find("Up to Date", role="label")
        restarted.find("You are running the latest version (v0.2.0).", role="label")
        self.assertEqual(len(restarted.tree().windows), 1)
        restarted.answer("OK")
        restarted.wait_gone("Up to Date")
        self.close(restarted)

    def test_later_is_not_now(self) -> None:
        self.service.offer("0.2.0", file="/nonexistent")
        before = content_of(self.bundle)
        app = self.start_bundle()
        app.find("New Version v0.2.0 Available", role="label")
        app.answer("Later")
        app.wait_gone("New Version v0.2.0 Available")
        self.close(app)
        self.assertEqual(self.service.requests(), [LATEST])
        self.assertEqual(self.left_behind(), [])
        self.assertNotIn(PREFERENCE, self.home.preferences())
        self.assertEqual(content_of(self.bundle), before)

    def test_a_failure_leaves_it_as_it_was(self) -> None:
        self.service.offer("0.2.0", text="<!DOCTYPE html><title>Sign in</title>")
        before = content_of(self.bundle)
        app = self.start_bundle()
        app.answer("Update Now")
        app.find("Update Check Failed", role="label")
        app.find("Extract failed", role="label")
        app.answer("OK")
        app.wait_gone("Update Check Failed")
        app.choose_category("Taps")
        app.find("Taps (1)", role="label")
        self.close(app)
        self.assertEqual(content_of(self.bundle), before)
        again = self.start_bundle()
        again.find(re.compile("^Formulae, "), role="list item")
        # Noted before the download: it is told of, though there was none.
        again.find("Updated to v0.2.0.", role="label")
        self.assertNotIn(PREFERENCE, self.home.preferences())


if __name__ == "__main__":
    unittest.main()
