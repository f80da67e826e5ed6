# SPDX-License-Identifier: MIT
"""Which unit tests can notice what becomes of an object, as far as the linker knows."""

import subprocess
from collections import defaultdict
from dataclasses import dataclass, field
from pathlib import Path
from typing import Iterable


@dataclass
class Symbols:
    defined: set[str] = field(default_factory=set)
    needed: set[str] = field(default_factory=set)


def _symbols(objects: Iterable[Path], directory: Path) -> dict[str, Symbols]:
    """The symbols of each object, which is named by its path."""
    command = ["nm", "--print-file-name", "--extern-only", *map(str, objects)]
    result = subprocess.run(command, cwd=directory, capture_output=True, text=True, check=True)
    found: dict[str, Symbols] = defaultdict(Symbols)
    for line in result.stdout.splitlines():
        name, _, rest = line.rpartition(":")
        kind, symbol = rest.split()[-2:]
        place = found[name.removesuffix(":")]
        (place.needed if kind in "Uvw" else place.defined).add(symbol)
    return found


def reached_objects(objects: Iterable[Path], directory: Path) -> dict[str, set[str]]:
    """Of each object those that it needs, directly or not, itself included."""
    symbols = _symbols(objects, directory)
    definers: dict[str, set[str]] = defaultdict(set)
    for name, its in symbols.items():
        for symbol in its.defined:
            definers[symbol].add(name)
    needs = {
        name: {other for symbol in its.needed - its.defined for other in definers[symbol]}
        for name, its in symbols.items()
    }
    return {name: _closure(name, needs) for name in symbols}


def _closure(name: str, needs: dict[str, set[str]]) -> set[str]:
    reached, open_ends = {name}, [name]
    while open_ends:
        for other in needs[open_ends.pop()] - reached:
            reached.add(other)
            open_ends.append(other)
    return reached
