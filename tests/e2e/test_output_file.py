# SPDX-License-Identifier: MIT
"""The output file: its mode, what was there before, and the whole text of a rich run."""

import signal

import pytest

from host import COMMENT, FIND_PROGRAM, Host, generated


@pytest.fixture
def host(host: Host) -> Host:
    """The host of this file: a small configuration."""
    host.conf("[A]\nKey=1\n")
    return host


@pytest.mark.parametrize("umask", [0o022, 0o000, 0o077, 0o177, 0o007], ids=oct)
def test_a_new_file_is_for_its_owner_alone(host: Host, umask: int) -> None:
    assert host.generate(umask=umask) == (0, "", "")
    assert host.mode() == 0o600
    assert host.read() == generated("\n[A]\nKey=1\n")


def test_the_umask_of_commands_and_hooks_is_the_caller_s(host: Host) -> None:
    host.conf("[A]\nKey=${system:umask}\n")
    host.script("/c/property-pre-hooks/a.sh", "umask\n")
    assert host.generate(umask=0o027) == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=0027\n", "PropertyPre=0027\n")


@pytest.mark.parametrize("mode", [0o644, 0o666, 0o600, 0o755], ids=oct)
def test_an_existing_file_is_truncated_and_keeps_its_mode(host: Host, mode: int) -> None:
    host.file("/out.conf", "old " * 1000, mode=mode)
    assert host.generate() == (0, "", "")
    assert host.mode() == mode
    assert host.read() == generated("\n[A]\nKey=1\n")


def test_a_link_is_followed(host: Host) -> None:
    host.link("/out.conf", "/target")
    assert host.generate() == (0, "", "")
    assert host.path("/out.conf").is_symlink()
    assert host.read("/target") == generated("\n[A]\nKey=1\n")


def test_a_relative_path_starts_in_the_working_directory(host: Host) -> None:
    assert host.run("--user-id", "1000", "--config", "/c", "out.conf") == (0, "", "")
    assert host.read("/out.conf") == generated("\n[A]\nKey=1\n")


def test_a_whole_run(host: Host) -> None:
    host.conf(
        "# defaults\nTop=of ${USER}\n[Config]\nAppIdPrefix=app\nPaths=${HOME}/a;${HOME}/b\n"
        "Mounts=/srv srv none bind 0 0\nCleared=1\n[Devices]\nBinderDev=${env:BINDER}\n"
    )
    host.conf(
        "[Devices]\nBinderDev=${config:Config/AppIdPrefix}-binder\nNone=${env:UNSET}\n"
        "[Config]\nCleared=\nAppIdPrefix=com.app\nPaths=${ODM_DIR}\n[Gone]\nKey=1\nKey=\n",
        "/d/20-device.conf",
    )
    host.script("/c/mount-hooks/a.sh", 'echo "$3 home none bind 0 0"\necho bad\n')
    host.script("/c/property-pre-hooks/a.sh", 'echo "pre.user=$2"\n')
    host.script("/d/property-post-hooks/a.sh", 'echo "post.instance=$4"\n')
    host.file("/c/static/a.lxc", "lxc.one = 1\n\nlxc.two = 2")
    host.file("/d/static/a.ro", "ro.three=3\n")
    options = ("--instance", "second", "--base-uid", "100000", "--config", "/d")
    assert host.generate(*options, env={"BINDER": "binder"}) == (
        0,
        "",
        "ERROR: Not enough parts in mount entry: bad\n"
        "WARNING: Invalid mount entry from /c/mount-hooks/a.sh: bad\n",
    )
    assert host.read() == (
        "# This is an automatically generated file, do not edit\n"
        "Top=of alice\n"
        "\n"
        "[Config]\n"
        "Mounts=/home/alice home none bind 0 0\n"
        "AppIdPrefix=app;com.app\n"
        "Mounts=/srv srv none bind 0 0\n"
        "Paths=/home/alice/a;/home/alice/b;/vendor\n"
        "\n"
        "[Devices]\n"
        "BinderDev=binder;com.app-binder\n"
        "\n"
        "[GeneratedConfig]\n"
        "PropertyPre=pre.user=alice\n"
        "DefaultLxc=lxc.one = 1\n"
        "DefaultLxc=lxc.two = 2\n"
        "PropertyPost=post.instance=second\n"
        "DefaultRo=ro.three=3\n"
        "UserId=1000\n"
        "User=alice\n"
        "Home=/home/alice\n"
        "Instance=second\n"
        "BaseUid=100000\n"
    )


def test_a_value_with_a_dollar_sign_does_not_survive_being_read_back(host: Host) -> None:
    host.conf("[A]\nKey=cost $$5\nOther=1\n")
    host.directory("/g")
    assert host.run("--user-id", "1000", "--config", "/c", "/g/99.conf") == (0, "", "")
    again = host.run("--user-id", "1000", "--config", "/g", "/out.conf")
    assert again == (0, "", "ERROR: '$' must be followed by '{' or '$': cost $5\n")
    assert "Other=1\n" in host.read()
    assert "Key=" not in host.read()


def test_a_generated_file_is_configuration_like_any_other(host: Host) -> None:
    host.file("/c/static/a.lxc", "one\ntwo\n")
    options = ("--user-id", "1000", "--config", "/c", "--instance", "first")
    assert host.run(*options, "/g/99.conf") == (0, "", "")
    assert not host.exists("/g")
    host.directory("/g")
    assert host.run(*options, "/g/99.conf") == (0, "", "")
    assert host.run("--user-id", "1000", "--config", "/g", "/g/99.conf") == (0, "", "")
    earlier = (
        "\n[GeneratedConfig]\nBaseUid=0\nDefaultLxc=one;two\nHome=/home/alice\n"
        "Instance=first\nUser=alice\nUserId=1000\n"
    )
    assert host.read("/g/99.conf") == generated("\n[A]\nKey=1\n" + earlier)


def test_what_is_written_is_in_the_file_at_once(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", "cp /out.conf /so-far\necho x\n")
    assert host.generate() == (0, "", "")
    assert host.read("/so-far") == COMMENT + "\n[A]\nKey=1\n\n[GeneratedConfig]\n"
    assert host.read() == generated("\n[A]\nKey=1\n", "PropertyPre=x\n")


# --- failures


@pytest.mark.parametrize("path", ["/nowhere/out.conf", "/c", "/c/", "", "/c/10-base.conf/out"])
def test_an_output_that_cannot_be_opened_still_ends_well(host: Host, path: str) -> None:
    host.script("/c/property-pre-hooks/a.sh", "touch /ran\n")
    assert host.run("--user-id", "1000", "--config", "/c", path) == (0, "", "")
    assert host.exists("/ran")
    assert host.read("/c/10-base.conf") == "[A]\nKey=1\n"


def test_an_output_without_permission_to_write_is_left_as_it_is(host: Host) -> None:
    host.file("/out.conf", "as it was", mode=0o400)
    assert host.generate(powerless=True) == (0, "", "")
    assert host.read() == "as it was"


def test_a_full_disk_under_the_output_still_ends_well(host: Host) -> None:
    assert host.run("--user-id", "1000", "--config", "/c", "/dev/full") == (0, "", "")


def test_a_run_that_is_killed_leaves_what_it_has_written(host: Host) -> None:
    host.conf("[A]\nKey=1\n[Config]\nKey=2\n")
    host.script("/c/mount-hooks/a.sh", FIND_PROGRAM + "kill -KILL $PROGRAM\n")
    assert host.generate() == (-signal.SIGKILL, "", "")
    assert host.read() == COMMENT + "\n[A]\nKey=1\n\n[Config]\n"
