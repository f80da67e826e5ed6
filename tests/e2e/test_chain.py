# SPDX-License-Identifier: MIT
"""The three runs in their order: what the first one found arrives in the other two."""

import pytest

from host import Host, Result

BASE = "[Config]\nAppIdManglingType=None\nLanguageOverride=en_US\nUseIds=true\nMountHome=true\n"
FACTS = "UserId={}\nUser=u\nHome=/srv/u\nInstance=i\nBaseUid={}\n"
PLACES = {"of its own": "/generated", "beside its sources": "/c"}


@pytest.fixture(params=PLACES.values(), ids=PLACES.keys())
def place(request: pytest.FixtureRequest) -> str:
    """The directory of the generated configuration."""
    return str(request.param)


def first_run(host: Host, place: str, *arguments: str) -> None:
    host.directory(place)
    fixed = ("--type", "config", "--config", "/c", *arguments)
    assert host.run(*fixed, f"{place}/99-generated.conf") == (0, "", "")


def run_from(host: Host, place: str, kind: str, *arguments: str) -> Result:
    """A later run, which is told of another user and must not look for it."""
    fixed = ("--type", kind, "--user-id", "4242", "--instance", "x", "--base-uid", "1")
    return host.run(*fixed, "--config", place, *arguments, f"/{kind}")


def later_run(host: Host, place: str, kind: str) -> list[str]:
    """The lines of a later run that ends well."""
    assert run_from(host, place, kind) == (0, "", "")
    return host.read(f"/{kind}").splitlines()


def after(lines: list[str], head: str) -> list[str]:
    """The lines behind a line that stands there once."""
    assert lines.count(head) == 1
    return lines[lines.index(head) + 1 :]


def block(lines: list[str], comment: str) -> list[str]:
    """The lines between a comment and its end."""
    rest = after(lines, f"# {comment}")
    assert rest.count(f"# end of {comment}") == 1
    return rest[: rest.index(f"# end of {comment}")]


# --- facts


def test_user_and_instance_are_those_of_the_first_run(host: Host, place: str) -> None:
    host.conf(BASE)
    first_run(host, place, "--user-id", "1000", "--instance", "phone", "--base-uid", "7")
    properties = later_run(host, place, "property")
    assert "ro.quoll.host_user_id=1000" in properties
    assert "ro.quoll.host_group_id=1000" in properties
    assert "ro.quoll.instance=phone" in properties
    entry = "/home/alice mnt/media_rw/8ff87de4-0b37-4799-b09a-82773e869e07 none"
    entry += " rbind,nodev,nosuid,ro,create=dir 0 0"
    assert f"lxc.mount.entry = {entry}" in later_run(host, place, "lxc")


def test_the_dconf_database_of_a_stored_user_is_read(host: Host) -> None:
    host.dconf("/home/alice/.config", "[a]\nkey='of alice'\n")
    facts = FACTS.format(1000, 0)
    host.conf(f"{BASE}DataRoot=${{dconf:/a/key}}\n[GeneratedConfig]\n{facts}")
    assert "ro.quoll.host_data_dir=of alice" in later_run(host, "/c", "property")


def test_the_user_of_the_seat_is_looked_for_once(host: Host, place: str) -> None:
    host.conf(BASE)
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    first_run(host, place)
    host.path("run/systemd/seats/seat0").unlink()
    assert host.run("--type", "property", "--config", place, "/property") == (0, "", "")
    assert "ro.quoll.host_user_id=1000\n" in host.read("/property")


@pytest.mark.parametrize("uid", [2**31 - 1, 2**31, 3000000000, 2**32 - 2])
def test_large_user_ids_survive(host: Host, place: str, uid: int) -> None:
    host.user("big", uid, home="/home/big")
    host.conf(BASE)
    first_run(host, place, "--user-id", str(uid if uid < 2**31 else uid - 2**32))
    assert f"ro.quoll.host_user_id={uid}" in later_run(host, place, "property")


