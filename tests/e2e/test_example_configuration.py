# SPDX-License-Identifier: MIT
"""The example configuration in conf/, as tools/demo runs it."""

import shutil
from pathlib import Path

import pytest

from host import Host, Result

CONF = Path(__file__).parents[2] / "conf"
DEFAULTS = "/conf/cradle.conf.d"
DEVICE = "/conf/device.conf.d"


@pytest.fixture
def example(host: Host) -> Host:
    """A host with the example configuration in /conf."""
    shutil.copytree(CONF, host.path("/conf"))
    return host


def generate(host: Host, *directories: str, **env: str) -> list[str]:
    """The lines that are generated from the directories, without a message."""
    configs = ":".join(directories)
    result = host.run("--configs", configs, "--user-id", "1000", "/out.conf", env=env)
    assert result == Result(0)
    return host.read().splitlines()


def test_the_defaults_are_accepted_in_silence_on_a_bare_host(example: Host) -> None:
    lines = generate(example, DEFAULTS)
    assert "Hostname=cradle-default" in lines
    assert "PrivilegedHostUser=alice" in lines
    assert "StoragePath=/var/lib/cradle/default/data/media/0" in lines
    assert "WaylandSocketPath=/run/user/1000/wayland-0" in lines
    assert "Mounts=tmpfs dev/shm tmpfs nosuid,nodev,create=dir 0 0" in lines


def test_the_data_directory_follows_the_environment(example: Host) -> None:
    lines = generate(example, DEFAULTS, CRADLE_DATA_ROOT="/srv/cradle")
    assert "DataRoot=/var/lib/cradle/default;/srv/cradle" in lines
    assert "StoragePath=/srv/cradle/data/media/0" in lines


def test_host_files_that_exist_are_mounted(example: Host) -> None:
    example.file("/usr-lib-os-release", "")
    example.link("/etc/os-release", "/usr-lib-os-release")
    example.directory("/media")
    lines = generate(example, DEFAULTS, DEVICE)
    assert (
        "Mounts=tmpfs dev/shm tmpfs nosuid,nodev,create=dir 0 0"
        ";/usr-lib-os-release run/host/os-release none bind,ro,create=file 0 0"
        ";/vendor/etc/camera vendor/etc/camera none bind,ro,create=dir,optional 0 0"
    ) in lines
    assert "Mounts=/media mnt/host/media none rbind,ro,nodev,nosuid,create=dir 0 0" in lines


@pytest.mark.parametrize("kind", ["config", "lxc", "property"])
def test_the_defaults_make_every_output_without_any_device(example: Host, kind: str) -> None:
    example.file("/etc/locale.conf", "LANG=en_US.UTF-8\n")
    options = ("--config", DEFAULTS, "--user-id", "1000", "--type", kind)
    assert example.run(*options, "/out.conf") == Result(0)


@pytest.mark.parametrize("kind", ["lxc", "property"])
def test_what_is_generated_makes_the_other_outputs(example: Host, kind: str) -> None:
    example.directory("/generated")
    example.file("/etc/locale.conf", "LANG=en_US.UTF-8\n")
    configs = ("--configs", f"{DEFAULTS}:{DEVICE}", "--user-id", "1000")
    assert example.run(*configs, "/generated/generated.conf") == Result(0)
    options = ("--config", "/generated", "--type", kind)
    assert example.run(*options, "/out.conf") == Result(0)
    line = {"lxc": "lxc.prlimit.nofile = 65536", "property": "ro.adb.secure=1"}
    assert line[kind] in example.read().splitlines()


def test_the_device_directory_replaces_what_it_clears(example: Host) -> None:
    example.file("/etc/os-release", 'PRETTY_NAME="Example OS 1"\n')
    lines = generate(example, DEFAULTS, DEVICE)
    network = lines.index("[Network]")
    assert lines[network : network + 3] == ["[Network]", "NetConfig=lagoon", ""]
    assert "Density=240" in lines
    assert "DPIX=240" in lines
    assert "DevNodes=ashmem;fuse;uinput;dri;video*;kgsl-3d0;ion" in lines
    assert "BuildDescription=Example OS 1" in lines
    assert "ProductModel=Example Tablet" in lines


def test_the_hardware_adaptation_names_the_device(example: Host) -> None:
    env = example.android_properties()
    lines = generate(example, DEFAULTS, DEVICE, **env)
    assert "ProductModel=Example Tablet;Cradle One" in lines
    assert "ProductName=example" in lines


def test_hooks_and_fragments_of_both_directories_arrive(example: Host) -> None:
    example.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Helsinki")
    lines = generate(example, DEFAULTS, DEVICE)
    generated = lines[lines.index("[GeneratedConfig]") + 1 :]
    memory = generated.pop(6)
    assert memory.removeprefix("PropertyPre=ro.config.low_ram=") in ("true", "false")
    assert generated == [
        "DefaultLxc=# Limits of the container, copied as they stand.",
        "DefaultLxc=lxc.cap.drop = mac_admin mac_override sys_module sys_time",
        "DefaultLxc=lxc.prlimit.nofile = 65536",
        "DefaultRo=# Properties of the guest, copied as they stand.",
        "DefaultRo=ro.adb.secure=1",
        "DefaultRo=ro.control_privapp_permissions=enforce",
        "PropertyPost=persist.sys.timezone=Europe/Helsinki",
        "DefaultLxc=# Devices of this hardware, copied as they stand.",
        "DefaultLxc=lxc.cgroup2.devices.allow = c 10:* rwm",
        "UserId=1000",
        "User=alice",
        "Home=/home/alice",
        "Instance=default",
        "BaseUid=0",
    ]
    downloads = "/home/alice/Downloads data/media/0/Download none rbind,optional,create=dir 0 0"
    assert f"Mounts={downloads}" in lines
