# SPDX-License-Identifier: MIT
"""Trials: what counts as found, and which tests are asked."""

import tempfile
from pathlib import Path
from typing import Iterator

import pytest

import trial
from toolchain import Trouble
from trial import LEFT_OUT, UNIT, Verdict, end_to_end_files, in_sandbox, unit_tests

ROOT = Path(__file__).parents[2]


@pytest.fixture
def place() -> Iterator[Path]:
    """A directory that can be seen in the sandbox, as those below /tmp cannot."""
    (ROOT / "build/mutate").mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="test-", dir=ROOT / "build/mutate") as directory:
        yield Path(directory)


def program(path: Path, body: str) -> Path:
    path.write_text(f"#!/bin/sh\n{body}\n", encoding="utf-8")
    path.chmod(0o755)
    return path


@pytest.mark.parametrize(
    ("body", "verdict"),
    [
        ("exit 0", Verdict("survived")),
        ("echo '[ RUN      ] A.B'; echo '[  FAILED  ] A.B'; exit 1", Verdict("unit", "A.B")),
        ("echo '[ RUN      ] A.B'; kill -SEGV $$", Verdict("unit", "A.B")),
        ("echo '[ RUN      ] A.B'; kill -XCPU $$", Verdict("time", "A.B")),
        ("exit 1", Verdict("unit", "the beginning")),
    ],
)
def test_how_unit_tests_end_is_a_verdict(body: str, verdict: Verdict, place: Path) -> None:
    assert unit_tests(program(place / "tests", body), ["*"], UNIT) == verdict


def test_tests_can_write_nowhere_but_below_tmp() -> None:
    status, output = in_sandbox(["touch", str(ROOT / "README.md")], UNIT)
    assert status == 1 and "Read-only file system" in output
    assert in_sandbox(["touch", "/tmp/some"], UNIT) == (0, "")


def test_a_directory_may_be_left_writable(place: Path) -> None:
    assert in_sandbox(["touch", str(place / "some")], UNIT, str(place)) == (0, "")
    assert (place / "some").exists()


def test_a_sandbox_that_cannot_be_made_is_no_verdict() -> None:
    with pytest.raises(Trouble, match="the sandbox ended with status"):
        in_sandbox(["true"], UNIT, "/no/such/directory")


@pytest.mark.parametrize(
    ("verdict", "doubtful"),
    [
        (Verdict("unit", "A.B"), False),
        (Verdict("unit", "the beginning"), True),
        (Verdict("time", "A.B"), True),
        (Verdict("e2e", "test_golden.py::test"), False),
    ],
)
def test_a_busy_machine_may_be_behind_a_verdict(verdict: Verdict, doubtful: bool) -> None:
    assert verdict.found() and verdict.doubtful() == doubtful


@pytest.mark.parametrize("name", sorted(LEFT_OUT))
def test_what_is_left_out_is_a_file_of_tests(name: str) -> None:
    assert (ROOT / f"tests/e2e/test_{name}.py").exists()


def test_what_is_left_out_is_left_out_of_the_tests_of_every_program(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(trial, "LEFT_OUT", {"slow"})
    (tmp_path / "tests/e2e").mkdir(parents=True)
    for name in ("slow", "other_slow", "slowest"):
        (tmp_path / f"tests/e2e/test_{name}.py").touch()
    assert end_to_end_files(tmp_path) == ["test_slowest.py"]
