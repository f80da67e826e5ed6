# SPDX-License-Identifier: MIT
"""The pictures of the documentation: what is kept is what tools/pictures draws of the source."""

import hashlib
import re
import subprocess
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import pytest

from pages import ROOT

PICTURES = ROOT / "docs" / "pictures"
SOURCES = sorted(PICTURES.glob("*.dot"))


def name_of(source: Path) -> str:
    return source.stem


def words(picture: Path) -> list[str | None]:
    """The texts of a picture; where they stand depends on the fonts of the machine."""
    texts = ElementTree.parse(picture).iter("{http://www.w3.org/2000/svg}text")
    return [text.text for text in texts]


@pytest.mark.parametrize("source", SOURCES, ids=name_of)
def test_a_picture_is_drawn_from_its_source_as_it_is_now(source: Path) -> None:
    picture = source.with_suffix(".svg").read_text(encoding="utf-8")
    checksum = hashlib.sha256(source.read_bytes()).hexdigest()
    assert re.findall("from (.*), sha256 ([0-9a-f]+) ", picture) == [(source.name, checksum)]


def test_drawing_again_gives_pictures_with_the_same_words(tmp_path: Path) -> None:
    subprocess.run([ROOT / "tools" / "pictures", tmp_path], check=True)
    drawn = sorted(path.name for path in tmp_path.iterdir())
    assert drawn == [source.with_suffix(".svg").name for source in SOURCES] != []
    for name in drawn:
        assert words(tmp_path / name) == words(PICTURES / name) != []


def test_every_picture_has_a_source_and_is_shown() -> None:
    pages = "".join(page.read_text(encoding="utf-8") for page in ROOT.glob("docs/*.md"))
    shown = {f"pictures/{source.stem}.svg" for source in SOURCES}
    assert set(re.findall(r"!\[[^]]+\]\((pictures/[^)]+)\)", pages)) == shown
    assert {path.suffix for path in PICTURES.iterdir()} == {".dot", ".svg"}
    assert len(list(PICTURES.iterdir())) == 2 * len(SOURCES)