@pytest.mark.parametrize("uid", [2**31, 3000000000])
def test_large_base_uids_survive(host: Host, place: str, uid: int) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n[Features]\nCrashLoggerEnabled=true\n")
    first_run(host, place, "--user-id", "1000", "--base-uid", str(uid - 2**32))
    assert f"BaseUid={uid}\n" in host.read(f"{place}/99-generated.conf")
    host.directory("/tmp/cradle")
    warning = "WARNING: Could not create /tmp/cradle/crashlogs: Success\n"
    assert run_from(host, place, "lxc") == (0, "", warning)
    assert not host.exists("/tmp/cradle/crashlogs")


def test_without_a_stored_instance_that_of_the_command_line_stays(host: Host) -> None:
    facts = FACTS.format(5, 0).replace("Instance=i\n", "")
    host.conf(f"{BASE}[GeneratedConfig]\n{facts}")
    assert "ro.quoll.instance=x" in later_run(host, "/c", "property")


@pytest.mark.parametrize("missing", ["UserId", "User", "Home", "BaseUid"])
def test_with_a_fact_missing_the_run_looks_for_itself(host: Host, missing: str) -> None:
    facts = "".join(
        line for line in FACTS.format(5, 0).splitlines(True) if not line.startswith(f"{missing}=")
    )
    host.conf(f"{BASE}[GeneratedConfig]\n{facts}")
    assert host.generate("--type", "property", "--instance", "own") == (0, "", "")
    lines = host.read().splitlines()
    assert "ro.quoll.host_user_id=1000" in lines and "ro.quoll.instance=own" in lines
    assert lines[:2] == ["# pre-hooks", "# end of pre-hooks"]


# --- hooks and fragments


def count_runs(host: Host, *hooks: str) -> None:
    """Hooks that leave a line with their name and arguments in /ran."""
    for hook in hooks:
        host.script(f"/c/{hook}/a.sh", f'echo {hook} "$@" >>/ran\necho ro.{hook}=$#\n')


def test_property_hooks_run_once_and_their_lines_arrive(host: Host, place: str) -> None:
    host.conf(BASE)
    count_runs(host, "property-pre-hooks", "property-post-hooks")
    first_run(host, place, "--user-id", "1000")
    arguments = "1000 alice /home/alice default 0\n"
    ran = f"property-pre-hooks {arguments}property-post-hooks {arguments}"
    assert host.read("/ran") == ran
    lines = later_run(host, place, "property")
    assert host.read("/ran") == ran
    assert block(lines, "generated-config-property-pre") == ["ro.property-pre-hooks=5"]
    assert block(lines, "generated-config-property-post") == ["ro.property-post-hooks=5"]
    assert "# pre-hooks" not in lines and "# post-hooks" not in lines
    assert lines[0] == "# generated-config-property-pre"


def test_static_properties_are_not_copied_but_arrive(host: Host, place: str) -> None:
    host.conf(BASE)
    host.file("/c/static/a.ro", "ro.a=1\n\n# two\n")
    first_run(host, place, "--user-id", "1000")
    lines = later_run(host, place, "property")
    assert block(lines, "generated-config-default.ro content") == ["ro.a=1", "# two"]
    assert "# /c/static/a.ro content" not in lines
    assert lines[-1] == "# end of generated-config-default.ro content"


def test_mounts_of_hooks_arrive_in_the_container(host: Host, place: str) -> None:
    host.conf(BASE)
    host.script("/c/mount-hooks/a.sh", 'if [ $# = 5 ]; then echo "$3 mnt none bind 0 0"; fi\n')
    first_run(host, place, "--user-id", "1000")
    lines = later_run(host, place, "lxc")
    assert lines.count("lxc.mount.entry = /home/alice mnt none bind 0 0") == 1


def test_mount_hooks_beside_the_generated_file_run_again_without_arguments(host: Host) -> None:
    host.conf(BASE)
    host.script("/c/mount-hooks/a.sh", 'echo "$#" "$@" >>/ran\necho "/run$# mnt none bind 0 0"\n')
    first_run(host, "/c", "--user-id", "1000")
    lines = later_run(host, "/c", "lxc")
    assert host.read("/ran") == "5 1000 alice /home/alice default 0\n0\n"
    mounts = [line for line in lines if line.startswith("lxc.mount.entry = /run")]
    assert mounts == [f"lxc.mount.entry = /run{n} mnt none bind 0 0" for n in (5, 0)]
    assert lines[-1] == mounts[-1]


