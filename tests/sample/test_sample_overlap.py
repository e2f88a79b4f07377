# SPDX-License-Identifier: MIT
"""Runs beside each other, runs that are cut short, and names that nobody expects."""

from __future__ import annotations

import fcntl
import signal
import subprocess
import sys
import time
import unittest
from typing import Any

from sample_prefix import SAMPLE, TIMEOUT, SampleTest

sys.path.insert(0, str(SAMPLE))

from samplebrew.state import StateFile  # noqa: E402


class OddNames(SampleTest):
    options = ("--small",)
    NAMES: tuple[str | bytes, ...] = (
        "", " ", "a b", "it's", '"', "$HOME", "`id`", "a\nb", "a\tb", "*", "-x", "--", "-",
        "/", "//", "a/b/c/d", "../../etc/passwd", "%s%n", "名前", "ü" * 3000, b"\xff\xfe", "\x1b[31m", "{}",
    )  # fmt: skip

    def test_no_name_crashes_a_command(self) -> None:
        before = self.prefix.state()
        for command in ("install", "uninstall", "upgrade", "info", "tap", "untap", "search"):
            for name in self.NAMES:
                with self.subTest(command=command, name=name):
                    result = self.prefix.run(command, name)
                    self.assertNotIn("Traceback", result.err)
                    if command == "search":
                        # Letters between the signs may well occur in names.
                        self.assertIn(result.status, (0, 1))
                    elif name == "--" and command in ("tap", "upgrade", "info"):
                        self.assertEqual(result.status, 0, result)
                    else:
                        self.assertEqual(result.status, 1, result)
                        self.assertRegex(result.err, "Error: |Warning: No available formula")
            if command == "uninstall":
                self.assertEqual(self.prefix.state(), before)
        self.assertEqual(len(self.prefix.log()), 7 * len(self.NAMES))


