# SPDX-License-Identifier: MIT
"""Where a fault can stand beside the right code, so that the program can choose one of the two."""

import re
from dataclasses import dataclass, field

from fault import Fault
from source import ASSIGNMENTS, Source, Token

# What a statement may not begin with to hold a choice.
CONSTANT = re.compile(r"\s*(static |constexpr |consteval |case |using |assert\(|static_assert\()")
OF_THE_COMPILER = {"consteval", "enum", "static", "static_assert", "template", "using"}
SCOPES = {"namespace", "class", "struct", "enum", "union"}
ROWS = re.compile(r"= std::to_array<(\w+)>\(\{$")


@dataclass
class Place:
    """A stretch of code and the faults that replace it."""

    start: int
    end: int
    kind: str  # "expression", "row", "removed", "left", "result" or "order"
    row: str = ""  # the type of a row
    choices: list[tuple[int, str]] = field(default_factory=list)  # number of the fault and code
    inner: list["Place"] = field(default_factory=list)

    def number(self) -> str:
        return str(self.choices[0][0])


def _tokens_within(source: Source, start: int, end: int) -> tuple[int, int]:
    """The first and the last token of a stretch."""
    positions = [i for i, token in enumerate(source.tokens) if token.end > start and token.start < end]
    return positions[0], positions[-1]


def places_of(source: Source, fault: Fault) -> list[Place]:
    """Where a fault can stand beside the right code, if it can: in one place, or in two when rows of
    a table change places."""
    if fault.start == fault.end and fault.operator != "text":
        return []
    first, last = _tokens_within(source, max(fault.start, 0), max(fault.end, fault.start + 1))
    if not _may_choose(source, first):
        return []
    if fault.operator == "order" and (rows := _rows(source, fault, first)):
        return rows
    place = _place_of(source, fault, first, last)
    return [place] if place else []


def _rows(source: Source, fault: Fault, first: int) -> list[Place]:
    """The places of two neighbours in a table whose rows have a type."""
    opening = first - 1
    while opening >= 0 and source.text(opening) != "{":
        opening = source.partner[opening] - 1 if source.text(opening) in (")", "}") else opening - 1
    if opening < 0:
        return []
    match = ROWS.search(source.code[: source.tokens[opening].end])
    if source.text(first) != "{" or match is None:
        return []
    one = (source.tokens[first].start, source.tokens[source.partner[first]].end)
    other = (source.tokens[source.partner[first] + 2].start, fault.end)
    return [Place(*one, "row", match[1]), Place(*other, "row", match[1])]


def _place_of(source: Source, fault: Fault, first: int, last: int) -> Place | None:
    if fault.operator == "removed" and source.text(last) == ";" and source.in_block(first):
        kind = source.kind_of(first, last)
        if kind == "declaration":
            return None
        return Place(fault.start, fault.end, "removed" if kind == "expression" else "left")
    if fault.operator == "result" and fault.replacement == "{}":
        return Place(source.tokens[first - 1].start, source.tokens[last + 1].end, "result")
    if fault.operator == "order" and source.text(last) == ";":
        return Place(fault.start, fault.end, "order")
    if fault.operator == "removed":
        return _statement(source, first)  # a message has no copies
    if source.text(first) in ASSIGNMENTS and (statement := _statement(source, first)):
        return statement  # what is assigned may be a choice
    if fault.operator == "order":
        first = _called(source, first)
    if first < 0:
        return None
    if fault.operator not in ("condition", "result", "constant", "text"):
        first, last = source.around(first)
    code = source.between(first, last)
    if re.search(r"(?<![-<\w ])>", code) and "<" not in code or not code.strip():
        return None
    while fault.operator == "text" and source.text(first - 1).endswith('"'):
        first -= 1  # a longer text
    while fault.operator == "text" and source.text(last + 1).endswith('"'):
        last += 1
    return Place(source.tokens[first].start, source.tokens[last].end, "expression")


def _statement(source: Source, i: int) -> Place | None:
    """The whole statement around a token, unless it declares something."""
    for block in source.blocks:
        for run in source.statements(block):
            for statement in run:
                if statement.first <= i <= statement.last and statement.kind == "expression":
                    first, last = source.tokens[statement.first], source.tokens[statement.last]
                    return Place(first.start, last.end, "order")
    return None


def _called(source: Source, i: int) -> int:
    """What is called with an argument; nothing for what stands in braces."""
    while source.text(i) not in ("(", "{"):
        i = source.partner[i] - 1 if source.text(i) in (")", "}", "]") else i - 1
    return i - 1 if source.text(i) == "(" else -1


def _head(source: Source, i: int) -> range:
    """What stands before a token in its declaration, which is in no function."""
    first = i
    while source.text(first - 1) not in (";", "") and not (
        source.text(first - 1) in "{}" and _ends_scope(source, first - 1)
    ):
        first -= 1
    return range(first, i)


def _ends_scope(source: Source, i: int) -> bool:
    """Whether a brace is one of a namespace, a class, an enumeration or a function."""
    opening = i if source.text(i) == "{" else source.partner[i]
    if opening in source.blocks:
        return True
    for j in range(opening - 1, max(opening - 9, -1), -1):
        if source.text(j) in SCOPES:
            return True
        if source.text(j) in (";", "{", "}", "=", "("):
            return False
    return False


def constants_around(source: Source, start: int) -> list[Token]:
    """The words that make a constant of what is declared there, outside of all functions."""
    first, _ = _tokens_within(source, start, start + 1)
    if source.in_block(first):
        return []
    head = (source.tokens[j] for j in _head(source, first))
    return [token for token in head if token.text == "constexpr"]


def _may_choose(source: Source, i: int) -> bool:
    """Whether the code around a token is run, so that it can choose."""
    if not source.in_block(i):
        head = {source.text(j) for j in _head(source, i)}
        kinds = _types_around(source, i)
        return not head & OF_THE_COMPILER and "enum" not in kinds and not (
            "constexpr" in head and kinds & {"class", "struct"}
        )
    around = [block for block in source.blocks if block < i < source.partner[block]]
    for block in around:
        if "consteval" in _head_of(source, block):
            return False
        for run in source.statements(block):
            for statement in run:
                if statement.first <= i <= statement.last:
                    if CONSTANT.match(source.between(statement.first, statement.last) + " "):
                        return False
    return True


def _types_around(source: Source, i: int) -> set[str]:
    """What kinds of types a token is in."""
    around = [j for j, end in source.partner.items() if j < i < end and source.text(j) == "{"]
    words = {source.text(k) for j in around if _ends_scope(source, j) for k in range(max(j - 8, 0), j)}
    return words & {"class", "enum", "struct"}


def _head_of(source: Source, block: int) -> str:
    """What stands before a block in its paragraph."""
    start = source.tokens[block].start
    return source.code[max(source.code.rfind("\n\n", 0, start), 0) : start]


def at_run_time(source: Source, start: int) -> bool:
    """Whether the compiler may run the code there too."""
    i = next(i for i, token in enumerate(source.tokens) if token.end > start)
    heads = (_head_of(source, block) for block in source.blocks if block < i < source.partner[block])
    return any(re.search(r"\bconstexpr [^;]*$", head) for head in heads)
