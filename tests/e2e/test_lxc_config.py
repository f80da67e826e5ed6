# SPDX-License-Identifier: MIT
"""The LXC configuration beyond the golden cases: devices, storage, hooks and failures."""

import pytest

from host import Host
from outputs import entries, lxc

FILE = "none bind,nosuid,create=file 0 0"
DIRECTORY = "none bind,nosuid,create=dir 0 0"


def lines(host: Host, *configuration: str) -> list[str]:
    """The lines that a run with this configuration writes."""
    host.conf("".join(f"{line}\n" for line in configuration))
    assert lxc(host) == (0, "", "")
    return host.read().splitlines()


def test_without_any_key_every_fixed_line_is_there(host: Host) -> None:
    assert lines(host, "[Other]", "Key=1") == [
        "lxc.arch = aarch64",
        "lxc.no_new_privs = 1",
        "lxc.mount.auto = cgroup:ro sys:ro proc:mixed",
        f"lxc.mount.entry = /dev/ dev/binder {FILE}",
        f"lxc.mount.entry = /dev/ dev/hwbinder {FILE}",
        f"lxc.mount.entry = /dev/ dev/vndbinder {FILE}",
        "lxc.mount.entry = /data data none rbind,nodev,nosuid 0 0",
        "lxc.mount.entry = . run/display none rbind,nodev,nosuid,create=dir 0 0",
        "# device properties from host",
        "lxc.mount.entry =  system/quoll.prop none bind,ro,nodev,nosuid,create=file 0 0",
    ]


def test_the_file_is_for_its_owner_alone(host: Host) -> None:
    lines(host, "[Other]", "Key=1")
    assert host.mode() == 0o600


def test_a_list_of_namespaces_without_elements_is_written_too(host: Host) -> None:
    assert "lxc.namespace.keep = " in lines(host, "[Config]", "KeepNamespaces=${config:No/Such}")


def test_an_empty_profile_is_not_written(host: Host) -> None:
    unset = "${config:No/Such}"
    written = lines(host, "[Config]", f"ApparmorProfile={unset}", f"Hostname={unset}")
    assert "lxc.uts.name = " in written
    assert not any(line.startswith("lxc.apparmor") for line in written)


@pytest.mark.parametrize(
    "path, directory",
    [
        ("/run/user/1000/wayland-0", "/run/user/1000"),
        ("/wayland-0", "/"),
        ("wayland-0", "."),
        ("/run/display/", "/run/display"),
        ("run/wayland-0", "run"),
    ],
)
def test_the_display_is_the_directory_part_of_the_socket(
    host: Host, path: str, directory: str
) -> None:
    lines(host, "[Config]", f"WaylandSocketPath={path}")
    entry = f"{directory} run/display none rbind,nodev,nosuid,create=dir 0 0"
    assert [e for e in entries(host) if " run/display " in e] == [entry]


# --- devices


def test_only_the_first_character_of_a_binder_device_is_looked_at(host: Host) -> None:
    names = ["BinderDev=binder", "HwBinderDev=/dev/binderfs/hwbinder", "VndBinderDev= /dev/x"]
    lines(host, "[Devices]", *names)
    sources = ["/dev/binder", "/dev/binderfs/hwbinder", "/dev/ /dev/x"]
    assert [entry.rsplit(" dev/", 1)[0] for entry in entries(host)[:3]] == sources


def test_every_match_of_a_required_device_is_bound(host: Host) -> None:
    for node in ("dev/video0", "dev/video1", "srv/node"):
        host.file(node)
    lines(host, "[Devices]", "RequiredDevNodes=/srv/node;video*")
    bound = entries(host)[3:6]
    assert bound[0] == f"/srv/node srv/node {FILE}"
    assert sorted(bound[1:]) == [f"/dev/video{n} dev/video{n} {FILE}" for n in (0, 1)]


