"""All faults of a source in one build, of which a number in the built program chooses one.

A faulty expression stands beside the right one, as `(number == 7 ? (faulty) : (right))`, and a
statement behind a condition. What stands where only constants may stand, or does not compile beside
the right code, is tried on its own.
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

from fault import Fault
from source import Source

MARK = b"cradle-mutation"  # and a NUL
HEAD = """
struct CradleFault {{ char mark[16]; int number; }};
inline const volatile CradleFault cradleFault{{"{mark}", 0}};
"""
# What a statement or a declaration may not begin with to hold a choice.
CONSTANT = re.compile(r"\s*(static |constexpr |consteval |case |using |assert\(|static_assert\()")
TABLE = re.compile(r"constexpr (?=(auto|std::array<[^;{]*>) k\w+\s*(=|\{\{)[^;]*\n)")


@dataclass
class Place:
    """A stretch of code and the faults that replace it."""

    start: int
    end: int
    kind: str  # "expression", "removed", "result" or "order"
    choices: list[tuple[int, str]] = field(default_factory=list)  # number of the fault and code
    inner: list["Place"] = field(default_factory=list)

    def number(self) -> str:
        return str(self.choices[0][0])


def _tokens_within(source: Source, start: int, end: int) -> tuple[int, int]:
    """The first and the last token of a stretch."""
    positions = [i for i, token in enumerate(source.tokens) if token.end > start and token.start < end]
    return positions[0], positions[-1]


def place_of(source: Source, fault: Fault) -> Place | None:
    """Where a fault can stand beside the right code, if it can."""
    if fault.start == fault.end and fault.operator != "text":
        return None
    first, last = _tokens_within(source, max(fault.start, 0), max(fault.end, fault.start + 1))
    if not _may_choose(source, first):
        return None
    if fault.operator == "removed" and source.text(last) == ";" and source.in_block(first):
        kind = source.kind_of(first, last)
        if kind == "declaration":
            return None
        return Place(fault.start, fault.end, "removed" if kind == "expression" else "left")
    if fault.operator == "result" and fault.replacement == "{}":
        return Place(source.tokens[first - 1].start, source.tokens[last + 1].end, "result")
    if fault.operator == "order" and source.text(last) == ";":
        return Place(fault.start, fault.end, "order")
    if fault.operator == "order":
        first = _called(source, first)
    if first < 0:
        return None
    if fault.operator not in ("condition", "result", "constant", "text"):
        first, last = source.around(first)
    code = source.between(first, last)
    if re.search(r"(?<![-<\w ])>", code) and "<" not in code or not code.strip():
        return None
    if source.tokens[first].kind == "text" and "text" in (
        source.tokens[first - 1].kind, source.tokens[first + 1].kind
    ):
        return None  # part of a longer text
    return Place(source.tokens[first].start, source.tokens[last].end, "expression")


def _called(source: Source, i: int) -> int:
    """What is called with an argument; nothing for what stands in braces."""
    while source.text(i) not in ("(", "{"):
        i = source.partner[i] - 1 if source.text(i) in (")", "}", "]") else i - 1
    return i - 1 if source.text(i) == "(" else -1


def _may_choose(source: Source, i: int) -> bool:
    """Whether the code around a token is run, so that it can choose."""
    if not source.in_block(i):
        start = source.code.rfind("\n\n", 0, source.tokens[i].start)
        return re.search(r"= std::to_array|> k\w+\{\{", source.code[start : source.tokens[i].start]) is not None
    around = [block for block in source.blocks if block < i < source.partner[block]]
    for block in around:
        head = source.code.rfind("\n\n", 0, source.tokens[block].start)
        if re.search(r"\bconst(expr|eval) [^;]*$", source.code[head : source.tokens[block].start]):
            return False
        for run in source.statements(block):
            for statement in run:
                if statement.first <= i <= statement.last:
                    if CONSTANT.match(source.between(statement.first, statement.last) + " "):
                        return False
    return True


class Together:
    """A source with those of its faults that can stand side by side. Faults are numbered from 1."""

    def __init__(self, source: Source, faults: list[Fault]) -> None:
        self.source = source
        self.numbers = dict(enumerate(faults, 1))
        self.places: dict[int, Place] = {}
        for number, fault in self.numbers.items():
            if place := place_of(source, fault):
                self.places[number] = place

    def leave_out(self, numbers: set[int]) -> None:
        for number in numbers:
            self.places.pop(number, None)

    def faults(self) -> dict[int, Fault]:
        """Those that the code holds."""
        return {number: self.numbers[number] for number in self.places}

    def code(self) -> str:
        outermost = self._nest()
        body = self._emit(0, len(self.source.code), outermost, "none")
        head = HEAD.format(mark=MARK.decode())
        return TABLE.sub("const ", f"#pragma once\n{head}\n{body}")

    def _nest(self) -> list[Place]:
        """The places, each in the one around it; those that overlap are left out."""
        merged: dict[tuple[int, int, str], Place] = {}
        for place in self.places.values():
            place.choices = []
        for number, place in self.places.items():
            fault = self.numbers[number]
            same = merged.setdefault((place.start, place.end, place.kind), place)
            code = self.source.code
            faulty = code[place.start : fault.start] + fault.replacement + code[fault.end : place.end]
            same.choices.append((number, faulty))
        order = {"order": 0, "removed": 1, "left": 1, "result": 2, "expression": 3}
        outermost: list[Place] = []
        around: list[Place] = []
        for place in sorted(merged.values(), key=lambda p: (p.start, -p.end, order[p.kind])):
            place.inner = []
            while around and around[-1].end <= place.start:
                around.pop()
            if around and place.end > around[-1].end:
                self.leave_out({number for number, _ in place.choices})
                continue
            (around[-1].inner if around else outermost).append(place)
            around.append(place)
        return outermost

    def _emit(self, start: int, end: int, places: list[Place], around: str) -> str:
        """A stretch of code with its choices. What leads to a choice is labelled as part of it, so
        that what the compiler says about it is put down to it."""
        pieces = []
        for place in places:
            pieces.append(_label(place.number()))
            pieces.append(self.source.code[start : place.start])
            pieces.append(self._choice(place))
            start = place.end
        return "".join([*pieces, _label(around), self.source.code[start:end]])

    def _choice(self, place: Place) -> str:
        right = self._emit(place.start, place.end, place.inner, place.number())
        asked = [(_label(str(number)) + f"(cradleFault.number == {number})", faulty)
                 for number, faulty in place.choices]
        if place.kind == "removed":
            return f"if (!{asked[0][0]}) {{ {right} }}"
        if place.kind == "left":
            return f"if (!{asked[0][0]}) {right}"
        if place.kind == "expression":
            return "(" + "".join(f"{number} ? ({faulty}) : " for number, faulty in asked) + f"({right}))"
        return "".join(f"if ({n}) {{ {faulty} }} else " for n, faulty in asked) + f"{{ {right} }}"


def _label(number: str) -> str:
    return f'\n#line 1 "fault-{number}"\n'


def named_in(message: str) -> set[int]:
    """The faults that a compiler complains about."""
    return {int(number) for number in re.findall(r"\bfault-(\d+):", message)}


def choose_fault(program: Path, number: int) -> None:
    """Let a built program have this fault, or none for 0."""
    with program.open("r+b") as file:
        data = file.read()
        place = data.find(MARK + b"\0")
        while place >= 0:
            file.seek(place + 16)
            file.write(number.to_bytes(4, "little"))
            place = data.find(MARK + b"\0", place + 16)
