# SPDX-License-Identifier: MIT
"""Runs all measurements and prints the table. Called by tools/bench, which says what it may use."""

import sys
import time
from typing import Callable

from measure.document import write_document
from measure.figures import Figures
from measure.limits import read_limits
from measure.programs import measure_programs
from measure.runs import measure_hooks, measure_startup, measure_whole_path
from measure.site import FULL, QUICK, RESULTS, Effort, Failure
from measure.table import MISSED, make_rows, markdown

STEPS: list[tuple[str, Callable[[Figures, Effort], None]]] = [
    ("whole runs", measure_startup),
    ("hooks", measure_hooks),
    ("a large configuration", measure_whole_path),
    ("loading, operations, writing", measure_programs),
]


def measure(effort: Effort) -> Figures:
    figures = Figures()
    RESULTS.mkdir(parents=True, exist_ok=True)
    for title, step in STEPS:
        start = time.monotonic()
        step(figures, effort)
        print(f"bench: {title}: {time.monotonic() - start:.0f} s", file=sys.stderr, flush=True)
    figures.save(RESULTS / "figures.json")
    return figures


def report(arguments: list[str]) -> None:
    limits = read_limits()  # before the measurements, which a mistake in them would waste
    figures = measure(QUICK if "--quick" in arguments else FULL)
    rows = make_rows(figures, limits)
    print(markdown(rows), end="")
    missed = sum(MISSED in row for row in rows)
    limited = sum(bool(row[-1]) for row in rows)
    print(f"\n{limited - missed} of {limited} limits held, {missed} missed")
    if "--document" in arguments:
        write_document(figures, rows)


def main(arguments: list[str]) -> int:
    try:
        report(arguments)
    except Failure as failure:
        print(f"tools/bench: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
