# SPDX-License-Identifier: MIT
"""A plugin of pytest. Of the tests that it has collected it keeps those that are listed in the file
CRADLE_WANTED, in their order, and says in the end which have failed. With CRADLE_REACHED, the file in
which the program notes the faults that it reaches, it lists in the file CRADLE_REACH_LIST for each test
how long it took and what it reached."""

import json
import os
import time
from pathlib import Path
from typing import Any, Iterator

import pytest

failed: list[str] = []


def _one_line(node: str) -> str:
    return node.replace("\n", "\\n")


def pytest_collection_modifyitems(items: list[pytest.Item]) -> None:
    if "CRADLE_WANTED" in os.environ:
        wanted = Path(os.environ["CRADLE_WANTED"]).read_text(encoding="utf-8").split("\n")
        by_name = {_one_line(item.nodeid): item for item in items}
        items[:] = [by_name[name] for name in wanted]


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_protocol(item: pytest.Item) -> Iterator[None]:
    if "CRADLE_REACHED" not in os.environ:
        yield
        return
    reached = Path(os.environ["CRADLE_REACHED"])
    _forget(reached)
    start = time.process_time() + sum(os.times()[2:4])
    yield
    entry = {
        "test": _one_line(item.nodeid),
        "seconds": time.process_time() + sum(os.times()[2:4]) - start,
        "reached": [fault for fault, mark in enumerate(reached.read_bytes()) if mark],
    }
    with Path(os.environ["CRADLE_REACH_LIST"]).open("a", encoding="utf-8") as out:
        out.write(json.dumps(entry) + "\n")


def _forget(reached: Path) -> None:
    with reached.open("r+b") as file:
        file.write(bytes(reached.stat().st_size))


def pytest_runtest_logreport(report: pytest.TestReport) -> None:
    if report.failed:
        failed.append(_one_line(report.nodeid))


def pytest_terminal_summary(terminalreporter: Any) -> None:
    terminalreporter.ensure_newline()
    for name in dict.fromkeys(failed):
        terminalreporter.write_line(f"found by: {name}")
