# SPDX-License-Identifier: MIT
"""Values from the Android property library: a stub of it, broken ones, and none at all."""

from sysconfig import get_config_var

import pytest

from host import Host, generated

LIBRARY = "libandroid-properties.so.1"


@pytest.mark.parametrize(
    "name, text",
    [
        ("ro.product.model", "Cradle One"),
        ("ro.build.id", " spaced; text "),
        ("ro.short", "1"),
        ("ro.dollar", "${HOME}"),
        ("ro.longest", "0123456789" * 9 + "01234"),
        ("ro.long.count", "text"),
    ],
)
def test_a_property_gives_its_text_as_it_stands(host: Host, name: str, text: str) -> None:
    host.conf(f"[A]\nKey=<${{prop:{name}}}>\n")
    assert host.generate(env=host.android_properties()) == (0, "", "")
    assert host.read() == generated(f"\n[A]\nKey=<{text}>\n")


def test_many_properties_are_read_in_one_run(host: Host) -> None:
    host.conf("[A]\nKey=${prop:ro.product.model}|${prop:ro.dollar}|${prop:ro.product.model}\n")
    assert host.generate(env=host.android_properties()) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=Cradle One|${HOME}|Cradle One\n")


# --- failures


def dropped(name: str) -> tuple[int, str, str]:
    """The end of a run that found no value for the property, told at level debug."""
    debug = f"DEBUG: Failed to read '{name}' from properties for template 'prop:{name}'\n"
    return (0, "", debug)


@pytest.mark.parametrize("name", ["ro.empty", "ro.negative", "ro.zero", "ro.unknown", "", "RO.DOLLAR", "a:b"])
def test_an_empty_or_unknown_property_has_no_value(host: Host, name: str) -> None:
    host.conf(f"[A]\nKey=x${{prop:{name}}}\n")
    result = host.generate("--log-level", "debug", env=host.android_properties())
    assert result == dropped(name)
    assert host.read() == generated()


def test_without_the_library_no_property_has_a_value(host: Host) -> None:
    host.conf("[A]\nKey=x${prop:ro.product.model}\nOther=1\n")
    assert host.generate("--log-level", "debug") == dropped("ro.product.model")
    assert host.read() == generated("\n[A]\nOther=1\n")


def test_a_library_that_is_none_gives_no_value(host: Host) -> None:
    host.conf("[A]\nKey=x${prop:ro.product.model}\n")
    host.file(f"/opt/android/{LIBRARY}", "no library")
    result = host.generate("--log-level", "debug", env={"LD_LIBRARY_PATH": "/opt/android"})
    assert result == dropped("ro.product.model")
    assert host.read() == generated()


def test_a_library_without_the_function_gives_no_value(host: Host) -> None:
    host.conf("[A]\nKey=x${prop:ro.product.model}\n")
    host.link(f"/opt/android/{LIBRARY}", f"/lib/{get_config_var('MULTIARCH')}/libutil.so.1")
    result = host.generate("--log-level", "debug", env={"LD_LIBRARY_PATH": "/opt/android"})
    assert result == dropped("ro.product.model")
    assert host.read() == generated()


def test_the_library_is_looked_for_only_once(host: Host) -> None:
    host.conf("A=${prop:ro.a}\nB=${prop:ro.b}\nC=${prop:ro.c}\n")
    host.directory("/opt/android")
    environment = {"LD_LIBRARY_PATH": "/opt/android"}
    assert host.generate(env=environment, strace=["-e", "trace=openat"]) == (0, "", "")
    wanted = f'"/opt/android/{LIBRARY}"'
    assert sum(wanted in call for call in host.trace()) == 1
