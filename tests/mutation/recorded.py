# SPDX-License-Identifier: MIT
"""Which tests reach which faults, as a run of all tests without a fault has noted.

That run is also the proof that the tests pass where nothing is wrong: one that fails anyway would
find every fault.
"""

import json
import math
import re
from dataclasses import dataclass, field
from typing import Iterable

from programs import Programs, choose_in
from together import LIMIT
from toolchain import Trouble
from trial import UNIT, EndToEnd, Limits, in_sandbox

QUICK = 2.0  # seconds of end-to-end tests
WHEN_STARTED = "*"  # stands for what is reached before the first test


@dataclass
class Recorded:
    unit: dict[str, set[int]] = field(default_factory=dict)
    end_to_end: dict[str, set[int]] = field(default_factory=dict)  # the quickest first
    seconds: dict[str, float] = field(default_factory=dict)  # that each test takes

    def unit_tests(self, fault: int) -> list[str]:
        when_started = fault in self.unit[WHEN_STARTED]
        return [name for name, reached in self.unit.items()
                if name != WHEN_STARTED and (when_started or fault in reached)]

    def limits(self, tests: Iterable[str]) -> Limits:
        """How long unit tests may take. Some wait for a few seconds."""
        usual = sum(self.seconds[test] for test in tests)
        return Limits(2 + math.ceil(3 * usual), 20 + math.ceil(60 * usual))

    def end_to_end_tests(self, faults: set[int]) -> list[str]:
        """The quickest ones first."""
        return [name for name, reached in self.end_to_end.items() if not faults.isdisjoint(reached)]

    def quick_tests(self, faults: set[int]) -> list[str]:
        """Of the end-to-end tests some that take no time: the golden cases, which show most, first."""
        tests = self.end_to_end_tests(faults)
        golden = [test for test in tests if test.startswith("test_golden.py")]
        chosen, spent = [], 0.0
        for test in [*golden, *(test for test in tests if test not in golden)]:
            spent += self.seconds[test]
            if spent > QUICK and chosen:
                break
            chosen.append(test)
        return chosen


def record(programs: Programs, with_end_to_end: bool) -> Recorded:
    recorded = Recorded()
    choose_in(programs.directory, set())
    _record_unit_tests(programs, recorded)
    if with_end_to_end:
        _record_end_to_end_tests(programs, recorded)
    return recorded


def _record_unit_tests(programs: Programs, recorded: Recorded) -> None:
    programs.reached.write_bytes(bytes(LIMIT))
    status, output = in_sandbox([str(programs.unit_tests)], UNIT, str(programs.reached.parent))
    programs.reached.unlink()
    if status != 0:
        failed = re.findall(r"^\[  FAILED  \] ([\w/.]+)", output, re.MULTILINE)
        raise Trouble(f"without a fault unit tests fail: {', '.join(dict.fromkeys(failed)) or output}")
    for line in programs.list.read_text(encoding="utf-8").splitlines():
        name, microseconds, *numbers = line.split(" ")
        recorded.unit[name] = set(map(int, numbers))
        recorded.seconds[name] = int(microseconds) / 1e6


def _record_end_to_end_tests(programs: Programs, recorded: Recorded) -> None:
    toolchain = programs.toolchain
    tests = EndToEnd(toolchain.root, toolchain.build, programs.program, programs.out)
    programs.reached.write_bytes(bytes(LIMIT))
    listed = programs.list.with_name("end-to-end")
    doubtful = tests.record(programs.reached, listed)
    programs.reached.unlink()
    if doubtful and (verdict := tests.run(doubtful)) and verdict.found():
        raise Trouble(f"without a fault an end-to-end test fails: {verdict.killer}")
    entries = [json.loads(line) for line in listed.read_text(encoding="utf-8").splitlines()]
    for entry in sorted(entries, key=lambda entry: entry["seconds"]):
        recorded.end_to_end[entry["test"]] = set(entry["reached"])
        recorded.seconds[entry["test"]] = entry["seconds"]
