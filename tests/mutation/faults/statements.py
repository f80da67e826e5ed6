# SPDX-License-Identifier: MIT
"""Faults in the order of things: statements that are missing or change places, arguments and rows
that do, results that are others."""

import re
from typing import Iterator

from fault import Change
from source import Source, Statement

EMPTY_RESULTS = {"{}", '""', "nullptr", "std::nullopt", "0", "false"}
NO_CALLS = {"if", "for", "while", "switch", "return", "sizeof", "alignof", "decltype", "catch"}
SYMMETRIC = {"max", "min", "swap"}


def _all_statements(source: Source) -> Iterator[list[Statement]]:
    for block in source.blocks:
        yield from source.statements(block)


def _is_unused(source: Source, declaration: Statement) -> bool:
    """Whether a declaration is there for what it does alone: a lock, for example."""
    code = source.between(declaration.first, declaration.last)
    name = re.search(r"(\w+)\s*[({=;]", code)
    rest = source.code[source.tokens[declaration.last].end :]
    return name is not None and "[" not in code and not re.search(rf"\b{name[1]}\b", rest)


def remove_statements(source: Source) -> Iterator[Change]:
    for run in _all_statements(source):
        for statement in run:
            kind, code = statement.kind, source.between(statement.first, statement.last)
            if source.text(statement.first) in ("assert", "using", "static_assert"):
                continue
            if re.match(r"(libraryLogger\(\)\.)?(error|warning|debug)\(\) <<", code):
                continue  # the texts of a message have faults of their own
            if kind == "return" and source.text(statement.first + 1) != ";":
                continue
            if kind == "declaration" and not _is_unused(source, statement):
                continue
            first, last = source.tokens[statement.first], source.tokens[statement.last]
            yield Change("removed", first.start, last.end, "")


def swap_statements(source: Source) -> Iterator[Change]:
    """Two calls, one after the other."""
    for run in _all_statements(source):
        for one, other in zip(run, run[1:]):
            codes = [source.between(s.first, s.last) for s in (one, other)]
            if one.kind != "expression" or other.kind != "expression":
                continue
            if all(re.match(r"[\w.>:-]+\(", code) for code in codes) and "assert" not in codes[0]:
                start, end = source.tokens[one.first].start, source.tokens[other.last].end
                yield Change("order", start, end, f"{codes[1]} {codes[0]}")


def swap_arguments(source: Source) -> Iterator[Change]:
    """Neighbours in a call, or in the braces of a value that is made in a function."""
    for i, closing in source.partner.items():
        if closing < i or source.text(i) == "[" or i in source.blocks or not source.in_block(i):
            continue
        before = source.tokens[i - 1]
        called = before.kind == "name" and before.text not in NO_CALLS | SYMMETRIC
        if source.text(i) == "(" and not called and before.text != ">":
            continue
        parts = source.parts(i)
        for (a, b), (c, d) in zip(parts, parts[1:]):
            one, other = source.between(a, b), source.between(c, d)
            if one.startswith(".") or "\n" in one + other or "[&" in one + other:
                continue
            if re.match(r"(const )?[\w:]+[&*]? [&*]?\w+$", one):  # a parameter
                continue
            if one.startswith("&") != other.startswith("&"):
                continue
            start, end = source.tokens[a].start, source.tokens[d].end
            yield Change("order", start, end, f"{other}, {one}")


def swap_rows(source: Source) -> Iterator[Change]:
    """Neighbours in a table whose rows name their fields. Other tables are looked up by a name."""
    for i, closing in source.partner.items():
        if closing < i or source.text(i) != "{":
            continue
        parts = source.parts(i)
        if not all(source.between(a, a + 1) == "{." for a, _ in parts):
            continue
        for (a, b), (c, d) in zip(parts, parts[1:]):
            rows = source.between(a, b), source.between(c, d)
            start, end = source.tokens[a].start, source.tokens[d].end
            yield Change("order", start, end, f"{rows[1]}, {rows[0]}")


def _returns_bool(source: Source, block: int) -> bool:
    """Whether the head of a function says so."""
    first = block - 1
    while first >= 0 and source.text(first) not in (";", "}", "{"):
        closes = source.text(first) in (")", "]")
        first = source.partner[first] - 1 if closes else first - 1
    head = source.code[source.tokens[first + 1].start : source.tokens[block].start]
    return re.match(r"(?:static |constexpr |explicit |public:\s*|private:\s*)*bool ", head) is not None


def _function_of(source: Source, i: int) -> int:
    """The block of the function around a token; that of a condition or a loop is none."""
    around = [j for j in source.blocks if j < i < source.partner[j]]
    for block in sorted(around, reverse=True):
        closing = block - 1
        if source.text(closing) == "]":
            return block
        while source.text(closing) != ")" and closing > 0 and source.text(closing) not in ";{}":
            closing -= 1
        if source.text(closing) == ")":
            head = source.text(source.partner[closing] - 1)
            if head not in ("if", "for", "while", "switch", "constexpr"):
                return block
    return around[0]


def change_results(source: Source) -> Iterator[Change]:
    for run in _all_statements(source):
        for statement in run:
            if statement.kind != "return" or source.text(statement.first + 1) == ";":
                continue
            first, last = source.tokens[statement.first + 1], source.tokens[statement.last - 1]
            code = source.code[first.start : last.end]
            if statement.last == statement.first + 2 and first.kind != "name":
                continue  # a literal has faults of its own
            if code in ("true", "false") or re.fullmatch(r"\w+::\w+", code):
                continue  # so has an enumerator
            if source.text(source.around(statement.first + 1)[1] + 1) == "?":
                continue  # and a choice
            if _returns_bool(source, _function_of(source, statement.first)):
                yield Change("result", first.start, last.end, "true")
                yield Change("result", first.start, last.end, "false")
            elif code not in EMPTY_RESULTS:
                yield Change("result", first.start, last.end, "{}")
