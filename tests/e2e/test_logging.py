# SPDX-License-Identifier: MIT
"""The log: its levels, its targets and the environment that chooses them."""

import pytest

from host import Host, generated

IDENTITY = "com.corvid.cradle.lib.ConfigParser"
MIXED = "[A]\nDebug=${env:UNSET}\nError=${nowhere}\nWarning=${system:exit 1}\nKept=1\n"
# What a run on the configuration above has to say, in its order.
LINES = [
    "DEBUG: Failed to read 'UNSET' from environment variables for template 'env:UNSET'\n",
    "ERROR: No such template 'nowhere'\n",
    "WARNING: exit 1 exited with non-zero status: \x01\n",
    "DEBUG: Failed to resolve 'exit 1' from system for template 'system:exit 1'\n",
]
WARNINGS = LINES[1] + LINES[2]
LOG = {
    "nothing": "",
    "errors": LINES[1],
    "warnings": WARNINGS,
    "everything": "".join(LINES),
}


@pytest.fixture
def mixed(host: Host) -> Host:
    """A host whose configuration causes one error, one warning and two debug messages."""
    host.conf(MIXED)
    return host


# --- levels


@pytest.mark.parametrize(
    "level, passed",
    [
        ("critical", "nothing"),
        ("0", "nothing"),
        ("error", "errors"),
        ("1", "errors"),
        ("warning", "warnings"),
        ("2", "warnings"),
        ("info", "warnings"),
        ("3", "warnings"),
        ("debug", "everything"),
        ("4", "everything"),
        ("Debug", "everything"),
        ("DEBUG", "everything"),
        ("0x4", "everything"),
        (" 4", "everything"),
        ("", "warnings"),
    ],
)
def test_a_level_lets_pass_what_is_at_least_as_severe(mixed: Host, level: str, passed: str) -> None:
    assert mixed.generate("--log-level", level) == (0, "", LOG[passed])
    assert mixed.read() == generated("\n[A]\nKept=1\n")


def test_warnings_and_errors_are_logged_by_default(mixed: Host) -> None:
    assert mixed.generate() == (0, "", WARNINGS)


@pytest.mark.parametrize(
    "setting, passed",
    [
        (f"{IDENTITY}=debug", "everything"),
        (f"{IDENTITY}=4", "everything"),
        (f"{IDENTITY}=Error", "errors"),
        (f"a.b=info;{IDENTITY}=debug", "everything"),
        (f";;{IDENTITY}=debug;", "everything"),
        (f"{IDENTITY}=error;{IDENTITY}=debug", "errors"),
        (f"{IDENTITY}=;{IDENTITY}=debug", "warnings"),
        (f"{IDENTITY}=", "warnings"),
        (f"{IDENTITY}", "warnings"),
        ("a.b=debug", "warnings"),
        (f"{IDENTITY}.more=debug", "warnings"),
        (f"a.{IDENTITY}=debug", "warnings"),
        (f" {IDENTITY}=debug", "warnings"),
        (f"{IDENTITY.lower()}=debug", "warnings"),
        ("=debug", "warnings"),
        ("debug", "warnings"),
        ("", "warnings"),
    ],
)
def test_the_environment_sets_the_level_of_the_logger_that_it_names(
    mixed: Host, setting: str, passed: str
) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING": setting}) == (0, "", LOG[passed])


def test_the_command_line_overrides_the_environment(mixed: Host) -> None:
    environment = {"CRADLE_LOGGING": f"{IDENTITY}=debug"}
    assert mixed.generate("--log-level", "error", env=environment) == (0, "", LOG["errors"])


# --- targets


@pytest.mark.parametrize("target", ["stdout", "STDOUT", "StdOut"])
def test_standard_output_takes_the_log(mixed: Host, target: str) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": target}) == (0, WARNINGS, "")


@pytest.mark.parametrize("target", ["stderr", "Stderr", ""])
def test_standard_error_takes_the_log(mixed: Host, target: str) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": target}) == (0, "", WARNINGS)


@pytest.mark.parametrize("target", ["systemd", "SystemD"])
def test_the_journal_takes_the_text_with_a_priority(mixed: Host, target: str) -> None:
    journal = mixed.journal()
    environment = {"CRADLE_LOGGING_TARGET": target, "CRADLE_LOGGING": f"{IDENTITY}=debug"}
    assert mixed.generate(env=environment) == (0, "", "")
    texts = [line.split(": ", 1)[1].removesuffix("\n") for line in LINES]
    assert journal.messages() == list(zip([7, 3, 4, 7], texts))


def test_the_journal_takes_the_text_as_it_stands(host: Host) -> None:
    journal = host.journal()
    options = ("--user-id", "1000", "--config", "/%s%n\nsecond line")
    environment = {"CRADLE_LOGGING_TARGET": "systemd"}
    assert host.run(*options, "/out.conf", env=environment) == (1, "", "")
    assert journal.messages() == [(3, "No configuration to read in /%s%n\nsecond line")]


