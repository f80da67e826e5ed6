# SPDX-License-Identifier: MIT
"""Runs of cradle-inspect-config of which one system call fails.

Of each call and error a few are tried; CRADLE_FAULTS means what it does in test_faults.py.
"""

import re
from contextlib import nullcontext
from typing import Any, Iterable, Iterator, NamedTuple

import pytest

from fault_rules import FOREIGN, RETRIED, Promise, ended_by_itself, row_of, traces
from fault_runs import ENVIRONMENT, inject, rich_hosts
from faults import MEMORY, Call, Fault, calls_of, faults_of, sampled, wants_everything
from host import Host
from inspect_cases import inspector

FEW = 3  # faults of a call and an error
FIXED = ("--user-id", "1000", "--configs", "/c:/d", "--color", "never")
RUNS = {
    "check": ("check", *FIXED),
    "diff": ("diff", "/old", *FIXED, "--type", "lxc"),
}
REPORTS = {
    "check": re.compile(r"(?s).*\d+ errors?, \d+ warnings?, \d+ notes?\n"),
    "diff": re.compile(r"(?s)--- /old\n\+\+\+ /old \(new\)\n@@ .*|"),
}

# What check says of a file that it cannot use.
PROMISES = (
    Promise({"openat", "read"}, r"/[cd]/[^/]*\.conf", "{path}: error: It cannot be read: ", {1}),
    Promise({"openat", "read"}, "/[cd]/static/.*", "{path}: error: This fragment cannot be ", {1}),
    Promise({"faccessat2"}, r"/[cd]/.*\.sh", "{path}: error: The shell cannot run this ", {1}),
)
# Whose failures hide something, as they do from a run.
HIDING = {"newfstatat", "getdents64", "readlink", "connect", "socket"}


class Clean(NamedTuple):
    """What a run is when nothing fails."""

    status: int
    stdout: str
    stderr: str
    calls: list[Call]


@pytest.fixture
def hosts() -> Iterator[list[Host]]:
    yield from rich_hosts()


def clean_run(host: Host, arguments: tuple[str, ...]) -> Clean:
    result = host.run(*arguments, program=inspector(), env=ENVIRONMENT, strace=["-y"])
    return Clean(*result, calls_of(host.trace()))


def some_of(faults: list[Fault]) -> list[Fault]:
    """The first, a middle and the last fault of each call and error, unless all are wanted."""
    kinds: dict[tuple[str, str], list[Fault]] = {}
    for fault in faults:
        kinds.setdefault((fault.call.name, fault.error), []).append(fault)
    if wants_everything():
        return faults
    return [
        kind[round(i * (len(kind) - 1) / (FEW - 1))]
        for kind in kinds.values()
        for i in range(FEW)
        if i < len(kind)
    ]


def losses(run: str, fault: Fault, outcome: Any, clean: Clean) -> Iterable[str]:
    """What check knew, and does not tell any more without telling why."""
    call = fault.call
    promise = row_of(PROMISES, call)
    if run != "check" or outcome["status"] == 2:
        return
    if promise:
        message = promise.message.replace("{path}", call.path_like(promise.path))
        if message not in outcome["stdout"] or outcome["status"] not in promise.status:
            yield f"promised is {message!r}"
    known, told = set(clean.stdout.splitlines()), set(outcome["stdout"].splitlines())
    if known - told and not told - known and call.name not in HIDING:
        yield f"not told any more: {sorted(known - told)}"


def complaints(run: str, fault: Fault, outcome: Any, clean: Clean) -> list[str]:
    found = [*traces(outcome)]
    call, status = fault.call, outcome["status"]
    same = (status, outcome["stdout"], outcome["stderr"]) == clean[:3]
    if not outcome["injected"]:
        found.append("the fault was not injected")
    if not ended_by_itself(fault, outcome) and status != 2:
        found.append("the run did not end as it should")
    elif not same and not call.early and call.name not in MEMORY:
        if fault.error == "EINTR" and call.name in RETRIED and not call.is_on(FOREIGN):
            found.append("the interrupted call was not made again")
        elif status == 2 and not outcome["stderr"]:
            found.append("trouble without a word")
        elif status != 2 and not REPORTS[run].fullmatch(outcome["stdout"]):
            found.append(f"half a report: {outcome['stdout']!r}")
        found += losses(run, fault, outcome, clean)
    return [f"{fault}: {text}: status {status}, {outcome['stderr']!r}" for text in found]


@pytest.mark.parametrize("run", RUNS)
def test_a_run_survives_every_fault(
    hosts: list[Host], run: str, capsys: pytest.CaptureFixture[str]
) -> None:
    for host in hosts:
        host.file("/old", "# This is an automatically generated file, do not edit\nold = 1\n")
    clean = clean_run(hosts[0], RUNS[run])
    assert clean.status in (0, 1) and REPORTS[run].fullmatch(clean.stdout)
    faults = some_of(faults_of(clean.calls, wants_everything()))
    assert len(faults) > 50
    outcomes = inject(hosts, (inspector(), *RUNS[run]), sampled(faults))
    found = [text for f, outcome in outcomes for text in complaints(run, f, outcome, clean)]
    with capsys.disabled() if wants_everything() else nullcontext():
        print(f"\n{run}: {len(outcomes)} faults")
    assert not found, "\n".join(found)


def test_a_file_that_cannot_be_read_once_is_told(hosts: list[Host]) -> None:
    clean = clean_run(hosts[0], RUNS["check"])
    conf = re.compile(r"/[cd]/[^/]*\.conf")
    calls = [call for call in clean.calls if call.name in ("openat", "read")]
    faults = [Fault(call, "EIO") for call in calls if call.is_on(conf.pattern)]
    outcomes = inject(hosts, (inspector(), *RUNS["check"]), faults)
    assert len(outcomes) > 5
    assert [f for f, outcome in outcomes if "error: It cannot be read" not in outcome["stdout"]] == []


def test_an_output_of_a_run_that_cannot_be_made_is_trouble(hosts: list[Host]) -> None:
    for host in hosts:
        host.file("/old", "")
    clean = clean_run(hosts[0], RUNS["diff"])
    faults = [
        Fault(call, "EMFILE")
        for call in clean.calls
        if call.name == "openat" and call.is_on(r"/proc/self/fd/\d+")
    ]
    outcomes = inject(hosts, (inspector(), *RUNS["diff"]), faults)
    troubles = [outcome for _, outcome in outcomes if outcome["status"] == 2]
    message = "cradle-inspect-config: there is no room for the output of the run\n"
    assert troubles and all(outcome["stderr"].endswith(message) for outcome in troubles)
