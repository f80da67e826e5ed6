# SPDX-License-Identifier: MIT
"""Faults in names: another one of the same kind is taken."""

import re
from typing import Iterator, Sequence

from fault import Change
from source import Source

# Called in place of each other.
CALLS = {
    "back": "front",
    "begin": "end",
    "debug": "warning",
    "ends_with": "starts_with",
    "error": "warning",
    "front": "back",
    "max": "min",
    "min": "max",
    "remove_prefix": "remove_suffix",
    "remove_suffix": "remove_prefix",
    "sortedGlobPaths": "globPaths",
    "starts_with": "ends_with",
    "tolower": "toupper",
    "toupper": "tolower",
    "trim": "trimLeft",
    "trimLeft": "trim",
    "warning": "error",
}
ENUM = re.compile(r"enum (?:class )?(\w+)(?: : [\w:]+)? \{([^}]*)\}")
CONSTANT = re.compile(r"^inline constexpr (\w+) (k\w+)\{", re.MULTILINE)
COMMENT = re.compile(r"//[^\n]*")


def _following(names: Sequence[str]) -> dict[str, str]:
    """Each name and the one behind it, which for the last one is the first."""
    return dict(zip(names, [*names[1:], *names[:1]])) if len(names) > 1 else {}


def enumerators(code: str) -> dict[str, dict[str, str]]:
    """Of each enumeration of a file, which enumerator is taken in place of which."""
    return {
        match[1]: _following(re.findall(r"(\w+)(?: = [\w-]+)?\s*(?:,|$)", COMMENT.sub("", match[2])))
        for match in ENUM.finditer(code)
    }


def constants(code: str) -> dict[str, str]:
    """Which constant of a file is taken in place of which of the same type."""
    found: dict[str, list[str]] = {}
    for kind, name in CONSTANT.findall(code):
        found.setdefault(kind, []).append(name)
    return {name: other for names in found.values() for name, other in _following(names).items()}


def change_calls(source: Source) -> Iterator[Change]:
    for i, token in enumerate(source.tokens):
        if token.text in CALLS and source.text(i + 1) == "(" and source.in_block(i):
            yield Change("name", token.start, token.end, CALLS[token.text])


class Siblings:
    """The enumerators and constants of all sources."""

    def __init__(self, codes: Sequence[str]) -> None:
        self.enumerators: dict[str, dict[str, str]] = {}
        self.constants: dict[str, str] = {}
        for code in codes:
            self.enumerators |= enumerators(code)
            self.constants |= constants(code)

    def change_enumerators(self, source: Source) -> Iterator[Change]:
        """Qualified ones, which name their enumeration."""
        for i, token in enumerate(source.tokens):
            others = self.enumerators.get(source.text(i - 2), {}) if source.text(i - 1) == "::" else {}
            if token.text in others and source.text(i - 3) != "enum":
                yield Change("name", token.start, token.end, others[token.text])

    def change_constants(self, source: Source) -> Iterator[Change]:
        """Those whose address is taken, as the rows of tables do."""
        for i, token in enumerate(source.tokens):
            if token.text in self.constants and source.text(i - 1) == "&":
                yield Change("name", token.start, token.end, self.constants[token.text])
