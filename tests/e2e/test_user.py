# SPDX-License-Identifier: MIT
"""The user of a run: looked up by id, or found on seat0 through the real login library."""

import time
from pathlib import Path
from sysconfig import get_config_var

import pytest

from host import FIND_PROGRAM, SLOWDOWN, Host, generated

LOGIN_LIBRARY = Path(f"/lib/{get_config_var('MULTIARCH')}/libsystemd.so.0")

UNDEFINED = "ERROR: User id must be defined!\n"
NO_SESSIONS = "WARNING: Could not get sessions for seat0\n"
NO_MONITOR = "WARNING: Could not create login monitor\n"


@pytest.fixture
def seat(host: Host) -> Host:
    """A host with configuration, which looks for its user on seat0."""
    host.user("bob", 1001, home="/home/bob")
    host.conf("[A]\nKey=${USER}\n")
    return host


def without_monitor(host: Host) -> None:
    """Let the login monitor fail, so that nobody is waited for."""
    host.path("run/systemd/users").rmdir()


def of_alice() -> str:
    return generated("\n[A]\nKey=alice\n")


def of_bob() -> str:
    return generated("\n[A]\nKey=bob\n", UserId="1001", User="bob", Home="/home/bob")


# --- seat0


def test_the_user_of_the_active_session_is_taken(seat: Host) -> None:
    seat.seat(ACTIVE="c2", ACTIVE_UID="1001", SESSIONS="c1 c2", UIDS="1000 1001")
    result = seat.run("--config", "/c", "--log-level", "debug", "/out.conf")
    assert result == (0, "", "DEBUG: Active session on seat0 found for UID 1001\n")
    assert seat.read() == of_bob()


def test_the_user_of_the_only_session_is_taken_though_it_is_inactive(seat: Host) -> None:
    seat.seat(SESSIONS="c2", UIDS="1001")
    result = seat.run("--config", "/c", "--log-level", "debug", "/out.conf")
    message = "There is only one session on seat0, selecting UID 1001 as active user"
    assert result == (0, "", f"DEBUG: {message}\n")
    assert seat.read() == of_bob()


def test_an_active_root_is_a_user_like_any_other(seat: Host) -> None:
    seat.seat(ACTIVE="c1", ACTIVE_UID="0", SESSIONS="c1", UIDS="0")
    assert seat.run("--config", "/c", "/out.conf") == (0, "", "")
    root = {"UserId": "0", "User": "root", "Home": "/root"}
    assert seat.read() == generated("\n[A]\nKey=root\n", **root)


def test_a_given_user_makes_the_seat_meaningless(seat: Host) -> None:
    seat.seat(ACTIVE="c2", ACTIVE_UID="1001", SESSIONS="c2", UIDS="1001")
    assert seat.generate() == (0, "", "")
    assert seat.read() == of_alice()


def test_nobody_is_waited_for_when_a_user_is_there(seat: Host) -> None:
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    without_monitor(seat)
    result = seat.run("--config", "/c", "/out.conf", strace=["-e", "trace=/inotify"])
    assert result == (0, "", "")
    assert seat.trace() == ["+++ exited with 0 +++"]


# --- logging in during the wait


def test_a_user_who_logs_in_during_the_wait_is_taken(seat: Host) -> None:
    run = seat.start("--config", "/c", "/out.conf")
    run.wait_for_login_monitor()
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    seat.announce_login(1000)
    assert run.finish(timeout=20) == (0, "", NO_SESSIONS)
    assert seat.read() == of_alice()


def test_a_session_that_becomes_active_during_the_wait_is_taken(seat: Host) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    run = seat.start("--config", "/c", "/out.conf")
    run.wait_for_login_monitor()
    seat.seat(ACTIVE="c2", ACTIVE_UID="1001", SESSIONS="c1 c2", UIDS="1000 1001")
    seat.announce_login(1001)
    assert run.finish(timeout=20) == (0, "", "")
    assert seat.read() == of_bob()


def test_a_session_that_is_left_alone_during_the_wait_is_taken(seat: Host) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    run = seat.start("--config", "/c", "/out.conf")
    run.wait_for_login_monitor()
    seat.seat(SESSIONS="c1", UIDS="1000")
    seat.announce_login(1001)
    assert run.finish(timeout=20) == (0, "", "")
    assert seat.read() == of_alice()


