# SPDX-License-Identifier: MIT
"""The guest's locale in the property file: the override, the configured file, the host's."""

import pytest

from host import Host
from outputs import CONFIG, INVALID, generate, read

NO_HOST_LOCALE = "WARNING: Could not parse locale file /etc/locale.conf\n"


def locale(host: Host) -> tuple[str, ...]:
    return tuple(read(host)[f"persist.sys.{part}"] for part in ("language", "country", "locale"))


@pytest.mark.parametrize(
    "name, parts",
    [
        ("fi_FI.UTF-8", ("fi", "FI", "fi-FI")),
        ("en-GB", ("en", "GB", "en-GB")),
        ("de__DE", ("de", "", "de-")),
        ("C.UTF-8", ("C", "UTF", "C-UTF")),
        ('"sv_SE"', ("sv", "SE", "sv-SE")),
    ],
)
def test_the_locale_is_that_of_the_host(host: Host, name: str, parts: tuple[str, ...]) -> None:
    host.file("/etc/locale.conf", f"LANG={name}\n")
    host.conf(CONFIG)
    assert generate(host) == (0, "", "")
    assert locale(host) == parts


def test_a_configured_file_is_read_in_the_place_of_the_hosts(host: Host) -> None:
    host.file("/etc/locale.conf", "LANG=fi_FI\n")
    host.file("/srv/locale", "LANG=sv_SE\n")
    host.conf(CONFIG + "LanguageFilePath=/srv/locale\n")
    result = host.generate("--type", "property", strace=["-e", "trace=openat"])
    assert result == (0, "", "")
    assert locale(host) == ("sv", "SE", "sv-SE")
    opened = "\n".join(host.trace())
    assert '"/srv/locale"' in opened and "/etc/locale.conf" not in opened


def test_with_an_override_no_file_is_read(host: Host) -> None:
    host.file("/etc/locale.conf", "LANG=fi_FI\n")
    host.file("/srv/locale", "LANG=sv_SE\n")
    host.conf(CONFIG + "LanguageFilePath=/srv/locale\nLanguageOverride=pt_BR\n")
    result = host.generate("--type", "property", strace=["-e", "trace=openat"])
    assert result == (0, "", "")
    assert locale(host) == ("pt", "BR", "pt-BR")
    opened = "\n".join(host.trace())
    assert '"/c/10-base.conf"' in opened and "locale" not in opened


def test_a_host_without_a_locale_has_the_default_one(host: Host) -> None:
    host.conf(CONFIG)
    assert generate(host) == (0, "", NO_HOST_LOCALE)
    assert locale(host) == ("en", "US", "en-US")


@pytest.mark.parametrize("text", ["LANG=C\n", "LANG=\n"])
def test_a_locale_of_one_piece_is_said_and_the_default_taken(host: Host, text: str) -> None:
    host.file("/etc/locale.conf", text)
    host.conf(CONFIG)
    name = text.strip().removeprefix("LANG=")
    error = f"ERROR: {name}: did not contain language and country\n"
    assert generate(host) == (0, "", error + NO_HOST_LOCALE)
    assert locale(host) == ("en", "US", "en-US")


@pytest.mark.parametrize("value, path", [("/srv/none", "/srv/none"), ("${config:No/Such}", "")])
def test_a_failing_configured_file_does_not_fall_back_to_the_hosts(
    host: Host, value: str, path: str
) -> None:
    host.file("/etc/locale.conf", "LANG=fi_FI\n")
    host.conf(CONFIG + f"LanguageFilePath={value}\n")
    warning = f"WARNING: Could not parse locale file {path}\n"
    assert generate(host) == (0, "", warning)
    assert locale(host) == ("en", "US", "en-US")


@pytest.mark.parametrize("value, name", [("english", "english"), ("${config:No/Such}", "")])
def test_a_wrong_override_fails_before_its_properties(host: Host, value: str, name: str) -> None:
    host.file("/etc/locale.conf", "LANG=fi_FI\n")
    host.conf(CONFIG + f"LanguageOverride={value}\n")
    error = f"ERROR: {name}: did not contain language and country\n"
    assert generate(host) == (1, "", f"{error}{INVALID}LanguageOverride: {name}\n")
    assert host.read().endswith("ro.quoll.default_networking=0\n")
