# SPDX-License-Identifier: MIT
"""Outputs that fill up, that block, that lead nowhere, and readers who go away."""

import fcntl
import os
import select
import time
from pathlib import Path
from typing import Iterator

import pytest

from host import Host, generated

ARGUMENTS = ("--user-id", "1000", "--config", "/c")
F_SETPIPE_SZ = 1031
LONG = "x" * 30_000
PATIENCE = 20  # seconds for what takes less than one


@pytest.fixture
def host(host: Host) -> Host:
    """The host of this file: a configuration with lines longer than a page, or a small pipe."""
    host.conf(f"[A]\nKey=1\nLong={LONG}\n")
    return host


def text() -> str:
    return generated(f"\n[A]\nKey=1\nLong={LONG}\n")


def fifo(host: Host) -> Path:
    os.mkfifo(host.path("/fifo"))
    return host.path("/fifo")


def reader_of(path: Path) -> int:
    return os.open(path, os.O_RDONLY | os.O_NONBLOCK)


def reader_of_pages(path: Path) -> int:
    """A reader of a FIFO, there before anyone writes, that holds no more than a page."""
    reader = reader_of(path)
    fcntl.fcntl(reader, F_SETPIPE_SZ, os.sysconf("SC_PAGE_SIZE"))
    return reader


def pieces(reader: int, size: int) -> Iterator[bytes]:
    """What is written to a FIFO until its writer has come and gone."""
    piece = b"?"
    while piece:
        assert select.select([reader], [], [], PATIENCE)[0], "nobody writes"
        piece = os.read(reader, size)
        yield piece


@pytest.mark.parametrize("pages", [1, 2, 5])
def test_a_file_system_that_fills_up_keeps_what_it_took(host: Host, pages: int) -> None:
    size = pages * os.sysconf("SC_PAGE_SIZE")
    host.directory("/small")
    host.script(
        "/fill.sh",
        f"mount -t tmpfs -o size={size} none /small || exit 9\n"
        f"{host.binary} {' '.join(ARGUMENTS)} /small/out\n"
        "status=$?\ncat /small/out >/copy\nexit $status\n",
    )
    assert host.run("/fill.sh", program="/bin/sh") == (0, "", "")
    assert host.read("/copy") == text()[:size]


def test_a_fifo_is_opened_when_there_is_a_reader(host: Host) -> None:
    path = fifo(host)
    run = host.start(*ARGUMENTS, "/fifo")
    time.sleep(0.3)
    assert run.process.poll() is None
    reader = reader_of(path)
    assert b"".join(pieces(reader, 1 << 16)).decode() == text()
    os.close(reader)
    assert run.finish() == (0, "", "")


def test_a_slow_reader_of_a_small_pipe_gets_everything(host: Host) -> None:
    reader = reader_of_pages(fifo(host))
    run = host.start(*ARGUMENTS, "/fifo")
    received = b""
    for piece in pieces(reader, 1000):
        received += piece
        time.sleep(0.001)
    os.close(reader)
    assert run.finish() == (0, "", "")
    assert received.decode() == text()


def test_a_reader_that_goes_away_ends_the_writing_alone(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", "touch /ran\n")
    reader = reader_of_pages(fifo(host))
    run = host.start(*ARGUMENTS, "/fifo")
    assert next(pieces(reader, 10)) != b""
    assert not host.exists("/ran")
    os.close(reader)
    assert run.finish() == (0, "", "")
    assert host.exists("/ran")


def test_a_dangling_link_is_filled(host: Host) -> None:
    host.link("/out.conf", "/target")
    assert host.generate() == (0, "", "")
    assert host.path("/out.conf").is_symlink()
    assert host.read("/target") == text()
    assert host.mode("/target") == 0o600


@pytest.mark.parametrize("target", ["/nowhere/target", "/out.conf"])
def test_a_link_that_cannot_be_followed_is_left_as_it_is(host: Host, target: str) -> None:
    host.link("/out.conf", target)
    assert host.generate() == (0, "", "")
    assert os.readlink(host.path("/out.conf")) == target
    assert not host.exists("/nowhere")
