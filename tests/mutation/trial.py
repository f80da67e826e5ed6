# SPDX-License-Identifier: MIT
"""Trials: tests are run where they can do no harm, and the first one that fails decides."""

import os
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Iterable

from toolchain import Trouble

HERE = Path(__file__).parent
UNSHARE = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "--net"]
OUT_OF_TIME = (-24, 152, -9, 137)  # ended by SIGXCPU, or by SIGKILL where that is ignored
READY = "sandbox ready\n"

# The end-to-end tests that cannot find a fault of the program there: they look at what the build
# makes besides it, count what a release build costs, or wait for time to pass.
LEFT_OUT = {"budget", "completions", "concurrency", "faults", "hardening", "install"}
LEFT_OUT |= {"library_interface", "library_package", "manual", "pages", "pictures", "unit"}
LEFT_OUT |= {"user_wait", "version"}
SLOW = ("huge", "hundred_megabytes", "ten_thousand", "thousand_directories", "many_keys")
SLOW += ("many_parts", "two_inactive_sessions", "number_of_lines", "may_change_while")


@dataclass
class Verdict:
    """What became of a fault: "invalid" where it does not compile, "unit", "e2e" or "time" where
    a test found it, "survived" otherwise."""

    kind: str
    killer: str = ""  # the test that found it

    def found(self) -> bool:
        return self.kind in ("unit", "e2e", "time")

    def doubtful(self) -> bool:
        """Whether it has to be found again: a busy machine, or what is no test, may be behind it."""
        return self.kind == "time" or self.killer in ("", BEGINNING)


BEGINNING = "the beginning"
SURVIVED = Verdict("survived")


@dataclass
class Limits:
    """How long tests may take, in seconds: the processor time of a process, and the real time of all,
    which only has to end a wait without an end, however busy the machine is."""

    processor: int
    real: int


UNIT, END_TO_END = Limits(15, 600), Limits(90, 3600)


def in_sandbox(command: list[str], limits: Limits, writable: str = "",
               **settings: str) -> tuple[int, str]:
    """The status and the output of tests in namespaces of their own; sandbox.sh says what they can
    do there."""
    outer = UNSHARE if os.geteuid() == 0 else [*UNSHARE, "--user", "--map-root-user"]
    process = subprocess.Popen(
        [*outer, str(HERE / "sandbox.sh"), str(limits.processor), writable, *command],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd="/",
        env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "PYTHONDONTWRITEBYTECODE": "1", **settings},
    )
    try:
        output, _ = process.communicate(timeout=limits.real)
    except subprocess.TimeoutExpired:
        process.kill()
        output, _ = process.communicate()
        return -9, output.decode("utf-8", "replace").removeprefix(READY)
    text = output.decode("utf-8", "replace")
    if not text.startswith(READY):
        raise Trouble(f"the sandbox ended with status {process.returncode}: {text}")
    return process.returncode, text.removeprefix(READY)


def unit_tests(program: Path, tests: Iterable[str], limits: Limits) -> Verdict:
    """What these tests say."""
    command = [str(program), "--gtest_fail_fast", f"--gtest_filter={':'.join(tests)}"]
    status, output = in_sandbox(command, limits)
    begun = re.findall(r"^\[ RUN      \] ([\w/.]+)", output, re.MULTILINE)
    if status in OUT_OF_TIME:
        return Verdict("time", begun[-1] if begun else BEGINNING)
    failed = re.findall(r"^\[  FAILED  \] ([\w/.]+)", output, re.MULTILINE)
    if status != 0:
        return Verdict("unit", (failed or begun[-1:] or [BEGINNING])[0])
    return SURVIVED


def end_to_end_files(root: Path) -> list[str]:
    """The names of the files of end-to-end tests that are run here. What is left out is left out of
    the tests of every program: "budget" stands for "inspect_budget" too."""
    names = sorted(file.stem.removeprefix("test_") for file in root.glob("tests/e2e/test_*.py"))
    return [f"test_{name}.py" for name in names
            if not any(name == left_out or name.endswith(f"_{left_out}") for left_out in LEFT_OUT)]


class EndToEnd:
    """The end-to-end tests; selection.py, which pytest loads, is told by its settings which of them
    are run, and how they end."""

    def __init__(self, root: Path, build: Path, program: Path, work: Path) -> None:
        self.root, self.work = root, work
        self.settings = {
            "CRADLE_BINARY": str(program),
            "CRADLE_BUILD_DIR": str(build.parent),
            "CRADLE_STUB_DIR": str(build / "tests/e2e"),
            "CRADLE_LXC_READER": str(build / "tests/e2e/lxc-reader"),
            "PYTHONPATH": str(HERE),
        }

    def _run(self, files: Iterable[str], writable: str, *options: str,
             **settings: str) -> tuple[int, str]:
        words = " and ".join(f"not {word}" for word in SLOW)
        paths = [str(self.root / "tests/e2e" / file) for file in files]
        command = ["/usr/bin/python3", "-m", "pytest", "-q", "--tb=no", "-p", "no:cacheprovider",
                   "-p", "selection", "-k", words, *options, *paths]
        return in_sandbox(command, END_TO_END, writable, **self.settings, **settings)

    def record(self, reached: Path, into: Path) -> list[str]:
        """Run all tests and note what each reaches; those that fail, as happens to tests that look at
        every system call."""
        settings = {"CRADLE_REACHED": str(reached), "CRADLE_REACH_LIST": str(into)}
        status, output = self._run(end_to_end_files(self.root), str(reached.parent), **settings)
        failed = _failed(output)
        if status != (1 if failed else 0):
            raise Trouble(f"pytest ended with status {status}:\n{output}")
        return failed

    def run(self, tests: list[str]) -> Verdict:
        """What these tests say, in this order."""
        wanted = self.work / "wanted"
        wanted.write_text("\n".join(tests), encoding="utf-8", errors="surrogateescape")
        files = dict.fromkeys(test.partition("::")[0] for test in tests)
        return self._verdict(*self._run(files, "", "-x", CRADLE_WANTED=str(wanted)))

    @staticmethod
    def _verdict(status: int, output: str) -> Verdict:
        if status in OUT_OF_TIME:
            return Verdict("time", "")
        failed = _failed(output)
        if status == 1 and failed:
            return Verdict("e2e", failed[0])
        if status != 0:
            raise Trouble(f"pytest ended with status {status}:\n{output}")
        return SURVIVED


def _failed(output: str) -> list[str]:
    return re.findall(r"^found by: (.*)$", output, re.MULTILINE)
