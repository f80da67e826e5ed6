# SPDX-License-Identifier: MIT
"""Runs the program many times in a private host, with one system call failing in each run.

This is a program of its own: test_faults.py puts it into a host and starts it there, since a host
per run would cost more than the run. It reads /faults.json, makes a run per fault under strace, and
writes what it saw of each to /outcomes.json.
"""

import ctypes
import json
import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path
from typing import Any

PATIENCE = 60.0  # seconds for a run
GRACE = 5.0  # seconds for a command whose end the program could not wait for
PR_SET_CHILD_SUBREAPER = 36
MOUNTED = {"/dev", "/proc", "/usr"}
WORK = Path("/tmp/fault-driver")  # what strace and the streams of the program write


def adopt_orphans() -> None:
    """Become the parent of every process that a run leaves behind."""
    if ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        sys.exit("there is no adopting orphans")


def bury_orphans() -> int:
    """End what the last run left behind; returns how many processes did not end by themselves."""
    ended = 0
    deadline = time.monotonic() + GRACE
    while True:
        try:
            pid, _ = os.waitpid(-1, os.WNOHANG)
        except ChildProcessError:
            return ended
        if pid == 0 and time.monotonic() < deadline:
            time.sleep(0.01)
        elif pid == 0:
            ended += 1
            for child in Path("/proc/thread-self/children").read_text(encoding="ascii").split():
                os.kill(int(child), signal.SIGKILL)
            os.waitpid(-1, 0)


def tree(skipped: set[str]) -> dict[str, tuple[int, ...]]:
    """All that stands on the host, with what would change when somebody touched it."""
    found = {}
    places = ["/"]
    while places:
        with os.scandir(places.pop()) as entries:
            for entry in entries:
                if entry.path not in skipped:
                    stat = entry.stat(follow_symlinks=False)
                    directory = entry.is_dir(follow_symlinks=False)
                    times = () if directory else (stat.st_size, stat.st_mtime_ns)
                    found[entry.path] = (stat.st_mode, stat.st_uid, stat.st_ino, *times)
                    places += [entry.path] if directory else []
    return found


class Driver:
    """The runs of one list of faults: (call, number of its occurrence, what it is to return)."""

    def __init__(self, task: dict[str, Any]) -> None:
        self.command: list[str] = task["command"]
        self.made = Path(task["made"])  # the directory that a run may make
        self.output = Path(self.command[-1])
        self.skipped = MOUNTED | {str(WORK), str(self.output), str(self.made), task["build"]}
        WORK.mkdir()
        self.before = tree(self.skipped)
        options = [os.environ.get("ASAN_OPTIONS", ""), "detect_leaks=0"]
        self.environment = os.environ | {"ASAN_OPTIONS": ":".join(filter(None, options))}

    def run(self, call: str, number: int, result: str) -> dict[str, Any]:
        self.output.unlink(missing_ok=True)
        shutil.rmtree(self.made, ignore_errors=True)
        inject = f"inject={call}:{result}:when={number}"
        strace = ["/usr/bin/strace", "-o", f"{WORK}/trace", "-e", f"trace={call}", "-e", inject]
        begin = time.monotonic()
        with open(WORK / "stdout", "wb") as stdout, open(WORK / "stderr", "wb") as stderr:
            # pylint: disable-next=consider-using-with
            process = subprocess.Popen(
                [*strace, *self.command],
                env=self.environment,
                stdin=subprocess.DEVNULL,
                stdout=stdout,
                stderr=stderr,
                start_new_session=True,
            )
            try:
                status = process.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                status = None
        left = bury_orphans()
        return {
            "status": status,
            "output": text(self.output) if self.output.is_file() else None,
            "stdout": text(WORK / "stdout"),
            "stderr": text(WORK / "stderr"),
            "injected": "(INJECTED)" in text(WORK / "trace"),
            "left": left,
            "changed": self.changes(),
            "seconds": time.monotonic() - begin,
        }

    def changes(self) -> list[str]:
        after = tree(self.skipped)
        paths = self.before.keys() | after.keys()
        return sorted(path for path in paths if self.before.get(path) != after.get(path))


def text(path: Path) -> str:
    return path.read_bytes().decode("utf-8", "surrogateescape")


def main() -> None:
    adopt_orphans()
    task = json.loads(Path("/faults.json").read_text(encoding="utf-8"))
    driver = Driver(task)
    outcomes = [driver.run(*fault) for fault in task["faults"]]
    Path("/outcomes.json").write_text(json.dumps(outcomes), encoding="utf-8")


main()
