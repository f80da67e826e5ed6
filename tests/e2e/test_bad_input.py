# SPDX-License-Identifier: MIT
"""Input of a size, a content or a kind that nobody expects: no crash, no hang, a clear status.

Every run has a time limit.
"""

from typing import Any

import pytest

from host import Host, Result, decode, generated

LIMIT = 30.0
MEGABYTE = 1_000_000
BASE = "/c/10-base.conf"
FAILED = (
    f"ERROR: Failed to load config from '{BASE}'\nERROR: Invalid configuration in {BASE}\n"
)


def generate(host: Host, *arguments: str, **options: Any) -> Result:
    return host.generate(*arguments, timeout=LIMIT, **options)


def same(text: str, expected: str) -> bool:
    """Whether long texts are equal, kept out of the assertion that would print them."""
    return text == expected


# --- size


@pytest.mark.parametrize("size", [10 * MEGABYTE, 100 * MEGABYTE])
def test_a_huge_value_is_copied_whole(host: Host, size: int) -> None:
    value = "0123456789" * (size // 10)
    host.conf(f"[A]\nKey={value}\n")
    assert generate(host) == (0, "", "")
    assert same(host.read(), generated(f"\n[A]\nKey={value}\n"))


def test_a_huge_value_may_be_referred_to(host: Host) -> None:
    value = "0123456789" * MEGABYTE
    host.conf(f"[A]\nKey=<${{config:A/X}}>\nX={value}\n")
    assert generate(host) == (0, "", "")
    assert same(host.read(), generated(f"\n[A]\nKey=<{value}>\nX={value}\n"))


def test_a_huge_comment_is_ignored(host: Host) -> None:
    host.conf("#" * (100 * MEGABYTE) + "\n[A]\nKey=1\n")
    assert generate(host) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n")


def test_a_huge_bad_line_is_reported_whole(host: Host) -> None:
    line = "x" * (100 * MEGABYTE)
    host.conf(line + "\n")
    status, stdout, stderr = generate(host)
    assert (status, stdout) == (1, "")
    message = f"ERROR: Could not parse line as key in {BASE} (1): '{line}'\n"
    assert same(stderr, message + FAILED)
    assert not host.exists()


def test_a_huge_unfinished_template_is_reported_whole(host: Host) -> None:
    value = "${" + "x" * (10 * MEGABYTE)
    host.conf(f"Key={value}\n")
    status, stdout, stderr = generate(host)
    assert (status, stdout) == (0, "")
    message = f"ERROR: Invalid template substitution, missing '}}': {value}\n"
    assert same(stderr, message)
    assert host.read() == generated()


def test_a_value_may_have_many_parts(host: Host) -> None:
    value = ";".join(str(i) for i in range(500_000))
    host.conf(f"[A]\nEmpty={';' * (10 * MEGABYTE)}\nKey={value}\n")
    assert generate(host) == (0, "", "")
    assert same(host.read(), generated(f"\n[A]\nKey={value}\n"))


def test_a_value_may_have_many_templates(host: Host) -> None:
    host.conf("[A]\nKey=" + "${USER}$$" * 100_000 + "\n")
    assert generate(host) == (0, "", "")
    assert same(host.read(), generated("\n[A]\nKey=" + "alice$" * 100_000 + "\n"))


def test_there_may_be_many_keys_and_groups(host: Host) -> None:
    groups = "".join(f"\n[G{i:06}]\nA=1\nB=2\n" for i in range(50_000))
    host.conf(groups)
    assert generate(host) == (0, "", "")
    assert same(host.read(), generated(groups))


def test_there_may_be_ten_thousand_files(host: Host) -> None:
    for i in range(10_000):
        host.conf(f"[A]\nK{i:05}={i}\n", f"/c/{i:05}.conf")
    assert generate(host) == (0, "", "")
    lines = "".join(f"K{i:05}={i}\n" for i in range(10_000))
    assert same(host.read(), generated("\n[A]\n" + lines))


def test_there_may_be_a_thousand_directories(host: Host) -> None:
    for i in range(1000):
        host.conf(f"[A]\nKey={i}\n", f"/d/{i}/x.conf")
    names = ":".join(f"/d/{i}" for i in range(1000))
    assert generate(host, "--configs", names) == (0, "", "")
    values = ";".join(str(i) for i in range(1000))
    assert host.read() == generated(f"\n[A]\nKey={values}\n")


def test_arguments_may_be_long(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    name = "x" * 100_000
    assert generate(host, "--instance", name, "--config", "/" + name) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n", Instance=name)


def test_an_output_path_that_is_too_long_still_ends_well(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    arguments = ("--user-id", "1000", "--config", "/c", "/" + "x/" * 50_000)
    assert host.run(*arguments, timeout=LIMIT) == (0, "", "")


# --- content


def test_any_byte_but_a_few_may_stand_in_a_value(host: Host) -> None:
    value = decode(bytes(byte for byte in range(256) if byte not in b"\n;$"))
    host.conf(f"[A]\nKey={value}\n")
    assert generate(host) == (0, "", "")
    assert host.read() == generated(f"\n[A]\nKey={value}\n")


def test_a_file_of_all_bytes_is_refused(host: Host) -> None:
    everything = bytes(range(256))
    host.conf(everything)
    lines = decode(everything).split("\n")
    messages = [
        f"ERROR: Unexpected line in {BASE} ({number}): '{line}'\n"
        for number, line in enumerate(lines, 1)
    ]
    assert generate(host) == (1, "", "".join(messages) + FAILED)
    assert not host.exists()


def test_fragments_may_hold_any_byte(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    everything = bytes(range(1, 256)) + b"\0\n"
    host.file("/c/static/a.lxc", everything)
    assert generate(host) == (0, "", "")
    text = decode(everything)
    lines = "".join(f"DefaultLxc={line}\n" for line in text.split("\n") if line)
    assert host.read() == generated("\n[A]\nKey=1\n", lines)


# --- hooks


def hook(host: Host, body: str) -> None:
    """A property hook beside a configuration."""
    host.conf("[A]\nKey=1\n")
    host.script("/c/property-pre-hooks/a.sh", body)


def test_a_hook_may_print_a_hundred_megabytes(host: Host) -> None:
    hook(host, "yes $(printf %099999d 0) | head -n 1000\n")
    assert generate(host) == (0, "", "")
    lines = ("PropertyPre=" + "0" * 99_999 + "\n") * 1000
    assert same(host.read(), generated("\n[A]\nKey=1\n", lines))


def test_a_hook_may_print_a_hundred_megabytes_in_one_line(host: Host) -> None:
    hook(host, "head -c 100000000 /dev/zero | tr '\\0' x\n")
    assert generate(host) == (0, "", "")
    line = "PropertyPre=" + "x" * (100 * MEGABYTE) + "\n"
    assert same(host.read(), generated("\n[A]\nKey=1\n", line))


def test_a_nul_cuts_the_rest_of_its_line(host: Host) -> None:
    hook(host, "printf 'a\\0b\\nc\\n\\0\\nd\\n'\n")
    assert generate(host) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n", "PropertyPre=ac\nPropertyPre=d\n")


def test_the_lines_of_a_killed_hook_are_kept(host: Host) -> None:
    hook(host, "echo a\nkill -9 $$\necho b\n")
    shell = "Killed\n"
    status = "\udc89"  # 128 and the signal, from the shell between the program and the hook
    warning = f"WARNING: /c/property-pre-hooks/a.sh exited with non-zero status: {status}\n"
    assert generate(host) == (0, "", shell + warning)
    assert host.read() == generated("\n[A]\nKey=1\n", "PropertyPre=a\n")


def test_the_lines_of_a_failing_hook_are_kept(host: Host) -> None:
    hook(host, "echo a\nexit 66\n")
    warning = "WARNING: /c/property-pre-hooks/a.sh exited with non-zero status: B\n"
    assert generate(host) == (0, "", warning)
    assert host.read() == generated("\n[A]\nKey=1\n", "PropertyPre=a\n")


@pytest.mark.parametrize("kind", ["not executable", "without interpreter", "directory"])
def test_a_hook_that_cannot_run_is_passed_over(host: Host, kind: str) -> None:
    hook(host, "echo b\n")
    path = "/c/mount-hooks/a.sh"
    host.conf("[Config]\nKey=1\n")
    if kind == "not executable":
        host.file(path, "#!/bin/sh\necho a\n")
        complaint, status = "Permission denied", "~"
    elif kind == "without interpreter":
        host.file(path, "#!/nowhere\n", mode=0o755)
        complaint, status = "not found", "\x7f"
    else:
        path += "/"
        host.directory(path)
        complaint, status = "Permission denied", "~"
    shell = f"sh: 1: {path}: {complaint}\n"
    warning = f"WARNING: {path} exited with non-zero status: {status}\n"
    assert generate(host) == (0, "", shell + warning)
    assert host.read() == generated("\n[Config]\nKey=1\n", "PropertyPre=b\n")


# --- closed and full streams


@pytest.mark.parametrize("redirect", [">&-", ">/dev/full", ">&- <&-"])
def test_a_refusal_does_not_need_standard_output(host: Host, redirect: str) -> None:
    assert host.run("--type", redirect=redirect, timeout=LIMIT) == (
        1,
        "",
        '--type needs value. It must be one of "config", "property" and "lxc".\n',
    )


@pytest.mark.parametrize("redirect", ["2>&-", "2>/dev/full", ">&- 2>&- <&-"])
def test_a_refusal_does_not_need_standard_error(host: Host, redirect: str) -> None:
    assert host.run("--bogus", redirect=redirect, timeout=LIMIT) == (1, "", "")


@pytest.mark.parametrize("redirect", [">&-", "2>&-", "<&-", ">&- 2>&-", "<&- >&- 2>&-"])
@pytest.mark.parametrize("target", ["stdout", "stderr"])
def test_closed_streams_do_not_reach_the_output(host: Host, redirect: str, target: str) -> None:
    host.conf("[Config]\nKey=1\n")
    host.script("/c/mount-hooks/a.sh", "echo oops >&2\necho bad\n")
    environment = {"CRADLE_LOGGING_TARGET": target}
    assert generate(host, redirect=redirect, env=environment).status == 0
    assert host.read() == generated("\n[Config]\nKey=1\n")


@pytest.mark.parametrize("redirect", ["2>/dev/full", ">/dev/full 2>/dev/full"])
def test_a_log_that_cannot_be_written_changes_nothing_else(host: Host, redirect: str) -> None:
    host.conf("[Config]\nBad=${nope}\nKey=1\n")
    assert generate(host, redirect=redirect) == (0, "", "")
    assert host.read() == generated("\n[Config]\nKey=1\n")


def test_a_log_reader_that_goes_away_changes_nothing_else(host: Host) -> None:
    host.conf("[Config]\nKey=1\n")
    host.script("/c/mount-hooks/a.sh", "while ! [ -e /gone ]; do sleep 0.01; done\necho bad\n")
    run = host.start("--user-id", "1000", "--config", "/c", "/out.conf")
    assert run.process.stderr
    run.process.stderr.close()
    run.process.stderr = None
    host.file("/gone")
    assert run.finish(timeout=LIMIT) == (0, "", "")
    assert host.read() == generated("\n[Config]\nKey=1\n")


def test_a_hook_is_ended_by_a_broken_pipe_as_any_program_is(host: Host) -> None:
    host.conf("[Config]\nKey=1\n")
    host.script("/c/property-pre-hooks/a.sh", "sh -c 'kill -PIPE $$'\necho $?\n")
    assert generate(host) == (0, "", "")
    assert host.read() == generated("\n[Config]\nKey=1\n", "PropertyPre=141\n")


def test_a_user_without_a_home_has_an_empty_one(host: Host) -> None:
    host.user("nomad", 1002, home="")
    host.conf("[A]\nKey=<${HOME}>\n")
    arguments = ("--user-id", "1002", "--config", "/c", "/out.conf")
    assert host.run(*arguments, timeout=LIMIT) == (0, "", "")
    nomad = {"UserId": "1002", "User": "nomad", "Home": ""}
    assert host.read() == generated("\n[A]\nKey=<>\n", **nomad)
