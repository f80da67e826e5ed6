# SPDX-License-Identifier: MIT
"""Input that comes in small pieces, or that changes while it is read."""

import itertools
import os
import threading
from pathlib import Path
from typing import Callable, Iterator

import pytest

from host import Host, generated

RUNS = 200
MESSAGES = (
    "Failed to load config from '/c/",
    "Invalid configuration in /c/",
    "Could not parse line as ",
)


def in_background(action: Callable[[], None]) -> threading.Thread:
    thread = threading.Thread(target=action, daemon=True)
    thread.start()
    return thread


def dribble(path: Path, text: str) -> None:
    """Write a few bytes at a time, so that no read of the other side gets many."""
    pieces = itertools.cycle((1, 2, 3, 5))
    writer = os.open(path, os.O_WRONLY)
    data = text.encode()
    while data:
        size = next(pieces)
        os.write(writer, data[:size])
        data = data[size:]
    os.close(writer)


@pytest.mark.parametrize("path", ["/c/10-base.conf", "/c/static/a.lxc", "/model"])
def test_what_comes_in_pieces_is_read_whole(host: Host, path: str) -> None:
    texts = {
        "/c/10-base.conf": "[A]\nKey=${envfile:/model:MODEL}\nLast=no line feed",
        "/c/static/a.lxc": "".join(f"lxc.line = {i}\n" for i in range(100)),
        "/model": "# of this device\nOTHER=1\nMODEL=" + "five" * 100,
    }
    for name, text in texts.items():
        host.file(name, text)
    host.path(path).unlink()
    os.mkfifo(host.path(path))
    writer = in_background(lambda: dribble(host.path(path), texts[path]))
    assert host.generate(timeout=10) == (0, "", "")
    writer.join(timeout=10)
    assert not writer.is_alive(), "nobody reads"
    lines = "".join(f"DefaultLxc=lxc.line = {i}\n" for i in range(100))
    groups = f"\n[A]\nKey={'five' * 100}\nLast=no line feed\n"
    assert host.read() == generated(groups, lines)


def change(directory: Path, number: int) -> None:
    """Add, replace and remove files of a directory, and others in the place of files."""
    name = directory / f"{20 + number % 5}-moving.conf"
    spare = directory / "spare"
    spare.write_text(f"[A]\nMoving={number}\n" * (number % 50), encoding="utf-8")
    match number % 4:
        case 0:
            spare.rename(name)
        case 1:
            name.write_text(f"[A]\nMoving={number}\n", encoding="utf-8")
        case 2:
            name.unlink(missing_ok=True)
            name.symlink_to("/nowhere")
        case 3:
            name.unlink(missing_ok=True)
            name.mkdir()
            name.rmdir()


@pytest.fixture
def moving(host: Host) -> Iterator[Host]:
    """A host whose configuration changes all the time, but for one file."""
    host.conf("[A]\nKey=1\n")
    done = threading.Event()

    def keep_changing() -> None:
        for number in itertools.count():
            if done.is_set():
                return
            change(host.path("/c"), number)

    changing = in_background(keep_changing)
    yield host
    done.set()
    changing.join()


def test_a_directory_may_change_while_it_is_read(moving: Host) -> None:
    command = f"{moving.binary} --user-id 1000 --config /c /out/$i.conf"
    moving.directory("/out")
    loop = f"i=0; while [ $i -lt {RUNS} ]; do {command}; echo $?; i=$((i + 1)); done"
    status, stdout, stderr = moving.run("-c", loop, program="/bin/sh", timeout=120)
    statuses = stdout.split()
    assert (status, len(statuses)) == (0, RUNS)
    assert set(statuses) <= {"0", "1"}
    for number, ended in enumerate(statuses):
        path = f"/out/{number}.conf"
        if ended == "1":
            assert not moving.exists(path)
        else:
            assert "\n[A]\nKey=1\n" in moving.read(path)
            assert moving.read(path).endswith(generated().rpartition("UserId")[2])
    for line in stderr.splitlines():
        assert line.startswith("ERROR: ")
        assert any(message in line for message in MESSAGES)
