# SPDX-License-Identifier: MIT
"""Runs at the same time, over the same directories.

Each run evaluates a template whose command waits until all others have come as far. So they really
meet, after they have read their configuration and before they write the rest of their output. Each
is of an instance of its own, so that none can pass for another.
"""

import os
import time
from collections import Counter
from contextlib import contextmanager
from typing import Iterator

import pytest

from host import Host, Result

TYPES = ("config", "lxc", "property")
CRASH_LOGS = "/tmp/cradle/crashlogs"
OWNER = 100000
AT_ONCE = 50
ROUNDS = 10
PATIENCE = 120  # seconds for what takes a few
MEET = ": >/meeting/$NAME; : </gate; echo /run/met/socket\n"


@pytest.fixture
def host(host: Host) -> Host:
    """The host of this file: a bit of everything, with values that are complained about."""
    host.conf(
        "[Config]\nAppIdManglingType=None\nDataRoot=${HOME}/${INSTANCE}\nHostname=${missing}\n"
        "StoragePath=${config:Config/DataRoot}/media\nWaylandSocketPath=${system:/meet.sh}\n"
        "[Device]\nProductBrand=${INSTANCE}\nProductName=${system:/meet.sh}\n"
        "ProductModel=${config:wrong}\n"
        "[Features]\nCrashLoggerEnabled=true\n"
    )
    host.conf("[Config]\nMounts=/srv srv none bind 0 0\n", "/d/20-device.conf")
    host.script("/c/mount-hooks/a.sh", 'echo "/home $2 none bind 0 0"\n')
    host.script("/d/property-pre-hooks/a.sh", 'echo "pre.user=$2"\n')
    host.file("/c/static/a.lxc", "lxc.one = 1\n")
    host.file("/etc/locale.conf", "LANG=fi_FI.UTF-8\n")
    host.script("/meet.sh", MEET)
    host.user("container", OWNER, home="/")
    os.mkfifo(host.path("/gate"))
    for path in ("/meeting", "/out", "/tmp/cradle"):
        host.directory(path)
    return host


def arguments(kind: str, name: str) -> list[str]:
    """Those of a run of a type for an instance."""
    base = OWNER if os.geteuid() == 0 else 0
    options = f"--user-id 1000 --base-uid {base} --configs /c:/d --type {kind} --instance {name}"
    return [*options.split(), f"/out/{name}"]


@contextmanager
def meeting(host: Host, count: int) -> Iterator[None]:
    """Wait until so many runs have met, and let them all go on."""
    deadline = time.monotonic() + PATIENCE
    while len(os.listdir(host.path("/meeting"))) < count:
        assert time.monotonic() < deadline, "they do not meet"
        time.sleep(0.01)
    gate = os.open(host.path("/gate"), os.O_RDWR)
    yield
    os.close(gate)
    for name in host.path("/meeting").iterdir():
        name.unlink()


def together(host: Host, kinds: list[str], names: list[str]) -> list[tuple[Result, str]]:
    """What came of runs at the same time, of a type and an instance each."""
    runs = [
        host.start(*arguments(kind, name), env={"NAME": name}) for kind, name in zip(kinds, names)
    ]
    with meeting(host, len(runs)):
        results = [run.finish(PATIENCE) for run in runs]
    return [(result, host.read(f"/out/{name}")) for result, name in zip(results, names)]


def alone(host: Host) -> dict[str, tuple[Result, str]]:
    """What comes of a run of each type that is alone."""
    single = {kind: together(host, [kind], ["alone"])[0] for kind in TYPES}
    for result, output in single.values():
        assert (result.status, result.stdout) == (0, "")
        assert "ERROR: " in result.stderr
        assert "/run/met" in output
        assert "alone" in output
    return single


def check_together(host: Host, kinds: list[str], single: dict[str, tuple[Result, str]]) -> None:
    """Make the runs, which must be as if each were alone."""
    names = [f"run-{number}-" for number in range(len(kinds))]
    for kind, name, (result, output) in zip(kinds, names, together(host, kinds, names)):
        alone_result, alone_output = single[kind]
        assert result == alone_result
        assert output == alone_output.replace("alone", name)


@pytest.mark.parametrize("kind", TYPES)
def test_many_runs_at_once_are_like_one_alone(host: Host, kind: str) -> None:
    check_together(host, [kind] * AT_ONCE, alone(host))


def test_runs_of_all_types_share_a_crash_log_directory(host: Host) -> None:
    single = alone(host)
    crash_logs = host.path(CRASH_LOGS)
    for _ in range(ROUNDS):
        crash_logs.rmdir()
        check_together(host, [*TYPES] * 3, single)
        assert host.path("/tmp/cradle").stat().st_uid == os.geteuid()
        assert os.listdir(host.path("/tmp/cradle")) == ["crashlogs"]
        assert os.listdir(crash_logs) == []
        assert host.mode(CRASH_LOGS) == 0o750
        if os.geteuid() == 0:
            status = crash_logs.stat()
            assert (status.st_uid, status.st_gid) == (OWNER, OWNER)
    assert f"{CRASH_LOGS} data/vendor/crashlogs " in single["lxc"][1]


def test_the_messages_of_runs_that_share_a_stream_stay_whole(host: Host) -> None:
    many = "".join(f"K{number}=${{missing-{number}}}\n" for number in range(100))
    host.conf(f"[Z]\n{many}", "/d/30-many.conf")
    lines = alone(host)["config"][0].stderr.splitlines()
    assert len(lines) > 100
    command = " ".join((host.binary, *arguments("config", "$NAME")))
    loop = f"for NAME in $(seq {AT_ONCE}); do NAME=$NAME {command} || echo $? & done; wait"
    run = host.start("-c", loop, program="/bin/sh")
    with meeting(host, AT_ONCE):
        status, stdout, stderr = run.finish(PATIENCE)
    assert (status, stdout) == (0, "")
    assert Counter(stderr.splitlines()) == Counter(lines * AT_ONCE)
