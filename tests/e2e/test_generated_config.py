# SPDX-License-Identifier: MIT
"""The generated configuration: hooks, fragments, the facts of the run and the file itself."""

import pytest

from host import Host, generated

MOUNT = "/srv/data data none bind,create=dir 0 0"
SHOW = 'for argument; do printf "[%s]" "$argument"; done; echo\n'


@pytest.fixture
def host(host: Host) -> Host:
    """The host of this file: group Config has one key."""
    host.conf("[Config]\nKey=1\n")
    return host


def config(*lines: str) -> str:
    """Group Config with these lines of mount hooks before its own key."""
    return "\n[Config]\n" + "".join(f"{line}\n" for line in lines) + "Key=1\n"


# --- mount hooks


@pytest.mark.parametrize(
    "entry",
    [
        "/home/u/data data none bind,create=dir 0 0",
        "tmpfs dev tmpfs nosuid 0 0",
        "none dev/pts devpts defaults 0 0",
        "/x y tmpfs bind 0 0",
        "tmpfs y none bind 0 0",
        "/x  none  0 0",
        "/ y none bind 0 0 ",
    ],
)
def test_a_mount_entry_of_a_hook_stands_before_the_keys_of_config(
    host: Host, entry: str
) -> None:
    host.script("/c/mount-hooks/a.sh", f"echo '{entry}'\n")
    assert host.generate() == (0, "", "")
    assert host.read() == generated(config(f"Mounts={entry}"))


def test_mount_hooks_run_in_byte_order_and_directory_by_directory(host: Host) -> None:
    for name in ("c/mount-hooks/2-y", "c/mount-hooks/10-x", "d/mount-hooks/1-a"):
        host.script(f"/{name}.sh", f"echo {MOUNT.replace('data', name, 1)}\n")
    host.script("/c/mount-hooks/no-hook", "echo /x y none bind 0 0\n")
    host.conf("", "/d/10.conf")
    assert host.generate("--config", "/d") == (0, "", "")
    names = ("c/mount-hooks/10-x", "c/mount-hooks/2-y", "d/mount-hooks/1-a")
    lines = [f"Mounts={MOUNT.replace('data', name, 1)}" for name in names]
    assert host.read() == generated(config(*lines))


def test_mount_hooks_run_before_the_references_of_config_are_followed(host: Host) -> None:
    host.conf("[Config]\nKey=${config:Config/Key}\n")
    host.script("/c/mount-hooks/a.sh", "echo bad\n")
    status, _, stderr = host.generate()
    assert status == 0
    assert stderr == (
        "ERROR: Not enough parts in mount entry: bad\n"
        "WARNING: Invalid mount entry from /c/mount-hooks/a.sh: bad\n"
        "ERROR: Max depth reached, possibly circular reference.\n"
    )


def test_mount_hooks_follow_the_order_of_the_command_line(host: Host) -> None:
    for name in ("a", "b"):
        host.script(f"/{name}/mount-hooks/x.sh", f"echo {MOUNT.replace('data', name, 1)}\n")
    assert host.generate("--configs", "/b:/a:/b") == (0, "", "")
    lines = [f"Mounts={MOUNT.replace('data', name, 1)}" for name in ("b", "a", "b")]
    assert host.read() == generated(config(*lines))


def test_a_hook_below_a_name_with_a_blank_is_two_words_to_the_shell(host: Host) -> None:
    host.conf("[Config]\nKey=1\n", "/a b/10.conf")
    host.script("/a b/mount-hooks/x.sh", f"echo {MOUNT}\n")
    status, _, stderr = host.run("--user-id", "1000", "--config", "/a b", "/out.conf")
    assert status == 0
    assert stderr.endswith("WARNING: /a b/mount-hooks/x.sh exited with non-zero status: \x7f\n")
    assert host.read() == generated(config())


def test_mount_hooks_of_a_directory_without_configuration_run_too(host: Host) -> None:
    host.script("/d/mount-hooks/a.sh", f"echo {MOUNT}\n")
    assert host.generate("--config", "/d") == (0, "", "")
    assert host.read() == generated(config(f"Mounts={MOUNT}"))


@pytest.mark.parametrize("text", ["[Other]\nKey=1\n", "[Config]\nKey=1\nKey=\n", "[Config]\n"])
def test_without_a_key_in_config_no_mount_hook_runs(host: Host, text: str) -> None:
    host.conf(text)
    host.script("/c/mount-hooks/a.sh", "touch /ran\n")
    assert host.generate() == (0, "", "")
    assert not host.exists("/ran")
    assert host.read() == generated("\n[Other]\nKey=1\n" if "Other" in text else "")


