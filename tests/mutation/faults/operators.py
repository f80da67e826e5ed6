# SPDX-License-Identifier: MIT
"""Faults in operators: comparisons, logic, arithmetic and bits."""

from typing import Iterator

from fault import Change
from source import Source

BINARY = {
    "==": ("!=",),
    "!=": ("==",),
    "<": ("<=",),
    "<=": ("<",),
    ">": (">=",),
    ">=": (">",),
    "&&": ("||",),
    "||": ("&&",),
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "&": ("|",),
    "^": ("|",),
    "+=": ("=",),
    "-=": ("+=",),
    "*=": ("/=",),
}
# Those of which another fault decides the whole condition or result for good, both ways.
DECIDED = ("==", "!=")
OF_TEXTS = ("text", "character")
KIND = dict.fromkeys(("==", "!=", "<", "<=", ">", ">="), "comparison")
KIND |= dict.fromkeys(("&&", "||"), "logic")
STEPS = {"++": "--", "--": "++"}


def _is_whole_condition(source: Source, i: int) -> bool:
    """Whether nothing but one operation, at `i`, stands in a condition or a result."""
    first, last = source.around(i)
    if any(source.text(j) in ("&&", "||") for j in range(first, last + 1)):
        return False
    begins = source.text(first - 1) == "return" or source.text(first - 2) in ("if", "while")
    return (begins and source.text(last + 1) in (")", ";")) or source.text(last + 1) == "?"


def _joins_texts(source: Source, i: int) -> bool:
    return any(source.tokens[j].kind in OF_TEXTS for j in (i - 1, i + 1))


def change_binary_operators(source: Source) -> Iterator[Change]:
    for i, token in enumerate(source.tokens):
        if token.kind != "sign" or token.text not in BINARY or not source.is_binary(i):
            continue
        if source.text(i - 1) == "template" or (token.text == "+" and _joins_texts(source, i)):
            continue
        if token.text in DECIDED and _is_whole_condition(source, i):
            continue
        for other in BINARY[token.text]:
            kind = KIND.get(token.text, "arithmetic")
            yield Change(kind, token.start, token.end, other)


def change_shifts(source: Source) -> Iterator[Change]:
    """Of numbers: what stands behind a shift is a number or a constant, and no text."""
    for i, token in enumerate(source.tokens):
        ahead = source.tokens[i + 1] if i + 1 < len(source.tokens) else token
        shifted = ahead.kind == "number" or ahead.text.startswith("k")
        if token.text == "<<" and source.is_binary(i) and shifted:
            yield Change("arithmetic", token.start, token.end, ">>")
        elif token.text == ">" and source.text(i + 1) == ">" and source.tokens[i + 2].kind == "number":
            yield Change("arithmetic", token.start, token.end + 1, "<<")


def change_steps(source: Source) -> Iterator[Change]:
    for i, token in enumerate(source.tokens):
        if token.kind == "sign" and token.text in STEPS and source.text(i - 1) != "operator":
            yield Change("arithmetic", token.start, token.end, STEPS[token.text])


def drop_signs(source: Source) -> Iterator[Change]:
    """A "!" or a minus that stands before its operand."""
    for i, token in enumerate(source.tokens):
        if token.kind != "sign" or source.text(i - 1) == "operator":
            continue
        if token.text == "!" and not _is_whole_condition(source, i):
            yield Change("negation", token.start, token.end, "")
        if token.text == "-" and not source.is_binary(i) and source.tokens[i + 1].kind == "name":
            yield Change("negation", token.start, token.end, "")


def drop_flags(source: Source) -> Iterator[Change]:
    """One of the flags that are joined by "|"."""
    for i, token in enumerate(source.tokens):
        if token.text == "|" and source.is_binary(i):
            yield Change("flag", token.start - 1, source.tokens[i + 1].end, "")
            if source.text(i - 2) != "|":
                yield Change("flag", source.tokens[i - 1].start, source.tokens[i + 1].start, "")
