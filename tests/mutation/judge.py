# SPDX-License-Identifier: MIT
"""The trials of those faults of which nothing is known yet, by several workers."""

import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from queue import SimpleQueue
from contextlib import contextmanager
from typing import Callable, Generic, Iterable, Iterator, TypeVar

from alone import Alone
from fault import Fault
from groups import hold_in_groups
from programs import Programs
from recorded import Recorded, record
from report import Outcome
from results import Results, files_of_suites
from survivors import Key
from toolchain import Toolchain, Trouble
from trial import SURVIVED, Verdict
from worker import Worker

Kind = TypeVar("Kind")


def say(what: str) -> None:
    print(f"mutate: {what}", file=sys.stderr, flush=True)


class Pool(Generic[Kind]):
    """Workers, of which each is taken by one thread at a time."""

    def __init__(self, workers: Iterable[Kind]) -> None:
        self.free: SimpleQueue[Kind] = SimpleQueue()
        for worker in workers:
            self.free.put(worker)

    @contextmanager
    def one(self) -> Iterator[Kind]:
        worker = self.free.get()
        try:
            yield worker
        finally:
            self.free.put(worker)


class Judge:
    def __init__(self, toolchain: Toolchain, results: Results, expected: set[Key], jobs: int,
                 with_end_to_end: bool) -> None:
        self.toolchain, self.results, self.jobs = toolchain, results, jobs
        self.expected = expected  # the survivors that are explained
        self.with_end_to_end = with_end_to_end

    def judge(self, faults: list[Fault], all_faults: list[Fault]) -> list[Outcome]:
        """The verdicts on faults, which are some of `all_faults`."""
        unknown = {fault for fault in faults if self.results.find(fault) is None}
        if unknown:
            paths = {fault.path for fault in unknown}
            self._judge(unknown, [fault for fault in all_faults if fault.path in paths])
        outcomes = []
        for fault in faults:
            verdict = self.results.find(fault)
            if verdict is None:
                raise Trouble(f"{fault}: it was not tried")
            outcomes.append((fault, verdict))
        return outcomes

    def _judge(self, unknown: set[Fault], faults: list[Fault]) -> None:
        self.toolchain.prepare()
        programs = Programs(self.toolchain, faults, self._directory("programs"), self.jobs)
        programs.build()
        recorded = record(programs, self.with_end_to_end)
        together = {n: fault for n, fault in programs.faults().items() if fault in unknown}
        survivors = self._hold_together(programs, recorded, together)
        hidden = {n for n in survivors if programs.may_hide(n, together[n])}
        for number in survivors - hidden:
            self.results.store(together[number], SURVIVED)
        tried = set(together.values()) - {together[number] for number in hidden}
        self._judge_alone([fault for fault in faults if fault in unknown - tried], programs, recorded)

    def _hold_together(self, programs: Programs, recorded: Recorded,
                       faults: dict[int, Fault]) -> set[int]:
        """The numbers of the faults that no test finds."""
        root = self.toolchain.root
        suites = {name: str(path.relative_to(root / "tests/unit"))
                  for name, path in files_of_suites(root).items()}
        workers = Pool(Worker(programs, recorded, suites, self._directory(f"worker-{number}"))
                       for number in range(self.jobs))

        def ask_unit_tests(number: int) -> bool:
            fault = faults[number]
            if self.results.survives_unit_tests(fault):
                return True
            with workers.one() as worker:
                survives = self._survives(fault, worker.ask_unit_tests(number, fault))
            if survives:
                self.results.store_unit_survivor(fault)
            return survives

        def ask_quick_tests(number: int) -> bool:
            if faults[number].key in self.expected:
                return True
            with workers.one() as worker:
                return self._survives(faults[number], worker.ask_quick_tests(number))

        survivors = self._those(faults, ask_unit_tests, "unit tests")
        if not self.with_end_to_end:
            return set(survivors)
        survivors = self._those(survivors, ask_quick_tests, "quick end-to-end tests")
        say(f"{len(survivors)} faults are held against end-to-end tests in groups")
        with ThreadPoolExecutor(self.jobs) as pool:
            for found in hold_in_groups({n: faults[n] for n in survivors}, workers.one, pool):
                for number, verdict in found.items():
                    self._survives(faults[number], verdict)
        return {n for n in survivors if self.results.find(faults[n]) is None}

    def _those(self, numbers: Iterable[int], survives: Callable[[int], bool], by: str) -> list[int]:
        """Those of the faults that survive."""
        numbers = list(numbers)
        say(f"{len(numbers)} faults are held against {by}")
        with ThreadPoolExecutor(self.jobs) as pool:
            return [n for n, survived in zip(numbers, pool.map(survives, numbers)) if survived]

    def _survives(self, fault: Fault, verdict: Verdict) -> bool:
        if verdict.found():
            self.results.store(fault, verdict)
        return not verdict.found()

    def _judge_alone(self, faults: list[Fault], programs: Programs, recorded: Recorded) -> None:
        say(f"{len(faults)} faults are tried alone")
        workers = Pool(Alone(self.toolchain, self._directory(f"alone-{number}"))
                       for number in range(self.jobs))
        by_path: dict[str, list[Fault]] = {}
        for fault in faults:
            by_path.setdefault(fault.path, []).append(fault)

        def judge(path: str) -> None:
            near = programs.numbers_of(path)
            tests = recorded.end_to_end_tests(near) if near else list(recorded.end_to_end)
            quick = recorded.quick_tests(near)
            with workers.one() as alone:
                alone.check(path)
                for fault in by_path[path]:
                    verdict = alone.hold(fault, quick if fault.key in self.expected else tests)
                    self.results.store(fault, verdict)

        with ThreadPoolExecutor(self.jobs) as pool:
            list(pool.map(judge, by_path))

    def _directory(self, name: str) -> Path:
        directory = self.toolchain.work / name
        directory.mkdir()
        return directory
