# SPDX-License-Identifier: MIT
"""The command line: options, the output file, the usage text and every refusal."""

import pytest

from host import Host, generated

USAGE = """USAGE:
    {program} [OPTIONS] [--] <output_file>

OPTIONS:
    --type config|lxc|property Generate a config, lxc or property file. Defaults to config file.
    --config <input_directory> Directory to read. Defaults to /etc/cradle.conf.d
    --configs <directories>    Directories to read, separated by ':'.
    --user-id <UID>            UID for user. Defaults to seat0 active user.
    --instance <name>          Instance name for the container.
    --base-uid <UID>           UID as which cradle runs. Defaults to 0.
    --log-level <level>        Log level. Defaults to warning.

ARGS:
    <output_file>              Path to file to write. Required.
"""
TYPES = 'It must be one of "config", "property" and "lxc".'
NO_FILE = "output_file is required! Please specify a file to write."
TOO_MANY = "Too many arguments! Only one output file may be specified."


def usage(host: Host) -> str:
    return USAGE.format(program=host.binary)


def directories(host: Host, *names: str) -> None:
    """Directories whose configuration adds their own names to the list Read of group A."""
    for name in names:
        host.file(f"{name}/x.conf", f"[A]\nRead={name}\n")


def read(*names: str) -> str:
    """The configuration generated from these directories, in this order."""
    return generated("\n[A]\nRead=" + ";".join(names) + "\n")


# --- the output file


def test_a_lone_output_file_means_all_defaults(host: Host) -> None:
    host.file("etc/cradle.conf.d/x.conf", "[A]\nKey=1\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    assert host.run("/out.conf") == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n")


@pytest.mark.parametrize(
    "arguments, name",
    [
        (["--", "--weird-name"], "--weird-name"),
        (["--", "--type"], "--type"),
        (["--", "--"], "--"),
        (["-x"], "-x"),
        (["-"], "-"),
        (["--", "plain"], "plain"),
    ],
    ids=" ".join,
)
def test_the_output_file_follows_two_dashes_or_does_not_begin_with_them(
    host: Host, arguments: list[str], name: str
) -> None:
    directories(host, "/c")
    assert host.run("--user-id", "1000", "--config", "/c", *arguments) == (0, "", "")
    assert host.read(f"/{name}") == read("/c")


# --- options


@pytest.mark.parametrize(
    "options, order",
    [
        (["--config", "/a"], ["/a"]),
        (["--config", "/a", "--configs", "/b:/c"], ["/a", "/b", "/c"]),
        (["--configs", "/c:/b", "--config", "/a"], ["/c", "/b", "/a"]),
        (["--config", "/b", "--config", "/a"], ["/b", "/a"]),
        (["--config", "/a", "--config", "/a"], ["/a", "/a"]),
        (["--configs", "/a:"], ["/a"]),
        (["--configs", ""], ["/etc/cradle.conf.d"]),
        (["--configs", "/missing:/a"], ["/a"]),
        (["--config", "a"], ["/a"]),
        (["--config", "/a:/b", "--config", "/c"], ["/c"]),
    ],
    ids=str,
)
def test_directories_accumulate_in_command_line_order(
    host: Host, options: list[str], order: list[str]
) -> None:
    directories(host, "/a", "/b", "/c", "/etc/cradle.conf.d")
    assert host.run("--user-id", "1000", *options, "/out.conf") == (0, "", "")
    assert host.read() == read(*order)


@pytest.mark.parametrize(
    "options, order",
    [
        (["--config", ""], ["/"]),
        (["--configs", "/a::/b"], ["/a", "/", "/b"]),
        (["--configs", ":/a"], ["/", "/a"]),
        (["--configs", "/a::"], ["/a", "/"]),
        (["--configs", ":"], ["/"]),
    ],
    ids=str,
)
def test_an_empty_directory_name_is_the_root_directory(
    host: Host, options: list[str], order: list[str]
) -> None:
    directories(host, "/", "/a", "/b")
    assert host.run("--user-id", "1000", *options, "/out.conf") == (0, "", "")
    assert host.read() == read(*order)


