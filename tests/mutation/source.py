# SPDX-License-Identifier: MIT
"""A C++ source file as tokens, with as much of its structure as making faults in it needs.

This is no parser: it knows brackets, which braces hold statements, and how this project lays out
its code (.clang-format puts blanks around binary operators and none inside template arguments).
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

TOKEN = re.compile(
    r"""
    (?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ ]*\#(?:[^\n]*\\\n)*[^\n]*)
  | (?P<text>R"(?P<delimiter>[^(\s]*)\(.*?\)(?P=delimiter)"|"(?:[^"\\\n]|\\.)*")
  | (?P<character>'(?:[^'\\\n]|\\.)+')
  | (?P<number>\d(?:'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<sign><<=|>>=|<=>|->|\+\+|--|&&|\|\||==|!=|<=|>=|<<|\+=|-=|\*=|/=|%=|&=|\|=|\^=|::|\.\.\.|.)
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

OPENING = {"(": ")", "{": "}", "[": "]"}
BOUNDS = {"(", ",", ";", "{", "=", "return", ":", "?", "<<", "[", "case", "else", "do"}
ASSIGNMENTS = {"+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="}
BOUNDS |= ASSIGNMENTS
ENDS = {")", ",", ";", "}", "]", ":", "?", "<<"}
BLOCK_MARKS = {")", "]", "else", "do", "const", "noexcept", "override", "mutable", "consteval"}
TYPES_AND_SCOPES = {"namespace", "class", "struct", "enum", "union"}
DECLARING = {"auto", "bool", "char", "class", "const", "constexpr", "double", "enum", "extern"}
DECLARING |= {"int", "long", "static", "static_assert", "struct", "template", "typedef"}
DECLARING |= {"unsigned", "using"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self) -> int:
        return self.start + len(self.text)


@dataclass(frozen=True)
class Statement:
    """A simple statement, up to and with its semicolon, as the positions of its tokens."""

    first: int
    last: int
    kind: str  # "declaration", "expression", "return" or "jump"


@dataclass
class Source:
    path: str
    code: str
    tokens: list[Token] = field(default_factory=list)
    partner: dict[int, int] = field(default_factory=dict)  # of each bracket, both ways
    blocks: list[int] = field(default_factory=list)  # the opening braces of statements

    def __post_init__(self) -> None:
        for match in TOKEN.finditer(self.code):
            kind = match.lastgroup if match.lastgroup != "delimiter" else "text"
            assert kind is not None
            if kind != "skip":
                self.tokens.append(Token(kind, match[0], match.start()))
        self._match_brackets()
        self._find_blocks()

    def _match_brackets(self) -> None:
        opened: list[int] = []
        for i, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in OPENING:
                opened.append(i)
            elif token.text in OPENING.values():
                first = opened.pop()
                assert OPENING[self.text(first)] == token.text, f"{self.path}: unbalanced {token}"
                self.partner[first], self.partner[i] = i, first

    def text(self, i: int) -> str:
        """The text of a token; nothing before the first and behind the last one."""
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def between(self, first: int, last: int) -> str:
        """The code from one token up to and with another."""
        return self.code[self.tokens[first].start : self.tokens[last].end]

    def line(self, offset: int) -> int:
        return self.code.count("\n", 0, offset) + 1

    def is_binary(self, i: int) -> bool:
        """Whether an operator stands between blanks."""
        token = self.tokens[i]
        around = self.code[token.start - 1 : token.start] + self.code[token.end : token.end + 1]
        return around[0] in " \n" and around[1] in " \n" and self.text(i - 1) != "operator"

    def _find_blocks(self) -> None:
        around: list[bool] = []  # of the braces that are open, whether they hold statements
        for i, token in enumerate(self.tokens):
            if token.kind == "sign" and token.text == "{":
                around.append(self._opens_block(i, bool(around) and around[-1]))
                if around[-1]:
                    self.blocks.append(i)
            elif token.kind == "sign" and token.text == "}":
                around.pop()

    def _opens_block(self, i: int, inside: bool) -> bool:
        before = self.text(i - 1)
        if before in BLOCK_MARKS:
            return not self._head_names_type(i)
        return inside and before in (";", "}")

    def _head_names_type(self, i: int) -> bool:
        """Whether what leads to a brace is the head of a class: `class A final : B(...) {`."""
        j = i - 1
        while j >= 0 and self.text(j) not in (";", "{", "}"):
            j -= 1
        return self.text(j + 1) in TYPES_AND_SCOPES and self.text(i - 1) != ")"

    def around(self, i: int) -> tuple[int, int]:
        """The first and the last token of the condition, argument or result that `i` is in."""
        first = last = i
        while self.text(first - 1) not in BOUNDS and not self._ends_block(first - 1):
            first = self.partner[first - 1] if self._closes(first - 1) else first - 1
        while self.text(last + 1) not in ENDS:
            last = self.partner[last + 1] if self._opens(last + 1) else last + 1
        return first, last

    def _ends_block(self, i: int) -> bool:
        return self._closes(i) and self.partner[i] in self.blocks

    def _closes(self, i: int) -> bool:
        return self.tokens[i].kind == "sign" and self.text(i) in OPENING.values()

    def in_block(self, i: int) -> bool:
        """Whether a token stands somewhere inside a function."""
        return any(j < i < self.partner[j] for j in self.blocks)

    def end_of_part(self, i: int, closing: tuple[str, ...]) -> int:
        """The first token from `i` on, brackets passed over, that is one of `closing`."""
        while self.text(i) not in closing:
            i = self.partner[i] if self._opens(i) else i
            i += 1
            assert i < len(self.tokens), f"{self.path}: no {closing}"
        return i

    def _opens(self, i: int) -> bool:
        return self.tokens[i].kind == "sign" and self.text(i) in OPENING

    def parts(self, opening: int) -> list[tuple[int, int]]:
        """What stands between the commas in a pair of brackets: first and last tokens."""
        parts = []
        first = opening + 1
        while first < self.partner[opening]:
            end = self.end_of_part(first, (",", self.text(self.partner[opening])))
            if end > first:
                parts.append((first, end - 1))
            first = end + 1
        return parts

    def statements(self, block: int) -> list[list[Statement]]:
        """The simple statements of a block, in runs that nothing else interrupts."""
        runs: list[list[Statement]] = [[]]
        i = block + 1
        while i < self.partner[block]:
            text = self.text(i)
            if text in ("if", "for", "while", "switch"):
                opening = self.end_of_part(i, ("(",)) if self.text(i + 1) != "(" else i + 1
                i = self.partner[opening] + 1
                runs.append([])
            elif text == "{":
                i = self.partner[i] + 1
                runs.append([])
            elif text in ("case", "default"):
                i = self.end_of_part(i, (":",)) + 1
                runs.append([])
            elif text in ("else", "do", ";"):
                i += 1
                runs.append([])
            else:
                last = self.end_of_part(i, (";",))
                runs[-1].append(Statement(i, last, self.kind_of(i, last)))
                i = last + 1
        return [run for run in runs if run]

    def kind_of(self, first: int, last: int) -> str:
        text = self.text(first)
        if text == "return":
            return "return"
        if text in ("break", "continue"):
            return "jump"
        if text in DECLARING:
            return "declaration"
        # A type, and then a name.
        head = self.between(first, last)
        declares = re.match(r"[\w:]+(<[^;()]*?>)?(::\w+)*( const)?[*&]*\s+[*&]*(const )?\w+", head)
        return "declaration" if declares else "expression"


def read_source(root: Path, path: str) -> Source:
    return Source(path, (root / path).read_text(encoding="utf-8"))
