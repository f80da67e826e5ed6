"""Outputs that fill up, that block, that lead nowhere, and readers who go away."""

import fcntl
import os
import threading
import time
from pathlib import Path

import pytest

from host import Host, generated

ARGUMENTS = ("--user-id", "1000", "--config", "/c")
F_SETPIPE_SZ = 1031
LONG = "x" * 30_000


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
    assert path.read_text(encoding="utf-8") == text()
    assert run.finish() == (0, "", "")


def test_a_slow_reader_of_a_small_pipe_gets_everything(host: Host) -> None:
    reader = os.open(fifo(host), os.O_RDONLY | os.O_NONBLOCK)
    fcntl.fcntl(reader, F_SETPIPE_SZ, os.sysconf("SC_PAGE_SIZE"))
    os.set_blocking(reader, True)
    run = host.start(*ARGUMENTS, "/fifo")
    time.sleep(0.1)  # for the program to open its end; an empty pipe without a writer is at its end
    while not (received := os.read(reader, 1000)):
        time.sleep(0.01)
    while piece := os.read(reader, 1000):
        received += piece
        time.sleep(0.001)
    os.close(reader)
    assert run.finish() == (0, "", "")
    assert received.decode() == text()


def test_a_reader_that_goes_away_ends_the_writing_alone(host: Host) -> None:
    host.script("/c/property-pre-hooks/a.sh", "touch /ran\n")
    path = fifo(host)

    def read_little() -> None:
        with path.open("rb", buffering=0) as reader:
            reader.read(10)

    reader = threading.Thread(target=read_little)
    reader.start()
    assert host.run(*ARGUMENTS, "/fifo") == (0, "", "")
    reader.join()
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
