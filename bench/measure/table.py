# SPDX-License-Identifier: MIT
"""The table: a row for each comparison, as Markdown that is also legible on a terminal."""

from typing import Sequence

from measure.comparisons import comparisons
from measure.figures import Figures
from measure.limits import LIMITS, Limit
from measure.site import Failure

HEAD = ("Figure", "Quantity", "Value", "±", "Compared with", "Its value", "Ratio", "Limit", "Held")
RIGHT = {"Value", "±", "Its value", "Ratio"}
MISSED = "**missed**"

# What one item of a figure is.
ITEMS = {
    "load": {
        "time": "time per line",
        "instructions": "instructions per line",
        "heap": "heap per key",
        "resident": "resident memory per key",
    },
    "operation": {"time": "time each", "instructions": "instructions each"},
    "write": {"time": "time per line"},
}
BYTES = ("heap", "resident", "peak memory")


COUNT_UNITS = [(1e6, "M"), (1e3, "k"), (1, "")]
BYTE_UNITS = [(1e6, "MB"), (1e3, "kB"), (1, "B")]
TIME_UNITS = [(1, "s"), (1e-3, "ms"), (1e-6, "µs"), (1e-9, "ns")]


def scaled(value: float, units: Sequence[tuple[float, str]]) -> str:
    """Three digits and a unit: the largest that leaves a number of at least 1."""
    factor, unit = next((step for step in units if value >= step[0]), units[-1])
    number = value / factor
    whole = number >= 100 or number == int(number)
    return f"{number:{'.0f' if whole else '#.3g'}} {unit}".rstrip()


def value_text(quantity: str, value: float) -> str:
    if "time" in quantity:
        return scaled(value, TIME_UNITS)
    return scaled(value, BYTE_UNITS if quantity in BYTES else COUNT_UNITS)


def size_text(number: str) -> str:
    return scaled(float(number), COUNT_UNITS)


def subject_text(subject: str) -> str:
    """A subject in words: "load/1000/GKeyFile" is "load 1 k: GKeyFile"."""
    kind, _, rest = subject.partition("/")
    size, _, name = rest.partition("/")
    return f"{kind} {size_text(size)}: {name}" if size.isdigit() else f"{kind}: {rest}"


def quantity_text(subject: str, quantity: str) -> str:
    return ITEMS.get(subject.split("/")[0], {}).get(quantity, quantity)


def limit_text(limit: Limit, quantity: str) -> str:
    if limit.ratio is not None:
        return f"ratio ≤ {limit.ratio:g}" + (f" (aim {limit.aim:g})" if limit.aim else "")
    aim = f" (aim {value_text(quantity, limit.aim)})" if limit.aim else ""
    return f"value ≤ {value_text(quantity, limit.value)}{aim}"


def make_rows(figures: Figures, limits: Sequence[Limit]) -> list[tuple[str, ...]]:
    """The cells of the table. A limit that belongs to none of the rows is an error."""
    rows = []
    unused = set(limits)
    for comparison in comparisons(figures):
        figure, quantity, baseline = comparison
        value, base = figures.value(figure, quantity), figures.value(baseline, quantity)
        limit = next((limit for limit in limits if limit.belongs_to(*comparison)), None)
        unused.discard(limit)
        rows.append((
            subject_text(figure),
            quantity_text(figure, quantity),
            value_text(quantity, value),
            f"{figures.spread(figure, quantity):.0%}" if "time" in quantity else "",
            subject_text(baseline),
            value_text(quantity, base),
            f"{value / base:.2f}",
            limit_text(limit, quantity) if limit else "",
            ("yes" if limit.is_held(value, value / base) else MISSED) if limit else "",
        ))
    if unused:
        raise Failure(f"{LIMITS}: limits that belong to no row: {unused}")
    return rows


def markdown(rows: Sequence[tuple[str, ...]]) -> str:
    widths = [max(map(len, column)) for column in zip(HEAD, *rows)]

    def line(cells: Sequence[str]) -> str:
        padded = (
            cell.rjust(width) if head in RIGHT else cell.ljust(width)
            for head, cell, width in zip(HEAD, cells, widths)
        )
        return f"| {' | '.join(padded)} |"

    rule = ("-" * (w - 1) + ":" if h in RIGHT else "-" * w for h, w in zip(HEAD, widths))
    return "\n".join([line(HEAD), f"| {' | '.join(rule)} |", *map(line, rows)]) + "\n"
