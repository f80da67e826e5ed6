"""Faults on trial: they are built into the program, and the tests look for them.

The unit tests of the faulty file come first, then the other unit tests, then the end-to-end tests;
the first one that fails ends the trial.
"""

import json
import os
import re
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from fault import Fault
from source import read_source
from together import Together, choose_fault, named_in
from toolchain import PROGRAM, UNIT_TESTS, BuildError, Toolchain, test_of

HERE = Path(__file__).parent
UNSHARE = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "--net"]
OUT_OF_TIME = (-24, 152, -9, 137)  # ended by SIGXCPU, or by SIGKILL where that is ignored

# The end-to-end tests that take long for what they find here are left out: they wait for time to
# pass, hold gigabytes, or count what a release build costs.
LEFT_OUT = ("faults", "user_wait", "budget", "hardening", "readme")
SLOW = ("huge", "hundred_megabytes", "ten_thousand", "thousand_directories", "many_keys")
SLOW += ("many_parts", "two_inactive_sessions", "number_of_lines", "may_change_while")
# Those whose names have a word in common with the faulty file come first, and then those that see
# most of the program.
FIRST = ("golden", "command_line", "config_files", "generated_config", "property_file")


@dataclass
class Verdict:
    """What became of a fault: "invalid" where it does not compile, "unit", "e2e" or "time" where
    a test found it, "survived" otherwise."""

    kind: str
    killer: str = ""  # the test that found it

    def found(self) -> bool:
        return self.kind in ("unit", "e2e", "time")


@dataclass
class Limits:
    """How long tests may take: processor time of a process, and real time of all, in seconds."""

    processor: int
    real: int


OWN, ALL, END_TO_END = Limits(2, 40), Limits(8, 120), Limits(60, 900)


def in_sandbox(command: list[str], limits: Limits, **settings: str) -> tuple[int, str]:
    """The status and the output of tests in namespaces of their own; sandbox.sh says what they can
    do there."""
    outer = UNSHARE if os.geteuid() == 0 else [*UNSHARE, "--user", "--map-root-user"]
    process = subprocess.Popen(
        [*outer, str(HERE / "sandbox.sh"), str(limits.processor), *command],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd="/",
        env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "PYTHONDONTWRITEBYTECODE": "1", **settings},
    )
    try:
        output, _ = process.communicate(timeout=limits.real)
    except subprocess.TimeoutExpired:
        process.kill()
        process.communicate()
        return -9, ""
    return process.returncode, output.decode("utf-8", "replace")


Done = Callable[[Fault, Verdict], None]


class Build:
    """The programs that a changed source makes, each built when it is first asked for."""

    def __init__(self, toolchain: Toolchain, path: str, code: str, out: Path) -> None:
        self.toolchain, self.path, self.out = toolchain, path, out
        self.objects: dict[str, Path] = {}
        self.programs: dict[str, Path] = {}
        self.checked: set[str] = set()  # the tests that were run with no fault chosen
        self.broken = ""  # the one that failed then
        for old in out.iterdir():
            old.unlink()
        self.overlay = self._overlay(code)
        self.names = toolchain.objects_that_see(path)
        self._compile([name for name in self.names if name.startswith("src/")])

    def _overlay(self, code: str) -> Path:
        original = self.toolchain.root / self.path
        changed = self.out / f"changed{original.suffix}"
        changed.write_text(code, encoding="utf-8")
        root = {"type": "file", "name": str(original), "external-contents": str(changed)}
        overlay = self.out / "overlay.json"
        table = {"version": 0, "use-external-names": False, "roots": [root]}
        overlay.write_text(json.dumps(table), encoding="utf-8")
        return overlay

    def _compile(self, names: list[str]) -> None:
        for name in names:
            if name not in self.objects:
                self.objects[name] = self.toolchain.compile(name, self.overlay, self.out)

    def _linked(self, kind: str, target: str, test_files: set[str]) -> Path:
        if kind not in self.programs:
            self._compile([name for name in self.names if test_of(name) in test_files])
            out = self.out / kind
            self.programs[kind] = self.toolchain.link(target, self.objects, out, test_files)
        return self.programs[kind]

    def own_tests(self) -> Path | None:
        """The unit tests of the source, if it has any."""
        own = test_file(self.path)
        has_some = (self.toolchain.root / "tests/unit" / own).exists()
        return self._linked("own", UNIT_TESTS, {own}) if has_some else None

    def other_tests(self) -> Path | None:
        """The other unit tests that reach the source, if any does."""
        files = self.toolchain.tests_that_reach(self.names) - {test_file(self.path)}
        return self._linked("others", UNIT_TESTS, files) if files else None

    def program(self) -> Path:
        return self._linked("program", PROGRAM, set())


