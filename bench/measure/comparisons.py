# SPDX-License-Identifier: MIT
"""Which figures are compared with which: the rows of the table, in their order."""

from typing import Iterator, NamedTuple

from measure.figures import Figures

RUN_QUANTITIES = ("time", "instructions", "system calls", "peak memory")
LOAD_QUANTITIES = ("time", "instructions", "heap", "resident")
PARSER = "ConfigParser"


class Comparison(NamedTuple):
    figure: str
    quantity: str
    baseline: str


def _runs(figures: Figures) -> Iterator[Comparison]:
    empty = "empty/iostream"
    for quantity in RUN_QUANTITIES:
        for prefix in ("run/", "shell/", "empty/"):
            for subject in figures.subjects(prefix):
                if subject != empty:
                    yield Comparison(subject, quantity, empty)
        yield Comparison("added/user of seat0", quantity, "added/libsystemd")


def load_sizes(figures: Figures) -> list[int]:
    return sorted({int(subject.split("/")[1]) for subject in figures.subjects("load/")})


def _loading(figures: Figures) -> Iterator[Comparison]:
    sizes = load_sizes(figures)
    for quantity in LOAD_QUANTITIES:
        # Memory for each key is the same at all sizes but the small ones, where pages are coarse.
        for size in sizes if quantity in ("time", "instructions") else sizes[-1:]:
            subject = f"load/{size}/{PARSER}"
            for peer in figures.subjects(f"load/{size}/"):
                is_floor = figures.value(peer, "heap") == 0
                if peer == subject or (is_floor and quantity in ("heap", "resident")):
                    continue
                if figures.has(peer, quantity):
                    yield Comparison(subject, quantity, peer)
    for small, large in zip(sizes[-2:], sizes[-1:]):
        yield Comparison(f"load/{large}/{PARSER}", "whole time", f"load/{small}/{PARSER}")


def _operations(figures: Figures) -> Iterator[Comparison]:
    small, large = sorted({int(s.split("/")[1]) for s in figures.subjects("operation/")})
    for quantity in ("time", "instructions"):
        for subject in figures.subjects(f"operation/{large}/"):
            yield Comparison(subject, quantity, subject.replace(f"/{large}/", f"/{small}/"))


def _against_the_first(figures: Figures, prefix: str) -> Iterator[Comparison]:
    first, *others = figures.subjects(prefix)
    for other in others:
        yield Comparison(first, "time", other)


def comparisons(figures: Figures) -> list[Comparison]:
    found = [*_runs(figures), *_loading(figures), *_operations(figures)]
    for prefix in ("write/", "whole/", "hooks/"):
        found += _against_the_first(figures, prefix)
    return found
