# SPDX-License-Identifier: MIT
"""The systemd unit: its commands, run as they stand, and what systemd's own tools say of it."""

import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

import pytest

from host import Host, Result, setting
from unit_file import CONFIGURATION, UNIT, Unit

SOURCE = Path(__file__).parents[2]
CONF = SOURCE / "conf"
TMPFILES = SOURCE / "system/cradle-generate-config.conf"
GENERATED = "/run/cradle/{}/generated.conf.d/generated.conf"
ALICE = {"ACTIVE": "c1", "ACTIVE_UID": "1000", "SESSIONS": "c1", "UIDS": "1000"}


@pytest.fixture
def installed(host: Host) -> Host:
    """A host with the default configuration at its place and alice at the machine."""
    shutil.copytree(CONF / "cradle.conf.d", host.path(CONFIGURATION))
    host.file("/etc/locale.conf", "LANG=en_US.UTF-8\n")
    host.seat(**ALICE)
    return host


def start(host: Host, unit: Unit) -> list[Result]:
    """Start the unit: make its directories, then run its commands until one fails."""
    for directory in unit.runtime_directories():
        host.directory(directory)
    results = []
    for arguments in unit.commands():
        results.append(host.run(*arguments, env=unit.environment))
        if results[-1].status != 0:
            break
    return results


# --- the commands


def test_the_unit_makes_the_three_files_for_their_owner_alone(installed: Host) -> None:
    journal = installed.journal()
    assert start(installed, Unit("tablet")) == [Result(0)] * 3
    assert journal.messages() == []
    made = [path for path in installed.path("/run/cradle").rglob("*") if path.is_file()]
    names = {str(path.relative_to(installed.path("/run/cradle/tablet"))) for path in made}
    assert names == {"generated.conf.d/generated.conf", "container.lxc", "quoll.prop"}
    assert {path.stat().st_mode & 0o7777 for path in made} == {0o600}


def test_the_files_are_those_of_the_instance_and_of_the_user_at_the_machine(
    installed: Host,
) -> None:
    start(installed, Unit("tablet"))
    facts = ["UserId=1000", "User=alice", "Home=/home/alice", "Instance=tablet", "BaseUid=0"]
    assert installed.read(GENERATED.format("tablet")).splitlines()[-5:] == facts
    assert "ro.quoll.instance=tablet\n" in installed.read("/run/cradle/tablet/quoll.prop")
    assert "lxc.uts.name = cradle-tablet\n" in installed.read("/run/cradle/tablet/container.lxc")


def test_the_container_mounts_the_property_file_that_the_unit_makes(installed: Host) -> None:
    start(installed, Unit("tablet"))
    [path] = re.findall(
        r"^lxc\.mount\.entry = (\S+) system/quoll\.prop ",
        installed.read("/run/cradle/tablet/container.lxc"),
        re.MULTILINE,
    )
    assert installed.exists(path)
    assert "ro.quoll.instance=tablet\n" in installed.read(path)


def test_liblxc_accepts_what_the_unit_makes(installed: Host) -> None:
    start(installed, Unit("tablet"))
    reader = setting("CRADLE_LXC_READER")
    result = installed.run("/run/cradle/tablet/container.lxc", "lxc.uts.name", program=reader)
    assert result == Result(0, "lxc.uts.name = cradle-tablet\n")


def test_the_last_two_runs_read_nothing_but_what_the_first_one_made(installed: Host) -> None:
    for hook in ("mount-hooks", "property-pre-hooks", "property-post-hooks"):
        installed.script(f"{CONFIGURATION}/{hook}/a.sh", f"echo {hook} >>/ran\n")
    assert start(installed, Unit("tablet")) == [Result(0)] * 3
    ran = installed.read("/ran").split()
    assert sorted(ran) == ["mount-hooks", "property-post-hooks", "property-pre-hooks"]
    lines = installed.read("/run/cradle/tablet/container.lxc").splitlines()
    assert lines.count("lxc.mount.entry = tmpfs dev/shm tmpfs nosuid,nodev,create=dir 0 0") == 1


def test_options_of_a_drop_in_are_those_of_the_first_run(installed: Host) -> None:
    installed.conf("[Config]\nHostname=\nHostname=mine\n", "/etc/mine.conf.d/a.conf")
    options = "--config /etc/mine.conf.d --user-id 0 --base-uid 1000"
    assert start(installed, Unit("tablet", CRADLE_OPTIONS=options)) == [Result(0)] * 3
    generated = installed.read(GENERATED.format("tablet"))
    assert "User=root\n" in generated and "BaseUid=1000\n" in generated
    assert "lxc.uts.name = mine\n" in installed.read("/run/cradle/tablet/container.lxc")


