# SPDX-License-Identifier: MIT
"""Building: what the compiler does not like, and what keeps a run from going on."""

from pathlib import Path

import pytest

from toolchain import BuildError, Trouble, run


@pytest.mark.parametrize(
    ("says", "error"),
    [
        ("some.cpp:1:2: error: no such thing", BuildError),
        ("clang: error: no input files", BuildError),
        ("error: unable to open output file", Trouble),
        ("ld.gold: fatal: no space left", Trouble),
        ("", Trouble),
    ],
)
def test_only_what_the_compiler_does_not_like_is_put_down_to_a_fault(
    says: str, error: type[Exception], tmp_path: Path
) -> None:
    with pytest.raises(error):
        run(["sh", "-c", 'echo "$0" >&2; exit 1', says], tmp_path)


def test_the_output_of_a_command_that_succeeds_is_returned(tmp_path: Path) -> None:
    assert run(["pwd"], tmp_path) == f"{tmp_path}\n"
