# SPDX-License-Identifier: MIT
"""Faults that are held against the slow tests several at a time.

Those that get here are mostly faults that no test finds, so that a group of them mostly survives as
one; one that does not is divided until it is known which fault was found. A fault that hides another
lets that one survive, and what survives has to be explained.
"""

from concurrent.futures import Executor
from contextlib import AbstractContextManager
from typing import Callable, Iterator

from fault import Fault
from trial import Verdict
from worker import Worker

SIZE = 24

Found = dict[int, Verdict]


def groups_of(faults: dict[int, Fault]) -> list[list[int]]:
    """Groups in which no two faults are of one line, so that each is there."""
    groups: list[list[int]] = []
    for number, fault in faults.items():
        for group in groups:
            lines = {(faults[n].path, faults[n].line_number) for n in group}
            if len(group) < SIZE and (fault.path, fault.line_number) not in lines:
                group.append(number)
                break
        else:
            groups.append([number])
    return groups


def divide(group: list[int], hold: Callable[[set[int], str], Verdict], first: str = "") -> Found:
    """The verdicts on those of the group that are found; `first` is the test that found it last."""
    verdict = hold(set(group), first)
    if not verdict.found():
        return {}
    if len(group) == 1:
        return {group[0]: verdict}
    middle = len(group) // 2
    found: Found = {}
    for part in (group[:middle], group[middle:]):
        found |= divide(part, hold, verdict.killer)
    return found


def hold_in_groups(faults: dict[int, Fault], worker: Callable[[], AbstractContextManager[Worker]],
                   pool: Executor) -> Iterator[Found]:
    def judge(group: list[int]) -> Found:
        with worker() as one:
            return divide(group, one.ask_all_tests)

    yield from pool.map(judge, groups_of(faults))