@pytest.mark.parametrize(
    "text", ["1000", " 1000", "\t+1000", "1000abc", "1000.9", "01000", "1000 7"]
)
def test_a_user_id_is_the_number_at_the_start_of_its_text(host: Host, text: str) -> None:
    directories(host, "/c")
    assert host.run("--user-id", text, "--config", "/c", "/out.conf") == (0, "", "")
    assert host.read() == read("/c")


def test_a_user_id_is_read_in_base_ten(host: Host) -> None:
    directories(host, "/c")
    assert host.run("--user-id", "0x3E8", "--config", "/c", "/out.conf") == (0, "", "")
    root = {"UserId": "0", "User": "root", "Home": "/root"}
    assert host.read() == generated("\n[A]\nRead=/c\n", **root)


@pytest.mark.parametrize(
    "text, stored", [("-2", "4294967294"), ("-2147483648", "2147483648"), ("2147483647",) * 2]
)
def test_a_user_id_is_stored_without_a_sign(host: Host, text: str, stored: str) -> None:
    host.user("far", int(stored), home="/home/far")
    directories(host, "/c")
    assert host.run("--user-id", text, "--config", "/c", "/out.conf") == (0, "", "")
    far = {"UserId": stored, "User": "far", "Home": "/home/far"}
    assert host.read() == generated("\n[A]\nRead=/c\n", **far)


def test_a_user_id_of_minus_one_means_the_active_user(host: Host) -> None:
    directories(host, "/c")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    assert host.run("--user-id", "-1", "--config", "/c", "/out.conf") == (0, "", "")
    assert host.read() == read("/c")


@pytest.mark.parametrize(
    "text, stored",
    [
        ("0", "0"),
        ("5", "5"),
        ("-1", "0"),
        ("-2", "4294967294"),
        ("2147483647", "2147483647"),
        ("-2147483648", "2147483648"),
        (" 12abc", "12"),
    ],
)
def test_a_base_uid_is_stored_without_a_sign_and_minus_one_is_none(
    host: Host, text: str, stored: str
) -> None:
    directories(host, "/c")
    assert host.generate("--base-uid", text) == (0, "", "")
    assert host.read() == generated("\n[A]\nRead=/c\n", BaseUid=stored)


@pytest.mark.parametrize("name", ["other", "", "two words", "--type", "--", "50%"])
def test_an_instance_may_have_any_name(host: Host, name: str) -> None:
    directories(host, "/c")
    assert host.generate("--instance", name) == (0, "", "")
    assert host.read() == generated("\n[A]\nRead=/c\n", Instance=name)


@pytest.mark.parametrize(
    "options, facts",
    [
        (["--instance", "a", "--instance", "b"], {"Instance": "b"}),
        (["--base-uid", "1", "--base-uid", "2"], {"BaseUid": "2"}),
        (["--base-uid", "7", "--base-uid", "-1"], {}),
        (["--user-id", "5", "--user-id", "1000"], {}),
        (["--type", "lxc", "--type", "config"], {}),
        (["--log-level", "loud", "--log-level", "error"], {}),
        (["--log-level", "loud", "--log-level", ""], {}),
    ],
    ids=str,
)
def test_the_last_of_repeated_options_counts(
    host: Host, options: list[str], facts: dict[str, str]
) -> None:
    directories(host, "/c")
    assert host.generate(*options) == (0, "", "")
    assert host.read() == generated("\n[A]\nRead=/c\n", **facts)


def test_an_empty_log_level_is_ignored(host: Host) -> None:
    directories(host, "/c")
    assert host.generate("--log-level", "") == (0, "", "")
    assert host.read() == read("/c")


@pytest.mark.parametrize(
    "kind, line",
    [("config", "Read=/c"), ("lxc", "lxc.arch = aarch64"), ("property", "ro.quoll.instance=default")],
)
def test_each_type_writes_its_own_file(host: Host, kind: str, line: str) -> None:
    host.conf("[Config]\nAppIdManglingType=None\nLanguageOverride=en_US\nRead=/c\n")
    assert host.generate("--type", kind) == (0, "", "")
    assert line in host.read().splitlines()


