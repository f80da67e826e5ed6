# SPDX-License-Identifier: MIT
"""The property file beyond the golden cases: users, versions, networks, hooks and failures."""

import pytest

from host import Host
from outputs import CONFIG, INVALID, OVERRIDE, comments, generate, properties, read


def test_the_user_id_is_user_and_group_id_where_ids_are_used(host: Host) -> None:
    host.user("container", 100000, home="/")
    host.conf(CONFIG + OVERRIDE + "UseIds=true\n")
    assert generate(host, "--user-id", "100000") == (0, "", "")
    assert read(host)["ro.quoll.host_user_id"] == "100000"
    assert read(host)["ro.quoll.host_group_id"] == "100000"


def test_the_instance_is_that_of_the_command_line(host: Host) -> None:
    assert properties(host, "")["ro.quoll.instance"] == "default"
    assert generate(host, "--instance", "two words") == (0, "", "")
    assert read(host)["ro.quoll.instance"] == "two words"


@pytest.mark.parametrize(
    "value, uid",
    [
        ("radio", "1010"),
        ("1010", "1010"),
        ("01010", "1010"),
        ("2000", "33"),  # the name of a user counts before a number
        ("33", "33"),
        ("4242", "0"),
        ("nobody here", "0"),
        ("1010 ", "0"),
        ("0x3f2", "0"),
        ("-1", "0"),
        ("4294968306", "0"),  # 1010 and 2^32
        ("root", "0"),
        ("", "0"),
    ],
)
def test_the_privileged_user_is_a_name_or_a_number(host: Host, value: str, uid: str) -> None:
    host.user("radio", 1010, home="/")
    host.user("2000", 33, home="/")
    host.user("shell", 2000, home="/")
    written = properties(host, f"PrivilegedHostUser={value}\n")
    assert written["ro.quoll.privileged_host_uid"] == uid
    assert "# privileged host uid" in comments(host)


# --- app ids


def test_none_with_an_empty_prefix_writes_nothing_about_app_ids(host: Host) -> None:
    written = properties(host, "AppIdPrefix=${config:No/Such}\n")
    assert not any("app_id" in name for name in written)
    assert "# wayland app id mangling" not in comments(host)


def test_none_with_a_prefix_writes_comment_and_prefix(host: Host) -> None:
    written = properties(host, "AppIdPrefix=quoll.\n")
    assert {n: v for n, v in written.items() if "app_id" in n} == {
        "ro.quoll.app_id_prefix": "quoll."
    }
    assert "# wayland app id mangling" in comments(host)


def test_no_dots_writes_its_number_and_the_prefix_if_there_is_one(host: Host) -> None:
    written = properties(host, "AppIdManglingType=NoDots\n")
    assert {n: v for n, v in written.items() if "app_id" in n} == {
        "ro.quoll.app_id_mangling_type": "1"
    }
    written = properties(host, "AppIdManglingType=NoDots\nAppIdPrefix=p\n")
    assert written["ro.quoll.app_id_prefix"] == "p"


@pytest.mark.parametrize("lines", ["", "AppIdPrefix=p\n", "AppIdManglingType=none\n"])
def test_any_other_mangling_fails_below_the_comment(host: Host, lines: str) -> None:
    host.conf(f"[Config]\n{OVERRIDE}{lines}")
    kind = "none" if "none" in lines else ""
    assert generate(host) == (1, "", f"{INVALID}AppIdManglingType: {kind}\n")
    assert host.read().endswith("ro.quoll.use_dialogs=0\n# wayland app id mangling\n")


# --- numbers and versions


@pytest.mark.parametrize(
    "value, written", [("96", "96"), ("96.5", "96.5"), ("96.0", "96"), ("1234567", "1.23457e+06")]
)
def test_real_numbers_have_six_digits_and_no_trailing_zeros(
    host: Host, value: str, written: str
) -> None:
    assert properties(host, f"[Display]\nDPIX={value}\n")["ro.quoll.host.dpi_x"] == written


def test_the_heap_size_has_a_default(host: Host) -> None:
    name = "ro.cradle.dalvik.vm.dex2oat-Xmx"
    assert properties(host, "")[name] == "512m"
    assert properties(host, "Dex2oatMaxHeapSize=${config:No/Such}\n")[name] == ""


@pytest.mark.parametrize(
    "text, number",
    [("3.2", "196610"), ("196610", "196610"), ("0x30002", "196610"), ("3", "3"), ("0.0", "0")],
)
def test_an_opengl_version_is_packed(host: Host, text: str, number: str) -> None:
    assert properties(host, f"OpenGLESVersion={text}\n")["ro.opengles.version"] == number


