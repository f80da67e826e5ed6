# SPDX-License-Identifier: MIT
"""The property file as its consumer, the guest's init, reads it.

Init skips empty lines and those that begin with "#", and splits every other one at its first "=".
"""

from collections import Counter

import pytest

from golden_cases import GoldenCase, cases_with, name_of
from host import Host

BEGIN = "# generated\n"
END = "# custom properties\n"


def as_init(text: str) -> list[tuple[str, str]]:
    """The (name, value) pairs of a file in their order; every line must be one that init takes."""
    pairs = []
    for line in text.splitlines():
        if line and not line.startswith("#"):
            name, equals, value = line.partition("=")
            assert name and equals and name.isprintable() and " " not in name, line
            pairs.append((name, value))
    return pairs


def table_of(text: str) -> str:
    """The part that the program writes itself, without what hooks and fragments contribute."""
    before, begin, rest = text.partition(BEGIN)
    table, end, after = rest.partition(END)
    assert begin and end and BEGIN not in rest and END not in after
    return table


def write(host: Host, case: GoldenCase) -> str:
    """The property file of a case, read back from its host."""
    case.furnish(host)
    for kind in case.types():
        case.run(host, kind)
    return host.read("/property")


@pytest.mark.parametrize("case", cases_with("property"), ids=name_of)
def test_every_property_of_the_table_stands_there_once(host: Host, case: GoldenCase) -> None:
    names = [name for name, _ in as_init(table_of(write(host, case)))]
    assert len(names) > 20
    assert [name for name, count in Counter(names).items() if count != 1] == []


@pytest.mark.parametrize("case", cases_with("property"), ids=name_of)
def test_a_phone_has_every_property_that_any_host_has(host: Host, case: GoldenCase) -> None:
    phone = {name for name, _ in as_init(table_of(GoldenCase("phone").text("property")))}
    assert {name for name, _ in as_init(table_of(write(host, case)))} <= phone


def test_every_line_of_a_phone_is_one_that_init_takes(host: Host) -> None:
    properties = as_init(write(host, GoldenCase("phone")))
    assert [name for name, count in Counter(n for n, _ in properties).items() if count != 1] == []
    values = dict(properties)
    assert values["ro.product.model"] == "Lynx 5"
    assert values["ro.hook.arguments"] == "1000 alice /home/alice phone 0"
    assert values["ro.custom.second"] == "two words"
    assert values["ro.debuggable"] == "0"
    assert values["ro.hardware.audio"] == "lynx"


def test_a_property_of_a_hook_and_of_the_table_stands_there_twice_in_their_order(
    host: Host,
) -> None:
    host.conf(
        "[Config]\nAppIdManglingType=None\nLanguageOverride=en_US\n"
        "CustomProperties=ro.quoll.instance=custom\n"
    )
    host.script("/c/property-pre-hooks/a.sh", "echo ro.quoll.instance=before\n")
    host.script("/c/property-post-hooks/a.sh", "echo ro.quoll.instance=after\n")
    host.file("/c/static/a.ro", "ro.quoll.instance=static\n")
    assert host.generate("--type", "property") == (0, "", "")
    values = [value for name, value in as_init(host.read()) if name == "ro.quoll.instance"]
    assert values == ["before", "default", "custom", "after", "static"]


def test_only_the_first_equals_sign_splits(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\nAppIdPrefix=a=b\nLanguageOverride=en_US\n")
    assert host.generate("--type", "property") == (0, "", "")
    assert dict(as_init(host.read()))["ro.quoll.app_id_prefix"] == "a=b"


# --- failures


@pytest.mark.parametrize("line", ["no equals sign", "=value", "two words=1"])
def test_the_reader_takes_no_other_line(line: str) -> None:
    with pytest.raises(AssertionError):
        as_init(f"ro.a=1\n{line}\n")