@pytest.mark.parametrize(
    "program", ["/opt/generate", "opt/generate", "generate", "/opt/../opt/generate"]
)
def test_the_usage_names_the_program_as_it_was_called(host: Host, program: str) -> None:
    host.link("/opt/generate", host.binary)
    result = host.run(program=program, env={"PATH": "/opt"})
    assert result == (1, USAGE.format(program=program), "Needs at least one argument!\n")


# --- refusals


def test_no_argument_at_all_is_refused(host: Host) -> None:
    assert host.run() == (1, usage(host), "Needs at least one argument!\n")


@pytest.mark.parametrize(
    "arguments, message",
    [
        (["a", "b"], TOO_MANY),
        (["--log-level", "loud", "out"], "ERROR: Invalid logging level 'loud'"),
    ],
    ids=str,
)
def test_a_message_comes_before_the_usage(host: Host, arguments: list[str], message: str) -> None:
    result = host.run(*arguments, redirect="2>&1")
    assert result == (1, message + "\n" + usage(host), "")


MISSING = [
    ("--type", f"--type needs value. {TYPES}"),
    ("--config", "--config needs value. Specify alternative config directory to read."),
    ("--configs", "--configs needs value."),
    ("--instance", "--instance needs value. Specify a name."),
    ("--user-id", "--user-id needs value. Specify an UID value."),
    ("--base-uid", "--base-uid needs value. Specify an UID value."),
    ("--log-level", "--log-level needs value."),
]
NO_NUMBERS = ["", " ", "x", "-", "+", "--5", "- 5", "abc12", ".5"]
OUT_OF_RANGE = ["2147483648", "4294967295", "-2147483649", "99999999999", "-99999999999", "9" * 40]
REFUSALS = [
    *(([option], message) for option, message in MISSING),
    (["--instance", "a", "--type"], MISSING[0][1]),
    *((["--type", t, "out"], f"Invalid value for --type. {TYPES}") for t in ["LXC", "", "configs"]),
    (["--type", "LXC", "--bogus"], f"Invalid value for --type. {TYPES}"),
    *(
        ([option, value, "out"], f"{option}: {value} does not look like an integer.")
        for option in ("--user-id", "--base-uid")
        for value in NO_NUMBERS
    ),
    *(
        ([option, value, "out"], f"{option}: {value} is too big/small.")
        for option in ("--user-id", "--base-uid")
        for value in OUT_OF_RANGE
    ),
    (["--"], NO_FILE),
    (["--type", "config"], NO_FILE),
    (["--type", "config", "--"], NO_FILE),
    (["--log-level", "loud"], NO_FILE),
    (["out", "more"], TOO_MANY),
    (["-x", "out"], TOO_MANY),
    (["out", "--type", "lxc"], TOO_MANY),
    (["out", "--"], TOO_MANY),
    (["--", "out", "more"], TOO_MANY),
    (["--log-level", "loud", "out", "more"], TOO_MANY),
]


@pytest.mark.parametrize("arguments, message", REFUSALS, ids=str)
def test_a_wrong_command_line_is_refused_with_a_message_and_the_usage(
    host: Host, arguments: list[str], message: str
) -> None:
    directories(host, "/etc/cradle.conf.d")
    host.file("out", "as it was")
    assert host.run(*arguments) == (1, usage(host), message + "\n")
    assert host.read("out") == "as it was"


@pytest.mark.parametrize(
    "option", ["--bogus", "--Type", "--type=config", "--conf", "---", "--help"]
)
def test_an_unknown_option_is_refused_without_the_usage(host: Host, option: str) -> None:
    assert host.run(option, "x", "out") == (1, "", f"{option}: unknown argument\n")
    assert not host.exists("out")


def test_a_rejected_log_level_is_followed_by_the_usage(host: Host) -> None:
    directories(host, "/c")
    message = "ERROR: Invalid logging level 'loud'\n"
    assert host.generate("--log-level", "loud") == (1, usage(host), message)
    assert not host.exists()
