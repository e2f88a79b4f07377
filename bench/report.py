#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks and prints one table: measure, result, goal, and whether it is met."""

from __future__ import annotations

import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time
from typing import Callable

FRAME = 1000 / 60


def google(program: pathlib.Path) -> dict[str, float]:
    """Real times in milliseconds by benchmark name; the median of five runs."""
    output = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_repetitions=5",
         "--benchmark_report_aggregates_only=true"],
        stdout=subprocess.PIPE, check=True, env=os.environ | {"QT_QPA_PLATFORM": "offscreen"})
    units = {"ns": 1e-6, "us": 1e-3, "ms": 1.0}
    return {
        entry["run_name"]: entry["real_time"] * units[entry["time_unit"]]
        for entry in json.loads(output.stdout)["benchmarks"]
        if entry["aggregate_name"] == "median"
    }


class Display:
    """A virtual X display for as long as the block runs."""

    def __enter__(self) -> "Display":
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1000x700x24"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            self.name = ":" + answer.readline().strip()
        return self

    def __exit__(self, *_: object) -> None:
        self.server.terminate()
        self.server.wait()


def first_frame(command: list[str], environment: dict[str, str]) -> float:
    """Milliseconds from start to the first painted frame: the median of 15 starts."""
    times = []
    for _ in range(15):
        start = time.monotonic()
        subprocess.run(command + ["--exit"], env=environment, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        times.append((time.monotonic() - start) * 1000)
    return statistics.median(times)


def status_field(pid: int, name: str) -> int:
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith(name + ":"):
            return int(line.split()[1])
    raise KeyError(name)


def cpu_ticks(pid: int) -> int:
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def while_running(command: list[str], environment: dict[str, str], settle: float,
                  measure: Callable[[int], object]) -> object:
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        time.sleep(settle)
        return measure(process.pid)
    finally:
        process.kill()
        process.wait()


def resident(pid: int) -> float:
    return status_field(pid, "VmRSS") / 1024


def idle(pid: int) -> tuple[int, int]:
    """Wake-ups (voluntary context switches of all threads) and processor ticks in 30 s."""
    def wakeups() -> dict[int, int]:
        tasks = [int(task.name) for task in pathlib.Path(f"/proc/{pid}/task").iterdir()]
        return {task: status_field(task, "voluntary_ctxt_switches") for task in tasks}
    before, ticks = wakeups(), cpu_ticks(pid)
    time.sleep(30)
    after = wakeups()
    # A thread that has ended meanwhile was woken to do so.
    switches = sum(after[task] - before[task] if task in after else 1 for task in before)
    return switches, cpu_ticks(pid) - ticks


def main() -> None:
    programs = pathlib.Path(sys.argv[1])
    create_prefix = sys.argv[2]
    rows: list[tuple[str, str, str, bool]] = []

    def row(measure: str, result: str, goal: str, met: bool) -> None:
        rows.append((measure, result, goal, met))

    with tempfile.TemporaryDirectory() as folder, Display() as display:
        prefix = pathlib.Path(folder) / "brew"
        subprocess.run([create_prefix, prefix, "--everything"], check=True,
                       stdout=subprocess.DEVNULL)
        brew = str(prefix / "bin/brew")
        environment = os.environ | {"DISPLAY": display.name, "HOME": folder,
                                    "XDG_CONFIG_HOME": folder, "QT_QPA_PLATFORM": "xcb"}
        bare = [str(programs / "bench_bare_window")]
        app = [str(programs / "bench_launch"), brew]
        bare_ms, app_ms = first_frame(bare, environment), first_frame(app, environment)
        row("launch to first frame", f"{app_ms:.0f} ms = {app_ms / bare_ms:.2f} × bare window "
            f"({bare_ms:.0f} ms)", "≤ 1.3 ×", app_ms <= 1.3 * bare_ms)
        bare_mb = while_running(bare, environment, 2, resident)
        app_mb = while_running(app, environment, 6, resident)
        row("resident memory, packages loaded", f"{app_mb:.1f} MB = {app_mb / bare_mb:.2f} × "
            f"bare window ({bare_mb:.1f} MB)", "≤ 1.5 ×", app_mb <= 1.5 * bare_mb)
        switches, ticks = while_running(app, environment, 40, idle)
        row("idle for 30 s", f"{switches} wake-ups, {ticks * 10} ms of processor time", "none",
            switches == 0 and ticks == 0)

    manager = google(programs / "bench_manager")
    whole = manager["decodeMapSortPublish/8500"]
    parse = manager["parseOnly/8500"]
    row("decode, map, sort, publish all formulae", f"{whole:.1f} ms = {whole / parse:.2f} × "
        f"parsing ({parse:.1f} ms)", "≤ 1.5 ×", whole <= 1.5 * parse)
    usual = manager["decodeMapSortPublish/300"]
    row("the same for 300 formulae", f"{usual:.2f} ms", "≤ half a frame", usual <= FRAME / 2)
    refresh = manager["refreshAllOfOneSecondEach/iterations:3/real_time"]
    row("refreshAll, four children of 1 s", f"{refresh:.0f} ms", "≤ 1.1 × 1 s", refresh <= 1100)

    interface = google(programs / "bench_ui")
    for name, measure in (("filterKeystroke", "filter keystroke, 8,000 rows"),
                          ("scrollStep", "scroll step, 8,000 rows")):
        row(measure, f"{interface[name]:.2f} ms", "≤ half a frame", interface[name] <= FRAME / 2)

    core = google(programs / "bench_core")
    for child, name, most in (("trivial", "trivial/real_time", 1.4),
                              ("500 ms", "halfASecond/iterations:3/real_time", 1.01)):
        run, plain = core[f"guardedRun/{name}"], core[f"plainSpawn/{name}"]
        row(f"runBrewSync with its guard, {child} child", f"{run:.2f} ms = {run / plain:.3f} × "
            f"plain posix_spawn ({plain:.2f} ms)", f"≤ {most} ×", run <= most * plain)

    print("| measure | result | goal | met |\n|---|---|---|---|")
    for measure, result, goal, met in rows:
        print(f"| {measure} | {result} | {goal} | {'yes' if met else 'no'} |")


if __name__ == "__main__":
    main()
