# SPDX-License-Identifier: MIT
"""What was measured: samples by subject and quantity."""

import json
import statistics
from pathlib import Path
from typing import Iterable


class Figures:
    """The samples of each quantity ("time") of each subject ("load/1000/GKeyFile")."""

    def __init__(self) -> None:
        self._samples: dict[str, dict[str, list[float]]] = {}

    def add(self, subject: str, quantity: str, samples: Iterable[float]) -> None:
        self._samples.setdefault(subject, {}).setdefault(quantity, []).extend(samples)

    def subtract(self, subject: str, whole: str, part: str) -> None:
        """Add what each quantity of the whole has more than the part's, as a subject of its own."""
        for quantity in self._samples[whole]:
            self.add(subject, quantity, [self.value(whole, quantity) - self.value(part, quantity)])

    def subjects(self, prefix: str) -> list[str]:
        """The subjects whose name begins so, in the order in which they came."""
        return [subject for subject in self._samples if subject.startswith(prefix)]

    def value(self, subject: str, quantity: str) -> float:
        return statistics.median(self._samples[subject][quantity])

    def has(self, subject: str, quantity: str) -> bool:
        return quantity in self._samples.get(subject, {})

    def spread(self, subject: str, quantity: str) -> float:
        """Half of the range in which the middle half of the samples lies, over the median."""
        samples = self._samples[subject][quantity]
        if len(samples) < 2:
            return 0.0
        low, _, high = statistics.quantiles(samples, n=4, method="inclusive")
        return (high - low) / 2 / statistics.median(samples)

    def save(self, path: Path) -> None:
        path.write_text(json.dumps(self._samples, indent=1) + "\n", encoding="utf-8")
