# SPDX-License-Identifier: MIT
"""Runs with little memory: what does not fit is told, where that is possible, or ends the run."""

from host import Host, generated

LITTLE = "--as=200000000"  # bytes of address space


def test_a_line_that_does_not_fit_into_memory_fails_its_file(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    host.link("/c/20-endless.conf", "/dev/zero")
    command = (LITTLE, host.binary, "--user-id", "1000", "--config", "/c", "/out.conf")
    assert host.run(*command, program="/usr/bin/prlimit") == (
        1,
        "",
        "ERROR: Failed to load config from '/c/20-endless.conf'\n"
        "ERROR: Invalid configuration in /c/20-endless.conf\n",
    )


def test_an_environment_file_that_does_not_fit_into_memory_has_no_value(host: Host) -> None:
    host.conf("[A]\nKey=x${envfile:/dev/zero:LANG}\nLast=1\n")
    command = (LITTLE, host.binary, "--user-id", "1000", "--config", "/c", "/out.conf")
    assert host.run(*command, program="/usr/bin/prlimit") == (0, "", "")
    assert host.read() == generated("\n[A]\nLast=1\n")