def test_a_required_device_without_a_node_ends_the_run_where_an_optional_one_does_not(
    host: Host,
) -> None:
    bare = lines(host, "[Devices]", "BinderDev=b")
    assert lines(host, "[Devices]", "BinderDev=b", "DevNodes=video*") == bare
    host.conf("[Devices]\nBinderDev=b\nRequiredDevNodes=video*\n")
    error = "ERROR: Failed to find required device node file 'video*': No such file or directory\n"
    assert lxc(host) == (1, "", error)
    assert host.read().splitlines() == bare[:6]


@pytest.mark.parametrize("earlier", ["", "Arch=${realpath:/etc/passwd/x}\n"])
def test_the_reason_for_a_missing_device_is_that_of_its_own_look_up(
    host: Host, earlier: str
) -> None:
    facts = "[GeneratedConfig]\nUserId=1\nUser=u\nHome=/h\nBaseUid=0\n"
    host.conf(f"[Config]\n{earlier}[Devices]\nRequiredDevNodes=null;video*\n{facts}")
    error = "ERROR: Failed to find required device node file 'video*': No such file or directory\n"
    assert lxc(host) == (1, "", error)
    host.conf("[Devices]\nRequiredDevNodes=null/x\n")
    error = "ERROR: Failed to find required device node file 'null/x': Not a directory\n"
    assert lxc(host) == (1, "", error)


def test_a_directory_that_cannot_be_read_is_the_reason_for_a_missing_device(host: Host) -> None:
    host.directory("/dev/bus")
    host.conf("[Devices]\nRequiredDevNodes=bus/*\n")
    failing = ["-P", "/dev/bus", "-e", "inject=getdents64:error=EIO:when=1"]
    error = "ERROR: Failed to find required device node file 'bus/*': Input/output error\n"
    assert host.generate("--type", "lxc", strace=failing) == (1, "", error)


def test_a_directory_is_bound_as_such_without_its_slash(host: Host) -> None:
    host.file("/dev/dri/card0")
    lines(host, "[Devices]", "DevNodes=dri;/dev/dri/;/dev/dri/card*")
    assert entries(host)[3:6] == [
        f"/dev/dri dev/dri {DIRECTORY}",
        f"/dev/dri dev/dri {DIRECTORY}",
        f"/dev/dri/card0 dev/dri/card0 {FILE}",
    ]


def test_empty_lists_of_devices_write_nothing(host: Host) -> None:
    bare = lines(host, "[Devices]", "BinderDev=b")
    for key in ("RequiredDevNodes", "DevNodes"):
        assert lines(host, "[Devices]", "BinderDev=b", f"{key}=${{config:No/Such}}") == bare


# --- storage


@pytest.mark.parametrize(
    "storage, data_root, bound",
    [
        ("/home/u/data/media", "/home/u/data", False),
        ("/home/u/data/media", "/home/u/dat", True),
        ("/home/u/data", "/home/u/data", True),
        ("/home/u/data/media", "/home/u/data/", True),
        ("/home/u/media", "", False),
        ("media", "", True),
    ],
)
def test_storage_is_bound_unless_its_text_begins_with_the_data_root(
    host: Host, storage: str, data_root: str, bound: bool
) -> None:
    lines(host, "[Config]", f"StoragePath={storage}", f"DataRoot={data_root}")
    entry = f"{storage} data/media/0 none rbind,create=dir 0 0"
    assert [e for e in entries(host) if " data/media/0 " in e] == ([entry] if bound else [])


def test_storage_without_a_path_is_not_bound(host: Host) -> None:
    lines(host, "[Config]", "DataRoot=/home/u/data")
    assert not any(" data/media/0 " in entry for entry in entries(host))


# --- what comes before and behind the table


@pytest.mark.parametrize("path, directory", [("/odm/lib", "/odm"), ("/odm/bin", "/vendor")])
def test_the_odm_directory_is_a_template(host: Host, path: str, directory: str) -> None:
    host.file(path)
    lines(host, "[Config]", "DataRoot=${ODM_DIR}")
    assert f"{directory}/data data none rbind,nodev,nosuid 0 0" in entries(host)


