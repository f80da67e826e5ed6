# SPDX-License-Identifier: MIT
"""The survivors that are explained: faults that change nothing which anybody could see.

A table of survivors/*.toml stands for one of them, or for those of one line that have the same
reason. They are known by their file, the text of their line and what the fault makes of it, so that
it stays valid when lines move.
"""

import tomllib
from pathlib import Path
from typing import Iterable

from fault import Fault

PLACE = Path(__file__).with_name("survivors")
FIELDS = {"file", "line", "fault", "why"}

Key = tuple[str, str, str]


class ListError(Exception):
    """What is wrong with the list."""


def read_survivors(place: Path = PLACE) -> dict[Key, str]:
    """The reason of each explained survivor, by the files of a directory."""
    reasons: dict[Key, str] = {}
    for file in sorted(place.glob("*.toml")):
        for entry in tomllib.loads(file.read_text(encoding="utf-8")).get("survivor", []):
            if set(entry) != FIELDS or not entry["why"].strip():
                raise ListError(f"{file.name}: an entry needs {', '.join(sorted(FIELDS))}: {entry}")
            faults = entry["fault"] if isinstance(entry["fault"], list) else [entry["fault"]]
            for fault in faults:
                key = (entry["file"], entry["line"], fault)
                if key in reasons:
                    raise ListError(f"{file.name}: listed twice: {' | '.join(key)}")
                reasons[key] = entry["why"]
    return reasons


def unmatched(reasons: Iterable[Key], made: Iterable[Fault]) -> list[Key]:
    """The entries that belong to no fault of the sources."""
    keys = {fault.key for fault in made}
    return [key for key in reasons if key not in keys]
