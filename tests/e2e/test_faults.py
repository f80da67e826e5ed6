# SPDX-License-Identifier: MIT
"""Whole runs of which one system call fails: each call of a run, with each error it can meet.

The calls are those of the program itself; a hook that fails is a hook that fails. With

    CRADLE_FAULTS=all ctest --preset release -V -R test_faults

the calls before main fail as well, and all calls with errors that they hardly ever meet; what came
of every kind of fault is listed then. With CRADLE_FAULTS=8 every eighth fault is tried.
"""

from contextlib import nullcontext
from typing import Iterator

import pytest

from fault_rules import complaints, figures
from fault_runs import ENVIRONMENT, inject, rich_hosts
from faults import ERRORS, Call, calls_of, faults_of, sampled, wants_everything
from host import Host, generated

RICH = ("--user-id", "1000", "--base-uid", "1000", "--configs", "/c:/d")
RUNS = {
    "config": RICH,
    "lxc": ("--type", "lxc", *RICH),
    "property": ("--type", "property", *RICH),
    "seat": ("--config", "/s"),
}


@pytest.fixture
def hosts() -> Iterator[list[Host]]:
    yield from rich_hosts()


class Clean:
    """What a run is when nothing fails."""

    def __init__(self, host: Host, arguments: tuple[str, ...]) -> None:
        result = host.run(*arguments, env=ENVIRONMENT, strace=["-y"])
        assert result.status == 0
        self.stderr = result.stderr
        self.output = host.read(arguments[-1])
        self.calls: list[Call] = calls_of(host.trace())


@pytest.mark.parametrize("run", RUNS)
def test_a_run_survives_every_fault(
    hosts: list[Host], run: str, capsys: pytest.CaptureFixture[str]
) -> None:
    arguments = (*RUNS[run], "/o/out")
    clean = Clean(hosts[0], arguments)
    faults = faults_of(clean.calls, wants_everything())
    assert len(faults) > 100
    outcomes = inject(hosts, (hosts[0].binary, *arguments), sampled(faults))
    found = [text for f, outcome in outcomes for text in complaints(f, outcome, clean)]
    with capsys.disabled() if wants_everything() else nullcontext():
        print(f"\n{run}: {figures(outcomes, clean)}")
    assert not found, "\n".join(found)


def test_every_call_that_has_errors_is_made_by_a_run(hosts: list[Host]) -> None:
    runs = [Clean(hosts[0], (*arguments, "/o/out")) for arguments in RUNS.values()]
    assert set(ERRORS) - {call.name for clean in runs for call in clean.calls} == set()


@pytest.mark.parametrize("call", ["dup2", "execve"])
@pytest.mark.parametrize("error", ["EACCES", "EIO", "EMFILE", "ENOMEM"])
def test_a_shell_that_cannot_be_started_is_told(host: Host, call: str, error: str) -> None:
    host.conf("[A]\nKey=${system:echo}\nOther=1\n")
    shell = ["-P", "/bin/sh"] if call == "execve" else []
    options = ["--quiet=attach,path-resolution", "-f", *shell]
    result = host.generate(strace=[*options, "-e", f"inject={call}:error={error}:when=1"])
    # The C library has this word for whatever went wrong there.
    assert result == (0, "", "ERROR: Failed to execute 'echo': Cannot allocate memory\n")
    assert host.read() == generated("\n[A]\nOther=1\n")


@pytest.mark.parametrize("target", ["stderr", "/log"])
def test_commands_inherit_the_standard_descriptors_alone(host: Host, target: str) -> None:
    look = "ls /proc/self/fd >>/seen"
    host.conf(f"[Config]\nKey=${{system:{look}}}\nOther=1\n")
    for kind in ("mount-hooks", "property-pre-hooks", "property-post-hooks"):
        host.script(f"/c/{kind}/a.sh", look + "\n")
    assert host.generate(env={"CRADLE_LOGGING_TARGET": target}) == (0, "", "")
    # The last of them is the directory that ls reads.
    assert host.read("/seen").split() == ["0", "1", "2", "3"] * 4
