# SPDX-License-Identifier: MIT
"""docs/performance.md: its measured part, between two marks, and its plot."""

import os
import platform
import re
from datetime import date
from typing import Sequence

from measure.figures import Figures
from measure.plot import plot
from measure.site import RELEASE, ROOT, Failure, run
from measure.table import markdown

DOCUMENT = ROOT / "docs/performance.md"
PLOT = ROOT / "docs/performance.svg"
COMPILER = re.compile(r"^CMAKE_CXX_COMPILER:\w+=(.+)$", re.MULTILINE)
MARKS = re.compile(r"(<!-- measured -->\n).*(<!-- end -->\n)", re.DOTALL)


def _compiler() -> str:
    """The one that built what was measured."""
    found = COMPILER.search((RELEASE / "CMakeCache.txt").read_text(encoding="utf-8"))
    if not found:
        raise Failure(f"{RELEASE} does not name its compiler")
    return found[1]


def machine() -> str:
    """On what was measured, and when."""
    with open("/proc/cpuinfo", encoding="utf-8") as cpuinfo:
        model = next((line.split(": ")[1].strip() for line in cpuinfo if "model name" in line), "?")
    compiler = run([_compiler(), "--version"]).splitlines()[0]
    libc = " ".join(platform.libc_ver())
    return (
        f"Taken on {date.today()}: {model}, {os.cpu_count()} processors, Linux"
        f" {platform.release().split('-')[0]}, {libc}, {compiler}.\n"
    )


def write_document(figures: Figures, rows: Sequence[tuple[str, ...]]) -> None:
    measured = f"\n{machine()}\n{markdown(rows)}\n"
    text = DOCUMENT.read_text(encoding="utf-8")
    text, count = MARKS.subn(lambda marks: marks[1] + measured + marks[2], text)
    if count != 1:
        raise Failure(f"{DOCUMENT} has no place for the table")
    DOCUMENT.write_text(text, encoding="utf-8")
    PLOT.write_text(plot(figures), encoding="utf-8")
