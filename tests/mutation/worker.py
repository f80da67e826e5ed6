# SPDX-License-Identifier: MIT
"""One of the workers of a run, with programs of its own."""

from pathlib import Path

from fault import Fault
from programs import Programs, choose_in, unit_tests_in
from recorded import Recorded
from together import choose_faults
from toolchain import PROGRAM
from trial import SURVIVED, EndToEnd, Verdict, unit_tests


class Worker:
    def __init__(self, programs: Programs, recorded: Recorded, suites: dict[str, str],
                 work: Path) -> None:
        self.recorded, self.suites = recorded, suites
        self.toolchain = programs.toolchain
        self.directory = programs.copy(work / "linked")
        self.unit_tests = unit_tests_in(self.directory)
        program = self.directory / PROGRAM
        self.end_to_end = EndToEnd(self.toolchain.root, self.toolchain.build, program, work)

    def ask_unit_tests(self, number: int, fault: Fault) -> Verdict:
        """Those of the faulty file come first. What is reached when the program starts is reached by
        every test, but matters to no more than those that the linker says need it."""
        needing = self.toolchain.tests_that_reach(self.toolchain.objects_that_see(fault.path))
        files = {test: self.suites.get(test.partition(".")[0], "")
                 for test in self.recorded.unit_tests(number)}
        own = [test for test, file in files.items() if file == test_file(fault.path)]
        others = [test for test, file in files.items() if file in needing and test not in own]
        choose_faults(self.unit_tests, {number})
        for tests in (own, others):
            verdict = self._unit_tests(tests) if tests else SURVIVED
            if verdict.found() and verdict.doubtful():
                verdict = self._unit_tests([verdict.killer] if verdict.killer in tests else tests)
            if verdict.found():
                return verdict
        return SURVIVED

    def _unit_tests(self, tests: list[str]) -> Verdict:
        return unit_tests(self.unit_tests, tests, self.recorded.limits(tests))

    def ask_quick_tests(self, number: int) -> Verdict:
        return self._end_to_end({number}, self.recorded.quick_tests({number}))

    def ask_all_tests(self, numbers: set[int], first: str) -> Verdict:
        """Several faults at once; the test named first is asked first."""
        tests = self.recorded.end_to_end_tests(numbers)
        return self._end_to_end(numbers, sorted(tests, key=lambda test: test != first))

    def _end_to_end(self, numbers: set[int], tests: list[str]) -> Verdict:
        if not tests:
            return SURVIVED
        choose_in(self.directory, numbers)
        verdict = self.end_to_end.run(tests)
        if verdict.found() and verdict.doubtful():
            verdict = self.end_to_end.run(tests)
        return verdict


def test_file(path: str) -> str:
    """The unit tests of a source, below tests/unit."""
    return path.removeprefix("src/").rpartition(".")[0] + "_test.cpp"