def test_static_fragments_beside_the_generated_file_are_copied_as_well(host: Host) -> None:
    host.conf(BASE)
    host.file("/c/static/a.lxc", "lxc.cap.drop = mknod\n\nlxc.tty.max = 0\n")
    first_run(host, "/c", "--user-id", "1000")
    lines = later_run(host, "/c", "lxc")
    copied = ["lxc.cap.drop = mknod", "", "lxc.tty.max = 0"]
    assert block(lines, "/c/static/a.lxc content") == copied
    stored = ["lxc.cap.drop = mknod", "lxc.tty.max = 0"]
    assert block(lines, "generated-config-default.lxc content") == stored
    assert lines[-1] == "# end of generated-config-default.lxc content"


def test_from_a_directory_of_its_own_only_the_stored_fragments_come(host: Host) -> None:
    host.conf(BASE)
    host.file("/c/static/a.lxc", "lxc.tty.max = 0\n")
    first_run(host, "/generated", "--user-id", "1000")
    lines = later_run(host, "/generated", "lxc")
    assert lines.count("lxc.tty.max = 0") == 1
    assert block(lines, "generated-config-default.lxc content") == ["lxc.tty.max = 0"]


# --- templates


def test_templates_arrive_as_the_first_run_expanded_them(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\nDataRoot=${HOME}/${INSTANCE}\n")
    first_run(host, "/generated", "--user-id", "1000", "--instance", "phone")
    entry = "lxc.mount.entry = /home/alice/phone/data data none rbind,nodev,nosuid 0 0"
    assert entry in later_run(host, "/generated", "lxc")


def test_beside_its_sources_a_template_is_unknown_and_the_stored_text_counts(host: Host) -> None:
    host.conf("[Config]\nAppIdManglingType=None\nDataRoot=${HOME}/data\n")
    first_run(host, "/c", "--user-id", "1000")
    assert run_from(host, "/c", "lxc") == (0, "", "ERROR: No such template 'HOME'\n")
    assert "lxc.mount.entry = /home/alice/data/data data none" in host.read("/lxc")


@pytest.mark.parametrize(
    "kind, key", [("lxc", "lxc.arch = "), ("property", "ro.cradle.dalvik.vm.dex2oat-Xmx=")]
)
def test_a_later_run_reads_the_dconf_database_of_the_user_that_it_finds(
    host: Host, kind: str, key: str
) -> None:
    host.dconf("/home/alice/.config", "[a]\nkey='of alice'\n")
    value = "${dconf:/a/key}"
    host.conf(f"{BASE}Arch={value}\nDex2oatMaxHeapSize={value}\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000", SESSIONS="c1", UIDS="1000")
    assert host.run("--type", kind, "--config", "/c", "/out.conf") == (0, "", "")
    assert f"{key}of alice\n" in host.read()


# --- failures


@pytest.mark.parametrize("kind", ["lxc", "property"])
def test_a_broken_generated_configuration_ends_the_run(host: Host, kind: str) -> None:
    host.conf(BASE)
    first_run(host, "/generated", "--user-id", "1000")
    file = "/generated/99-generated.conf"
    host.file(file, host.read(file) + "cut off")
    result = run_from(host, "/generated", kind)
    number = len(host.read(file).splitlines())
    assert result == (
        1,
        "",
        f"ERROR: Could not parse line as key in {file} ({number}): 'cut off'\n"
        f"ERROR: Failed to load config from '{file}'\nERROR: Invalid configuration in {file}\n",
    )
    assert not host.exists(f"/{kind}")


def test_a_wrong_value_of_the_first_run_is_found_by_the_last(host: Host, place: str) -> None:
    host.conf("[Config]\nAppIdManglingType=Dots\n")
    first_run(host, place, "--user-id", "1000")
    error = "ERROR: Invalid value for Config/AppIdManglingType: Dots\n"
    assert run_from(host, place, "property") == (1, "", error)
    assert host.read("/property").endswith("# wayland app id mangling\n")
