# SPDX-License-Identifier: MIT
"""The figures that runs are held to, in budgets.txt, which is read and rewritten here."""

from pathlib import Path
from typing import Mapping

FILE = Path(__file__).with_name("budgets.txt")
TOLERANCE = 0.05  # of the instructions


class Budgets:
    """The file: a heading that names the runs, and a row per figure with the reason for it."""

    def __init__(self) -> None:
        lines = FILE.read_text(encoding="utf-8").splitlines()
        self.comments = [line for line in lines if line.startswith("#")]
        heading, *rows = [line for line in lines if line and not line.startswith("#")]
        self.runs = heading.split()[1:-1]
        fields = [row.split(maxsplit=len(self.runs) + 1) for row in rows]
        self.reasons = {name: reason for name, *_, reason in fields}
        self.figures = {name: [*map(int, row)] for name, *row, _ in fields}

    def of(self, run: str) -> dict[str, int]:
        """The figures of a run; none when the heading does not name it."""
        if run not in self.runs:
            return {}
        column = self.runs.index(run)
        return {name: row[column] for name, row in self.figures.items()}

    def refresh(self, run: str, cost: Mapping[str, int]) -> None:
        """Rewrite the figures of a run; one that is new gets the last column, and a figure that is
        new stands without a reason."""
        if run not in self.runs:
            self.runs.append(run)
            for row in self.figures.values():
                row.append(0)
        column = self.runs.index(run)
        for name in self.figures | cost:
            row = self.figures.setdefault(name, [0] * len(self.runs))
            row[column] = cost.get(name, 0)
        rows = [("figure", *self.runs, "reason")]
        rows += [(n, *row, self.reasons.get(n, "?")) for n, row in self.figures.items() if any(row)]
        widths = [max(len(str(cell)) for cell in column) for column in zip(*rows)]
        lines = [*self.comments, ""]
        for name, *cells, reason in rows:
            numbers = (f"{cell:>{width}}" for cell, width in zip(cells, widths[1:]))
            lines.append("  ".join([f"{name:<{widths[0]}}", *numbers, reason]))
        FILE.write_text("\n".join(lines) + "\n", encoding="utf-8")


def deviations(run: str, cost: Mapping[str, int]) -> list[str]:
    """What the file is to say instead, a line per figure, unless the program is to change."""
    budget = Budgets().of(run)
    lines = []
    for name in budget | cost:
        was, now = budget.get(name, 0), cost.get(name, 0)
        if abs(now - was) > was * (TOLERANCE if name == "instructions" else 0):
            change = f"{(now - was) / was:+.1%}" if was else "new"
            lines.append(f"{name} of {run}: the budget is {was}, the run costs {now} ({change})")
    return lines
