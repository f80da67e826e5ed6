# SPDX-License-Identifier: MIT
"""The directory of crash logs, which the LXC run makes and binds into the container."""

import os

import pytest

from host import Host
from outputs import entries, lxc

CRASH_LOGS = "/tmp/cradle/crashlogs"
CRASH_ENTRY = f"{CRASH_LOGS} data/vendor/crashlogs none bind,nodev,nosuid,create=dir 0 0"


def crash_logger(host: Host) -> None:
    host.conf("[Features]\nCrashLoggerEnabled=true\n")
    host.directory("/tmp/cradle")


def test_the_crash_log_directory_is_made_and_bound(host: Host) -> None:
    crash_logger(host)
    assert lxc(host) == (0, "", "")
    assert host.path(CRASH_LOGS).is_dir()
    assert host.mode(CRASH_LOGS) == 0o750
    assert host.path(CRASH_LOGS).stat().st_uid == os.geteuid()
    assert CRASH_ENTRY in entries(host)


def test_without_crash_logger_there_is_no_directory(host: Host) -> None:
    crash_logger(host)
    host.conf("[Features]\nCrashLoggerEnabled=TRUE\n")
    assert lxc(host) == (0, "", "")
    assert not host.exists(CRASH_LOGS)
    assert CRASH_ENTRY not in entries(host)


def test_an_existing_crash_log_directory_keeps_its_mode(host: Host) -> None:
    crash_logger(host)
    host.directory(CRASH_LOGS)
    host.path(CRASH_LOGS).chmod(0o700)
    assert lxc(host) == (0, "", "")
    assert host.mode(CRASH_LOGS) == 0o700
    assert CRASH_ENTRY in entries(host)


def test_a_file_in_its_place_counts_as_existing(host: Host) -> None:
    crash_logger(host)
    host.file(CRASH_LOGS)
    assert lxc(host) == (0, "", "")
    assert CRASH_ENTRY in entries(host)


@pytest.mark.parametrize("existing", [False, True])
def test_the_crash_log_directory_belongs_to_the_base_uid_and_its_group(
    host: Host, existing: bool
) -> None:
    crash_logger(host)
    if existing:
        host.directory(CRASH_LOGS)
    passwd = host.read("/etc/passwd") + "container:x:100000:100001::/:/bin/false\n"
    host.file("/etc/passwd", passwd)
    result = lxc(host, "--base-uid", "100000")
    if os.geteuid() == 0:
        assert result == (0, "", "")
        status = host.path(CRASH_LOGS).stat()
        assert (status.st_uid, status.st_gid) == (100000, 100001)
        assert CRASH_ENTRY in entries(host)
    else:
        # Only root may give a directory away.
        assert result == (0, "", f"WARNING: Could not create {CRASH_LOGS}: Invalid argument\n")
        assert CRASH_ENTRY not in entries(host)


def test_a_link_in_its_place_is_not_followed(host: Host) -> None:
    crash_logger(host)
    host.directory("/srv/elsewhere")
    host.link(CRASH_LOGS, "/srv/elsewhere")
    owner = host.path("/srv/elsewhere").stat().st_uid
    host.user("container", 100000, home="/")
    lxc(host, "--base-uid", "100000")
    assert host.path("/srv/elsewhere").stat().st_uid == owner
    if os.geteuid() == 0:
        assert host.path(CRASH_LOGS).lstat().st_uid == 100000
        assert CRASH_ENTRY in entries(host)


@pytest.mark.parametrize("linked", [False, True])
def test_another_users_place_for_it_is_used_as_it_is(host: Host, linked: bool) -> None:
    host.conf("[Features]\nCrashLoggerEnabled=true\n")
    place = "/home/alice/mine" if linked else "/tmp/cradle"
    host.directory(place)
    if linked:
        host.link("/tmp/cradle", place)
    if os.geteuid() == 0:
        os.chown(host.path(place), 1000, 1000)
    owner = host.path(place).stat().st_uid
    assert lxc(host) == (0, "", "")
    assert host.path(place).stat().st_uid == owner
    assert host.mode(f"{place}/crashlogs") == 0o750
    assert CRASH_ENTRY in entries(host)


def test_the_callers_mask_narrows_the_mode_of_the_crash_log_directory(host: Host) -> None:
    crash_logger(host)
    assert host.generate("--type", "lxc", umask=0o077) == (0, "", "")
    assert host.mode(CRASH_LOGS) == 0o700


def test_a_crash_log_directory_that_cannot_be_given_away_is_not_bound(host: Host) -> None:
    crash_logger(host)
    host.path("/tmp/cradle").chmod(0o777)
    host.user("container", 100000, home="/")
    result = host.generate("--type", "lxc", "--base-uid", "100000", powerless=True)
    assert result.status == 0
    assert result.stderr.startswith(f"WARNING: Could not create {CRASH_LOGS}: ")
    assert CRASH_ENTRY not in entries(host)


def test_a_crash_log_directory_that_cannot_be_made_is_warned_about(host: Host) -> None:
    host.conf("[Features]\nCrashLoggerEnabled=true\n")
    host.file("/tmp/cradle")
    assert lxc(host) == (0, "", f"WARNING: Could not create {CRASH_LOGS}: Not a directory\n")
    assert CRASH_ENTRY not in entries(host)
    assert " system/quoll.prop " in entries(host)[-1]


def test_an_unknown_base_uid_has_no_crash_log_directory(host: Host) -> None:
    crash_logger(host)
    warning = f"WARNING: Could not create {CRASH_LOGS}: Success\n"
    assert lxc(host, "--base-uid", "4242") == (0, "", warning)
    assert not host.exists(CRASH_LOGS)
