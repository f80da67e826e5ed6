# SPDX-License-Identifier: MIT
"""Values from dconf, read from real databases."""

import re

import pytest

from host import Host, generated

CONFIG_HOME = "/home/alice/.config"


@pytest.mark.parametrize(
    "stored, text",
    [
        ("true", "true"),
        ("false", "false"),
        ("byte 0x41", "A"),
        ("byte 0x24", "$"),
        ("byte 0x3b", ";"),
        ("byte 0x00", "\0"),
        ("byte 0xe9", "\udce9"),
        ("int16 -32768", "-32768"),
        ("uint16 65535", "65535"),
        ("-2147483648", "-2147483648"),
        ("1234567", "1234567"),
        ("uint32 4294967295", "4294967295"),
        ("int64 -9223372036854775808", "-9223372036854775808"),
        ("uint64 18446744073709551615", "18446744073709551615"),
        ("0.5", "0.5"),
        ("100000.0", "100000"),
        ("1000000.0", "1e+06"),
        ("3.14159265", "3.14159"),
        ("-1e-10", "-1e-10"),
        ("'some text'", "some text"),
        ("' ${USER} a;b '", " ${USER} a;b "),
        ("'\u00e4\u20ac'", "\u00e4\u20ac"),
    ],
)
def test_a_value_of_a_basic_type_is_text(host: Host, stored: str, text: str) -> None:
    host.dconf(CONFIG_HOME, f"[some/path]\nkey={stored}\n")
    host.conf("[A]\nKey=${dconf:/some/path/key}\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated(f"\n[A]\nKey={text}\n")


def test_the_database_is_that_of_the_user_who_was_asked_for(host: Host) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey='of alice'\n")
    host.dconf("/root/.config", "[a]\nkey='of root'\n")
    host.dconf("/elsewhere", "[a]\nkey='of the caller'\n")
    host.conf("[A]\nKey=${dconf:/a/key}\n")
    assert host.generate(env={"XDG_CONFIG_HOME": "/elsewhere"}) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=of alice\n")


@pytest.mark.parametrize(
    "environment, text",
    [
        ({"XDG_CONFIG_HOME": "/elsewhere"}, "of the caller"),
        ({"HOME": "/"}, "of the home directory"),
        ({}, "of root"),
    ],
    ids=str,
)
def test_the_database_is_the_callers_when_the_user_is_detected(
    host: Host, environment: dict[str, str], text: str
) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey='of alice'\n")
    host.dconf("/root/.config", "[a]\nkey='of root'\n")
    host.dconf("/elsewhere", "[a]\nkey='of the caller'\n")
    host.dconf("/.config", "[a]\nkey='of the home directory'\n")
    host.conf("[A]\nKey=${dconf:/a/key}\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    assert host.run("--config", "/c", "/out.conf", env=environment) == (0, "", "")
    assert host.read() == generated(f"\n[A]\nKey={text}\n")


@pytest.mark.parametrize(
    "user, environment, before, after",
    [
        ("1000", {}, "unset", "[]"),
        ("1000", {"XDG_CONFIG_HOME": ""}, "[]", "[]"),
        ("1000", {"XDG_CONFIG_HOME": "/x"}, "[/x]", "[/x]"),
        ("-1", {}, "unset", "unset"),
        ("-1", {"XDG_CONFIG_HOME": "/x"}, "[/x]", "[/x]"),
    ],
)
def test_the_configuration_home_is_put_back_and_never_left_unset_for_a_given_user(
    host: Host, user: str, environment: dict[str, str], before: str, after: str
) -> None:
    show = "printenv XDG_CONFIG_HOME >/tmp/home && echo [$(cat /tmp/home)] || echo unset"
    host.dconf(CONFIG_HOME, "[a]\nkey=1\n")
    host.conf(f"[A]\nA=${{system:{show}}}\nB=x${{dconf:/a/missing}}\nC=${{system:{show}}}\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    result = host.run("--user-id", user, "--config", "/c", "/out.conf", env=environment)
    assert result == (0, "", "")
    assert host.read() == generated(f"\n[A]\nA={before}\nC={after}\n")


def test_many_keys_are_read_in_one_run(host: Host) -> None:
    host.dconf(CONFIG_HOME, "[a]\n" + "".join(f"k{i}={i}\n" for i in range(50)))
    host.conf("[A]\n" + "".join(f"K{i:02}=${{dconf:/a/k{i}}}\n" for i in range(50)))
    assert host.generate() == (0, "", "")
    lines = "".join(f"K{i:02}={i}\n" for i in range(50))
    assert host.read() == generated("\n[A]\n" + lines)


# --- failures


def test_a_handle_is_read_as_an_integer_which_glib_refuses(host: Host) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey=handle 7\n")
    host.conf("[A]\nKey=${dconf:/a/key}\n")
    status, stdout, stderr = host.generate()
    assert (status, stdout) == (0, "")
    assert re.fullmatch(r"\n\(process:\d+\): GLib-CRITICAL .* g_variant_get_int32: .*\n", stderr)
    assert host.read() == generated("\n[A]\nKey=0\n")


@pytest.mark.parametrize(
    "stored, kind",
    [
        ("['a', 'b']", "as"),
        ("objectpath '/a'", "o"),
        ("signature 'ai'", "g"),
        ("<1>", "v"),
        ("(1, 'a')", "(is)"),
        ("@mi 5", "mi"),
        ("{'a': <1>}", "a{sv}"),
        ("b'bytes'", "ay"),
        ("@ai []", "ai"),
        ("()", "()"),
    ],
)
def test_a_value_of_another_type_is_dropped_with_a_warning(
    host: Host, stored: str, kind: str
) -> None:
    host.dconf(CONFIG_HOME, f"[a]\nkey={stored}\n")
    host.conf("[A]\nKey=before\nKey=${dconf:/a/key}\n")
    warning = f"WARNING: Unsupported GVariant type '{kind}'\n"
    assert host.generate() == (0, "", warning)
    assert host.read() == generated("\n[A]\nKey=before\n")


def test_a_warning_of_a_type_comes_before_the_debug_message(host: Host) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey=@as []\n")
    host.conf("[A]\nKey=${dconf:/a/key}\n")
    assert host.generate("--log-level", "debug") == (
        0,
        "",
        "WARNING: Unsupported GVariant type 'as'\n"
        "DEBUG: Failed to read '/a/key' from dconf for template 'dconf:/a/key'\n",
    )


@pytest.mark.parametrize("key", ["", "a", "a/key", "/a/", "//", "/a//key", "/A/key", "/a/key:x"])
def test_what_is_no_key_has_no_value(host: Host, key: str) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey=1\n")
    host.conf(f"[A]\nKey=x${{dconf:{key}}}\n")
    debug = f"DEBUG: Failed to read '{key}' from dconf for template 'dconf:{key}'\n"
    assert host.generate("--log-level", "debug") == (0, "", debug)
    assert host.read() == generated()


@pytest.mark.parametrize("kind", ["garbage", "empty", "directory"])
def test_a_broken_database_has_no_keys(host: Host, kind: str) -> None:
    host.conf("[A]\nKey=x${dconf:/a/key}\n")
    if kind == "directory":
        host.directory(f"{CONFIG_HOME}/dconf/user")
    else:
        host.file(f"{CONFIG_HOME}/dconf/user", "garbage" * 100 if kind == "garbage" else "")
    assert host.generate() == (0, "", "")
    assert host.read() == generated()


@pytest.mark.parametrize(
    "database", ["[a]\nother=1\n", "[a]\nkey=''\n", "[b]\nkey=1\n"], ids=repr
)
def test_a_key_without_a_text_is_dropped(host: Host, database: str) -> None:
    host.dconf(CONFIG_HOME, database)
    host.conf("[A]\nKey=x${dconf:/a/key}\n")
    debug = "DEBUG: Failed to read '/a/key' from dconf for template 'dconf:/a/key'\n"
    assert host.generate("--log-level", "debug") == (0, "", debug)
    assert host.read() == generated()


def test_without_the_dconf_library_no_key_has_a_value(host: Host) -> None:
    host.dconf(CONFIG_HOME, "[a]\nkey=1\n")
    host.conf("[A]\nKey=x${dconf:/a/key}\n")
    host.file("/opt/broken/libdconf.so.1", "no library")
    assert host.generate(env={"LD_LIBRARY_PATH": "/opt/broken"}) == (0, "", "")
    assert host.read() == generated()


def test_without_a_database_no_key_has_a_value(host: Host) -> None:
    host.conf("[A]\nKey=x${dconf:/a/key}\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated()


# --- a library that is not what it should be


STUB = "libdconf.so.1"


def test_the_stub_library_is_read_in_the_place_of_the_real_one(host: Host) -> None:
    host.conf("[A]\nKey=x ${dconf:/a/key}\n")
    assert host.generate(env=host.stub(STUB)) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=x from the stub\n")


@pytest.mark.parametrize(
    "function",
    [
        "dconf_client_new",
        "dconf_client_read",
        "g_object_unref",
        "g_variant_unref",
        "g_variant_get_type_string",
        "g_variant_get_boolean",
        "g_variant_get_byte",
        "g_variant_get_int16",
        "g_variant_get_uint16",
        "g_variant_get_int32",
        "g_variant_get_uint32",
        "g_variant_get_int64",
        "g_variant_get_uint64",
        "g_variant_get_double",
        "g_variant_get_string",
    ],
)
def test_a_library_that_lacks_a_function_is_none(host: Host, function: str) -> None:
    host.conf("[A]\nKey=x ${dconf:/a/key}\n")
    assert host.generate(env=host.stub(STUB, without=function)) == (0, "", "")
    assert host.read() == generated()


@pytest.mark.parametrize(
    "missing, log",
    [
        ("client", ""),
        ("type", "WARNING: Unsupported GVariant type '(null)'\n"),
        ("text", ""),
    ],
)
def test_what_the_library_does_not_give_is_no_value(host: Host, missing: str, log: str) -> None:
    host.conf("[A]\nKey=x ${dconf:/a/key}\n")
    assert host.generate(env=host.stub(STUB) | {"DCONF_STUB": missing}) == (0, "", log)
    assert host.read() == generated()