def test_templates_are_those_of_the_run(host: Host) -> None:
    host.conf("[Config]\nHostname=${USER}-${USER_ID}-${INSTANCE}-${HOME}\n")
    assert lxc(host, "--instance", "phone") == (0, "", "")
    assert "lxc.uts.name = alice-1000-phone-/home/alice\n" in host.read()


def test_hooks_and_fragments_alternate_directory_by_directory(host: Host) -> None:
    before = lines(host, "[Config]", "Hostname=h")
    for name in "cd":
        host.script(f"/{name}/mount-hooks/a.sh", f'echo "/{name}/$1/$5 x none bind 0 0"\n')
        host.file(f"/{name}/static/a.lxc", f"lxc.tty.max = {name}")
    assert lxc(host, "--config", "/d", "--base-uid", "7") == (0, "", "")
    assert host.read().splitlines()[len(before) :] == [
        line
        for name in "cd"
        for line in (
            f"lxc.mount.entry = /{name}/1000/7 x none bind 0 0",
            "",
            f"# /{name}/static/a.lxc content",
            f"lxc.tty.max = {name}",
            f"# end of /{name}/static/a.lxc content",
        )
    ]


def test_stored_lines_come_last_also_without_stored_facts(host: Host) -> None:
    host.file("/c/static/a.lxc", "lxc.tty.max = 0\n")
    written = lines(host, "[GeneratedConfig]", "DefaultLxc=lxc.a = 1;# b", "DefaultLxc=c")
    assert written[-5:] == [
        "# generated-config-default.lxc content",
        "lxc.a = 1",
        "# b",
        "c",
        "# end of generated-config-default.lxc content",
    ]


# --- failures


def test_an_invalid_entry_of_a_hook_is_dropped(host: Host) -> None:
    host.conf("[Config]\nHostname=h\n")
    host.script("/c/mount-hooks/a.sh", "echo '/x y none bind 0'\necho '/x y none bind 0 0'\n")
    assert lxc(host) == (
        0,
        "",
        "ERROR: Not enough parts in mount entry: /x y none bind 0\n"
        "WARNING: Invalid mount entry from /c/mount-hooks/a.sh: /x y none bind 0\n",
    )
    assert host.read().endswith("lxc.mount.entry = /x y none bind 0 0\n")


def test_a_failing_run_runs_no_hook(host: Host) -> None:
    host.conf("[Config]\nMounts=x\n")
    host.script("/c/mount-hooks/a.sh", "echo >/ran\n")
    assert lxc(host).status == 1
    assert not host.exists("/ran")


@pytest.mark.parametrize("kind", ["lxc", "property"])
def test_without_a_user_on_the_seat_nothing_is_written(host: Host, kind: str) -> None:
    host.conf("[Config]\nAppIdManglingType=None\n")
    host.path("run/systemd/users").rmdir()  # no login monitor: nobody is waited for
    result = host.run("--type", kind, "--config", "/c", "/out.conf")
    assert result.status == 1
    said = result.stderr.splitlines()
    assert said[:2] == [
        "WARNING: Could not get sessions for seat0",
        "WARNING: Could not create login monitor",
    ]
    assert said[2:] == ["ERROR: Failed to get seat0 user: No such file or directory"]
    assert not host.exists()


@pytest.mark.parametrize("kind", ["lxc", "property"])
def test_a_configuration_that_breaks_while_it_is_read_ends_the_run(host: Host, kind: str) -> None:
    # The user is looked for in a first reading, which expands no template of this key.
    host.conf("[Config]\nArch=${system:echo broken >/d/10.conf}\n")
    host.directory("/d")
    assert host.generate("--type", kind, "--config", "/d") == (
        1,
        "",
        "ERROR: Could not parse line as key in /d/10.conf (1): 'broken'\n"
        "ERROR: Failed to load config from '/d/10.conf'\n"
        "ERROR: Invalid configuration in /d/10.conf\n",
    )
    assert not host.exists()
