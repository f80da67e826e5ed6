# SPDX-License-Identifier: MIT
"""Whole processes, timed by hyperfine without a shell between. All that are compared are run in
many short rounds, each in another order: what else the machine does falls on all of them."""

import json
import random
import shlex
import statistics
import subprocess
from pathlib import Path
from typing import NamedTuple, Sequence

from measure import callgrind
from measure.figures import Figures
from measure.site import ENVIRONMENT, RESULTS, SCRATCH, Failure, run

MEMORY_RUNS = 5
WARM_UP = 1


class Process(NamedTuple):
    """A command by its name, and the file that it writes, if any."""

    name: str
    command: Sequence[str]
    output: Path | None = None


def verify(process: Process) -> None:
    """A run must succeed in silence and leave its output: only then is it worth measuring."""
    if process.output:
        process.output.unlink(missing_ok=True)
    result = subprocess.run(
        process.command, env=ENVIRONMENT, capture_output=True, text=True, stdin=subprocess.DEVNULL
    )
    if result.returncode != 0 or result.stderr:
        raise Failure(f"{process.name} failed with {result.returncode}:\n{result.stderr}")
    if process.output and not process.output.read_bytes():
        raise Failure(f"{process.name} wrote nothing")


def add_times(figures: Figures, processes: Sequence[Process], rounds: int, runs: int) -> None:
    """Times of the runs; hyperfine fails when one of them does."""
    for process in processes:
        verify(process)
        figures.add(process.name, "time", [])
    raw = SCRATCH / "hyperfine.json"
    order = list(processes)
    shuffle = random.Random(0).shuffle
    for _ in range(rounds):
        shuffle(order)
        command = ["hyperfine", "--shell=none", "--style=none", f"--export-json={raw}"]
        command += [f"--warmup={WARM_UP}", f"--runs={runs}"]
        for process in order:
            command += [f"--command-name={process.name}", shlex.join(process.command)]
        run(command)
        for result in json.loads(raw.read_text(encoding="utf-8"))["results"]:
            figures.add(result["command"], "time", result["times"])


def _system_calls(process: Process) -> int:
    trace = SCRATCH / "strace"
    run(["strace", "-f", "-qq", "-e", "signal=none", "-o", str(trace), *process.command])
    lines = trace.read_text(encoding="utf-8", errors="replace").splitlines()
    return sum(" resumed>" not in line for line in lines)


def _peak_memory(process: Process) -> float:
    """Bytes: the largest resident size that the system saw of any process of the command."""
    report = SCRATCH / "time"
    run(["/usr/bin/time", "--format=%M", f"--output={report}", *process.command])
    return 1024 * float(report.read_text(encoding="utf-8"))


def add_costs(figures: Figures, processes: Sequence[Process]) -> None:
    """What a run costs besides time."""
    for process in processes:
        figures.add(process.name, "instructions", [callgrind.instructions(process.command)])
        figures.add(process.name, "system calls", [_system_calls(process)])
        peaks = [_peak_memory(process) for _ in range(MEMORY_RUNS)]
        figures.add(process.name, "peak memory", [statistics.median(peaks)])
