# SPDX-License-Identifier: MIT
"""Templates in values: their syntax, and the formats that read the environment, environment
files, real paths and commands."""

from typing import Any

import pytest

from host import Host, decode, generated


def check(host: Host, value: str, text: str | None, **options: Any) -> None:
    """The value becomes the text, or is dropped when that is None, and nothing is logged."""
    host.conf(f"[A]\nKey={value}\nLast=1\n")
    assert host.generate(**options) == (0, "", "")
    line = "" if text is None else f"Key={text}\n"
    assert host.read() == generated(f"\n[A]\n{line}Last=1\n")


# --- syntax


@pytest.mark.parametrize(
    "value, text",
    [
        ("plain", "plain"),
        ("{plain}", "{plain}"),
        ("cost $$5", "cost $5"),
        ("$$", "$"),
        ("$$$$", "$$"),
        ("$${USER}", "${USER}"),
        ("$$${USER}", "$alice"),
        ("${USER}", "alice"),
        ("${USER_ID}", "1000"),
        ("${HOME}", "/home/alice"),
        ("${INSTANCE}", "default"),
        ("${ODM_DIR}", "/vendor"),
        ("${USER}${USER}", "alicealice"),
        ("a${USER}b${USER_ID}c", "aaliceb1000c"),
        ("${USER}}", "alice}"),
        ("{${USER}}", "{alice}"),
        ("${USER};${HOME}", "alice;/home/alice"),
    ],
)
def test_substitutions_are_replaced_and_all_else_is_kept(
    host: Host, value: str, text: str
) -> None:
    check(host, value, text)


def test_named_templates_tell_the_facts_of_the_run(host: Host) -> None:
    host.conf("[A]\nKey=${USER}|${USER_ID}|${HOME}|${INSTANCE}\n")
    host.user("bob", 1001, home="/srv/bob")
    options = ("--user-id", "1001", "--instance", "two words", "--config", "/c")
    assert host.run(*options, "/out.conf") == (0, "", "")
    bob = {"UserId": "1001", "User": "bob", "Home": "/srv/bob", "Instance": "two words"}
    assert host.read() == generated("\n[A]\nKey=bob|1001|/srv/bob|two words\n", **bob)


# --- environment variables


@pytest.mark.parametrize(
    "value, environment, text",
    [
        ("${env:NAME}/data", {"NAME": "/home/u"}, "/home/u/data"),
        ("${env:A:B}", {"A:B": "colon"}, "colon"),
        ("<${env:NAME}>", {"NAME": " "}, "< >"),
        ("${env:NAME}", {"NAME": "${x} $$ ;a"}, "${x} $$ ;a"),
        ("${env:NAME}", {"NAME": "two\nlines"}, "two\nlines"),
        ("${env:NAME}", {"NAME": ""}, None),
        ("${env:NAME}", {}, None),
        ("a${env:NAME}b", {}, None),
        ("${env:}", {}, None),
        ("${env:name}", {"NAME": "x"}, None),
        ("a;${env:NAME};b", {}, "a;b"),
    ],
)
def test_an_environment_variable_gives_its_text_or_nothing(
    host: Host, value: str, environment: dict[str, str], text: str | None
) -> None:
    check(host, value, text, env=environment)


# --- real paths


@pytest.mark.parametrize(
    "path, text",
    [
        ("/link", "/dir/target"),
        ("/c/../c/./10-base.conf", "/c/10-base.conf"),
        ("dir", "/dir"),
        ("/", "/"),
        ("/dir/new", None),
        ("/loop", None),
        ("", None),
    ],
)
def test_a_real_path_is_canonical_and_exists(host: Host, path: str, text: str | None) -> None:
    host.file("/dir/target")
    host.link("/link", "dir/./target")
    host.link("/loop", "loop")
    check(host, f"${{realpath:{path}}}", text)


# --- environment files


