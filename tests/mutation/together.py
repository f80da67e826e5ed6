# SPDX-License-Identifier: MIT
"""The faults of a source side by side in one build, in which a number chooses one.

A faulty expression stands beside the right one, as `(cradleChosen(7) ? (faulty) : (right))`, and a
statement behind a condition; chosen.h has what they ask. Constants of a namespace are made variables
that are filled when the program starts. What the compiler does not take is tried on its own.
"""

import re
from pathlib import Path

from fault import Fault
from places import Place, at_run_time, places_of, constants_around
from source import Source
from toolchain import Trouble

MARK = b"cradle-mutation"  # and a NUL
LIMIT = 16384  # of the faults in a program, as in chosen.h
CHOSEN = Path(__file__).with_name("chosen.h")


class Together:
    """A source with those of its faults, known by their numbers, that can stand side by side."""

    def __init__(self, source: Source, numbers: dict[int, Fault]) -> None:
        self.source, self.numbers = source, numbers
        self.places: dict[int, list[Place]] = {}
        for number, fault in numbers.items():
            if places := places_of(source, fault):
                self.places[number] = places
        self._nest()

    def leave_out(self, numbers: set[int]) -> None:
        for number in numbers:
            self.places.pop(number, None)

    def faults(self) -> dict[int, Fault]:
        """Those that the code holds."""
        return {number: self.numbers[number] for number in self.places}

    def may_hide(self, number: int) -> bool:
        """Whether the fault shows in one of two ways in which its code is run."""
        return at_run_time(self.source, self.numbers[number].start)

    def code(self) -> str:
        outermost = self._nest()
        self.text = self._with_variables()
        return f'#include "{CHOSEN}"\n{self._emit(0, len(self.text), outermost, "none")}'

    def _with_variables(self) -> str:
        """The code in which the constants that hold a choice are none. Every place stays."""
        code = self.source.code
        for place in (places[0] for places in self.places.values()):
            for token in constants_around(self.source, place.start):
                code = code[: token.start] + "const    " + code[token.end :]
        return code

    def _nest(self) -> list[Place]:
        """The places, each in the one around it; those that overlap are left out."""
        merged: dict[tuple[int, int, str], Place] = {}
        for places in self.places.values():
            for place in places:
                place.choices = []
        for number, places in self.places.items():
            for place, faulty in zip(places, self._faulty(number, places)):
                same = merged.setdefault((place.start, place.end, place.kind), place)
                same.choices.append((number, faulty))
        order = {"row": 0, "order": 0, "removed": 1, "left": 1, "result": 2, "expression": 3}
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

    def _faulty(self, number: int, places: list[Place]) -> list[str]:
        fault, code = self.numbers[number], self.source.code
        if len(places) == 2:
            return [code[p.start : p.end] for p in reversed(places)]
        place = places[0]
        return [code[place.start : fault.start] + fault.replacement + code[fault.end : place.end]]

    def _emit(self, start: int, end: int, places: list[Place], around: str) -> str:
        """A stretch of code with its choices. What leads to a choice is labelled as part of it, so
        that what the compiler says about it is put down to it."""
        pieces = []
        for place in places:
            pieces.append(_label(place.number()))
            pieces.append(self.text[start : place.start])
            pieces.append(self._choice(place))
            start = place.end
        return "".join([*pieces, _label(around), self.text[start:end]])

    def _choice(self, place: Place) -> str:
        right = self._emit(place.start, place.end, place.inner, place.number())
        ask = "cradleChosenAtRunTime" if at_run_time(self.source, place.start) else "cradleChosen"
        asked = [(_label(str(number)) + f"{ask}({number})", faulty)
                 for number, faulty in place.choices]
        if place.kind == "removed":
            return f"if (!{asked[0][0]}) {{ {right} }}"
        if place.kind == "left":
            return f"if (!{asked[0][0]}) {right}"
        if place.kind in ("expression", "row"):
            row = place.row
            faulty = "".join(f"{number} ? {row}({code}) : " if not row else f"{number} ? {row}{code} : "
                             for number, code in asked)
            return f"({faulty}{row}{right})" if row else f"({faulty}({right}))"
        return "".join(f"if ({n}) {{ {faulty} }} else " for n, faulty in asked) + f"{{ {right} }}"


def _label(number: str) -> str:
    return f'\n#line 1 "fault-{number}"\n'


def blamed(message: str) -> set[int]:
    """The faults that a compiler complains about. Where it misses a constant, its notes tell what was
    to be one."""
    found: set[int] = set()
    told: set[int] = set()  # by the notes of all errors
    misses_constant = False
    for line in message.splitlines():
        match = re.search(r"(?:\bfault-(\d+):)?[\d: ]*(error|note): ", line)
        if match is None:
            continue
        numbers = {int(number) for number in re.findall(r"\bfault-(\d+):", line)}
        if match[2] == "error":
            misses_constant = "constant" in line
            found |= numbers
        elif misses_constant:
            found |= numbers
        told |= numbers
    return found or told


def choose_faults(program: Path, numbers: set[int]) -> None:
    """Let a built program have these faults and no others."""
    chosen = bytearray(LIMIT)
    for number in numbers:
        chosen[number] = 1
    with program.open("r+b") as file:
        data = file.read()
        place = data.find(MARK + b"\0")
        if place < 0 or data.find(MARK + b"\0", place + 1) >= 0:
            raise Trouble(f"{program}: there is not one place in which faults are chosen")
        file.seek(place + len(MARK) + 1)
        file.write(chosen)
