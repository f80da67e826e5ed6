"""Whole runs of which one system call fails: each call of a run, with each error it can meet.

The calls are those of the program itself; a hook that fails is a hook that fails. With

    CRADLE_FAULTS=all ctest --preset release -V -R test_faults

the calls before main fail as well, and all calls with errors that they hardly ever meet; what came
of every kind of fault is listed then. With CRADLE_FAULTS=8 every eighth fault is tried.
"""

import json
import os
import shutil
from contextlib import nullcontext
from pathlib import Path
from typing import Any, Iterator

import pytest

from fault_rules import complaints, figures
from faults import Call, Fault, calls_of, faults_of, sampled, wants_everything
from host import Host, Run

DRIVER = Path(__file__).with_name("fault_driver.py")
RICH = ("--user-id", "1000", "--base-uid", "1000", "--configs", "/c:/d")
RUNS = {
    "config": RICH,
    "lxc": ("--type", "lxc", *RICH),
    "property": ("--type", "property", *RICH),
    "seat": ("--config", "/s"),
}
ENVIRONMENT = {"BINDER": "binder"}


def rich(host: Host) -> Host:
    """A small configuration with a bit of everything."""
    host.conf(
        "[Config]\nAppIdManglingType=None\nDataRoot=${HOME}/data\nHostname=of-${USER}\n"
        "StoragePath=${config:Config/DataRoot}/media\nMounts=/srv srv none bind 0 0\n"
        "MountHome=true\nPropertyFilePath=${realpath:/link}\n"
        "[Devices]\nBinderDev=${env:BINDER}\nRequiredDevNodes=nu*\nDevNodes=missing*;/dev/f*\n"
        "[Features]\nCrashLoggerEnabled=true\n"
    )
    host.conf(
        "[Device]\nProductName=${system:echo lynx}\nProductModel=${envfile:/model:MODEL}\n",
        "/d/20-device.conf",
    )
    host.conf("[Device]\nProductBrand=corvid\n[Launchers]\nIconSize=96\n", "/d/30-more.conf")
    host.script("/d/mount-hooks/a.sh", 'echo "/home $2 none bind 0 0"\n')
    host.script("/c/property-pre-hooks/a.sh", 'echo "pre.user=$2"\n')
    host.script("/d/property-post-hooks/a.sh", 'printf "post.one=$4\\npost.two=2"\n')
    host.file("/c/static/a.lxc", "lxc.one = 1\n\nlxc.two = 2")
    host.file("/d/static/a.ro", "ro.three=3\n")
    host.file("/model", "MODEL=five\n")
    host.file("/etc/locale.conf", "LANG=fi_FI.UTF-8\n")
    host.link("/link", "/model")
    host.directory("/tmp/cradle")
    host.conf("[A]\nKey=${USER}\n", "/s/10-base.conf")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000")
    host.path("run/systemd/users").rmdir()  # so that nobody is waited for
    host.directory("/o")
    shutil.copy(DRIVER, host.path("/driver.py"))
    return host


@pytest.fixture
def hosts() -> Iterator[list[Host]]:
    """A host with the same content for each processor."""
    hosts = [Host() for _ in range(os.cpu_count() or 1)]
    for host in hosts:
        host.user("root", 0, home="/root")
        host.user("alice", 1000, home="/home/alice")
    yield [rich(host) for host in hosts]
    for host in hosts:
        host.close()


class Clean:
    """What a run is when nothing fails."""

    def __init__(self, host: Host, arguments: tuple[str, ...]) -> None:
        result = host.run(*arguments, env=ENVIRONMENT, strace=["-y"])
        assert result.status == 0
        self.stderr = result.stderr
        self.output = host.read(arguments[-1])
        self.calls: list[Call] = calls_of(host.trace())


def start(host: Host, arguments: tuple[str, ...], faults: list[Fault]) -> Run:
    task = {
        "command": [host.binary, *arguments],
        "made": "/tmp/cradle/crashlogs",
        "build": str(Path("/") / host.binary.split("/")[1]),
        "faults": [fault.injection() for fault in faults],
    }
    host.file("/faults.json", json.dumps(task))
    return host.start("/driver.py", program="/usr/bin/python3", env=ENVIRONMENT)


def inject(hosts: list[Host], arguments: tuple[str, ...], faults: list[Fault]) -> list[Any]:
    """Makes a run per fault and returns what came of each, in no particular order."""
    shares = [faults[i :: len(hosts)] for i in range(len(hosts))]
    runs = [start(host, arguments, share) for host, share in zip(hosts, shares)]
    outcomes = []
    for host, run, share in zip(hosts, runs, shares):
        assert run.finish(timeout=3600) == (0, "", "")
        outcomes += zip(share, json.loads(host.read("/outcomes.json")))
    return outcomes


@pytest.mark.parametrize("run", RUNS)
def test_a_run_survives_every_fault(
    hosts: list[Host], run: str, capsys: pytest.CaptureFixture[str]
) -> None:
    arguments = (*RUNS[run], "/o/out")
    clean = Clean(hosts[0], arguments)
    faults = faults_of(clean.calls, wants_everything())
    assert len(faults) > 100
    outcomes = inject(hosts, arguments, sampled(faults))
    found = [text for f, outcome in outcomes for text in complaints(f, outcome, clean)]
    with capsys.disabled() if wants_everything() else nullcontext():
        print(f"\n{run}: {figures(outcomes, clean)}")
    assert not found, "\n".join(found)


@pytest.mark.parametrize("target", ["stderr", "/log"])
def test_commands_inherit_the_standard_descriptors_alone(host: Host, target: str) -> None:
    look = "ls /proc/self/fd >>/seen"
    host.conf(f"[Config]\nKey=${{system:{look}}}\nOther=1\n")
    for kind in ("mount-hooks", "property-pre-hooks", "property-post-hooks"):
        host.script(f"/c/{kind}/a.sh", look + "\n")
    assert host.generate(env={"CRADLE_LOGGING_TARGET": target}) == (0, "", "")
    # The last of them is the directory that ls reads.
    assert host.read("/seen").split() == ["0", "1", "2", "3"] * 4
