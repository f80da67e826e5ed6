# SPDX-License-Identifier: MIT
"""All faults of the sources."""

from pathlib import Path
from typing import Iterable, Iterator

from fault import Change, Fault, make_faults
from faults import conditions, names, operators, statements, values
from source import Source, read_source

MAKERS = (
    conditions.decide_branches,
    conditions.decide_choices,
    conditions.negate_loops,
    names.change_calls,
    operators.change_binary_operators,
    operators.change_shifts,
    operators.change_steps,
    operators.drop_flags,
    operators.drop_signs,
    statements.change_results,
    statements.remove_statements,
    statements.swap_arguments,
    statements.swap_rows,
    statements.swap_statements,
    values.change_characters,
    values.change_numbers,
    values.change_texts,
    values.change_truths,
    values.drop_message_parts,
)
UNTOUCHED = ("assert", "static_assert")  # what they check is no behaviour
# Sources whose sentences explain the keys, in the manual pages and where a program shows them: a test
# could only repeat them. Their names of keys and words are tested like those of other sources.
PROSE = ("src/generators/key_descriptions.cpp", "src/generators/key_notes.cpp",
         "src/generators/value_kind.cpp")


def sources(root: Path) -> list[str]:
    """The source files of the program."""
    found = (path for path in (root / "src").rglob("*") if path.suffix in (".cpp", ".h"))
    return sorted(str(path.relative_to(root)) for path in found)


def _untouched(source: Source) -> list[range]:
    return [
        range(token.start, source.tokens[source.partner[i + 1]].end)
        for i, token in enumerate(source.tokens)
        if token.text in UNTOUCHED
    ]


def _sentences(source: Source) -> list[range]:
    """The texts that hold a blank or end with a full stop."""
    texts = [token for token in source.tokens if token.kind == "text" and source.path in PROSE]
    return [range(token.start, token.end) for token in texts
            if " " in token.text or token.text.endswith('."')]


def faults_in(source: Source, siblings: names.Siblings) -> list[Fault]:
    left_out = [*_untouched(source), *_sentences(source)]
    makers = (*MAKERS, siblings.change_enumerators, siblings.change_constants)
    changes = (change for make in makers for change in make(source))
    return make_faults(source, [change for change in changes if not _lies_in(left_out, change)])


def _lies_in(stretches: list[range], change: Change) -> bool:
    return any(change.start in stretch for stretch in stretches)


def faults_of(root: Path, paths: Iterable[str]) -> Iterator[Fault]:
    siblings = names.Siblings([(root / path).read_text(encoding="utf-8") for path in sources(root)])
    for path in paths:
        yield from faults_in(read_source(root, path), siblings)
