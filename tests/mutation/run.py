# SPDX-License-Identifier: MIT
"""Usage: run.py [--jobs N] [--sample N] [--unit] [--fresh] [FILE...]

Makes small faults in the sources, one at a time, and lists those that no test finds. Called by
tools/mutate, which says what the options mean, and by the tests of this directory.
"""

import argparse
import hashlib
import sys
import tempfile
from pathlib import Path

from fault import Fault
from generate import faults_of, sources
from judge import Judge
from report import Outcome, entry_of, summary, table
from results import Results
from survivors import Key, ListError, read_survivors, unmatched
from toolchain import Toolchain, Trouble

ROOT = Path(__file__).parents[2]
BUILD = ROOT / "build/debug"
WORK = ROOT / "build/mutate"


def parse(arguments: list[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="tools/mutate")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--unit", action="store_true")
    parser.add_argument("--fresh", action="store_true")
    parser.add_argument("--list", dest="survivors", type=Path, default=None)
    parser.add_argument("files", nargs="*", metavar="FILE")
    return parser.parse_args(arguments)


def choose(faults: list[Fault], number: int) -> list[Fault]:
    """As many of the faults, the same ones every time."""
    if not number:
        return faults
    by_chance = sorted(faults, key=lambda f: hashlib.sha256(str(f).encode()).digest())
    return [fault for fault in faults if fault in set(by_chance[:number])]


def mutate(options: argparse.Namespace) -> int:
    paths = [str(Path(file).resolve().relative_to(ROOT)) for file in options.files]
    made = list(faults_of(ROOT, paths or sources(ROOT)))
    listed = read_survivors(options.survivors) if options.survivors else read_survivors()
    reasons = {key: why for key, why in listed.items() if not paths or key[0] in paths}
    WORK.mkdir(parents=True, exist_ok=True)
    results = Results(ROOT, WORK / "results.jsonl", "unit" if options.unit else "all")
    if options.fresh:
        results.forget()
    with tempfile.TemporaryDirectory(prefix="run-", dir=WORK) as scratch:
        toolchain = Toolchain(ROOT, BUILD, Path(scratch))
        judge = Judge(toolchain, results, set(reasons), max(options.jobs, 1), not options.unit)
        outcomes = judge.judge(choose(made, options.sample), made)
    return report(outcomes, made, reasons)


def report(outcomes: list[Outcome], made: list[Fault], reasons: dict[Key, str]) -> int:
    """Show what was found out; the status of the run."""
    survivors = [fault for fault, verdict in outcomes if verdict.kind == "survived"]
    unexplained = [fault for fault in survivors if fault.key not in reasons]
    found = {fault.key for fault, verdict in outcomes if verdict.found()}
    for fault, verdict in outcomes:
        if verdict.kind == "time":
            print(f"{fault}: timed out in {verdict.killer or 'end-to-end tests'}")
    for fault in unexplained:
        print(f"\n{fault}: survived\n{entry_of(fault)}")
    stale = [*unmatched(reasons, made), *(key for key in reasons if key in found)]
    for key in stale:
        print(f"survivors: no survivor any more: {' | '.join(key)}")
    print(f"\n{table(outcomes, set(reasons))}\n")
    print(summary(outcomes, len(survivors) - len(unexplained)))
    return 1 if unexplained or stale else 0


def main(arguments: list[str]) -> int:
    try:
        return mutate(parse(arguments))
    except (Trouble, ListError) as error:
        print(f"tools/mutate: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
