# SPDX-License-Identifier: MIT
"""The private host itself: it shows the program nothing of the machine, and the machine nothing
of its mounts."""

import os
from pathlib import Path

import pytest

from host import Host, setting


def shell(host: Host, body: str) -> str:
    """What a shell in the host prints."""
    status, stdout, stderr = host.run("-c", body, program="/bin/sh")
    assert (status, stderr) == (0, "")
    return stdout


def test_only_what_belongs_to_the_host_is_in_it(host: Host) -> None:
    build = setting("CRADLE_BUILD_DIR").split("/")[1]
    names = {"bin", "dev", "etc", "lib", "lib64", "proc", "run", "sbin", "tmp", "usr", build}
    assert set(shell(host, "ls /").split()) == names
    assert shell(host, "ls /etc /dev").split() == (
        ["/dev:", "full", "null", "zero"] + ["/etc:", "group", "nsswitch.conf", "passwd"]
    )


def test_its_mounts_do_not_show_outside(host: Host) -> None:
    os.mkfifo(host.path("/hold"))
    hold = os.open(host.path("/hold"), os.O_RDWR)
    run = host.start("-c", "ls -d /usr/bin /proc/1; read line </hold", program="/bin/sh")
    assert run.process.stdout is not None
    assert [run.process.stdout.readline() for _ in range(2)] == [b"/proc/1\n", b"/usr/bin\n"]
    assert list(host.path("/usr").iterdir()) == []
    assert list(host.path("/proc").iterdir()) == []
    assert str(host.root) not in Path("/proc/self/mountinfo").read_text(encoding="utf-8")
    os.write(hold, b"done\n")
    assert run.finish() == (0, "", "")
    os.close(hold)


def test_it_is_removed_with_all_that_was_written_in_it() -> None:
    host = Host()
    assert shell(host, "echo text >/file && mkdir -p /a/b && ls -d /usr/bin") == "/usr/bin\n"
    assert host.read("/file") == "text\n"
    assert host.path("/a/b").is_dir()
    host.close()
    assert not host.root.exists()
    assert Path("/usr/bin").is_dir()


def test_it_is_not_removed_while_anything_is_mounted_in_it(
    host: Host, monkeypatch: pytest.MonkeyPatch
) -> None:
    line = f"1 2 0:3 / {host.root}/usr rw - ext4 /dev/sda rw\n"
    monkeypatch.setattr(Path, "read_text", lambda *_, **__: line)
    with pytest.raises(RuntimeError, match="holds mounts"):
        host.close()
    assert host.root.is_dir()


def test_its_environment_holds_only_what_was_asked_for(host: Host) -> None:
    result = host.run(program="/usr/bin/env", env={"A": "b c"})
    lines = [line for line in result.stdout.splitlines() if "SAN_OPTIONS=" not in line]
    assert lines == ["PATH=/usr/bin:/bin", "A=b c"]


def test_a_powerless_program_is_bound_by_the_modes_of_files(host: Host) -> None:
    host.file("/secret", "text", mode=0)
    denied = "/bin/cat: /secret: Permission denied\n"
    assert host.run("/secret", program="/bin/cat") == (0, "text", "")
    assert host.run("/secret", program="/bin/cat", powerless=True) == (1, "", denied)