@pytest.mark.parametrize(
    "content, text",
    [
        ("LANG=en_US.UTF-8\n", "en_US.UTF-8"),
        ("LANG=last line", "last line"),
        ('LANG="en_US.UTF-8"\n', "en_US.UTF-8"),
        (" \tLANG \t=\v en \f\r\n", "en"),
        ('LANG= " en " \n', " en "),
        ('LANG="\n', '"'),
        ('LANG="en\n', '"en'),
        ('LANG=""en""\n', '"en"'),
        ("LANG='en'\n", "'en'"),
        ("LANG=a\nLANG=b\n", "b"),
        ("LANG=a=b=c\n", "a=b=c"),
        ("LANG=a=\n", "a="),
        ("LANG=a;b ${USER}\n", "a;b ${USER}"),
        ("X=1\nno assignment\n\n#LANG=c\nLANG=a\nLANGUAGE=b\n", "a"),
        ("LANG=a\nLANG\n", "a"),
        ("export LANG=a\nlang=b\n", None),
        ("", None),
    ],
    ids=repr,
)
def test_an_environment_file_gives_a_variable(host: Host, content: str, text: str | None) -> None:
    host.file("/etc/locale.conf", content)
    check(host, "${envfile:/etc/locale.conf:LANG}", text)


@pytest.mark.parametrize("content", ["LANG=\n", 'LANG=""\n', "LANG= \n", "LANG=a\nLANG=\n"])
def test_an_empty_variable_of_an_environment_file_is_a_value(host: Host, content: str) -> None:
    host.file("/env", content)
    check(host, "<${envfile:/env:LANG}>", "<>")


@pytest.mark.parametrize("name, text", [("A:B", "colon"), ("#A", "note"), ("", "nameless")])
def test_a_variable_of_an_environment_file_may_have_any_name(
    host: Host, name: str, text: str
) -> None:
    host.file("/env", "A:B=colon\n#A=note\n=nameless\n")
    check(host, f"${{envfile:/env:{name}}}", text)


def test_an_environment_file_that_ends_in_an_error_gives_what_was_read(host: Host) -> None:
    host.file("/env", "LANG=a\n" + f"# {'x' * 97}\n" * 2000 + "LANG=b\n")
    failing = ["-P", "/env", "-e", "inject=read:error=EIO:when=2"]
    check(host, "${envfile:/env:LANG}", "a", strace=failing)


@pytest.mark.parametrize("path", ["/nowhere", "/c", "/proc/self/mem", ""])
def test_an_unreadable_environment_file_gives_nothing(host: Host, path: str) -> None:
    check(host, f"${{envfile:{path}:LANG}}", None)


# --- commands


@pytest.mark.parametrize(
    "command, text",
    [
        ("echo x", "x"),
        ("printf ' \\t\\n x  y \\r\\n'", "x  y"),
        ("echo a && echo b", "a\nb"),
        ("echo $((6 * 7)) $HOME", "42 /root"),
        ("echo 'a:b'", "a:b"),
        ("printf %05000d 7", "0" * 4999 + "7"),
        ("printf %01022d 7 && echo && echo x", "0" * 1021 + "7\nx"),
        ("printf 'ab\\0cd\\nef'", "abef"),
        ("true", None),
        ("printf ' \\n\\t'", None),
        ("", None),
        ("kill -9 $$", None),
        ("kill -TERM $$", None),
    ],
)
def test_a_command_gives_its_trimmed_output(host: Host, command: str, text: str | None) -> None:
    check(host, f"${{system:{command}}}", text, env={"HOME": "/root"})


def test_a_command_without_output_gives_an_empty_text(host: Host) -> None:
    check(host, "<${system:true}>", "<>")


def test_a_command_writes_to_the_standard_error_of_the_program(host: Host) -> None:
    host.conf("[A]\nKey=${system:echo oops >&2 && echo x}\n")
    assert host.generate() == (0, "", "oops\n")
    assert host.read() == generated("\n[A]\nKey=x\n")


def test_every_value_is_split_before_its_templates_are_looked_at(host: Host) -> None:
    host.conf("[A]\nKey=${system:echo a; echo b}\n")
    message = "ERROR: Invalid template substitution, missing '}': ${system:echo a\n"
    assert host.generate() == (0, "", message)
    assert host.read() == generated("\n[A]\nKey= echo b}\n")


# --- failures