def test_the_mounts_of_the_configuration_follow_those_of_the_hooks(host: Host) -> None:
    host.conf("[Config]\nMounts=/a a none bind 0 0\nAfter=1\n")
    host.script("/c/mount-hooks/a.sh", f"echo {MOUNT}\n")
    assert host.generate() == (0, "", "")
    lines = "After=1\nMounts=/a a none bind 0 0\n"
    assert host.read() == generated(f"\n[Config]\nMounts={MOUNT}\n{lines}")


@pytest.mark.parametrize(
    "entry, complaint",
    [
        ("", "Not enough parts in mount entry: "),
        (" ", "Not enough parts in mount entry:  "),
        ("/x y none bind 0", "Not enough parts in mount entry: /x y none bind 0"),
        ("/x y none bind 0 ", "Not enough parts in mount entry: /x y none bind 0 "),
        ("/x y none bind 0 0 extra", "Not enough parts in mount entry: /x y none bind 0 0 extra"),
        ("/x y  none bind 0 0", "Not enough parts in mount entry: /x y  none bind 0 0"),
        ("/x y none bind 0 0  ", "Not enough parts in mount entry: /x y none bind 0 0  "),
        ("/x\ty\tnone\tbind\t0\t0", "Not enough parts in mount entry: /x\ty\tnone\tbind\t0\t0"),
        (
            "proc proc proc defaults 0 0",
            "Mount entry must begin with '/' or be 'tmpfs' or 'none': proc proc proc defaults 0 0",
        ),
        (
            "tmpfs2 y ext4 bind 1 1",
            "Mount entry must begin with '/' or be 'tmpfs' or 'none': tmpfs2 y ext4 bind 1 1",
        ),
        (
            "/x y ext4 bind 1 1",
            "File system type must be 'none' or 'tmpfs' instead of 'ext4' in mount entry: "
            "/x y ext4 bind 1 1",
        ),
        (
            "/x y none bind 1 1",
            "Dump value must be '0' instead of '1' in mount entry: /x y none bind 1 1",
        ),
        (
            "/x y none bind 0 00",
            "Backup value must be '0' instead of '00' in mount entry: /x y none bind 0 00",
        ),
    ],
)
def test_an_invalid_mount_entry_is_left_out(host: Host, entry: str, complaint: str) -> None:
    host.script("/c/mount-hooks/a.sh", f"echo '{MOUNT}'\necho '{entry}'\necho '{MOUNT}'\n")
    warning = f"WARNING: Invalid mount entry from /c/mount-hooks/a.sh: {entry}\n"
    assert host.generate() == (0, "", f"ERROR: {complaint}\n" + warning)
    assert host.read() == generated(config(f"Mounts={MOUNT}", f"Mounts={MOUNT}"))


# --- property hooks and fragments


def test_contributions_interleave_directory_by_directory(host: Host) -> None:
    host.conf("", "/d/10.conf")
    for name in ("c", "d"):
        host.script(f"/{name}/property-post-hooks/a.sh", f"echo post.{name}=1\n")
        host.script(f"/{name}/property-pre-hooks/a.sh", f"echo pre.{name}=1\n")
        host.file(f"/{name}/static/x.ro", f"ro {name}\n")
        host.file(f"/{name}/static/b.lxc", f"b {name}\n")
        host.file(f"/{name}/static/a.lxc", f"a {name}\n")
    assert host.generate("--config", "/d") == (0, "", "")
    lines = [
        f"PropertyPre=pre.{name}=1\nPropertyPost=post.{name}=1\n"
        f"DefaultLxc=a {name}\nDefaultLxc=b {name}\nDefaultRo=ro {name}\n"
        for name in ("c", "d")
    ]
    assert host.read() == generated(config(), "".join(lines))


def test_contributions_follow_the_order_of_the_command_line(host: Host) -> None:
    for name in ("a", "b"):
        host.script(f"/{name}/property-pre-hooks/x.sh", f"echo pre-{name}\n")
        host.file(f"/{name}/static/x.ro", f"ro-{name}\n")
    assert host.generate("--configs", "/b:/a") == (0, "", "")
    lines = ("PropertyPre=pre-b", "DefaultRo=ro-b", "PropertyPre=pre-a", "DefaultRo=ro-a")
    assert host.read() == generated(config(), "".join(f"{line}\n" for line in lines))


