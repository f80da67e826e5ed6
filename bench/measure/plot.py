# SPDX-License-Identifier: MIT
"""The plot: time per line over the number of lines, for every loader, on logarithmic axes."""

import itertools
import math
from typing import Iterable, Sequence

from measure.comparisons import PARSER, load_sizes
from measure.figures import Figures
from measure.table import size_text

WIDTH, HEIGHT = 760, 480
LEFT, RIGHT, TOP, BOTTOM = 80, 150, 56, 64  # of the frame; the names stand right of it
LABEL_GAP = 17

# Of the loaders, in their order; more loaders than colours share them.
PALETTE = ("#c8102e", "#1f5fa8", "#2e8540", "#b8620a", "#6b3fa0", "#666666", "#999999")
STYLE = """
    text { font: 13px sans-serif; fill: #222 }
    .title { font-size: 16px; font-weight: bold }
    .x { text-anchor: middle }
    .y { text-anchor: end }
    .grid { stroke: #ddd; stroke-width: 1 }
    .curve { fill: none; stroke-width: 1.8; stroke-linejoin: round }
    .main { stroke-width: 3.2 }
    .bold { font-weight: bold }
    .lead { fill: none; stroke-width: 0.8 }
"""

Point = tuple[float, float]


class Axis:
    """A logarithmic axis over whole decades, from the position `start` to `end`."""

    def __init__(self, values: Iterable[float], start: float, end: float) -> None:
        logs = [math.log10(value) for value in values]
        self.first, self.last = math.floor(min(logs) + 1e-9), math.ceil(max(logs) - 1e-9)
        self.start, self.end = start, end

    def at(self, value: float) -> float:
        share = (math.log10(value) - self.first) / (self.last - self.first)
        return self.start + share * (self.end - self.start)

    def ticks(self, *steps: int) -> list[float]:
        """The multiples of the powers of ten, up to the last power."""
        powers = [10.0**power for power in range(self.first, self.last + 1)]
        values = [step * power for power in powers for step in steps]
        return [value for value in values if value <= powers[-1]]


def spread_apart(positions: dict[str, float]) -> dict[str, float]:
    """The positions of labels, moved down as far as they would overlap."""
    placed: dict[str, float] = {}
    last = -math.inf
    for name, position in sorted(positions.items(), key=lambda item: item[1]):
        last = placed[name] = max(position, last + LABEL_GAP)
    return placed


def _grid(x: Axis, y: Axis) -> list[str]:
    right, bottom = x.end, y.start
    lines = []
    for value in x.ticks(1):
        at, text = x.at(value), size_text(str(value))
        lines.append(f'<path class="grid" d="M{at:.1f} {y.end}V{bottom}"/>')
        lines.append(f'<text class="x" x="{at:.1f}" y="{bottom + 20}">{text}</text>')
    for value in y.ticks(1, 2, 5):
        at = y.at(value)
        lines.append(f'<path class="grid" d="M{x.start} {at:.1f}H{right}"/>')
        lines.append(f'<text class="y" x="{x.start - 8}" y="{at + 4.5:.1f}">{value:,.0f}</text>')
    return lines


def _curve(
    name: str, colour: str, points: Sequence[Point], label: float, right: float
) -> list[str]:
    main = name == PARSER
    path = "M" + "L".join(f"{px:.1f} {py:.1f}" for px, py in points)
    dots = (f'<circle cx="{px:.1f}" cy="{py:.1f}" r="3.5" fill="{colour}"/>' for px, py in points)
    lead = f"M{right + 6} {points[-1][1]:.1f}L{right + 18} {label:.1f}"
    return [
        f'<path class="curve{" main" if main else ""}" stroke="{colour}" d="{path}"/>',
        *dots,
        f'<path class="lead" stroke="{colour}" d="{lead}"/>',
        f'<text class="{"bold" if main else ""}" style="fill: {colour}" x="{right + 22}"'
        f' y="{label + 4.5:.1f}">{name}</text>',
    ]


def plot(figures: Figures) -> str:
    sizes = load_sizes(figures)
    prefix = f"load/{sizes[0]}/"
    names = [subject.removeprefix(prefix) for subject in figures.subjects(prefix)]
    costs = {
        name: [figures.value(f"load/{size}/{name}", "time") * 1e9 for size in sizes]
        for name in names
    }
    x = Axis(sizes, LEFT, WIDTH - RIGHT)
    y = Axis((cost for row in costs.values() for cost in row), HEIGHT - BOTTOM, TOP)
    labels = spread_apart({name: y.at(row[-1]) for name, row in costs.items()})
    body = _grid(x, y)
    for name, colour in reversed([*zip(names, itertools.cycle(PALETTE))]):
        points = [(x.at(size), y.at(cost)) for size, cost in zip(sizes, costs[name])]
        body += _curve(name, colour, points, labels[name], x.end)
    middle = (x.start + x.end) / 2
    body += [
        f'<text class="title" x="{LEFT}" y="30">Loading a configuration file: ns per line</text>',
        f'<text class="x" x="{middle}" y="{HEIGHT - 18}">lines of the file</text>',
    ]
    size = f'viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}"'
    head = [
        "<title>Time per line over the number of lines</title>",
        f"<style>{STYLE}  </style>",
        '<rect width="100%" height="100%" fill="#fff"/>',
    ]
    lines = "\n  ".join(head + body)
    return f'<svg xmlns="http://www.w3.org/2000/svg" {size}>\n  {lines}\n</svg>\n'
