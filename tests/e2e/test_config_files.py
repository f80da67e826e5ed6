# SPDX-License-Identifier: MIT
"""Configuration files: their lines, the order in which they are layered, and bad files."""

import pytest

from host import Host, generated

BASE = "/c/10-base.conf"


def failed(path: str = BASE) -> str:
    """What is logged for a file that ends the run."""
    return (
        f"ERROR: Failed to load config from '{path}'\n"
        f"ERROR: Invalid configuration in {path}\n"
    )


# --- lines


@pytest.mark.parametrize(
    "text, groups",
    [
        ("", ""),
        ("\n", ""),
        ("# note\n;note\n#[A]\n;Key=1\n\n", ""),
        ("[Audio]\n", ""),
        ("[Audio]\nKey=1\n", "\n[Audio]\nKey=1\n"),
        ("[My Group]\nKey=1\n", "\n[My Group]\nKey=1\n"),
        ("[-._ aZ09]\n-._ aZ09=1\n", "\n[-._ aZ09]\n-._ aZ09=1\n"),
        ("Key=1\n", "Key=1\n"),
        ("[A]\nKey=1\n[]\nKey=2\n", "Key=2\n\n[A]\nKey=1\n"),
        ("[ ]\nKey=1\n", "\n[ ]\nKey=1\n"),
        ("[A]\nKey=a=b\n", "\n[A]\nKey=a=b\n"),
        ("[A]\nKey==\n", "\n[A]\nKey==\n"),
        ("[A]\nKey = x\n", "\n[A]\nKey = x\n"),
        ("[A]\nKey=x \nKey =y\n", "\n[A]\nKey=x \nKey =y\n"),
        ("[A]\nKey=value # note\n", "\n[A]\nKey=value # note\n"),
        ("[A]\nKey=1\r\n", "\n[A]\nKey=1\r\n"),
        ("[A]\nKey=\t\n", "\n[A]\nKey=\t\n"),
        ("[A]\nKey=\u00e4\u20ac\n", "\n[A]\nKey=\u00e4\u20ac\n"),
        ("[A]\n-a=1\n.a=2\n0=3\n_a=4\n", "\n[A]\n-a=1\n.a=2\n0=3\n_a=4\n"),
        ("[A]\na=1\nA=2\n", "\n[A]\nA=2\na=1\n"),
        ("[A]\nX=1\n[B]\nX=2\n[A]\nY=3\n", "\n[A]\nX=1\nY=3\n\n[B]\nX=2\n"),
        ("[A]\nKey=1", "\n[A]\nKey=1\n"),
        ("[A]\nKey=1\n# note", "\n[A]\nKey=1\n"),
        ("[A]\nKey=1\n[B]", "\n[A]\nKey=1\n"),
        ("[b]\nK=1\n[B]\nK=2\n[B b]\nK=3\n", "\n[B]\nK=2\n\n[B b]\nK=3\n\n[b]\nK=1\n"),
    ],
    ids=repr,
)
def test_lines_make_groups_and_keys(host: Host, text: str, groups: str) -> None:
    host.conf(text)
    assert host.generate() == (0, "", "")
    assert host.read() == generated(groups)


@pytest.mark.parametrize(
    "text, groups",
    [
        ("[A]\nKey=a;b;c\n", "\n[A]\nKey=a;b;c\n"),
        ("[A]\nKey=a;;b\n", "\n[A]\nKey=a;b\n"),
        ("[A]\nKey=;a\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey=a;\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey= a ; b \n", "\n[A]\nKey= a ; b \n"),
        ("[A]\nKey=a\nKey=b;c\n", "\n[A]\nKey=a;b;c\n"),
        ("[A]\nKey=a\nKey=a\n", "\n[A]\nKey=a;a\n"),
        ("[A]\nKey=a\nKey=;\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey=a\nKey=;;;\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey=;\n", ""),
    ],
    ids=repr,
)
def test_the_values_of_a_key_gather_in_a_list(host: Host, text: str, groups: str) -> None:
    host.conf(text)
    assert host.generate() == (0, "", "")
    assert host.read() == generated(groups)


