# SPDX-License-Identifier: MIT
"""The programs of Google Benchmark (loading, operations, writing): each is timed, with its cases
interleaved at random so that all see the same noise, and most are counted under callgrind."""

import json
import re

from measure.callgrind import dumps
from measure.figures import Figures
from measure.site import ENVIRONMENT, PROGRAMS, RESULTS, Effort, Failure, run

# The peers' libraries are bound before anything is measured, as everything in the program is.
BOUND = ENVIRONMENT | {"LD_BIND_NOW": "1"}
TIME_UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def _sizes(prefix: str, *sizes: int) -> str:
    return f"^{prefix}/({'|'.join(map(str, sizes))})/"


def _time(figures: Figures, program: str, effort: Effort, pattern: str) -> None:
    raw = RESULTS / f"{program}.json"
    options = [
        f"--benchmark_filter={pattern}",
        f"--benchmark_repetitions={effort.repetitions}",
        f"--benchmark_min_time={effort.minimum_time}",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_out_format=json",
        f"--benchmark_out={raw}",
    ]
    run([str(PROGRAMS / program), *options], BOUND)
    samples = json.loads(raw.read_text(encoding="utf-8"))["benchmarks"]
    # In the order in which the program names its cases, not in that of the interleaving.
    for sample in sorted(samples, key=lambda sample: sample["family_index"]):
        if sample["run_type"] != "iteration":
            continue
        if sample.get("error_occurred"):
            raise Failure(f"{sample['name']}: {sample['error_message']}")
        subject = sample["run_name"].removesuffix("/manual_time")
        seconds, items = sample["real_time"] * TIME_UNITS[sample["time_unit"]], sample["items"]
        figures.add(subject, "whole time", [seconds])
        figures.add(subject, "time", [seconds / items])
        for memory in ("heap", "resident"):
            if memory in sample:
                figures.add(subject, memory, [sample[memory] / items])


def _count(figures: Figures, program: str, pattern: str) -> None:
    command = [str(PROGRAMS / program), "--instructions", pattern]
    for title, count in dumps(command, "--instr-atstart=no", env=BOUND):
        if case := re.fullmatch(r"(.*) (\d+)", title):
            figures.add(case[1], "instructions", [count / int(case[2])])


def measure_programs(figures: Figures, effort: Effort) -> None:
    loads = _sizes("load", *effort.load_sizes)
    _time(figures, "bench-loading", effort, loads)
    _count(figures, "bench-loading", _sizes("load", effort.counted_lines))
    _time(figures, "bench-operations", effort, "^operation/")
    _count(figures, "bench-operations", "^operation/")
    _time(figures, "bench-writing", effort, _sizes("write", effort.write_size))
