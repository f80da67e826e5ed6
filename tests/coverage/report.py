# SPDX-License-Identifier: MIT
"""Usage: report.py JSON

Shows what the tests leave out of the sources that gcovr has written its JSON about: each line that
never ran or of which a branch was never taken, then the totals. Fails when there is one.
"""

import json
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Any


@dataclass
class Count:
    """How much there is of something, and how much of it the tests reach."""

    total: int = 0
    reached: int = 0

    def add(self, reached: bool) -> None:
        self.total += 1
        self.reached += reached

    def complete(self) -> bool:
        return 0 < self.total == self.reached

    def __str__(self) -> str:
        # Rounded down, so that nothing incomplete shows as 100 %.
        tenths = 1000 * self.reached // max(self.total, 1)
        return f"{tenths // 10}.{tenths % 10} % ({self.reached} of {self.total})"


def missing(line: dict[str, Any]) -> str:
    """What the tests leave out of a line."""
    if line["count"] == 0:
        return "never runs"
    branches = line["branches"]
    untaken = sum(branch["count"] == 0 for branch in branches)
    return f"{untaken} of {len(branches)} branches never taken" if untaken else ""


def main(path: Path) -> int:
    lines, branches = Count(), Count()
    for file in json.loads(path.read_text(encoding="utf-8"))["files"]:
        for line in file["lines"]:
            if line["gcovr/noncode"]:
                continue
            lines.add(line["count"] > 0)
            for branch in line["branches"]:
                branches.add(branch["count"] > 0)
            if what := missing(line):
                print(f"{file['file']}:{line['line_number']}: {what}")
    print(f"lines {lines}, branches {branches}")
    return 0 if lines.complete() and branches.complete() else 1


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))