@pytest.mark.parametrize(
    "value, message",
    [
        ("${}", "No such template ''"),
        ("${nope}", "No such template 'nope'"),
        ("${user}", "No such template 'user'"),
        ("${ USER}", "No such template ' USER'"),
        ("${a{b}c}", "No such template 'a{b'"),
        ("${a${USER}}", "No such template 'a${USER'"),
        ("abc$", "'$' must be followed by '{' or '$': abc$"),
        ("${USER}$", "'$' must be followed by '{' or '$': ${USER}$"),
        ("a$b${USER}", "'$' must be followed by '{' or '$': a$b${USER}"),
        ("$$$", "'$' must be followed by '{' or '$': $$$"),
        ("$ {USER}", "'$' must be followed by '{' or '$': $ {USER}"),
        ("a${env:X", "Invalid template substitution, missing '}': a${env:X"),
        ("${", "Invalid template substitution, missing '}': ${"),
        ("${ENV:HOME}", "Invalid template 'ENV:HOME'"),
        ("${:x}", "Invalid template ':x'"),
        ("${:}", "Invalid template ':'"),
        ("${env :HOME}", "Invalid template 'env :HOME'"),
        ("${envfile:/x}", "Invalid envfile definition 'envfile:/x'"),
        ("${envfile:}", "Invalid envfile definition 'envfile:'"),
        ("x${USER}${nope}${nope}", "No such template 'nope'"),
    ],
)
def test_a_bad_template_is_an_error_and_its_value_is_dropped(
    host: Host, value: str, message: str
) -> None:
    host.conf(f"[A]\nKey=before;{value};after\nLost={value}\n[Lost]\nLost={value}\n")
    assert host.generate() == (0, "", f"ERROR: {message}\n" * 3)
    assert host.read() == generated("\n[A]\nKey=before;after\n")


@pytest.mark.parametrize(
    "template, message",
    [
        ("env:X", "Failed to read 'X' from environment variables for template '{}'"),
        ("env:A:B", "Failed to read 'A:B' from environment variables for template '{}'"),
        ("envfile:/x:Y", "Failed to read 'Y' from environment file '/x' for template '{}'"),
        ("envfile::Y:Z", "Failed to read 'Y:Z' from environment file '' for template '{}'"),
        ("realpath:/x", "Failed to resolve '/x' path for template '{}'"),
        ("dconf:/a/b", "Failed to read '/a/b' from dconf for template '{}'"),
        ("prop:ro.x", "Failed to read 'ro.x' from properties for template '{}'"),
        ("system:kill -9 $$", "Failed to resolve 'kill -9 $$' from system for template '{}'"),
    ],
)
def test_a_source_without_a_value_is_only_worth_a_debug_message(
    host: Host, template: str, message: str
) -> None:
    host.conf(f"[A]\nKey=${{{template}}}\n")
    log = "DEBUG: " + message.format(template) + "\n"
    assert host.generate("--log-level", "debug") == (0, "", log)
    assert host.read() == generated()


@pytest.mark.parametrize("status", [1, 2, 10, 65, 126, 200, 255])
def test_the_status_of_a_failed_command_is_logged_as_one_byte(host: Host, status: int) -> None:
    command = f"echo lost && exit {status}"
    host.conf(f"[A]\nKey=${{system:{command}}}\n")
    byte = decode(bytes([status]))
    warning = f"WARNING: {command} exited with non-zero status: {byte}\n"
    assert host.generate() == (0, "", warning)
    assert host.read() == generated()


def test_a_missing_command_is_the_shell_s_to_report(host: Host) -> None:
    host.conf("[A]\nKey=${system:nosuch}\n")
    warning = "WARNING: nosuch exited with non-zero status: \x7f\n"
    assert host.generate() == (0, "", "sh: 1: nosuch: not found\n" + warning)
    assert host.read() == generated()


def test_a_command_that_cannot_be_started_is_an_error(host: Host) -> None:
    host.conf("[A]\nKey=x${system:echo x}\n")
    result = host.generate(strace=["-e", "inject=clone,clone3:error=ENOMEM"])
    assert result == (0, "", "ERROR: Failed to execute 'echo x': Cannot allocate memory\n")
    assert host.read() == generated()


def test_a_command_whose_end_is_not_seen_is_an_error(host: Host) -> None:
    host.conf("[A]\nKey=x${system:echo x}\n")
    result = host.generate(strace=["-e", "inject=wait4:error=ECHILD"])
    message = "ERROR: echo x pclose() exited with failure: No child processes\n"
    assert result == (0, "", message)
    assert host.read() == generated()
