# SPDX-License-Identifier: MIT
"""The version, which stands in CMakeLists.txt, in the change log and in that of the packages."""

import re

from pages import ROOT

CHANGELOG = (ROOT / "CHANGELOG.md").read_text(encoding="utf-8")
RELEASES = re.findall(r"^## (\d+)\.(\d+)\.(\d+), (\d{4}-\d{2}-\d{2})$", CHANGELOG, re.M)
PLACES = {
    "CMakeLists.txt": r"^project\(\S+ VERSION (\S+) ",
    "CHANGELOG.md": r"^## (\d\S*),",
    "debian/changelog": r"^\S+ \(([^-)]+)",
}


def test_the_version_is_the_same_everywhere() -> None:
    versions = {}
    for place, pattern in PLACES.items():
        if (ROOT / place).exists():
            text = (ROOT / place).read_text(encoding="utf-8")
            versions[place] = re.findall(pattern, text, re.M)[0]
    assert {"CMakeLists.txt", "CHANGELOG.md"} <= set(versions)
    assert len(set(versions.values())) == 1, versions


def test_the_newest_version_stands_first_in_the_changelog() -> None:
    numbers = [tuple(map(int, release[:3])) for release in RELEASES]
    dates = [release[3] for release in RELEASES]
    assert numbers == sorted(set(numbers), reverse=True)
    assert dates == sorted(dates, reverse=True)


def test_only_what_is_not_released_yet_stands_without_a_version() -> None:
    headings = re.findall(r"^## .*$", CHANGELOG, re.M)
    if headings[0] == "## Unreleased":
        del headings[0]
    assert headings == [f"## {a}.{b}.{c}, {date}" for a, b, c, date in RELEASES] != []
