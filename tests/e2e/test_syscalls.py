# SPDX-License-Identifier: MIT
"""The system calls of a run, seen by strace: what reading costs, and what writing promises."""

import re
from collections import Counter

from host import Host, generated

# Reads and writes grow with the configuration, and so does memory; nothing else may.
GROWING = "read,readv,pread64,write,writev,brk,mmap,munmap,mremap,madvise"


def calls(host: Host) -> list[str]:
    """The names of the traced system calls in their order."""
    return [match[0] for line in host.trace() if (match := re.match(r"\w+(?=\()", line))]


def texts(host: Host, descriptor: str = r"\d+") -> list[str]:
    """What the traced writes to the descriptor wrote, as strace shows it."""
    pattern = re.compile(rf'writev?\({descriptor}(?:<[^>]*>)?, "(.*)", \d+\) *= \d+$')
    return [match[1] for line in host.trace() if (match := pattern.match(line))]


def calls_for_lines(host: Host, count: int) -> list[str]:
    """The calls of a run on one file with so many keys, but for the growing kinds."""
    lines = "".join(f"K{i:06}=value {i}\n" for i in range(count))
    host.conf(f"[A]\n{lines}")
    assert host.generate(strace=["-e", f"trace=!{GROWING}"]) == (0, "", "")
    assert host.read() == generated(f"\n[A]\n{lines}")
    return calls(host)


def test_the_calls_of_a_run_do_not_depend_on_the_number_of_lines(host: Host) -> None:
    few = calls_for_lines(host, 1_000)
    many = calls_for_lines(host, 100_000)
    assert len(few) > 20
    assert Counter(few) == Counter(many)
    assert few == many


def test_every_file_costs_the_same_calls(host: Host) -> None:
    counts = []
    for total in (10, 20, 30):
        for i in range(total):
            host.conf(f"[A]\nK{i}={i}\n" * 100, f"/c/{i}.conf")
        assert host.generate(strace=["-e", f"trace=!{GROWING}"]) == (0, "", "")
        counts.append(len(calls(host)))
    first, second = counts[1] - counts[0], counts[2] - counts[1]
    assert first == second
    assert 0 < first / 10 <= 10


def test_a_file_is_opened_once_and_read_once(host: Host) -> None:
    host.conf("[A]\n" + "".join(f"K{i:06}=value {i}\n" for i in range(10_000)))
    size = host.path("/c/10-base.conf").stat().st_size
    options = ["-P", "/c/10-base.conf", "-e", "trace=openat,open,read,readv,lseek,pread64"]
    assert host.generate(strace=options) == (0, "", "")
    count = Counter(calls(host))
    assert count["openat"] + count["open"] <= 2
    assert count["lseek"] <= 4
    assert count["read"] + count["readv"] + count["pread64"] <= size // 4096 + 4


def test_every_line_of_the_output_is_written_at_once(host: Host) -> None:
    host.conf("[A]\nKey=1\n[B]\nKey=2\n")
    host.file("/c/static/a.lxc", "one\ntwo\n")
    assert host.generate(strace=["-P", "/out.conf", "-e", "trace=write,writev"]) == (0, "", "")
    assert texts(host) == [line + "\\n" for line in host.read().split("\n")[:-1]]


def test_every_line_of_the_log_is_written_at_once(host: Host) -> None:
    host.conf("A=${nope}\nB=${config:x}\n")
    lines = [
        "ERROR: No such template 'nope'",
        "ERROR: Invalid format 'x' for conf template 'config:x'",
    ]
    log = "".join(f"{line}\n" for line in lines)
    assert host.generate(strace=["-e", "trace=write,writev"]) == (0, "", log)
    assert texts(host, "2") == [f"{line}\\n" for line in lines]


def test_the_complaint_about_a_command_line_is_written_at_once(host: Host) -> None:
    command = ("--bogus", "x", "/out.conf")
    log = "--bogus: unknown argument\n"
    assert host.run(*command, strace=["-e", "trace=write,writev"]) == (1, "", log)
    assert texts(host, "2") == ["--bogus: unknown argument\\n"]


def test_a_plain_run_opens_no_library_of_a_source_that_it_does_not_use(host: Host) -> None:
    host.conf("[A]\nKey=${USER}\n")
    assert host.generate(strace=["-e", "trace=openat,open"]) == (0, "", "")
    opened = "\n".join(host.trace())
    assert "/c/10-base.conf" in opened
    for library in ("dconf", "libgio", "libgobject", "libsystemd", "libandroid-properties"):
        assert library not in opened
