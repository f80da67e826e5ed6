# SPDX-License-Identifier: MIT
"""The licence, which every source names in its first line."""

from pathlib import Path

from pages import ROOT

TAG = "SPDX-License-Identifier: MIT"
DIRECTORIES = ("bench", "fuzz", "man", "src", "tests")
COMMENTS = {".c": "//", ".cpp": "//", ".h": "//", ".py": "#"}


def sources() -> list[Path]:
    paths = [path for name in DIRECTORIES for path in (ROOT / name).rglob("*")]
    return [path for path in paths if path.suffix in COMMENTS and path.is_file()]


def test_every_source_names_the_licence() -> None:
    for path in sources():
        first = path.read_text(encoding="utf-8").partition("\n")[0]
        assert first == f"{COMMENTS[path.suffix]} {TAG}", path


def test_there_is_something_to_look_at() -> None:
    assert {path.suffix for path in sources()} == set(COMMENTS)


def test_the_text_of_the_licence_is_that_of_its_name() -> None:
    assert (ROOT / "LICENSE").read_text(encoding="utf-8").startswith("MIT License\n")
