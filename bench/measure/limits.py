# SPDX-License-Identifier: MIT
"""The limits of bench/limits.toml, and what they say of a comparison."""

import fnmatch
import tomllib
from pathlib import Path
from typing import NamedTuple

from measure.site import Failure

LIMITS = Path(__file__).resolve().parents[1] / "limits.toml"


class Limit(NamedTuple):
    figure: str
    quantity: str
    baseline: str
    ratio: float | None = None  # one of these two
    value: float | None = None
    aim: float | None = None

    def belongs_to(self, figure: str, quantity: str, baseline: str) -> bool:
        return (
            quantity == self.quantity
            and fnmatch.fnmatchcase(figure, self.figure)
            and fnmatch.fnmatchcase(baseline, self.baseline)
        )

    def is_held(self, value: float, ratio: float) -> bool:
        return ratio <= self.ratio if self.ratio is not None else value <= self.value


def read_limits() -> list[Limit]:
    limits = []
    try:
        for entry in tomllib.loads(LIMITS.read_text(encoding="utf-8"))["limit"]:
            figures = entry.pop("figure")
            for figure in [figures] if isinstance(figures, str) else figures:
                limits.append(Limit(figure, **entry))
    except (tomllib.TOMLDecodeError, KeyError, TypeError) as error:
        raise Failure(f"{LIMITS}: {error!r}") from error
    for limit in limits:
        if (limit.ratio is None) == (limit.value is None):
            raise Failure(f"{LIMITS}: {limit} needs either a ratio or a value")
    return limits
