# SPDX-License-Identifier: MIT
"""Faults that are held against the slow tests several at a time."""

from fault import Fault
from groups import SIZE, divide, groups_of
from trial import Verdict

FOUND = {3: Verdict("e2e", "one"), 8: Verdict("e2e", "other")}


def test_those_of_a_group_that_are_found_are_told_apart() -> None:
    asked: list[tuple[set[int], str]] = []

    def hold(numbers: set[int], first: str) -> Verdict:
        asked.append((numbers, first))
        return next((FOUND[n] for n in sorted(numbers) if n in FOUND), Verdict("survived"))

    assert divide(list(range(10)), hold) == FOUND
    assert asked[0] == (set(range(10)), "")
    assert asked[1] == (set(range(5)), "one")


def fault(number: int, line: int) -> Fault:
    return Fault("src/some.cpp", line, "", "constant", str(number), number, number, "")


def test_no_two_faults_of_a_group_are_of_one_line() -> None:
    faults = {number: fault(number, number // 2) for number in range(6)}
    assert groups_of(faults) == [[0, 2, 4], [1, 3, 5]]


def test_a_group_has_a_size() -> None:
    groups = groups_of({number: fault(number, number) for number in range(SIZE + 1)})
    assert [len(group) for group in groups] == [SIZE, 1]
