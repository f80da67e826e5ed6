# SPDX-License-Identifier: MIT
"""What a run has found out and a later one need not find out again."""

from pathlib import Path

import pytest

from fault import Fault
from results import Results
from trial import Verdict

FAULT = Fault("src/some.cpp", 1, "int a = 1;", "constant", "1 -> 2", 8, 9, "2")
FILES = {
    "src/some.cpp": "int a = 1;\n",
    "src/other.cpp": "int b = 1;\n",
    "tests/unit/some_test.cpp": "TEST(Some, IsOne) {}\n",
    "tests/unit/support/help.h": "int help();\n",
    "tests/e2e/golden/some/config": "a=1\n",
}


@pytest.fixture
def root(tmp_path: Path) -> Path:
    for name, text in FILES.items():
        (tmp_path / name).parent.mkdir(parents=True, exist_ok=True)
        (tmp_path / name).write_text(text, encoding="utf-8")
    return tmp_path


def found_later(root: Path, verdict: Verdict, changed: str) -> Verdict | None:
    Results(root, root / "results", "all").store(FAULT, verdict)
    with (root / changed).open("a", encoding="utf-8") as file:
        file.write("// changed\n")
    return Results(root, root / "results", "all").find(FAULT)


@pytest.mark.parametrize("changed", [name for name in FILES if name != FAULT.path])
def test_what_no_test_finds_is_tried_again_when_anything_changes(root: Path, changed: str) -> None:
    assert found_later(root, Verdict("survived"), changed) is None


@pytest.mark.parametrize("changed", [name for name in FILES if name != FAULT.path])
@pytest.mark.parametrize("verdict", [Verdict("unit", "Some.IsOne"), Verdict("invalid")])
def test_what_is_found_stays_so(root: Path, verdict: Verdict, changed: str) -> None:
    assert found_later(root, verdict, changed) == verdict


@pytest.mark.parametrize("verdict", [Verdict("unit", "Some.IsOne"), Verdict("survived")])
def test_a_source_that_changes_has_other_faults(root: Path, verdict: Verdict) -> None:
    assert found_later(root, verdict, FAULT.path) is None


def test_what_the_unit_tests_did_not_find_is_not_tried_with_them_again(root: Path) -> None:
    Results(root, root / "results", "all").store_unit_survivor(FAULT)
    assert Results(root, root / "results", "all").survives_unit_tests(FAULT)
    assert Results(root, root / "results", "all").find(FAULT) is None
    (root / "src/other.cpp").write_text("changed", encoding="utf-8")
    assert not Results(root, root / "results", "all").survives_unit_tests(FAULT)


def test_what_the_unit_tests_do_not_find_may_be_found_by_all(root: Path) -> None:
    Results(root, root / "results", "unit").store(FAULT, Verdict("survived"))
    assert Results(root, root / "results", "unit").find(FAULT) == Verdict("survived")
    assert Results(root, root / "results", "all").find(FAULT) is None
