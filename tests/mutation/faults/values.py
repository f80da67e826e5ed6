# SPDX-License-Identifier: MIT
"""Faults in literals: numbers, characters, texts and truth values, and in what a message holds."""

import re
from typing import Iterator

from fault import Change
from source import Source

SUFFIX = re.compile(r"(?:[uU]?[lL]{0,2}|[fF])$")
OTHER = "~"  # stands in no text of this project


def _neighbours(number: int) -> tuple[int, ...]:
    return (number + 1,) if number == 0 else (number - 1, number + 1)


def change_numbers(source: Source) -> Iterator[Change]:
    for token in source.tokens:
        if token.kind != "number":
            continue
        suffix = "" if token.text.startswith("0x") else SUFFIX.search(token.text)[0]  # type: ignore
        digits = token.text.removesuffix(suffix).replace("'", "")
        if token.text.startswith("0x"):
            suffix = "U" if digits.endswith("U") else ""
            digits = digits.rstrip("U")
        if "." in digits:
            yield Change("constant", token.start, token.end, str(float(digits) + 1) + suffix)
            continue
        octal = digits.startswith("0") and digits.isdigit() and len(digits) > 1
        for other in _neighbours(int(digits, 8) if octal else int(digits, 0)):
            text = f"0{other:o}" if octal else hex(other) if digits.startswith("0x") else str(other)
            yield Change("constant", token.start, token.end, text + suffix)


def change_characters(source: Source) -> Iterator[Change]:
    for token in source.tokens:
        if token.kind == "character":
            yield Change("text", token.start, token.end, f"'{OTHER}'")


def _changed_place(text: str) -> int:
    """The position of the letter or digit nearest to the middle; of another character otherwise."""
    escaped = {j for m in re.finditer(r"\\.", text) for j in range(*m.span())}
    places = [i for i in range(len(text)) if i not in escaped]
    letters = [i for i in places if text[i].isalnum()]
    middle = len(text) / 2
    return min(letters or places or [0], key=lambda i: abs(i - middle))


def change_texts(source: Source) -> Iterator[Change]:
    """One character; the empty text gets one."""
    for token in source.tokens:
        if token.kind != "text":
            continue
        opening = token.text.index("(") + 1 if token.text.startswith("R") else 1
        body = token.text[opening : -(len(")\"") if token.text.startswith("R") else 1)]
        place = token.start + opening + (_changed_place(body) if body else 0)
        width = 0 if not body else 2 if source.code[place] == "\\" else 1
        if token.text.startswith("R"):
            width = min(width, 1)
        yield Change("text", place, place + width, OTHER)


def change_truths(source: Source) -> Iterator[Change]:
    for token in source.tokens:
        if token.text in ("true", "false"):
            other = "false" if token.text == "true" else "true"
            yield Change("constant", token.start, token.end, other)


def drop_message_parts(source: Source) -> Iterator[Change]:
    """A part of a message that is no literal; those have faults of their own."""
    for block in source.blocks:
        for run in source.statements(block):
            for statement in run:
                i = statement.first
                while i < statement.last:
                    i = source.end_of_part(i, ("<<", ";"))
                    end = source.end_of_part(i + 1, ("<<", ";")) if i < statement.last else i
                    if end > i and source.tokens[i + 1].kind not in ("text", "character", "number"):
                        start = source.tokens[i].start - 1
                        yield Change("removed", start, source.tokens[end - 1].end, "")
                    i = end
