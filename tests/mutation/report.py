# SPDX-License-Identifier: MIT
"""What a run has found out, in words."""

from collections import Counter

from fault import Fault
from survivors import Key
from trial import Verdict

Outcome = tuple[Fault, Verdict]
COLUMNS = ("made", "invalid", "unit", "e2e", "time", "survived", "explained")


def entry_of(fault: Fault) -> str:
    """A survivor as an entry of the list, which lacks its reason."""
    path, line, change = fault.key
    return f'[[survivor]]\nfile = "{path}"\nline = {_quoted(line)}\nfault = {_quoted(change)}\nwhy = ""'


def _quoted(text: str) -> str:
    quote = "'" if "'" not in text else "'''"
    return f"{quote}{text}{quote}"


def table(outcomes: list[Outcome], explained: set[Key]) -> str:
    """The figures of each source."""
    figures: dict[str, Counter[str]] = {}
    for fault, verdict in outcomes:
        kind = "explained" if verdict.kind == "survived" and fault.key in explained else verdict.kind
        for path in (fault.path, "all"):
            figures.setdefault(path, Counter()).update((kind, "made"))
    lines = [" ".join(f"{title:>9}" for title in COLUMNS)]
    for path, counts in sorted(figures.items(), key=lambda row: (row[0] == "all", row[0])):
        lines.append(" ".join(f"{counts[kind]:9}" for kind in COLUMNS) + f"  {path}")
    return "\n".join(lines)


def summary(outcomes: list[Outcome], explained: int) -> str:
    kinds = Counter(verdict.kind for _, verdict in outcomes)
    found = kinds["unit"] + kinds["e2e"] + kinds["time"]
    judged = found + kinds["survived"] - explained
    percentage = 100 * found / judged if judged else 100
    return (
        f"{len(outcomes)} faults made, {kinds['invalid']} did not compile, "
        f"{kinds['unit']} killed by unit tests, {kinds['e2e']} by end-to-end tests, "
        f"{kinds['time']} timed out, {explained} survived and are explained, "
        f"{kinds['survived'] - explained} survived unexplained: "
        f"{percentage:.1f} % of those that can be killed"
    )