def test_without_a_journal_its_messages_are_lost(mixed: Host) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": "systemd"}) == (0, "", "")
    assert mixed.read() == generated("\n[A]\nKept=1\n")


def test_without_the_library_of_the_journal_its_messages_are_lost(mixed: Host) -> None:
    journal = mixed.journal()
    mixed.file("/opt/broken/libsystemd.so.0", "no library")
    environment = {"CRADLE_LOGGING_TARGET": "systemd", "LD_LIBRARY_PATH": "/opt/broken"}
    assert mixed.generate(env=environment) == (0, "", "")
    assert journal.messages() == []
    assert mixed.read() == generated("\n[A]\nKept=1\n")


def test_a_file_takes_the_log(mixed: Host) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": "/tmp/log"}) == (0, "", "")
    assert mixed.read("/tmp/log") == WARNINGS


def test_a_line_is_in_the_file_as_soon_as_it_is_logged(host: Host) -> None:
    host.conf("A=${nowhere}\nB=${system:cp /tmp/log /so-far}\n")
    assert host.generate(env={"CRADLE_LOGGING_TARGET": "/tmp/log"}) == (0, "", "")
    assert host.read("/so-far") == "ERROR: No such template 'nowhere'\n"


def test_the_path_of_a_log_file_is_lower_cased(mixed: Host) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": "/TMP/My.LOG"}) == (0, "", "")
    assert mixed.read("/tmp/my.log") == WARNINGS
    assert not mixed.exists("/tmp/My.LOG")


def test_an_existing_log_file_is_truncated(mixed: Host) -> None:
    mixed.file("/tmp/log", "old " * 1000)
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": "/tmp/log"}) == (0, "", "")
    assert mixed.read("/tmp/log") == WARNINGS


def test_a_log_file_is_made_even_when_there_is_nothing_to_log(host: Host) -> None:
    host.conf("A=1\n")
    assert host.generate(env={"CRADLE_LOGGING_TARGET": "/tmp/log"}) == (0, "", "")
    assert host.read("/tmp/log") == ""


def test_the_log_is_set_up_before_the_arguments_are_looked_at(host: Host) -> None:
    status, _, stderr = host.run(env={"CRADLE_LOGGING_TARGET": "/tmp/log"})
    assert (status, stderr) == (1, "Needs at least one argument!\n")
    assert host.read("/tmp/log") == ""


def test_messages_of_the_command_line_do_not_go_through_the_log(host: Host) -> None:
    environment = {"CRADLE_LOGGING_TARGET": "/tmp/log"}
    assert host.run("--bogus", env=environment) == (1, "", "--bogus: unknown argument\n")
    assert host.read("/tmp/log") == ""


# --- failures


@pytest.mark.parametrize(
    "level", ["5", "-1", "loud", "4 ", "debug ", "0X4", "1.0", "warn", " ", "99999999999", "0x"]
)
def test_an_invalid_level_on_the_command_line_ends_the_run(mixed: Host, level: str) -> None:
    status, _, log = mixed.generate("--log-level", level)
    assert (status, log) == (1, f"ERROR: Invalid logging level '{level}'\n")
    assert not mixed.exists()


@pytest.mark.parametrize("level", ["5", "-1", "loud", "4 ", "=debug"])
def test_an_invalid_level_in_the_environment_changes_nothing(mixed: Host, level: str) -> None:
    result = mixed.generate(env={"CRADLE_LOGGING": f"{IDENTITY}={level}"})
    assert result == (0, "", f"ERROR: Invalid logging level '{level}'\n" + WARNINGS)


@pytest.mark.parametrize(
    "target", ["syslog", "log/File.txt", "./log", "/Nowhere/log", "/tmp", " stdout", "file"]
)
def test_an_invalid_target_leaves_the_log_on_standard_error(mixed: Host, target: str) -> None:
    result = mixed.generate(env={"CRADLE_LOGGING_TARGET": target})
    assert result == (0, "", f"ERROR: Invalid logging target '{target}'\n" + WARNINGS)


def test_an_invalid_level_is_reported_before_the_target_changes(mixed: Host) -> None:
    environment = {"CRADLE_LOGGING": f"{IDENTITY}=loud", "CRADLE_LOGGING_TARGET": "/tmp/log"}
    assert mixed.generate(env=environment) == (0, "", "ERROR: Invalid logging level 'loud'\n")
    assert mixed.read("/tmp/log") == WARNINGS


def test_a_rejected_level_of_the_command_line_goes_to_the_target(mixed: Host) -> None:
    environment = {"CRADLE_LOGGING_TARGET": "/tmp/log"}
    status, _, log = mixed.generate("--log-level", "loud", env=environment)
    assert (status, log) == (1, "")
    assert mixed.read("/tmp/log") == "ERROR: Invalid logging level 'loud'\n"


def test_a_full_disk_under_the_log_changes_nothing_else(mixed: Host) -> None:
    assert mixed.generate(env={"CRADLE_LOGGING_TARGET": "/dev/full"}) == (0, "", "")
    assert mixed.read() == generated("\n[A]\nKept=1\n")