@pytest.mark.parametrize("text", ["3.2.1", "3,2", "3.", ".2", "-1", "3.2 ", "v3", "2147483648"])
def test_any_other_opengl_version_fails(host: Host, text: str) -> None:
    host.conf(f"{CONFIG}{OVERRIDE}OpenGLESVersion={text}\n")
    assert generate(host) == (1, "", f"{INVALID}OpenGLESVersion: {text}\n")
    assert host.read().endswith("ro.quoll.default_networking=0\n")


@pytest.mark.parametrize("value", ["0", "-5", "none"])
def test_a_battery_without_capacity_is_not_written(host: Host, value: str) -> None:
    assert "ro.host.battery.capacity" not in properties(host, f"BatteryCapacity={value}\n")
    assert "# hw adaptation extra properties" not in comments(host)


# --- network, device


@pytest.mark.parametrize(
    "word, lagoon, default",
    [
        ("lagoon", "1", "0"),
        ("bridge", "0", "1"),
        ("Lagoon", "0", "0"),
        ("${config:No/Such}", "0", "0"),
    ],
)
def test_the_network_is_written_as_two_flags(
    host: Host, word: str, lagoon: str, default: str
) -> None:
    written = properties(host, f"[Network]\nNetConfig={word}\n")
    assert written["ro.quoll.lagoon_networking"] == lagoon
    assert written["ro.quoll.default_networking"] == default
    assert comments(host).count("# networking") == 1


@pytest.mark.parametrize("word", ["skip", "disable"])
def test_a_network_that_is_not_the_guests_is_not_written(host: Host, word: str) -> None:
    written = properties(host, f"[Network]\nNetConfig={word}\n")
    assert not any("networking" in name for name in written)
    assert "# networking" not in comments(host)


def test_a_device_group_without_keys_gives_fifteen_empty_properties(host: Host) -> None:
    prefixes = ("ro.product.", "ro.build.", "ro.board.", "ro.vendor.")
    names = [n for n in properties(host, "") if n.startswith(prefixes)]
    assert names == [] and "# device properties" not in comments(host)
    written = properties(host, "[Device]\nAny=1\nAny=\n")
    values = [value for name, value in written.items() if name.startswith(prefixes)]
    assert values == [""] * 15
    assert comments(host).count("# device properties") == 1


def test_device_properties_come_from_those_of_the_host(host: Host) -> None:
    environment = host.android_properties()
    host.conf(f"{CONFIG}{OVERRIDE}[Device]\nProductModel=${{prop:ro.product.model}}\n")
    assert host.generate("--type", "property", env=environment) == (0, "", "")
    assert read(host)["ro.product.model"] == "Cradle One"


# --- levels and modes


@pytest.mark.parametrize(
    "level, letter",
    [
        ("verbose", "V"),
        ("debug", "D"),
        ("Info", "I"),
        ("warning", "W"),
        ("ERROR", "E"),
        ("fatal", "F"),
        ("s", "S"),
        ("Something", "S"),
    ],
)
def test_a_crash_log_level_is_its_first_letter(host: Host, level: str, letter: str) -> None:
    written = properties(host, f"CrashLoggerLogLevel={level}\n")
    assert written["ro.quoll.crashlogs_loglevel"] == letter


@pytest.mark.parametrize("level", ["x", "", "${config:No/Such}", " debug", "3"])
def test_any_other_crash_log_level_is_passed_over(host: Host, level: str) -> None:
    assert "ro.quoll.crashlogs_loglevel" not in properties(host, f"CrashLoggerLogLevel={level}\n")


@pytest.mark.parametrize("mode, number", [("fullscreen", "1"), ("freeform", "5")])
def test_a_launch_mode_is_the_guests_number(host: Host, mode: str, number: str) -> None:
    assert properties(host, f"AppLaunchMode={mode}\n")["ro.cradle.launch_mode"] == number


@pytest.mark.parametrize("mode", ["Fullscreen", "freeform ", "5"])
def test_any_other_launch_mode_fails(host: Host, mode: str) -> None:
    host.conf(f"{CONFIG}{OVERRIDE}AppLaunchMode={mode}\n")
    hint = " valid modes are freeform and fullscreen"
    assert generate(host) == (1, "", f"{INVALID}AppLaunchMode: {mode}{hint}\n")
    assert host.read().endswith("ro.quoll.keyboard_in_window=false\n")


# --- what comes before and behind the table


def test_the_comment_of_custom_properties_stands_without_any(host: Host) -> None:
    properties(host, "")
    assert comments(host)[-3:] == ["# custom properties", "# post-hooks", "# end of post-hooks"]


def test_custom_properties_are_lines_as_they_are(host: Host) -> None:
    custom = "CustomProperties=ro.a=1; b ;#c\nCustomProperties=ro.d=${USER}\n"
    host.conf(CONFIG + OVERRIDE + custom)
    assert generate(host) == (0, "", "")
    rest = host.read().partition("# custom properties\n")[2]
    assert rest.startswith("ro.a=1\n b \n#c\nro.d=alice\n# post-hooks\n")


