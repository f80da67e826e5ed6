# SPDX-License-Identifier: MIT
"""The faults that are made in a line of code."""

from pathlib import Path

import pytest

from faults.names import Siblings
from generate import faults_in, sources
from source import Source, read_source

ROOT = Path(__file__).parents[2]

# The statement of a function, and what becomes of it.
FAULTS = [
    ("if (a == b) {}", ["condition: a == b -> false", "condition: a == b -> true"]),
    ("if (a && !b) {}", ["condition: a && !b -> false", "condition: a && !b -> true",
                         "logic: && -> ||", "negation: !"]),
    ("if (const int n = size(); n < 2) {}", ["condition: n < 2 -> false",
                                             "condition: n < 2 -> true", "comparison: < -> <=",
                                             "constant: 2 -> 1", "constant: 2 -> 3"]),
    ("while (more()) {}", ["condition: more() -> !(more())"]),
    ("a = b ? c : d;", ["removed: a = b ? c : d;", "condition: b -> false",
                        "condition: b -> true"]),
    ("a += b == c ? 1 : d;", ["removed: a += b == c ? 1 : d;", "arithmetic: += -> =",
                              "condition: b == c -> false", "condition: b == c -> true",
                              "constant: 1 -> 0", "constant: 1 -> 2"]),
    ("return a;", ["result: a -> {}"]),
    ("return false;", ["constant: false -> true"]),
    ("f(a, b);", ["removed: f(a, b);", "order: a, b -> b, a"]),
    ("f(); g();", ["order: f(); g(); -> g(); f();", "removed: f();", "removed: g();"]),
    ("const Lock lock(mutex);", ["removed: const Lock lock(mutex);"]),
    ("n(077);", ["removed: n(077);", "constant: 077 -> 0100", "constant: 077 -> 076"]),
    ("n('a');", ["removed: n('a');", "text: 'a' -> '~'"]),
    ('return "abc";', ["text: b -> ~"]),
    ('return "";', ["text:  -> ~"]),
    ('error() << "a" << b;', ["name: error -> warning", "text: a -> ~", "removed: << b"]),
    ("n += 1;", ["removed: n += 1;", "arithmetic: += -> =", "constant: 1 -> 0",
                 "constant: 1 -> 2"]),
    ("return A | B;", ["flag: A |", "flag: | B", "result: A | B -> {}"]),
    ("return Kind::One;", ["name: One -> Two"]),
    ("row = {&kOne};", ["removed: row = {&kOne};", "name: kOne -> kTwo"]),
    ("const auto [a, b] = f(1);", ["constant: 1 -> 0", "constant: 1 -> 2"]),
    ("assert(a < 1);", []),
    ("// a < 1", []),
]


OTHERS = """
enum class Kind { One, Two };
inline constexpr Format kOne{};
inline constexpr Format kTwo{};
"""


@pytest.mark.parametrize(("statement", "faults"), FAULTS)
def test_a_statement_has_its_faults(statement: str, faults: list[str]) -> None:
    source = Source("some.cpp", f"void function() {{\n  {statement}\n}}\n")
    found = faults_in(source, Siblings([OTHERS]))
    assert sorted(f"{fault.operator}: {fault.change}" for fault in found) == sorted(faults)


def test_a_fault_is_known_by_its_line_and_which_of_several_it_is() -> None:
    source = Source("some.cpp", "int a() {\n  return 5;\n}\nint b() {\n  return 5;\n}\n")
    found = [fault.key for fault in faults_in(source, Siblings([])) if fault.replacement == "4"]
    first = ("some.cpp", "return 5;", "constant: 5 -> 4")
    assert found == [first, (*first[:2], first[2] + " (#2)")]


def test_rows_that_name_their_fields_change_places() -> None:
    source = Source("some.cpp", "constexpr auto kRows = to_array<Row>({{.a = x}, {.a = y}});\n")
    found = [fault.change for fault in faults_in(source, Siblings([]))]
    assert found == ["{.a = x}, {.a = y} -> {.a = y}, {.a = x}"]


@pytest.mark.parametrize("path", sources(ROOT))
def test_every_fault_of_a_source_changes_it_and_has_a_key_of_its_own(path: str) -> None:
    source = read_source(ROOT, path)
    found = faults_in(source, Siblings([]))
    assert all(fault.apply(source.code) != source.code for fault in found)
    assert len({fault.key for fault in found}) == len(found)