def test_the_name_of_a_directory_is_part_of_every_pattern(host: Host) -> None:
    host.script("/d1/property-pre-hooks/x.sh", "echo pre\n")
    host.file("/d2/static/x.lxc", "lxc\n")
    assert host.generate("--config", "/d?") == (0, "", "")
    assert host.read() == generated(config(), "PropertyPre=pre\nDefaultLxc=lxc\n")


def test_property_hooks_run_in_byte_order(host: Host) -> None:
    for name in ("2-y", "Z", "10-x", "a"):
        host.script(f"/c/property-pre-hooks/{name}.sh", f"echo {name}\n")
    assert host.generate() == (0, "", "")
    names = ("10-x", "2-y", "Z", "a")
    assert host.read() == generated(config(), "".join(f"PropertyPre={n}\n" for n in names))


@pytest.mark.parametrize(
    "text, lines",
    [
        ("x\\n\\ny\\n", ["x", "y"]),
        ("\\n\\n\\n", []),
        ("", []),
        ("no line feed", ["no line feed"]),
        (" a = b;c \\n[D]\\r\\n# e", [" a = b;c ", "[D]\r", "# e"]),
        ("${USER} $$", ["${USER} $$"]),
    ],
)
def test_every_line_that_is_not_empty_counts(host: Host, text: str, lines: list[str]) -> None:
    host.script("/c/property-post-hooks/a.sh", f"printf '{text}'\n")
    host.file("/c/static/a.lxc", text.encode().decode("unicode_escape"))
    assert host.generate() == (0, "", "")
    keys = ("PropertyPost", "DefaultLxc")
    contributed = "".join(f"{key}={line}\n" for key in keys for line in lines)
    assert host.read() == generated(config(), contributed)


@pytest.mark.parametrize("kind", ["mount-hooks", "property-pre-hooks", "property-post-hooks"])
def test_a_hook_gets_the_facts_of_the_run_as_its_arguments(host: Host, kind: str) -> None:
    host.script(f"/c/{kind}/a.sh", f"exec >/seen\n{SHOW}")
    options = ("--instance", "two words; $HOME", "--base-uid", "-2")
    assert host.generate(*options) == (0, "", "")
    assert host.read("/seen") == "[1000][alice][/home/alice][two words; $HOME][4294967294]\n"


def test_a_quote_in_an_argument_of_a_hook_is_not_escaped(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", SHOW)
    assert host.generate("--instance", "a' 'b") == (0, "", "")
    lines = "PropertyPre=[1000][alice][/home/alice][a][b][0]\n"
    assert host.read() == generated(config(), lines, Instance="a' 'b")


@pytest.mark.parametrize("kind", ["directory", "not readable", "/nowhere", "/proc/self/mem"])
def test_a_fragment_that_cannot_be_read_is_skipped(host: Host, kind: str) -> None:
    if kind == "directory":
        host.directory("/c/static/a.lxc")
    elif kind == "not readable":
        host.file("/c/static/a.lxc", "a\n", mode=0)
    else:
        host.link("/c/static/a.lxc", kind)
    host.file("/c/static/b.lxc", "b\n")
    assert host.generate(powerless=True) == (0, "", "")
    assert host.read() == generated(config(), "DefaultLxc=b\n")


def test_a_fragment_that_cannot_be_read_to_its_end_is_skipped(host: Host) -> None:
    host.file("/c/static/a.lxc", f"{'a' * 99}\n" * 500)
    host.file("/c/static/b.lxc", "b\n")
    failing = ["-P", "/c/static/a.lxc", "-e", "inject=read:error=EIO:when=2"]
    assert host.generate(strace=failing) == (0, "", "")
    assert host.read() == generated(config(), "DefaultLxc=b\n")


# --- named templates of the machine


@pytest.mark.parametrize("kind", ["directory", "file", "link", "dangling"])
def test_the_odm_directory_is_taken_when_it_holds_libraries(host: Host, kind: str) -> None:
    host.conf("[A]\nKey=${ODM_DIR}/etc\n")
    host.directory("/odm")
    if kind == "directory":
        host.directory("/odm/lib")
    elif kind == "file":
        host.file("/odm/lib")
    else:
        host.link("/odm/lib", "/tmp" if kind == "link" else "/nowhere")
    assert host.generate() == (0, "", "")
    place = "/vendor" if kind == "dangling" else "/odm"
    assert host.read() == generated(f"\n[A]\nKey={place}/etc\n")
