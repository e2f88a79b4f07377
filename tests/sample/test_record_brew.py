# SPDX-License-Identifier: MIT
"""`tools/record-brew`, recording the sample `brew`."""

from __future__ import annotations

import json
import subprocess
import sys

from sample_prefix import SAMPLE, TIMEOUT, SampleTest

RECORDER = SAMPLE.parent / "tools" / "record-brew"
SUFFIXES = {".args", ".stdout", ".stderr", ".status", ".seconds"}
QUESTIONS = [
    ["tap"],
    ["info", "--json=v2", "--installed", "--formula"],
    ["info", "--json=v2", "--installed", "--cask"],
    ["info", "ada-url"],
    ["info", "aerospace"],
    ["outdated", "--json=v2"],
    ["search", "wget"],
    ["search", "font-hack"],
    ["search", "docker"],
    ["search", "no-such-package-anywhere"],
    ["cleanup", "-n"],
    ["doctor"],
]


class Recording(SampleTest):
    def setUp(self) -> None:
        super().setUp()
        self.out = self.temporary / "recorded"
        self.runs = self.out / "brew-6.0"

    def record(self, *options: str, brew: str | None = None) -> subprocess.CompletedProcess[str]:
        command = [sys.executable, str(RECORDER), str(self.out), "--brew", brew or self.prefix.brew]
        return subprocess.run(
            [*command, *options],
            input="y\n",
            capture_output=True,
            text=True,
            check=False,
            timeout=TIMEOUT,
        )

    def recorded_arguments(self) -> list[list[str]]:
        return [json.loads(path.read_text()) for path in sorted(self.runs.glob("*.args"))]

    def executable(self, text: str) -> str:
        path = self.temporary / "brew"
        path.write_text(text)
        path.chmod(0o755)
        return str(path)

    def test_asks_and_changes_nothing(self) -> None:
        before = self.prefix.state()
        result = self.record()
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(self.recorded_arguments(), QUESTIONS)
        self.assertEqual([run["args"] for run in self.prefix.log()], [["--version"], *QUESTIONS])
        self.assertEqual(self.prefix.state(), before)

    def test_five_files_say_what_came(self) -> None:
        # Bytes that are no text, too, have to come out as they went in.
        self.prefix.misbehave(search={"invalid_utf8": True})
        self.record()
        runs = {path.stem for path in self.runs.iterdir()}
        self.assertEqual(len(runs), len(QUESTIONS))
        for run in runs:
            files = {suffix: (self.runs / (run + suffix)).read_bytes() for suffix in SUFFIXES}
            arguments = json.loads(files[".args"])
            out, err, status = self.prefix.run_bytes(*arguments)
            with self.subTest(arguments):
                self.assertEqual((files[".stdout"], files[".stderr"]), (out, err))
                self.assertEqual(files[".status"], b"%d\n" % status)
                self.assertRegex(files[".seconds"], rb"^\d+\.\d\d\n$")
        self.assertEqual(len(list(self.runs.iterdir())), len(SUFFIXES) * len(QUESTIONS))

    def test_time_is_that_of_the_run(self) -> None:
        self.prefix.misbehave(tap={"delay": 0.3})
        self.record()
        self.assertGreaterEqual(float((self.runs / "001-tap.seconds").read_text()), 0.3)

    def test_installs_on_request_and_cleans_up_behind_itself(self) -> None:
        before = self.prefix.report("info", "--json=v2", "--installed")
        result = self.record("--install", "vault")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(
            [words for words in self.recorded_arguments()[len(QUESTIONS) :] if words[0] != "info"],
            [["install", "vault"], ["upgrade", "vault"], ["uninstall", "vault"]],
        )
        self.assertEqual(self.prefix.report("info", "--json=v2", "--installed"), before)

    def test_leaves_what_was_there(self) -> None:
        for formula, message in (
            ("tree", "tree is installed already"),
            ("homebrew/core/tree", "has not been installed; nothing is uninstalled"),
            ("no-such-formula-xyz", "has not been installed; nothing is uninstalled"),
        ):
            with self.subTest(formula):
                self.out = self.temporary / formula.replace("/", "-")
                result = self.record("--install", formula)
                self.assertEqual(result.returncode, 1)
                self.assertIn(message, result.stderr)
                self.assertIsNotNone(self.prefix.formula("tree"))

    def test_brew_neither_updates_itself_nor_reads_answers(self) -> None:
        brew = self.executable(
            '#!/bin/sh\n[ "$1" = --version ] && echo "Homebrew 4.5.1-2-gabc" && exit\n'
            'read -r answer\n'
            'echo "{\\"formulae\\": [], \\"casks\\": [], \\"seen\\": \\"$HOMEBREW_NO_AUTO_UPDATE$answer\\"}"\n'
        )
        self.assertEqual(self.record(brew=brew).returncode, 0)
        outputs = list((self.out / "brew-4.5").glob("*.stdout"))
        self.assertEqual(len(outputs), len(QUESTIONS) - 2)
        for path in outputs:
            self.assertEqual(json.loads(path.read_text())["seen"], "1")

    def test_report_that_cannot_be_read(self) -> None:
        self.prefix.misbehave(**{"info_--cask": {"noise": "Welcome\n"}})
        result = self.record()
        self.assertEqual(result.returncode, 1)
        self.assertIn("can't be read", result.stderr)
        report = self.runs / "003-info-json-v2-installed-cask.stdout"
        self.assertTrue(report.read_bytes().startswith(b"Welcome"))

    def test_refuses(self) -> None:
        self.assertEqual(self.record().returncode, 0)
        once = sorted(path.read_bytes() for path in self.runs.iterdir())
        for brew, message in (
            (self.prefix.brew, "is there already"),
            (str(self.temporary / "nowhere"), "can't be run: No such file"),
            (self.executable("#!/bin/sh\necho Homebrow 6.0\n"), "doesn't tell its version"),
        ):
            with self.subTest(message):
                result = self.record(brew=brew)
                self.assertEqual(result.returncode, 1)
                self.assertIn(message, result.stderr)
                self.assertNotIn("Traceback", result.stderr)
        self.assertEqual(sorted(path.read_bytes() for path in self.runs.iterdir()), once)
