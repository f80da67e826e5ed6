# SPDX-License-Identifier: MIT
"""Faults that are tried alone, each in a build of its own: the unit tests of the source first, then
the others that the linker says need it, then the end-to-end tests that reach other faults of the
source, if it is known which do."""

from pathlib import Path
from typing import Callable

from fault import Fault
from programs import write_overlay
from toolchain import PROGRAM, UNIT_TESTS, BuildError, Toolchain, Trouble, test_of
from trial import SURVIVED, UNIT, EndToEnd, Verdict, unit_tests
from worker import test_file

ALL = ["*"]


class Build:
    """The programs that a changed source makes, each built when it is first asked for."""

    def __init__(self, toolchain: Toolchain, path: str, code: str, out: Path) -> None:
        self.toolchain, self.path, self.out = toolchain, path, out
        self.objects: dict[str, Path] = {}
        for old in out.iterdir():
            old.unlink()
        self.overlay = write_overlay(out, {toolchain.root / path: code})
        self.names = toolchain.objects_that_see(path)
        self._compile([name for name in self.names if name.startswith("src/")])

    def _compile(self, names: list[str]) -> None:
        for name in names:
            if name not in self.objects:
                self.objects[name] = self.toolchain.compile(name, self.overlay, self.out)

    def _tests_of(self, name: str, files: set[str]) -> Path | None:
        self._compile([name for name in self.names if test_of(name) in files])
        program = self.out / name
        return self.toolchain.link(UNIT_TESTS, self.objects, program, files) if files else None

    def own_tests(self) -> Path | None:
        """The unit tests of the source, if it has any."""
        own = test_file(self.path)
        exist = (self.toolchain.root / "tests/unit" / own).exists()
        return self._tests_of("own", {own} if exist else set())

    def other_tests(self) -> Path | None:
        """The other unit tests that reach the source, if any does."""
        reaching = self.toolchain.tests_that_reach(self.names)
        return self._tests_of("others", reaching - {test_file(self.path)})

    def end_to_end(self) -> EndToEnd:
        for name in self.toolchain.programs:
            self.toolchain.link(name, self.objects, self.out / name)
        program = self.out / PROGRAM
        return EndToEnd(self.toolchain.root, self.toolchain.build, program, self.out)


class Alone:
    """The trials of faults alone, in the directory `work`."""

    def __init__(self, toolchain: Toolchain, work: Path) -> None:
        self.toolchain, self.work = toolchain, work

    def check(self, path: str) -> None:
        """The tests pass where nothing is changed."""
        code = (self.toolchain.root / path).read_text(encoding="utf-8")
        verdict = self._unit(Build(self.toolchain, path, code, self.work))
        if verdict.found():
            raise Trouble(f"{path}: without a fault: {verdict.kind} {verdict.killer}")

    def hold(self, fault: Fault, end_to_end_tests: list[str]) -> Verdict:
        original = self.toolchain.root / fault.path
        code = fault.apply(original.read_text(encoding="utf-8"))
        try:
            build = Build(self.toolchain, fault.path, code, self.work)
            verdict = self._unit(build)
            if verdict.found() or not end_to_end_tests:
                return verdict
            end_to_end = build.end_to_end()
            return _twice(lambda: end_to_end.run(end_to_end_tests))
        except BuildError:
            return Verdict("invalid")

    def _unit(self, build: Build) -> Verdict:
        for program_of in (build.own_tests, build.other_tests):
            if program := program_of():
                verdict = _twice(lambda: unit_tests(program, ALL, UNIT))
                if verdict.found():
                    return verdict
        return SURVIVED


def _twice(ask: Callable[[], Verdict]) -> Verdict:
    """What is found in doubt is looked for again."""
    verdict = ask()
    return ask() if verdict.found() and verdict.doubtful() else verdict
