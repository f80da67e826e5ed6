# SPDX-License-Identifier: MIT
"""Whole runs over one small source, with the unit tests alone."""

import re
import shutil
import subprocess
from pathlib import Path

import pytest

from survivors import Key, read_survivors

ROOT = Path(__file__).parents[2]
FILE = "src/base/input_file.cpp"


def run(*arguments: str) -> tuple[int, str]:
    command = [str(ROOT / "tools/mutate"), "--unit", *arguments, FILE]
    result = subprocess.run(command, capture_output=True, text=True, timeout=600, check=False)
    assert [line for line in result.stderr.splitlines() if not line.startswith("mutate: ")] == []
    return result.returncode, result.stdout


def reported(output: str) -> list[Key]:
    """The survivors that a run reported, as entries of the list."""
    entries = re.findall(r"^\[\[survivor\]\]\n(?:\w+ = .*\n?)+", output, re.MULTILINE)
    return [tuple(re.findall(r"^(?:file|line|fault) = (?:'''|[\"'])(.*?)(?:'''|[\"'])$", entry,
                             re.MULTILINE)) for entry in entries]


def figure(output: str, what: str) -> int:
    found = re.search(rf"(\d+) {what}", output.splitlines()[-1])
    assert found is not None
    return int(found[1])


def test_faults_are_made_and_found_and_the_explained_ones_survive() -> None:
    status, output = run("--fresh")
    assert (status, reported(output)) == (0, [])
    assert figure(output, "killed by unit tests") > 5
    assert figure(output, "survived and are explained") > 0
    assert figure(output, "survived unexplained") == 0


def test_a_survivor_that_nobody_explains_is_reported(tmp_path: Path) -> None:
    status, output = run("--list", str(tmp_path))
    assert status == 1
    assert sorted(reported(output)) == sorted(key for key in read_survivors() if key[0] == FILE)


@pytest.mark.parametrize(
    ("line", "fault"),
    [
        ("no such line", "constant: 1 -> 2"),
        ("if (*count == 0) {", "condition: *count == 0 -> false"),  # is found
    ],
)
def test_an_entry_without_a_survivor_is_reported(tmp_path: Path, line: str, fault: str) -> None:
    entry = f"[[survivor]]\nfile = '{FILE}'\nline = '{line}'\nfault = '{fault}'\nwhy = 'So.'\n"
    changed = shutil.copytree(Path(__file__).with_name("survivors"), tmp_path / "changed")
    (changed / "more.toml").write_text(entry, encoding="utf-8")
    status, output = run("--list", str(changed))
    assert status == 1
    assert f"survivors: no survivor any more: {FILE} | {line} | {fault}\n" in output


def test_a_sample_is_the_same_one_every_time() -> None:
    outputs = {run("--sample", "3")[1] for _ in range(2)}
    assert len(outputs) == 1
    assert figure(outputs.pop(), "faults made") == 3
