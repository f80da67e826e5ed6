"""What a run has found out, in words."""

from collections import Counter

from fault import Fault
from trial import Verdict

Outcome = tuple[Fault, Verdict]


def entry_of(fault: Fault) -> str:
    """A survivor as an entry of the list, which lacks its reason."""
    path, line, change = fault.key
    return f'[[survivor]]\nfile = "{path}"\nline = {_quoted(line)}\nfault = {_quoted(change)}\nwhy = ""'


def _quoted(text: str) -> str:
    quote = "'" if "'" not in text else "'''"
    return f"{quote}{text}{quote}"


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