def test_a_login_elsewhere_does_not_end_the_wait(seat: Host) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    run = seat.start("--config", "/c", "/out.conf")
    run.wait_for_login_monitor()
    before = run.processor_time()
    seat.announce_login(1002)
    time.sleep(0.5)
    assert run.process.poll() is None
    assert run.processor_time() - before < 0.25
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1 c2", UIDS="1000 1001")
    seat.announce_login(1000)
    assert run.finish(timeout=20) == (0, "", "")
    assert seat.read() == of_alice()


def test_the_login_monitor_is_gone_before_any_hook_runs(seat: Host) -> None:
    seat.script("/c/property-pre-hooks/a.sh", FIND_PROGRAM + "ls -l /proc/$PROGRAM/fd >/seen\n")
    run = seat.start("--config", "/c", "/out.conf")
    run.wait_for_login_monitor()
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    seat.announce_login(1000)
    assert run.finish(timeout=20) == (0, "", NO_SESSIONS)
    assert "/out.conf" in seat.read("/seen")
    assert "inotify" not in seat.read("/seen")


# --- failures


def test_nobody_chooses_between_two_inactive_sessions(seat: Host) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    begin = time.monotonic()
    result = seat.run("--config", "/c", "/out.conf")
    assert 31 <= time.monotonic() - begin < 31 + 5 * SLOWDOWN
    timeout = "WARNING: Could not get sessions for seat0, timeout reached\n"
    assert result == (1, "", timeout + UNDEFINED)
    assert not seat.exists()


@pytest.mark.parametrize(
    "fields",
    [
        {"SESSIONS": "c1 c2", "UIDS": "1000 1001"},
        {"SESSIONS": "", "UIDS": ""},
        {"IS_SEAT0": "1"},
        {"SESSIONS": "c1"},
        {"SESSIONS": "c1 c2"},
        {"SESSIONS": "c1", "UIDS": ""},
        {"UIDS": '" "'},
        {"SESSIONS": "c1 c2", "UIDS": "1000 1001", "ACTIVE": "c1"},
        {"SESSIONS": "c1 c2", "UIDS": "1000 1001", "ACTIVE": "c1", "ACTIVE_UID": "none"},
        {"SESSIONS": "c1 c2", "UIDS": "1000 1001", "ACTIVE": "c1", "ACTIVE_UID": "4294967295"},
    ],
    ids=str,
)
def test_a_seat_without_one_clear_user_gives_none(seat: Host, fields: dict[str, str]) -> None:
    without_monitor(seat)
    seat.seat(**fields)
    seat.file("out.conf", "as it was")
    assert seat.run("--config", "/c", "/out.conf") == (1, "", NO_MONITOR + UNDEFINED)
    assert seat.read() == "as it was"


@pytest.mark.parametrize(
    "fields",
    [
        {"SESSIONS": "c1", "UIDS": "none"},
        {"SESSIONS": "c1", "UIDS": "4294967295"},
        {"SESSIONS": "c1 c2", "UIDS": "1000"},
    ],
    ids=str,
)
def test_a_seat_that_makes_no_sense_has_no_sessions(seat: Host, fields: dict[str, str]) -> None:
    without_monitor(seat)
    seat.seat(**fields)
    result = seat.run("--config", "/c", "/out.conf")
    assert result == (1, "", NO_SESSIONS + NO_MONITOR + UNDEFINED)
    assert not seat.exists()


def test_without_a_seat_and_a_monitor_there_is_no_user(seat: Host) -> None:
    without_monitor(seat)
    result = seat.run("--config", "/c", "/out.conf")
    assert result == (1, "", NO_SESSIONS + NO_MONITOR + UNDEFINED)
    assert not seat.exists()


def test_without_the_login_library_there_is_no_user(seat: Host) -> None:
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    seat.file("/opt/broken/libsystemd.so.0", "no library")
    environment = {"LD_LIBRARY_PATH": "/opt/broken"}
    result = seat.run("--config", "/c", "/out.conf", env=environment)
    assert result == (1, "", NO_SESSIONS + NO_MONITOR + UNDEFINED)
    assert not seat.exists()


