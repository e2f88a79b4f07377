#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Does thousands of things with the built application, and looks whether it grows by them."""

from __future__ import annotations

import argparse
import collections
import os
import random
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/e2e"))

from appearance import AppearancePortal  # noqa: E402
from driver import Application, Desk, HeldPrefix, NotHappened, NotSeen, wait_until  # noqa: E402
from driver.namespaces import without_network  # noqa: E402
from resources import (  # noqa: E402
    Sample,
    complaints,
    growth,
    take_sample,
    write_curve,
    write_table,
)
from steps import Steps  # noqa: E402

_POINTS_TOLD = 10
_FIRST_LOADS = 4
# On a busy machine a list may be another one when the mouse comes to it, and that is not what is
# to be found out here.
_MOST_MISSED = 0.001


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--app", type=Path, required=True, help="the built application")
    parser.add_argument("--probe", type=Path, required=True, help="the built HeapInUse")
    parser.add_argument("--out", type=Path, required=True, help="the folder for the curve")
    parser.add_argument("--steps", type=int, default=10_000, help="(default 10,000)")
    parser.add_argument("--seed", type=int, help="of an earlier run that is to be repeated")
    parser.add_argument("--every", type=int, default=100, help="steps between samples (default 100)")
    options = parser.parse_args()
    options.app = options.app.resolve()
    options.probe = options.probe.resolve()
    if options.seed is None:
        options.seed = random.SystemRandom().randrange(1_000_000)
    return options


def plan(steps: Steps, count: int, chance: random.Random) -> list[str]:
    """Each kind once, so that nothing happens for the first time late, then by their weights."""
    names = list(steps.kinds)
    weights = [weight for weight, _ in steps.kinds.values()]
    return [*names, *chance.choices(names, weights, k=max(0, count - len(names)))][:count]


def soak(options: argparse.Namespace, samples: list[Sample]) -> collections.Counter[str]:
    chance = random.Random(options.seed)
    done: collections.Counter[str] = collections.Counter()
    with Desk() as desk:
        prefix = HeldPrefix(desk.folder / "homebrew", "--pace", "0")
        home = desk.new_home("en")
        portal = AppearancePortal(desk.environment(home)["DBUS_SESSION_BUS_ADDRESS"])
        arguments = ["--brew", prefix.brew]
        heap = desk.folder / "heap"
        os.mkfifo(heap)
        probe = {"LD_PRELOAD": str(options.probe), "LUMORA_SOAK_HEAP": str(heap)}
        app = Application(desk, options.app, home, arguments, probe, without_network())
        begun = time.monotonic()
        try:
            wait_until(lambda: prefix.runs() == _FIRST_LOADS, "the first loads end")
            steps = Steps(app, prefix, portal, chance)
            for number, kind in enumerate(plan(steps, options.steps, chance)):
                if number % options.every == 0:
                    measure(app, heap, steps, samples, number, begun)
                try:
                    steps.kinds[kind][1]()
                    done[kind] += 1
                except (NotHappened, NotSeen) as error:
                    print(f"step {number}, {kind}: {error}\n{app.tree().describe()}", flush=True)
                    done["missed"] += 1
                    if done["missed"] > _MOST_MISSED * options.steps:
                        raise
                    steps.recover()
            measure(app, heap, steps, samples, options.steps, begun)
        finally:
            app.stop()
            portal.close()
    return done


def measure(
    app: Application, heap: Path, steps: Steps, samples: list[Sample], number: int, begun: float
) -> None:
    steps.rest()
    samples.append(take_sample(app.process_id, heap, number, time.monotonic() - begun))
    print(tell(samples[-1]), flush=True)


def tell(sample: Sample) -> str:
    return (
        f"{sample.step:6} steps {sample.seconds:5} s  "
        f"resident {sample.resident / 1024:6.2f} MiB  anonymous {sample.anonymous / 1024:6.2f} MiB  "
        f"heap {sample.heap:8.1f} KiB  "
        f"{sample.descriptors} descriptors  {sample.threads} threads  {sample.zombies} zombies"
    )


def main() -> int:
    options = parse_arguments()
    options.out.mkdir(parents=True, exist_ok=True)
    print(f"{options.steps} steps, --seed {options.seed}", flush=True)
    samples: list[Sample] = []
    try:
        done = soak(options, samples)
    finally:
        if samples:
            write_table(options.out / "curve.csv", samples)
            write_curve(options.out / "curve.svg", samples)
    print(f"\n{', '.join(f'{count} × {kind}' for kind, count in done.most_common())}\n")
    for point in range(_POINTS_TOLD + 1):
        print(tell(samples[round(point * (len(samples) - 1) / _POINTS_TOLD)]))
    slope = growth(samples, options.steps)
    print(f"\nmemory: {slope:+.1f} KiB in 1,000 steps; the curve is in {options.out}")
    found = complaints(samples, options.steps)
    print("\n".join(found) or "flat")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
