# SPDX-License-Identifier: MIT
"""References from one value to another, resolved when the configuration is written."""

import pytest

from host import Host, generated

TOO_DEEP = "ERROR: Max depth reached, possibly circular reference.\n"


def reference(key: str, group: str = "A") -> str:
    return f"${{config:{group}/{key}}}"


def chain(length: int) -> str:
    """So many keys K00, K01, ... of group A, of which each refers to the next."""
    lines = [f"K{i:02}={reference(f'K{i + 1:02}')}\n" for i in range(length - 1)]
    return "[A]\n" + "".join(lines) + f"K{length - 1:02}=end\n"


@pytest.mark.parametrize(
    "value, text",
    [
        ("x${config:A/B}y", "x1y"),
        ("${config:A/B}", "1"),
        ("${config:A/B}${config:A/B}", "11"),
        ("${config:A/B}${config:A/Long}", "1long text"),
        ("<${config:A/Long}|${config:A/B}|${config:A/Long}>", "<long text|1|long text>"),
        ("x${config:A/Missing}y", "xy"),
        ("x${config:Missing/B}y", "xy"),
        ("${config:A/Missing}${config:A/B}", "1"),
        ("${USER}${config:A/B}$$${USER_ID}${config:A/B}", "alice1$10001"),
        ("${config:My Group/My Key}", "spaced"),
        ("${config:A/List}", "last"),
        ("x${config:A/Cleared}y", "xy"),
        ("${config:A/Dollar}", "${config:A/B}"),
        ("a;${config:A/B};c", "a;1;c"),
        ("a;${config:A/Missing};c", "a;;c"),
        ("${config:A/Missing}", ""),
        ("${config:A/Missing};${config:A/Missing}", ";"),
    ],
)
def test_a_reference_stands_for_the_last_value_of_its_key(
    host: Host, value: str, text: str
) -> None:
    host.conf(
        f"[Test]\nKey={value}\n[My Group]\nMy Key=spaced\n"
        "[A]\nB=1\nLong=long text\nList=first;last\nCleared=1\nCleared=\nDollar=$${config:A/B}\n"
    )
    assert host.generate() == (0, "", "")
    assert host.read() == generated(
        "\n[A]\nB=1\nDollar=${config:A/B}\nList=first;last\nLong=long text\n"
        f"\n[My Group]\nMy Key=spaced\n\n[Test]\nKey={text}\n"
    )


def test_a_reference_sees_the_value_of_the_last_file(host: Host) -> None:
    host.conf("[A]\nB=early\n", "/c/1.conf")
    host.conf("[A]\nA=${config:A/B}\n", "/c/2.conf")
    host.conf("[A]\nB=\nB=late\n", "/d/1.conf")
    assert host.generate("--config", "/d") == (0, "", "")
    assert host.read() == generated("\n[A]\nA=late\nB=late\n")


def test_a_reference_inserts_any_text_as_it_stands(host: Host) -> None:
    host.conf("[A]\nA=<${config:A/B}>\nB=${env:B}\n")
    assert host.generate(env={"B": "x;${USER};$"}) == (0, "", "")
    assert host.read() == generated("\n[A]\nA=<x;${USER};$>\nB=x;${USER};$\n")


def test_a_command_runs_once_however_often_it_is_referred_to(host: Host) -> None:
    host.conf("[A]\nA=${config:A/C}${config:A/C}\nC=${system:echo x | tee -a /runs}\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nA=xx\nC=x\n")
    assert host.read("/runs") == "x\n"


def test_thirty_three_values_can_be_resolved_in_a_chain(host: Host) -> None:
    host.conf(chain(33))
    assert host.generate() == (0, "", "")
    lines = "".join(f"K{i:02}=end\n" for i in range(33))
    assert host.read() == generated("\n[A]\n" + lines)


def test_thirty_three_values_can_be_resolved_side_by_side(host: Host) -> None:
    host.conf("[A]\nA=" + reference("B") * 32 + "\nB=b\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nA=" + "b" * 32 + "\nB=b\n")


def test_references_to_missing_keys_do_not_count(host: Host) -> None:
    host.conf("[A]\nA=x" + reference("Missing") * 100 + reference("B") * 32 + "\nB=b\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nA=x" + "b" * 32 + "\nB=b\n")


def test_every_value_of_a_list_is_counted_by_itself(host: Host) -> None:
    value = reference("B") * 32
    host.conf(f"[A]\nA={value};{value}\nB=b\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nA=" + "b" * 32 + ";" + "b" * 32 + "\nB=b\n")


def test_the_values_of_a_tree_are_counted_together(host: Host) -> None:
    host.conf("[A]\nA=" + reference("B") * 16 + "\nB=" + reference("C") + "\nC=c\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nA=" + "c" * 16 + "\nB=c\nC=c\n")


# --- failures


def test_the_thirty_fourth_value_of_a_chain_is_too_many(host: Host) -> None:
    host.conf(chain(34))
    assert host.generate() == (0, "", TOO_DEEP)
    lines = "".join(f"K{i:02}=end\n" for i in range(1, 34))
    assert host.read() == generated("\n[A]\nK00=\n" + lines)


def test_the_thirty_fourth_value_side_by_side_is_too_many(host: Host) -> None:
    host.conf("[A]\nA=" + reference("B") * 33 + "\nB=b\n")
    assert host.generate() == (0, "", TOO_DEEP)
    assert host.read() == generated("\n[A]\nA=\nB=b\n")


def test_the_thirty_fourth_value_of_a_tree_is_too_many(host: Host) -> None:
    tree = reference("B") * 16 + reference("C")
    host.conf(f"[A]\nA={tree}\nB={reference('C')}\nC=c\n")
    assert host.generate() == (0, "", TOO_DEEP)
    assert host.read() == generated("\n[A]\nA=\nB=c\nC=c\n")


@pytest.mark.parametrize(
    "text, groups, failures",
    [
        ("[A]\nA=x${config:A/A}\n", "\n[A]\nA=\n", 1),
        ("[A]\nA=${config:A/B}\nB=${config:A/A}\n", "\n[A]\nA=\nB=\n", 2),
        ("[A]\nA=x${config:A/B}\nB=y${config:A/B}\nC=c\n", "\n[A]\nA=\nB=\nC=c\n", 2),
        ("[A]\nA=a;${config:A/A};c\n", "\n[A]\nA=a;c;c\n", 0),
        ("[A]\nA=a;x${config:A/A}\n", "\n[A]\nA=a;\n", 1),
    ],
    ids=repr,
)
def test_a_circle_reads_as_empty(host: Host, text: str, groups: str, failures: int) -> None:
    host.conf(text)
    assert host.generate() == (0, "", TOO_DEEP * failures)
    assert host.read() == generated(groups)


@pytest.mark.parametrize(
    "argument", ["", "a", "/", "a/", "/b", "a/b/c", "a//b", "a/b/", "/a/b", "//"]
)
def test_a_reference_names_exactly_a_group_and_a_key(host: Host, argument: str) -> None:
    host.conf(f"[A]\nBad=x${{config:{argument}}}\nGood=1\n")
    log = f"ERROR: Invalid format '{argument}' for conf template 'config:{argument}'\n"
    assert host.generate() == (0, "", log)
    assert host.read() == generated("\n[A]\nGood=1\n")
