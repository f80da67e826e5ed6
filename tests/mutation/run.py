"""Usage: run.py [--jobs N] [--sample N] [--unit] [--fresh] [FILE...]

Makes small faults in the sources, one at a time, and lists those that no test finds. Called by
tools/mutate, which says what the options mean, and by the tests of this directory.
"""

import argparse
import hashlib
import queue
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from contextlib import contextmanager
from pathlib import Path
from typing import Iterator

from fault import Fault
from generate import faults_of, sources
from report import Outcome, entry_of, summary
from results import Results
from survivors import Key, ListError, read_survivors, unmatched
from toolchain import BuildError, Toolchain
from trial import Trials, Verdict

ROOT = Path(__file__).parents[2]
BUILD = ROOT / "build/clang"
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


class Run:
    def __init__(self, options: argparse.Namespace, scratch: Path) -> None:
        self.jobs = max(options.jobs, 1)
        self.results = Results(ROOT, WORK / "results.jsonl", "unit" if options.unit else "all")
        if options.fresh:
            self.results.forget()
        self.toolchain = Toolchain(ROOT, BUILD, scratch)
        self.toolchain.prepare()
        self.workers: queue.SimpleQueue[Trials] = queue.SimpleQueue()
        for number in range(self.jobs):
            work = scratch / f"worker-{number}"
            work.mkdir()
            self.workers.put(Trials(self.toolchain, work, not options.unit))

    def check_without_fault(self) -> None:
        """A test that fails anyway would find every fault."""
        path = "src/real_path.cpp"
        nothing = Fault(path, 1, "", "none", "nothing changed", 0, 0, "")
        verdict = self.results.find(nothing) or self.judge(nothing)
        if verdict.kind != "survived":
            raise BuildError(f"without a fault: {verdict.kind} {verdict.killer}")

    def judge(self, fault: Fault) -> Verdict:
        """The verdict on a fault on its own."""
        with self.worker() as trials:
            verdict = trials.hold(fault)
        self.results.store(fault, verdict)
        return verdict

    def judge_together(self, path: str, faults: list[Fault]) -> None:
        """Store the verdicts on those faults of a source that can be built together."""
        with self.worker() as trials:
            trials.hold_together(path, faults, self.results.store)
        print(f"mutate: {path}", file=sys.stderr, flush=True)

    @contextmanager
    def worker(self) -> Iterator[Trials]:
        trials = self.workers.get()
        try:
            yield trials
        finally:
            self.workers.put(trials)

    def judge_all(self, faults: list[Fault]) -> list[Outcome]:
        files: dict[str, list[Fault]] = {}
        for fault in faults:
            if self.results.find(fault) is None:
                files.setdefault(fault.path, []).append(fault)
        with ThreadPoolExecutor(self.jobs) as pool:
            list(pool.map(self.judge_together, files.keys(), files.values()))
            verdicts = pool.map(lambda fault: self.results.find(fault) or self.judge(fault), faults)
            return list(zip(faults, verdicts))


def mutate(options: argparse.Namespace) -> int:
    paths = [str(Path(file).resolve().relative_to(ROOT)) for file in options.files]
    made = list(faults_of(ROOT, paths or sources(ROOT)))
    listed = read_survivors(options.survivors) if options.survivors else read_survivors()
    reasons = {key: why for key, why in listed.items() if not paths or key[0] in paths}
    WORK.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="run-", dir=WORK) as scratch:
        run = Run(options, Path(scratch))
        run.check_without_fault()
        outcomes = run.judge_all(choose(made, options.sample))
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
        print(f"survivors.toml: no survivor any more: {' | '.join(key)}")
    print(summary(outcomes, len(survivors) - len(unexplained)))
    return 1 if unexplained or stale else 0


def main(arguments: list[str]) -> int:
    try:
        return mutate(parse(arguments))
    except (BuildError, ListError) as error:
        print(f"tools/mutate: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