def test_there_is_no_template_for_the_odm_directory(host: Host) -> None:
    host.conf(CONFIG + OVERRIDE + "DataRoot=${ODM_DIR}\nStoragePath=${HOME}/${INSTANCE}\n")
    assert generate(host) == (0, "", "ERROR: No such template 'ODM_DIR'\n")
    assert read(host)["ro.quoll.host_data_dir"] == ""
    assert read(host)["ro.quoll.host_storage_dir"] == "/home/alice/default"


def test_property_hooks_get_the_facts_of_the_run(host: Host) -> None:
    show = 'for argument; do printf "[%s]" "$argument"; done; echo\n'
    host.script("/c/property-pre-hooks/a.sh", show)
    host.script("/d/property-post-hooks/a.sh", show)
    host.conf(CONFIG + OVERRIDE)
    result = generate(host, "--config", "/d", "--instance", "phone", "--base-uid", "7")
    assert result == (0, "", "")
    shown = "[1000][alice][/home/alice][phone][7]\n"
    assert host.read().startswith(f"# pre-hooks\n{shown}# end of pre-hooks\n# generated\n")
    assert host.read().endswith(f"# post-hooks\n{shown}# end of post-hooks\n")


def test_stored_blocks_stand_behind_hooks_and_fragments(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", "echo ro.hook=1\n")
    host.script("/c/property-post-hooks/a.sh", "echo ro.hook=2\n")
    host.file("/c/static/a.ro", "ro.static=1\n")
    stored = "PropertyPre=ro.pre=1\nPropertyPost=ro.post=1\nDefaultRo=ro.default=1\n"
    host.conf(CONFIG + OVERRIDE + "[GeneratedConfig]\n" + stored)
    assert generate(host) == (0, "", "")
    before, _, rest = host.read().partition("# generated\n")
    assert before == (
        "# pre-hooks\nro.hook=1\n# end of pre-hooks\n"
        "# generated-config-property-pre\nro.pre=1\n# end of generated-config-property-pre\n"
    )
    assert rest.partition("# custom properties\n")[2] == (
        "# post-hooks\nro.hook=2\n# end of post-hooks\n"
        "# generated-config-property-post\nro.post=1\n# end of generated-config-property-post\n"
        "\n# /c/static/a.ro content\nro.static=1\n# end of /c/static/a.ro content\n"
        "# generated-config-default.ro content\nro.default=1\n"
        "# end of generated-config-default.ro content\n"
    )


# --- failures


def test_a_failing_run_runs_no_later_hook(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", "echo pre >>/ran\n")
    host.script("/c/property-post-hooks/a.sh", "echo post >>/ran\n")
    host.conf("[Config]\nAppIdManglingType=x\n")
    assert generate(host).status == 1
    assert host.read("/ran") == "pre\n"


def test_an_unwritable_file_is_no_failure(host: Host) -> None:
    host.conf(CONFIG + OVERRIDE)
    assert host.run("--type", "property", "--user-id", "1000", "--config", "/c", "/no/out") == (
        0,
        "",
        "",
    )
    assert not host.exists("/no/out")


def test_a_key_that_is_present_but_empty_counts_as_present(host: Host) -> None:
    groups = {
        "Audio": ["BufferSizeInDefault", "PerAppStreams"],
        "Config": ["RunVendorC2Service", "CodecXmlSuffix"],
        "Display": ["DMABufModifierLo", "DMABufFDIndex", "WLShmFormat", "InsetTop"],
    }
    lines = (f"[{g}]\n" + "".join(f"{k}=${{config:No/Such}}\n" for k in groups[g]) for g in groups)
    written = properties(host, "".join(lines))
    empty = {
        "ro.cradle.audio.buffer.in_default": "0",
        "ro.cradle.audio.per_app_streams_enabled": "false",
        "ro.cradle.dmabuf_modifier_lo": "0",
        "ro.cradle.dmabuf_fd_index": "0",
        "ro.cradle.wl_shm_format": "0",
        "ro.quoll.top_display_inset": "0",
        "ro.quoll.qti.allocator.service": "0",
        "ro.quoll.qti.c2.service": "0",
        "ro.media.xml_variant.codecs": "",
        "ro.media.xml_variant.codecs_performance": "",
        "ro.media.xml_variant.profiles": "",
    }
    assert {name: written.get(name) for name in empty} == empty


@pytest.mark.parametrize(
    "key, hint",
    [("AppLaunchMode", " valid modes are freeform and fullscreen"), ("OpenGLESVersion", "")],
)
def test_a_word_that_is_present_but_empty_is_wrong(host: Host, key: str, hint: str) -> None:
    host.conf(CONFIG + OVERRIDE + f"{key}=${{config:No/Such}}\n")
    assert generate(host) == (1, "", f"{INVALID}{key}: {hint}\n")