@pytest.mark.parametrize(
    "function",
    [
        "sd_seat_get_active",
        "sd_seat_get_sessions",
        "sd_login_monitor_new",
        "sd_login_monitor_unref",
        "sd_login_monitor_flush",
        "sd_login_monitor_get_fd",
        "sd_login_monitor_get_events",
        "sd_login_monitor_get_timeout",
    ],
)
def test_a_login_library_that_lacks_a_function_is_none(seat: Host, function: str) -> None:
    seat.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    environment = seat.library(LOGIN_LIBRARY, without=function)
    result = seat.run("--config", "/c", "/out.conf", env=environment)
    assert result == (1, "", NO_SESSIONS + NO_MONITOR + UNDEFINED)
    assert not seat.exists()


@pytest.mark.parametrize("error", ["EINTR", "EIO", "ENOMEM"])
def test_a_failing_poll_ends_the_wait(seat: Host, error: str) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    failing = ["-e", f"inject=?poll,?ppoll:error={error}"]
    result = seat.run("--config", "/c", "/out.conf", strace=failing)
    assert result == (1, "", "WARNING: Polling login monitor failed!\n" + UNDEFINED)
    assert not seat.exists()


@pytest.mark.parametrize("error", ["EACCES", "EMFILE", "ENOMEM", "ENOSPC"])
@pytest.mark.parametrize("call", ["inotify_init1", "inotify_add_watch"])
def test_logins_that_cannot_be_watched_are_not_waited_for(
    seat: Host, call: str, error: str
) -> None:
    seat.seat(SESSIONS="c1 c2", UIDS="1000 1001")
    failing = ["-e", f"inject={call}:error={error}:when=1"]
    result = seat.run("--config", "/c", "/out.conf", strace=failing)
    assert result == (1, "", NO_MONITOR + UNDEFINED)
    assert not seat.exists()


@pytest.mark.parametrize(
    "given, shown",
    [("1234", "1234"), ("2147483647", "2147483647"), ("-2", "4294967294"), ("12abc", "12")],
)
def test_an_unknown_user_ends_the_run(seat: Host, given: str, shown: str) -> None:
    seat.file("out.conf", "as it was")
    result = seat.run("--user-id", given, "--config", "/c", "/out.conf")
    message = f"ERROR: Failed to get user information for uid {shown}: Success\n"
    assert result == (1, "", message)
    assert seat.read() == "as it was"


def test_an_active_user_who_is_unknown_ends_the_run(seat: Host) -> None:
    seat.seat(ACTIVE="c1", ACTIVE_UID="1234", SESSIONS="c1", UIDS="1234")
    message = "ERROR: Failed to get user information for uid 1234: Success\n"
    assert seat.run("--config", "/c", "/out.conf") == (1, "", message)
    assert not seat.exists()


def test_an_unreadable_user_database_is_told_by_its_error(seat: Host) -> None:
    options = ["-P", "/etc/passwd", "-e", "inject=openat:error=EMFILE"]
    message = "ERROR: Failed to get user information for uid 1000: Too many open files\n"
    assert seat.generate(strace=options) == (1, "", message)
    assert not seat.exists()


@pytest.mark.parametrize("call", ["openat", "read"])
@pytest.mark.parametrize("file", ["/etc/nsswitch.conf", "/etc/passwd"])
def test_the_user_is_found_though_signals_interrupt_the_search(
    host: Host, file: str, call: str
) -> None:
    host.conf("[A]\nKey=${USER}\n")
    first = ["-P", file, "-e", f"inject={call}:error=EINTR:when=1"]
    assert host.generate(strace=first) == (0, "", "")
    assert any("INJECTED" in line for line in host.trace())
    assert host.read() == of_alice()


def test_the_user_is_looked_up_before_any_configuration_is_read(seat: Host) -> None:
    seat.conf("A=${system:touch /read}\n")
    assert seat.run("--user-id", "1234", "--config", "/c", "/out.conf").status == 1
    assert not seat.exists("/read")
