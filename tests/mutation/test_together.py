# SPDX-License-Identifier: MIT
"""Faults side by side: the code that holds them, and how one is chosen in a built program."""

import subprocess
from pathlib import Path

import pytest

from faults.names import Siblings
from generate import faults_in
from source import Source
from together import CHOSEN, LIMIT, MARK, Together, choose_faults, blamed
from toolchain import Trouble

# What the program is, what it says, and what it says with a fault.
PROGRAMS = [
    ("int main() { return 5; }", 5, {4, 6}),
    ("int f(int n) {\n  if (n > 1) {\n    return 2;\n  }\n  return 3;\n}\nint main() { return f(7); }",
     2, {1, 3}),
    ("namespace {\nconstexpr int kSize = 7;\n}\nint main() { return kSize; }", 7, {6, 8}),
    ("constexpr int f() {\n  return 9;\n}\nint main() { int n = f(); return n; }", 9, {0, 8, 10}),
    ("#include <array>\nstruct Row {\n  int a = 0;\n};\nconstexpr auto kRows = "
     "std::to_array<Row>({{.a = 3}, {.a = 5}});\nint main() { return kRows[0].a; }", 3, {2, 4, 5}),
    ("int main() {\n  int n = 1;\n  n += n == 1 ? 2 : 8;\n  return n;\n}\n", 3, {1, 2, 9, 10}),
    ("struct S {\n  int a = 4;\n};\nint main() { return S().a; }", 4, {3, 5}),
]


def build(code: str, together: Together, out: Path) -> Path:
    source = out / "some.cpp"
    source.write_text(together.code(), encoding="utf-8")
    program = out / "program"
    command = ["clang++", "-std=c++20", "-O0", "-w", str(source), "-o", str(program)]
    subprocess.run(command, check=True, timeout=60)
    return program


@pytest.mark.parametrize(("code", "right", "wrong"), PROGRAMS)
def test_one_program_holds_all_faults(code: str, right: int, wrong: set[int], tmp_path: Path) -> None:
    source = Source("some.cpp", code + "\n")
    together = Together(source, dict(enumerate(faults_in(source, Siblings([])), 1)))
    program = build(code, together, tmp_path)
    choose_faults(program, set())
    assert subprocess.run([program], check=False, timeout=60).returncode == right
    statuses = set()
    for number in together.faults():
        choose_faults(program, {number})
        statuses.add(subprocess.run([program], check=False, timeout=60).returncode)
    assert statuses >= wrong


@pytest.mark.parametrize(
    "code",
    [
        "consteval int f() {\n  return 9;\n}\n",
        "void f() {\n  static_assert(sizeof(int) > 3);\n}\n",
        "enum Kind {\n  One = 1,\n};\n",
    ],
)
def test_what_the_compiler_works_out_alone_holds_no_choice(code: str) -> None:
    source = Source("some.cpp", code)
    assert Together(source, dict(enumerate(faults_in(source, Siblings([])), 1))).faults() == {}


@pytest.mark.parametrize(
    ("message", "faults"),
    [
        ("fault-7:1:2: error: no\nsome.cpp:3:4: error: no\nfault-12:5:6: note: here\n", {7}),
        ("some.cpp:3:4: error: no\nfault-12:5:6: note: here\n", {12}),
        ("some.cpp:3:4: error: not a constant expression\nfault-12:5:6: note: here\n", {12}),
        ("In file included from some.cpp:1:\nfault-7:1:2: warning: odd\n", set()),
    ],
)
def test_what_the_compiler_complains_about_is_known_by_its_number(
    message: str, faults: set[int]
) -> None:
    assert blamed(message) == faults


def test_a_program_without_a_place_for_choices_is_an_error(tmp_path: Path) -> None:
    program = tmp_path / "program"
    program.write_bytes(b"something else")
    with pytest.raises(Trouble, match="there is not one place"):
        choose_faults(program, {1})


def test_the_chosen_faults_replace_those_chosen_before(tmp_path: Path) -> None:
    program = tmp_path / "program"
    program.write_bytes(b"before" + MARK + bytes(1 + LIMIT) + b"behind")
    choose_faults(program, {1, 2})
    choose_faults(program, {3})
    assert program.read_bytes() == b"before" + MARK + bytes(4) + b"\1" + bytes(LIMIT - 4) + b"behind"


def test_the_limit_is_that_of_the_header() -> None:
    assert f"kCradleFaults = {LIMIT};" in CHOSEN.read_text(encoding="utf-8")
