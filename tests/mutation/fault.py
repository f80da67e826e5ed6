# SPDX-License-Identifier: MIT
"""A fault: one small change of a source file."""

from dataclasses import dataclass

from source import Source


@dataclass(frozen=True)
class Change:
    """The replacement of a stretch of a source by other code."""

    operator: str
    start: int
    end: int
    replacement: str


@dataclass(frozen=True)
class Fault:
    path: str
    line_number: int
    line: str  # its text, without the blanks around it
    operator: str
    change: str  # "OLD -> NEW", and which one where a file has several that read the same
    start: int
    end: int
    replacement: str

    @property
    def key(self) -> tuple[str, str, str]:
        """What the list of explained survivors knows it by."""
        return (self.path, self.line, f"{self.operator}: {self.change}")

    def apply(self, code: str) -> str:
        return code[: self.start] + self.replacement + code[self.end :]

    def __str__(self) -> str:
        return f"{self.path}:{self.line_number}: {self.operator}: {self.change}"


def one_line(code: str) -> str:
    return " ".join(code.split())


def make_faults(source: Source, changes: list[Change]) -> list[Fault]:
    """The faults that changes of a source make, in the order of their places."""
    faults: list[Fault] = []
    seen: dict[tuple[str, str], int] = {}
    made: set[str] = set()
    for change in sorted(changes, key=lambda c: (c.start, c.end, c.operator, c.replacement)):
        number = source.line(change.start)
        line = source.code.splitlines()[number - 1].strip()
        old = one_line(source.code[change.start : change.end])
        text = f"{old} -> {one_line(change.replacement)}" if change.replacement else old
        result = source.code[: change.start] + change.replacement + source.code[change.end :]
        if result in made or result == source.code:
            continue
        made.add(result)
        place = (line, f"{change.operator}: {text}")
        seen[place] = seen.get(place, 0) + 1
        if seen[place] > 1:
            text += f" (#{seen[place]})"
        faults.append(
            Fault(source.path, number, line, change.operator, text, change.start, change.end,
                  change.replacement)
        )
    return faults
