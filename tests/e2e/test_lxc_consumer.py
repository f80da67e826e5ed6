# SPDX-License-Identifier: MIT
"""The LXC configuration as its consumer, the real liblxc, reads it.

The library refuses a file that holds a key or a value which it does not know, so that a file which
loads has none.
"""

import re

import pytest

from golden_cases import GoldenCase, cases_with, name_of
from host import Host, Result, setting

ENTRY = "lxc.mount.entry"
ADDRESS = "lxc.net.0.hwaddr"


def written(text: str) -> list[tuple[str, str]]:
    """The (key, value) lines of a file, without the blanks around values."""
    lines = [line for line in text.splitlines() if line and not line.startswith("#")]
    pairs = [line.split(" = ", 1) for line in lines]
    return [(key, value.strip()) for key, value in pairs]


def read_back(host: Host, *keys: str) -> Result:
    return host.run("/lxc", *keys, program=setting("CRADLE_LXC_READER"))


def lines_of(host: Host, key: str) -> list[str]:
    """What the library has read for a key, one line per value."""
    result = read_back(host, key)
    assert (result.status, result.stderr) == (0, "")
    return [line.split(" = ", 1)[1] for line in result.stdout.splitlines()]


def run_phone(host: Host) -> None:
    phone = GoldenCase("phone")
    phone.furnish(host)
    assert phone.run(host, "lxc") == (0, "", "")


@pytest.mark.parametrize("case", cases_with("lxc"), ids=name_of)
def test_every_golden_file_loads_and_keeps_its_mount_entries(
    host: Host, case: GoldenCase
) -> None:
    host.file("/lxc", case.text("lxc"))
    keys = {key for key, _ in written(case.text("lxc"))}
    assert read_back(host, *sorted(keys)).status == 0
    entries = [value for key, value in written(case.text("lxc")) if key == ENTRY]
    assert entries != []
    assert lines_of(host, ENTRY) == entries


def test_every_value_of_a_phone_is_read_as_it_was_written(host: Host) -> None:
    run_phone(host)
    values = dict(written(host.read("/lxc")))
    lists = {"lxc.namespace.keep", "lxc.mount.auto"}
    assert lists < set(values)
    for key in set(values) - lists - {ENTRY, ADDRESS}:
        assert lines_of(host, key) == [values[key]]
    for key in lists:
        assert sorted(" ".join(lines_of(host, key)).split()) == sorted(values[key].split())


def test_the_library_fills_in_the_hardware_address_of_a_bridge(host: Host) -> None:
    run_phone(host)
    assert f"{ADDRESS} = 00:16:3e:xx:xx:xx\n" in host.read("/lxc")
    (address,) = lines_of(host, ADDRESS)
    assert re.fullmatch("00:16:3e(:[0-9a-f]{2}){3}", address)


def test_the_kinds_of_network_are_known_to_the_library(host: Host) -> None:
    for word, kind in (("disable", "empty"), ("bridge", "veth"), ("lagoon", "none")):
        host.conf(f"[Network]\nNetConfig={word}\n")
        assert host.run("--type", "lxc", "--user-id", "1000", "--config", "/c", "/lxc").status == 0
        assert lines_of(host, "lxc.net.0.type") == [kind]


# --- failures


@pytest.mark.parametrize("line", ["lxc.unknown.key = 1", "lxc.net.0.type = wrong"])
def test_the_library_refuses_what_it_does_not_know(host: Host, line: str) -> None:
    run_phone(host)
    host.file("/lxc", host.read("/lxc") + line + "\n")
    result = read_back(host, ENTRY)
    assert (result.status, result.stdout) == (1, "")
    assert result.stderr.endswith("/lxc: refused\n")


def test_the_reader_knows_no_other_keys_than_the_library(host: Host) -> None:
    run_phone(host)
    assert read_back(host, "lxc.unknown.key") == (2, "", "lxc.unknown.key: unknown key\n")
