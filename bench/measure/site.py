# SPDX-License-Identifier: MIT
"""Where things are, and how much effort a measurement is worth."""

import subprocess
from pathlib import Path
from typing import Mapping, NamedTuple, Sequence

ROOT = Path(__file__).resolve().parents[2]
RELEASE = ROOT / "build/release"
PROGRAM = RELEASE / "cradle-generate-config"
PROGRAMS = RELEASE / "bench"
BUILD = ROOT / "build/bench"
SCRATCH = BUILD / "scratch"  # a tmpfs of the run's own; see tools/bench
RESULTS = BUILD / "results"

# The whole environment of everything that is measured: also what the shell script fills in.
ENVIRONMENT = {
    "PATH": "/usr/bin:/bin",
    "TMPDIR": str(SCRATCH),
    "CRADLE_DATA_ROOT": "/srv/cradle/bench",
    "CRADLE_INSTANCE": "bench",
    "CRADLE_USER": "root",
    "CRADLE_USER_ID": "0",
}


class Effort(NamedTuple):
    """How often and on how much is measured."""

    load_sizes: tuple[int, ...]
    counted_lines: int  # of the file whose loading is counted in instructions
    write_size: int
    repetitions: int
    minimum_time: float  # seconds of a repetition
    rounds: int  # of all processes that are compared
    runs: int  # of each process in a round
    long_rounds: int  # of processes that take more than a moment, with two runs of each


FULL = Effort((1_000, 10_000, 100_000, 1_000_000), 100_000, 1_000_000, 9, 0.1, 50, 10, 10)
QUICK = Effort((1_000, 10_000, 100_000), 10_000, 100_000, 3, 0.02, 10, 5, 2)


class Failure(Exception):
    """Something could not be measured."""


def run(command: Sequence[str], env: Mapping[str, str] = ENVIRONMENT) -> str:
    """Run a command to its end in the environment; its standard output. It must succeed."""
    result = subprocess.run(
        command, env=env, capture_output=True, text=True, stdin=subprocess.DEVNULL
    )
    if result.returncode != 0:
        raise Failure(f"{' '.join(command)} failed with {result.returncode}:\n{result.stderr}")
    return result.stdout