class Trials:
    """The trials of one worker, which has the directory `work` for itself."""

    def __init__(self, toolchain: Toolchain, work: Path, with_end_to_end: bool) -> None:
        self.toolchain, self.work = toolchain, work
        self.with_end_to_end = with_end_to_end

    def hold(self, fault: Fault) -> Verdict:
        """The trial of one fault on its own."""
        original = self.toolchain.root / fault.path
        code = fault.apply(original.read_text(encoding="utf-8"))
        try:
            return self._ask(Build(self.toolchain, fault.path, code, self.work), 0)
        except BuildError:
            return Verdict("invalid")

    def hold_together(self, path: str, faults: list[Fault], done: Done) -> None:
        """The trials of those faults of a source that can be built together."""
        together = Together(read_source(self.toolchain.root, path), faults)
        build = self._build(together)
        if build is None:
            return
        for number, fault in together.faults().items():
            verdict = self._ask(build, number)
            if build.broken:
                # They are tried one by one then, which takes longer.
                print(f"mutate: {path}: without a fault: {build.broken}", file=sys.stderr)
                return
            done(fault, verdict)

    def _build(self, together: Together) -> Build | None:
        """A build of all faults that compile together."""
        while together.faults():
            try:
                code = together.code()
                return Build(self.toolchain, together.source.path, code, self.work)
            except BuildError as error:
                wrong = named_in(str(error)) & set(together.faults())
                if not wrong:
                    return None
                together.leave_out(wrong)
        return None

    def _ask(self, build: Build, number: int) -> Verdict:
        """What the tests say to the fault with this number."""
        stages = [(build.own_tests, self._own_tests), (build.other_tests, self._other_tests)]
        if self.with_end_to_end:
            stages.append((build.program, self._end_to_end_tests))
        for program_of, ask in stages:
            program = program_of()
            if program is None:
                continue
            if number:
                choose_fault(program, number)
            verdict = ask(program, build.path, "")
            if verdict.kind == "survived":
                continue
            if number and verdict.killer not in build.checked:
                choose_fault(program, 0)
                build.broken = ask(program, build.path, verdict.killer).killer
                build.checked.add(verdict.killer)
            return verdict
        return Verdict("survived")

    def _own_tests(self, program: Path, _: str, test: str) -> Verdict:
        return _unit_tests(program, OWN, test)

    def _other_tests(self, program: Path, _: str, test: str) -> Verdict:
        return _unit_tests(program, ALL, test)

    def _end_to_end_tests(self, program: Path, path: str, test: str) -> Verdict:
        build = self.toolchain.build
        settings = {
            "CRADLE_BINARY": str(program),
            "CRADLE_BUILD_DIR": str(build.parent),
            "CRADLE_STUB_DIR": str(build / "tests/e2e"),
            "CRADLE_LXC_READER": str(build / "tests/e2e/lxc-reader"),
        }
        if test:
            return _end_to_end_tests([self.toolchain.root / "tests/e2e" / test], settings)
        first, *rest = end_to_end_files(self.toolchain.root, path)
        verdict = _end_to_end_tests([first], settings)  # collecting all of them takes longer
        return verdict if verdict.found() else _end_to_end_tests(rest, settings)


def _end_to_end_tests(files: list[Path], settings: dict[str, str]) -> Verdict:
    words = " and ".join(f"not {word}" for word in SLOW)
    command = ["/usr/bin/python3", "-m", "pytest", "-q", "-x", "--tb=no", "-p",
               "no:cacheprovider", "-k", words, *map(str, files)]
    status, output = in_sandbox(command, END_TO_END, **settings)
    if status in OUT_OF_TIME:
        return Verdict("time", "")
    failed = re.findall(r"^(?:FAILED|ERROR) ([\w/.]+::\w+)", output, re.MULTILINE)
    if status == 1 and failed:
        return Verdict("e2e", failed[0].rpartition("/")[2])
    if status != 0:
        raise RuntimeError(f"pytest ended with status {status}:\n{output}")
    return Verdict("survived")


def _unit_tests(program: Path, limits: Limits, test: str) -> Verdict:
    command = [str(program), "--gtest_fail_fast"]
    if "." in test:
        command.append(f"--gtest_filter={test}")
    status, output = in_sandbox(command, limits)
    begun = re.findall(r"^\[ RUN      \] ([\w/.]+)", output, re.MULTILINE)
    if status in OUT_OF_TIME:
        return Verdict("time", begun[-1] if begun else "the beginning")
    failed = re.findall(r"^\[  FAILED  \] ([\w/.]+)", output, re.MULTILINE)
    if status != 0:
        return Verdict("unit", (failed or begun[-1:] or ["the beginning"])[0])
    return Verdict("survived")


def test_file(path: str) -> str:
    """The unit tests of a source, below tests/unit."""
    return re.sub(r"\.(cpp|h)$", "_test.cpp", path.removeprefix("src/"))


def words_of(name: str) -> set[str]:
    """The words of a file's name, in the singular."""
    return {re.sub("ies$", "y", word).rstrip("s") for word in re.split(r"[/_.]", name)}


def end_to_end_files(root: Path, path: str) -> list[Path]:
    """The files of end-to-end tests in the order in which they are asked about a source."""
    files = {file.stem.removeprefix("test_"): file for file in root.glob("tests/e2e/test_*.py")}
    about = words_of(path.removeprefix("src/")) - {"config", "file", "cpp", "h", "generator"}
    if "row" in about:
        about.add("golden")  # which has every row

    def rank(name: str) -> tuple[int, int, str]:
        late = FIRST.index(name) if name in FIRST else len(FIRST)
        return (-len(about & words_of(name)), late, name)

    return [files[name] for name in sorted(files, key=rank) if name not in LEFT_OUT]
