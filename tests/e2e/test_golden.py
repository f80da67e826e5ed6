# SPDX-License-Identifier: MIT
"""The three outputs of whole hosts; golden_cases.py tells what a case is and how one is added."""

import pytest

from golden_cases import FILES, GoldenCase, all_cases, name_of
from host import Host


@pytest.mark.parametrize("case", all_cases(), ids=name_of)
def test_the_outputs_are_the_golden_ones(host: Host, case: GoldenCase) -> None:
    case.furnish(host)
    for kind in case.types():
        assert case.run(host, kind) == case.expected(kind)
        output = case.output(kind)
        assert (host.read(output) if host.exists(output) else None) == (
            case.text(kind) if case.has(kind) else None
        )


@pytest.mark.parametrize("case", all_cases(), ids=name_of)
def test_a_case_holds_nothing_that_would_go_unread(case: GoldenCase) -> None:
    assert {path.name for path in case.root.iterdir()} <= FILES
    assert case.types() != []
    complains = any(case.expected(kind) != (0, "", "") for kind in case.types())
    assert complains or not case.name.startswith("unhappy-")


def test_there_are_cases_of_both_kinds() -> None:
    unhappy = [case for case in all_cases() if case.name.startswith("unhappy-")]
    assert 0 < len(unhappy) < len(all_cases())