def test_a_start_replaces_what_an_earlier_one_made(installed: Host) -> None:
    start(installed, Unit("tablet"))
    installed.conf("[Config]\nHostname=\nHostname=second\n", f"{CONFIGURATION}/99-second.conf")
    assert start(installed, Unit("tablet")) == [Result(0)] * 3
    assert "lxc.uts.name = second\n" in installed.read("/run/cradle/tablet/container.lxc")


def test_instances_do_not_touch_each_other(installed: Host) -> None:
    start(installed, Unit("one"))
    before = installed.read("/run/cradle/one/container.lxc")
    assert start(installed, Unit("my-second")) == [Result(0)] * 3
    assert installed.read("/run/cradle/one/container.lxc") == before
    assert "Instance=my-second\n" in installed.read(GENERATED.format("my-second"))


def test_messages_go_to_the_journal(installed: Host) -> None:
    journal = installed.journal()
    installed.conf("[Config]\nArch=${nope}\n", f"{CONFIGURATION}/99-wrong.conf")
    assert start(installed, Unit("tablet")) == [Result(0)] * 3
    assert [text for _, text in journal.messages()] == ["No such template 'nope'"]


def test_a_failure_ends_the_start(installed: Host) -> None:
    installed.conf("cut off\n", f"{CONFIGURATION}/99-wrong.conf")
    assert [result.status for result in start(installed, Unit("tablet"))] == [1]
    assert not installed.exists("/run/cradle/tablet/container.lxc")


def test_the_unit_waits_longer_than_a_run_waits_for_a_user() -> None:
    header = (SOURCE / "src/generators/seat_user.h").read_text(encoding="utf-8")
    [wait] = re.findall(r"kSeatUserTimeout = (\d+);", header)
    [limit] = Unit("tablet").values("TimeoutStartSec")
    assert int(limit) >= 2 * int(wait)


# --- systemd's own tools


def verify(text: str) -> str:
    """What systemd-analyze has against a unit."""
    with tempfile.TemporaryDirectory(prefix="cgc-unit-") as directory:
        file = Path(directory, UNIT.name)
        file.write_text(text, encoding="utf-8")
        command = ["systemd-analyze", "verify", "--man=no", "--recursive-errors=no", str(file)]
        result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return result.stdout or f"{result.returncode or ''}"


def unit_of_the_build() -> str:
    """The unit, for the program of the build instead of the one that will be installed."""
    text = UNIT.read_text(encoding="utf-8")
    return re.sub(r"^(ExecStart=)\S+", rf"\1{setting('CRADLE_BINARY')}", text, flags=re.MULTILINE)


def test_systemd_has_nothing_against_the_unit() -> None:
    assert verify(unit_of_the_build()) == ""


def test_systemd_would_complain_about_a_wrong_unit() -> None:
    assert "ProtectSytem" in verify(unit_of_the_build().replace("ProtectSystem", "ProtectSytem"))


# --- the parent of the crash logs


def tmpfiles(host: Host, action: str) -> Result:
    """Let systemd-tmpfiles do what the entry says, and a rule that removes old files from /tmp."""
    host.file("/entry.conf", TMPFILES.read_bytes())
    host.file("/ageing.conf", "q /tmp 1777 root root mM:1h\n")
    program = "/usr/bin/systemd-tmpfiles"
    return host.run(action, "/entry.conf", "/ageing.conf", program=program)


def test_the_parent_of_the_crash_logs_is_made_for_root(host: Host) -> None:
    assert tmpfiles(host, "--create") == Result(0)
    assert host.mode("/tmp/cradle") == 0o755
    assert host.path("/tmp/cradle").stat().st_uid == os.geteuid()


def test_the_parent_of_the_crash_logs_is_taken_from_whoever_made_it(host: Host) -> None:
    host.directory("/tmp/cradle")
    host.path("/tmp/cradle").chmod(0o777)
    if os.geteuid() == 0:
        # Only root may give a directory away.
        os.chown(host.path("/tmp/cradle"), 1000, 1000)
    assert tmpfiles(host, "--create") == Result(0)
    assert host.mode("/tmp/cradle") == 0o755
    assert host.path("/tmp/cradle").stat().st_uid == os.geteuid()


def test_crash_logs_do_not_age(host: Host) -> None:
    for file in ("/tmp/cradle/crashlogs/old", "/tmp/old"):
        host.file(file)
        os.utime(host.path(file), (0, 0))
    for directory in ("/tmp/cradle/crashlogs", "/tmp/cradle"):
        os.utime(host.path(directory), (0, 0))
    assert tmpfiles(host, "--clean").status == 0
    assert host.exists("/tmp/cradle/crashlogs/old")
    assert not host.exists("/tmp/old")