@pytest.mark.parametrize(
    "text, groups",
    [
        ("[A]\nKey=a;b\nOther=1\nKey=\n", "\n[A]\nOther=1\n"),
        ("[A]\nKey=a\nKey=\nKey=b\n", "\n[A]\nKey=b\n"),
        ("[A]\nKey=a\n[B]\nKey=\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey=a\nKEY=\n", "\n[A]\nKey=a\n"),
        ("[A]\nKey=a\nKey=\n[B]\nKey=b\n", "\n[B]\nKey=b\n"),
        ("[A]\nKey=\n", ""),
    ],
    ids=repr,
)
def test_an_empty_assignment_clears_a_key(host: Host, text: str, groups: str) -> None:
    host.conf(text)
    assert host.generate() == (0, "", "")
    assert host.read() == generated(groups)


# --- layering


def test_the_files_of_a_directory_are_read_in_byte_order(host: Host) -> None:
    for name in ("a", "Z", "2-y", "10-x", "10-x.d", "_"):
        host.conf(f"[A]\nRead={name}\n", f"/c/{name}.conf")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nRead=10-x;10-x.d;2-y;Z;_;a\n")


def test_only_files_whose_names_end_in_conf_are_read(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    for name in (".hidden.conf", "a.CONF", "a.conf.bak", "conf", "aconf", "sub/a.conf"):
        host.file(f"/c/{name}", "no configuration")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n")


def test_a_configuration_file_may_be_a_link(host: Host) -> None:
    host.file("/elsewhere", "[A]\nKey=1\n")
    host.link("/c/10-base.conf", "/elsewhere")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n")


@pytest.mark.parametrize("first, second", [("/a", "/b"), ("/a/", "/b/"), ("/a//", "/./b")])
def test_later_directories_are_layered_over_earlier_ones(
    host: Host, first: str, second: str
) -> None:
    host.conf("[A]\nList=9\nCleared=1\nKept=1\n", "/a/90.conf")
    host.conf("[A]\nList=1\nCleared=\nNew=1\n", "/b/10.conf")
    options = ("--user-id", "1000", "--configs", f"{first}:{second}")
    assert host.run(*options, "/out.conf") == (0, "", "")
    assert host.read() == generated("\n[A]\nKept=1\nList=9;1\nNew=1\n")


def test_the_name_of_a_directory_is_part_of_the_pattern(host: Host) -> None:
    for name in ("d1", "d2", "e1"):
        host.conf(f"[A]\nRead={name}\n", f"/{name}/x.conf")
    assert host.run("--user-id", "1000", "--config", "/d[12]", "/out.conf") == (0, "", "")
    assert host.read() == generated("\n[A]\nRead=d1;d2\n")


def test_a_group_starts_anew_in_every_file(host: Host) -> None:
    host.conf("[A]\nKey=1\n", "/c/1.conf")
    host.conf("Key=2\n", "/c/2.conf")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("Key=2\n\n[A]\nKey=1\n")


def test_directories_without_configuration_are_passed_over(host: Host) -> None:
    host.directory("/empty")
    host.conf("[A]\nKey=1\n")
    assert host.generate("--configs", "/missing:/empty") == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\n")


# --- failures: bad lines

GROUP = "Could not parse line as group in"
GROUP_NAME = "Group name contains invalid characters in"
KEY = "Could not parse line as key in"
KEY_NAME = "Key contains invalid characters in"
UNEXPECTED = "Unexpected line in"


@pytest.mark.parametrize(
    "line, complaint",
    [
        *((line, GROUP) for line in ("[Audio", "[", "[Audio] ", "[Audio]\r", "[A] # note")),
        *((line, GROUP_NAME) for line in ("[Audio/x]", "[a=b]", "[a]b]", "[[a]]", "[\t]")),
        *((line, GROUP_NAME) for line in ("[Gr\u00f6\u00dfe]", "[a\0]", "[\r]")),
        *((line, KEY) for line in ("Audio", "Audio]", "-", "Key\r", "Key: 1", "K\0")),
        *((line, KEY_NAME) for line in ("Key/x=1", "Key\t=1", "K\u00e9y=1", "a,b=1", "Key[1]=")),
        *((line, UNEXPECTED) for line in (" Key=1", "\tKey=1", "   ", "\r", "=1", "=", " [A]")),
        *((line, UNEXPECTED) for line in ("\u00e9=1", "\udc80", "\0", '"', "{", "]", "//", "!=1")),
    ],
    ids=repr,
)
def test_a_bad_line_ends_the_run(host: Host, line: str, complaint: str) -> None:
    host.conf(f"# note\n\n[A]\nKey=1\n{line}\nKey=2\n")
    log = f"ERROR: {complaint} {BASE} (5): '{line}'\n" + failed()
    assert host.generate() == (1, "", log)
    assert not host.exists()


def test_a_bad_last_line_without_line_feed_is_reported_too(host: Host) -> None:
    host.conf("[A]\nKey")
    assert host.generate() == (1, "", f"ERROR: {KEY} {BASE} (2): 'Key'\n" + failed())


def test_every_bad_line_up_to_the_next_entry_is_reported(host: Host) -> None:
    host.conf("Key=1\n[A\n# note\nOops\n=\n\nKey/x=2\nKey=3\n!\n")
    assert host.generate() == (
        1,
        "",
        f"ERROR: {GROUP} {BASE} (2): '[A'\n"
        f"ERROR: {KEY} {BASE} (4): 'Oops'\n"
        f"ERROR: {UNEXPECTED} {BASE} (5): '='\n"
        f"ERROR: {KEY_NAME} {BASE} (7): 'Key/x=2'\n" + failed(),
    )


@pytest.mark.parametrize(
    "directory, path",
    [
        ("/d", "/d/x.conf"),
        ("/d/", "/d/x.conf"),
        ("/d//", "/d//x.conf"),
        ("d", "d/x.conf"),
        ("./d", "./d/x.conf"),
        ("", "/x.conf"),
    ],
)
def test_a_message_tells_the_path_as_the_directory_was_given(
    host: Host, directory: str, path: str
) -> None:
    host.conf("!\n", "/x.conf")
    host.conf("!\n", "/d/x.conf")
    options = ("--user-id", "1000", "--config", directory)
    log = f"ERROR: {UNEXPECTED} {path} (1): '!'\n" + failed(path)
    assert host.run(*options, "/out.conf") == (1, "", log)


def test_the_entry_behind_a_bad_line_is_not_taken(host: Host) -> None:
    host.conf("A=${system:touch /before}\n!\nB=${system:touch /behind}\n")
    assert host.generate() == (1, "", f"ERROR: {UNEXPECTED} {BASE} (2): '!'\n" + failed())
    assert host.exists("/before")
    assert not host.exists("/behind")


def test_nothing_is_read_after_a_bad_file(host: Host) -> None:
    host.conf("!\n")
    host.conf("A=${system:touch /behind}\n", "/c/20.conf")
    host.conf("A=${system:touch /behind}\n", "/d/10.conf")
    log = f"ERROR: {UNEXPECTED} {BASE} (1): '!'\n" + failed()
    assert host.generate("--config", "/d") == (1, "", log)
    assert not host.exists("/behind")


# --- failures: bad files


def test_a_directory_among_the_files_ends_the_run(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    host.directory("/c/20-dir.conf")
    assert host.generate() == (1, "", failed("/c/20-dir.conf/"))
    assert not host.exists()


@pytest.mark.parametrize("target", ["/nowhere", "20.conf", "/proc/self/mem"])
def test_a_file_that_cannot_be_read_ends_the_run(host: Host, target: str) -> None:
    host.conf("[A]\nKey=1\n")
    host.link("/c/20.conf", target)
    assert host.generate() == (1, "", failed("/c/20.conf"))
    assert not host.exists()


def test_a_file_without_permission_to_read_ends_the_run(host: Host) -> None:
    host.file(BASE, "[A]\nKey=1\n", mode=0)
    assert host.generate(powerless=True) == (1, "", failed())
    assert not host.exists()


def test_a_file_that_cannot_be_read_to_its_end_ends_the_run(host: Host) -> None:
    host.conf("A=${system:touch /read}\n" + f"# {'x' * 97}\n" * 200)
    failing = ["-P", BASE, "-e", "inject=read:error=EIO:when=2"]
    assert host.generate(strace=failing) == (1, "", failed())
    assert host.exists("/read")
    assert not host.exists()


def test_a_line_that_a_failed_read_cuts_off_is_no_entry(host: Host) -> None:
    host.conf("A=1\n" + "B=${system:touch /read}".ljust(200_000, "#"))
    failing = ["-P", BASE, "-e", "inject=read:error=EIO:when=2"]
    assert host.generate(strace=failing) == (1, "", failed())
    assert not host.exists("/read")


def test_a_file_has_ended_where_it_ended_first(host: Host) -> None:
    host.conf("[A]\nKey=1\nLast=${system:printf '2\\nB=3\\n' >>/c/10-base.conf && echo 2}")
    assert host.generate() == (0, "", "")
    assert host.read() == generated("\n[A]\nKey=1\nLast=2\n")


def test_a_file_that_vanishes_during_the_run_ends_it(host: Host) -> None:
    host.conf("A=${system:rm /c/20.conf}\n")
    host.conf("B=1\n", "/c/20.conf")
    assert host.generate() == (1, "", failed("/c/20.conf"))
    assert not host.exists()


@pytest.mark.parametrize(
    "options, listed",
    [
        ([], "/etc/cradle.conf.d"),
        (["--config", "/missing"], "/missing"),
        (["--config", "/empty/"], "/empty/"),
        (["--configs", "/empty:/missing/:/c"], "/empty, /missing/, /c"),
        (["--configs", "/empty::/missing"], "/empty, , /missing"),
        (["--config", "/empty", "--config", "/empty"], "/empty, /empty"),
    ],
    ids=str,
)
def test_directories_without_any_configuration_end_the_run(
    host: Host, options: list[str], listed: str
) -> None:
    host.file("/empty/no.config")
    host.file("/tmp/out", "as it was")
    log = f"ERROR: No configuration to read in {listed}\n"
    assert host.run("--user-id", "1000", *options, "/tmp/out") == (1, "", log)
    assert host.read("/tmp/out") == "as it was"


def test_an_unreadable_directory_counts_as_empty(host: Host) -> None:
    host.conf("[A]\nKey=1\n", "/noread/10.conf")
    host.path("/noread").chmod(0)
    options = ("--user-id", "1000", "--config", "/noread", "/out.conf")
    log = "ERROR: No configuration to read in /noread\n"
    assert host.run(*options, powerless=True) == (1, "", log)
    assert not host.exists()


@pytest.mark.parametrize("call", ["openat", "getdents64"])
def test_a_directory_is_read_whole_though_signals_interrupt_it(host: Host, call: str) -> None:
    host.conf("[A]\nKey=1\n")
    host.conf("[A]\nKey=2\n", "/c/20-more.conf")
    first = ["-P", "/c", "-e", f"inject={call}:error=EINTR:when=1"]
    assert host.generate(strace=first) == (0, "", "")
    assert any("INJECTED" in line for line in host.trace())
    assert host.read() == generated("\n[A]\nKey=1;2\n")
