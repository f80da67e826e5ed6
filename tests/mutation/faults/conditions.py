# SPDX-License-Identifier: MIT
"""Faults in conditions: decided for good, or negated where that would only end a loop early."""

import re
from typing import Iterator

from fault import Change
from source import Source


def _condition(source: Source, opening: int) -> tuple[int, int, str]:
    """Where the condition in the parentheses begins and ends, and the name that it declares."""
    closing = source.partner[opening]
    semicolon = source.end_of_part(opening + 1, (";", ")"))
    first = semicolon + 1 if semicolon < closing else opening + 1
    start, end = source.tokens[first].start, source.tokens[closing - 1].end
    declared = re.match(r"(?:const )?[\w:<>*& ]+[ *&](\w+) = ", source.code[start:end])
    return start, end, declared[1] if declared else ""


def decide_branches(source: Source) -> Iterator[Change]:
    for i, token in enumerate(source.tokens):
        if token.text == "if" and source.text(i + 1) == "(":
            start, end, declared = _condition(source, i + 1)
            for value in ("true", "false"):
                if declared:
                    yield Change("condition", end, end, f"; {value}")
                else:
                    yield Change("condition", start, end, value)


def negate_loops(source: Source) -> Iterator[Change]:
    for i, token in enumerate(source.tokens):
        if token.text == "while":
            start, end, _ = _condition(source, i + 1)
            yield Change("condition", start, end, f"!({source.code[start:end]})")


def decide_choices(source: Source) -> Iterator[Change]:
    """The condition of `condition ? one : other`."""
    for i, token in enumerate(source.tokens):
        if token.kind != "sign" or token.text != "?":
            continue
        first, _ = source.around(i)
        for value in ("true", "false"):
            yield Change("condition", source.tokens[first].start, source.tokens[i - 1].end, value)
