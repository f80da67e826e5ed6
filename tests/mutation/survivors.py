# SPDX-License-Identifier: MIT
"""The survivors that are explained: faults that change nothing which anybody could see.

survivors.toml holds one entry each, known by its file, the text of its line and what the fault
makes of it, so that it stays valid when lines move.
"""

import tomllib
from pathlib import Path
from typing import Iterable

from fault import Fault

FILE = Path(__file__).with_name("survivors.toml")
FIELDS = {"file", "line", "fault", "why"}

Key = tuple[str, str, str]


class ListError(Exception):
    """What is wrong with the list."""


def read_survivors(file: Path = FILE) -> dict[Key, str]:
    """The reason of each explained survivor."""
    reasons: dict[Key, str] = {}
    for entry in tomllib.loads(file.read_text(encoding="utf-8")).get("survivor", []):
        if set(entry) != FIELDS or not entry["why"].strip():
            raise ListError(f"{file.name}: an entry needs {', '.join(sorted(FIELDS))}: {entry}")
        key = (entry["file"], entry["line"], entry["fault"])
        if key in reasons:
            raise ListError(f"{file.name}: listed twice: {' | '.join(key)}")
        reasons[key] = entry["why"]
    return reasons


def unmatched(reasons: Iterable[Key], made: Iterable[Fault]) -> list[Key]:
    """The entries that belong to no fault of the sources."""
    keys = {fault.key for fault in made}
    return [key for key in reasons if key not in keys]
