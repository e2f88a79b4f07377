# SPDX-License-Identifier: MIT
"""Each switch that makes the sample `brew` misbehave."""

from __future__ import annotations

import json
import os
import subprocess
import sys
import time
import unittest

from sample_prefix import SAMPLE, TIMEOUT, SampleTest


class Switches(SampleTest):
    options = ("--small",)
    TAP = b"koekeishiya/formulae\n"

    def timed(self, *args: str) -> float:
        started = time.monotonic()
        self.prefix.run(*args)
        return time.monotonic() - started

    def test_status_is_replaced_but_the_work_is_done(self) -> None:
        self.prefix.misbehave(install={"status": 3}, tap={"status": 0}, doctor={"status": 0})
        self.assertEqual(self.prefix.run("install", "hello").status, 3)
        self.assertIsNotNone(self.prefix.formula("hello"))
        self.assertEqual(self.prefix.run("tap", "nonsense").status, 0)
        self.assertEqual(self.prefix.run("doctor").status, 0)
        self.assertEqual([run["status"] for run in self.prefix.log() if "hello" in run["args"]], [3])

    def test_error_does_nothing_else(self) -> None:
        self.prefix.misbehave(upgrade={"error": "disk full"}, tap={"error": "no net", "status": 7})
        before = self.prefix.state()
        self.assertEqual(self.prefix.run("upgrade"), ("", "Error: disk full\n", 1))
        self.assertEqual(self.prefix.run("tap", "a/b"), ("", "Error: no net\n", 7))
        self.assertEqual(self.prefix.state(), before)

    def test_delays(self) -> None:
        for switch in ("delay", "delay_after"):
            self.prefix.misbehave(tap={switch: 0.4})
            self.assertGreaterEqual(self.timed("tap"), 0.4)

    def test_delay_comes_before_and_delay_after_behind_the_output(self) -> None:
        for switch, output_waits in (("delay", True), ("delay_after", False)):
            self.prefix.misbehave(tap={switch: 1})
            started = time.monotonic()
            with self.prefix.start("tap") as child:
                assert child.stdout
                self.assertEqual(child.stdout.readline(), self.TAP)
                first_line = time.monotonic() - started
            self.assertEqual(first_line >= 1, output_waits)
            self.assertGreaterEqual(time.monotonic() - started, 1)

    def test_noise_comes_first(self) -> None:
        self.prefix.misbehave(tap={"noise": "Welcome\n", "noise_stderr": "careful\n"})
        self.assertEqual(self.prefix.run_bytes("tap"), (b"Welcome\n" + self.TAP, b"careful\n", 0))

    def test_flood_blocks_while_standard_output_is_open(self) -> None:
        size = 3 * 1024 * 1024
        self.prefix.misbehave(tap={"stderr_flood": size})
        out, err, status = self.prefix.run_bytes("tap")
        self.assertEqual((out, len(err), status), (self.TAP, size, 0))
        child = self.prefix.start("tap")
        assert child.stdout and child.stderr
        os.set_blocking(child.stdout.fileno(), False)
        time.sleep(0.5)
        # Nobody reads the errors, so the run is stuck with its output unwritten and open.
        self.assertIsNone(child.stdout.read())
        self.assertIsNone(child.poll())
        os.set_blocking(child.stdout.fileno(), True)
        out, err = child.communicate(timeout=TIMEOUT)
        self.assertEqual((out, len(err)), (self.TAP, size))

    def test_flood_that_fits_into_the_pipe_does_not_block(self) -> None:
        # The smallest pipe that the system gives holds as much.
        size = 4000
        self.prefix.misbehave(tap={"stderr_flood": size})
        with self.prefix.start("tap") as child:
            assert child.stdout and child.stderr
            self.assertEqual(child.stdout.read(), self.TAP)
            self.assertEqual(len(child.stderr.read()), size)
        self.assertEqual(child.returncode, 0)

    def test_invalid_utf8_spoils_standard_output_only(self) -> None:
        self.prefix.misbehave(every={"invalid_utf8": True})
        for words in (["info", "--json=v2", "--installed"], ["tap"], ["tap", "nonsense"], ["doctor"]):
            out, err, _ = self.prefix.run_bytes(*words)
            with self.assertRaises(UnicodeDecodeError):
                out.decode()
            err.decode()

    def test_truncated(self) -> None:
        words = ("info", "--json=v2", "--installed", "--formula")
        whole = self.prefix.run_bytes(*words)[0]
        for kept, expected in ((0.5, whole[: len(whole) // 2]), (100, whole[:100]), (0, b"")):
            self.prefix.misbehave(info={"truncate": kept})
            out, _, status = self.prefix.run_bytes(*words)
            self.assertEqual((out, status), (expected, 0))
            with self.assertRaises(ValueError):
                json.loads(out)

    def test_colour(self) -> None:
        self.prefix.misbehave(every={"colour": True, "pace": 0})
        out, err, _ = self.prefix.run_bytes("install", "hello")
        self.assertTrue(out.startswith(b"\x1b[34m==>\x1b[0m \x1b[1mWould install 1 formula:\x1b[0m\n"))
        self.assertIn(b"\x1b[34m==>\x1b[0m \x1b[1mFetching downloads", err)
        self.assertEqual(self.prefix.run_bytes("tap")[0], b"\x1b[1mkoekeishiya/formulae\x1b[0m\n")
        self.assertTrue(self.prefix.run_bytes("tap", "x")[1].startswith(b"\x1b[31mError:\x1b[0m "))

    def test_long_line(self) -> None:
        self.prefix.misbehave(tap={"long_line": 2.5})
        out, _, status = self.prefix.run_bytes("tap")
        first, _, rest = out.partition(b"\n")
        self.assertEqual((len(first), rest, status), (int(2.5 * 1024 * 1024), self.TAP, 0))

    def test_half_closed(self) -> None:
        for closed in ("stdout", "stderr"):
            with self.subTest(closed):
                self.prefix.misbehave(untap={"close": closed, "delay_after": 1})
                # A refused untap talks on both streams.
                with self.prefix.start("untap", "koekeishiya/formulae") as child:
                    assert child.stdout and child.stderr
                    first, second = child.stdout, child.stderr
                    if closed == "stderr":
                        first, second = second, first
                    self.assertIn(b"koekeishiya/formulae/skhd\n", first.read())
                    ended = time.monotonic()
                    self.assertIsNone(child.poll())
                    self.assertIn(b"koekeishiya/formulae/skhd\n", second.read())
                    self.assertGreater(time.monotonic() - ended, 0.5)
                self.assertEqual(child.returncode, 1)
        self.assertEqual(len(self.prefix.log()), 2)

    def test_list_form_of_cask_versions(self) -> None:
        for form, expected in (("list", ["2.7.10"]), ("text", "2.7.10")):
            self.prefix.misbehave(outdated={"cask_versions": form})
            casks = self.prefix.report("outdated", "--json=v2")["casks"]
            self.assertEqual(casks[0]["installed_versions"], expected)

    def test_headings(self) -> None:
        self.prefix.misbehave(search={"headings": True})
        for query, expected in {
            "ollama": "==> Formulae\nollama\n\n==> Casks\nollama-app\n",
            "wget2": "==> Formulae\nwget2\n",
            "vlc": "==> Casks\nvlc\n",
        }.items():
            self.assertEqual(self.prefix.run("search", query).out, expected)

    def test_healthy_doctor(self) -> None:
        self.assertEqual(self.prefix.run("doctor").status, 1)
        self.prefix.misbehave(doctor={"healthy": True})
        self.assertEqual(self.prefix.run("doctor"), ("Your system is ready to brew.\n", "", 0))

    def test_pace(self) -> None:
        quickest = min(self.timed("install", name) for name in ("hello", "act", "age"))
        self.prefix.misbehave(install={"pace": 2})
        self.assertGreaterEqual(self.timed("install", "fd") - quickest, 0.6)


class PaceOfThePrefix(SampleTest):
    options = ("--small", "--pace", "1")

    def test_an_operation_takes_a_small_while(self) -> None:
        for words in (["install", "wget2"], ["upgrade"], ["uninstall", "tree"], ["tap", "a/b"]):
            started = time.monotonic()
            self.assert_ok(self.prefix.run(*words))
            taken = time.monotonic() - started
            self.assertGreater(taken, 0.2, words)
            self.assertLess(taken, 5, words)


class Matching(SampleTest):
    options = ("--small",)

    def statuses(self) -> list[int]:
        commands = (["info", "--json=v2", "--installed", "--cask"], ["info", "jq"], ["tap"])
        return [self.prefix.run(*words).status for words in commands]

    def test_longer_keys_override_shorter_ones(self) -> None:
        self.prefix.misbehave(every={"status": 4})
        self.assertEqual(self.statuses(), [4, 4, 4])
        self.prefix.misbehave(info_each={"status": 9}, info={"status": 5}, every={"status": 4})
        self.assertEqual(self.statuses(), [5, 5, 4])
        self.prefix.misbehave_text(
            '{"info --cask": {"status": 6}, "*": {"status": 4}, "info": {"status": 5}}'
        )
        self.assertEqual(self.statuses(), [6, 5, 4])
        self.prefix.misbehave_text('{"info --installed --cask": {"status": 6}}')
        self.assertEqual(self.statuses(), [6, 0, 0])

    def test_a_wrong_file_is_told_apart_from_a_failure(self) -> None:
        for text in (
            "{", "[]", '{"tap": 1}', '{"tap": {"staus": 1}}', '{"tap": {"status": "1"}}',
            '{"tap": {"status": true}}', '{"tap": {"delay": -1}}', '{"tap": {"close": "stdin"}}',
            '{"tap": {"colour": 1}}', '{"tap": {"stderr_flood": -5}}',
        ):  # fmt: skip
            with self.subTest(text):
                self.prefix.misbehave_text(text)
                result = self.prefix.run("tap")
                self.assertEqual((result.out, result.status), ("", 78))
                self.assertTrue(result.err.startswith("Error: var/sample/misbehave.json: "))


class Helper(SampleTest):
    options = ("--small",)

    def misbehave(self, *words: str) -> subprocess.CompletedProcess[str]:
        command = [sys.executable, str(SAMPLE / "misbehave"), str(self.prefix.folder), *words]
        return subprocess.run(command, capture_output=True, text=True, timeout=TIMEOUT)

    def test_switches_are_added_shown_and_removed(self) -> None:
        self.misbehave("tap", "status=3", "noise=3 or more\n")
        self.misbehave("tap", "status=4")
        self.misbehave("info --cask", "cask_versions=list")
        expected = {
            "tap": {"status": 4, "noise": "3 or more\n"},
            "info --cask": {"cask_versions": "list"},
        }
        self.assertEqual(json.loads(self.misbehave().stdout), expected)
        self.assertEqual(self.prefix.run("tap").status, 4)
        self.misbehave("--behave")
        self.assertEqual(self.prefix.run("tap").status, 0)

    def test_wrong_switches_are_refused(self) -> None:
        result = self.misbehave("tap", "staus=3")
        self.assertEqual(result.returncode, 1)
        self.assertIn("unknown switch 'staus'", result.stderr)
        self.assertEqual(self.prefix.run("tap").status, 0)


if __name__ == "__main__":
    unittest.main()