class SideBySide(SampleTest):
    options = ("--empty",)

    def finish(self, *children: Any) -> list[tuple[str, int]]:
        ends = [child.communicate(timeout=TIMEOUT) for child in children]
        return [(err.decode(), child.returncode) for (_, err), child in zip(ends, children)]

    def test_overlapping_changes_all_arrive(self) -> None:
        names = ["hello", "tree", "fd", "age", "act", "broot", "btop", "buf"]
        taps = [f"user/tap{number}" for number in range(8)]
        children = [self.prefix.start("install", name) for name in names]
        children += [self.prefix.start("tap", tap) for tap in taps]
        readers = [self.prefix.start("info", "--json=v2", "--installed") for _ in range(8)]
        ends = self.finish(*children, *readers)
        self.assertEqual([status for _, status in ends], [0] * 24, ends)
        self.assertLessEqual(set(names), set(self.prefix.state()["formulae"]))
        self.assertLessEqual(set(taps), set(self.prefix.run("tap").out.split()))

    def test_the_same_package_twice(self) -> None:
        self.prefix.misbehave(install={"pace": 8})
        first = self.prefix.start("install", "hello")
        lock = self.prefix.folder / "var/homebrew/locks/hello.formula.lock"
        deadline = time.monotonic() + TIMEOUT
        while not lock.exists() or not lock.read_text():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)
        self.prefix.misbehave(install={"pace": 0})
        second = self.prefix.start("install", "--verbose", "hello")
        (_, first_status), (message, second_status) = self.finish(first, second)
        self.assertEqual((first_status, second_status), (0, 1))
        self.assertIn("Error: hello: A `brew install hello` process has already locked ", message)
        self.assertIsNotNone(self.prefix.formula("hello"))

    def test_a_dependency_that_is_being_installed_is_waited_for(self) -> None:
        lock = self.prefix.folder / "var/homebrew/locks/oniguruma.formula.lock"
        with lock.open("w") as file:
            fcntl.flock(file, fcntl.LOCK_EX)
            child = self.prefix.start("install", "jq")
            with self.assertRaises(subprocess.TimeoutExpired):
                child.wait(timeout=0.5)
            with StateFile(str(self.prefix.folder)).changing() as state:
                self.assertEqual(state["formulae"], {})
                keg = {"version": "6.9.10", "time": 1, "on_request": False}
                state["formulae"]["oniguruma"] = {"kegs": [keg], "linked": None, "pinned": None}
        self.assertEqual(self.finish(child)[0][1], 0)
        self.assertEqual(set(self.prefix.state()["formulae"]), {"jq", "oniguruma"})
        # What the other run had installed meanwhile is left as it was.
        self.assertEqual(self.prefix.state()["formulae"]["oniguruma"]["kegs"], [keg])

    def test_what_vanishes_during_an_installation_is_noticed(self) -> None:
        cases = (
            ("jq", ("uninstall", "oniguruma"), "jq: jq needs oniguruma, which has been uninstalled."),
            ("mongodb-database-tools", ("untap", "mongodb/brew"), "which has been untapped."),
            ("aerospace", ("untap", "nikitabobko/tap"), "which has been untapped."),
        )
        self.assert_ok(self.prefix.run("install", "oniguruma"))
        self.prefix.misbehave(install={"pace": 8})
        for name, meanwhile, message in cases:
            with self.subTest(name):
                child = self.prefix.start("install", name)
                assert child.stderr
                self.assertIn(b"==> Fetching downloads for: ", child.stderr.readline())
                self.assert_ok(self.prefix.run(*meanwhile))
                err, status = self.finish(child)[0]
                self.assertEqual(status, 1)
                self.assertIn(message, err)
        state = self.prefix.state()
        self.assertEqual((state["formulae"], state["casks"]), ({}, {}))

    def test_an_ignored_signal_stays_ignored(self) -> None:
        self.prefix.misbehave(install={"pace": 4})
        child = self.prefix.start(
            "install", "fd", preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)
        )
        assert child.stderr
        child.stderr.readline()
        child.send_signal(signal.SIGHUP)
        self.assertEqual(self.finish(child)[0][1], 0)
        self.assertIn("fd", self.prefix.state()["formulae"])

    def test_a_change_that_fails_leaves_the_state(self) -> None:
        before = self.prefix.state()
        states = StateFile(str(self.prefix.folder))
        with self.assertRaises(ZeroDivisionError), states.changing() as state:
            state["taps"].append("half/done")
            _ = 1 / 0
        self.assertEqual(self.prefix.state(), before)
        with states.changing() as state:
            state["taps"].append("all/done")
        self.assertIn("all/done", self.prefix.run("tap").out.split())

    def test_readers_see_whole_states_while_others_write(self) -> None:
        self.prefix.misbehave(install={"pace": 1.5})
        writers = [self.prefix.start("install", name) for name in ("imagemagick", "vim")]
        counts = []
        while any(writer.poll() is None for writer in writers):
            report = self.prefix.report("info", "--json=v2", "--installed", "--formula")
            names = {entry["name"] for entry in report["formulae"]}
            for entry in report["formulae"]:
                self.assertLessEqual(set(entry["dependencies"]), names)
            counts.append(len(names))
        ends = self.finish(*writers)
        self.assertEqual([status for _, status in ends], [0, 0], ends)
        self.assertEqual(counts, sorted(counts))
        self.assertGreater(len(set(counts)), 1)

    def test_a_run_nobody_reads_ends_without_installing(self) -> None:
        self.prefix.misbehave(install={"pace": 1})
        child = self.prefix.start("install", "hello")
        assert child.stdout and child.stderr
        child.stdout.close()
        child.stderr.close()
        self.assertEqual(child.wait(timeout=TIMEOUT), 1)
        self.assertIsNone(self.prefix.formula("hello"))
        self.assertEqual(self.prefix.log()[0]["status"], 1)

    def test_a_terminated_run_is_logged_and_leaves_a_valid_state(self) -> None:
        self.prefix.misbehave(install={"pace": 20})
        child = self.prefix.start("install", "wget")
        assert child.stderr
        self.assertEqual(child.stderr.readline(), b"==> Fetching downloads for: wget\n")
        child.send_signal(signal.SIGTERM)
        self.assertEqual(self.finish(child)[0][1], 128 + signal.SIGTERM)
        self.assertEqual(self.prefix.log()[0]["status"], 128 + signal.SIGTERM)
        self.assertEqual(self.prefix.state()["formulae"], {})
        self.prefix.misbehave(install={"pace": 0})
        self.assert_ok(self.prefix.run("install", "wget"))


if __name__ == "__main__":
    unittest.main()
