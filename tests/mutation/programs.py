# SPDX-License-Identifier: MIT
"""The programs that hold all faults which can stand side by side: the unit tests and those of the
sources.

They are built once. A fault that the compiler does not take there is left out, to be tried alone.
"""

import json
import shutil
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from fault import Fault
from source import read_source
from together import Together, choose_faults, blamed
from toolchain import PROGRAM, UNIT_TESTS, BuildError, Toolchain, Trouble

HERE = Path(__file__).parent


def write_overlay(out: Path, changed: dict[Path, str]) -> Path:
    """What lets the compiler see changed files in the place of those of the tree."""
    roots = []
    for number, (original, code) in enumerate(changed.items()):
        file = out / f"changed-{number}{original.suffix}"
        if not file.exists() or file.read_text(encoding="utf-8") != code:
            file.write_text(code, encoding="utf-8")
        roots.append({"type": "file", "name": str(original), "external-contents": str(file)})
    overlay = out / "overlay.json"
    table = {"version": 0, "use-external-names": False, "roots": roots}
    overlay.write_text(json.dumps(table), encoding="utf-8")
    return overlay


def unit_tests_in(directory: Path) -> Path:
    return directory / Path(UNIT_TESTS).name


def choose_in(directory: Path, faults: set[int]) -> None:
    """Let all programs there have these faults and no others."""
    for program in directory.iterdir():
        choose_faults(program, faults)


class Programs:
    """One build of all faults, in the directory `out`."""

    def __init__(self, toolchain: Toolchain, faults: list[Fault], out: Path, jobs: int) -> None:
        self.toolchain, self.out, self.jobs = toolchain, out, jobs
        self.reached, self.list = out / "reach/reached", out / "reach/tests"
        self.togethers: dict[str, Together] = {}
        by_path: dict[str, dict[int, Fault]] = {}
        for number, fault in enumerate(faults, 1):
            by_path.setdefault(fault.path, {})[number] = fault
        for path, numbers in by_path.items():
            self.togethers[path] = Together(read_source(toolchain.root, path), numbers)
        self.directory = out / "linked"  # holds the programs under their names

    def faults(self) -> dict[int, Fault]:
        return {n: f for together in self.togethers.values() for n, f in together.faults().items()}

    def numbers_of(self, path: str) -> set[int]:
        """The faults of a source that are held."""
        return set(self.togethers[path].faults())

    def may_hide(self, number: int, fault: Fault) -> bool:
        return self.togethers[fault.path].may_hide(number)

    def build(self) -> None:
        objects = self._compile()
        (self.out / "reach").mkdir()
        self.directory.mkdir()
        places = {"REACH_FILE": self.reached, "REACH_LIST": self.list}
        compile_recorder = self.toolchain.compile_recorder
        recorder = compile_recorder(HERE / "recorder.cpp", "src/real_path.cpp", places, self.out)
        tests = compile_recorder(
            HERE / "test_recorder.cpp", "tests/unit/real_path_test.cpp", places, self.out)
        link = self.toolchain.link
        link(UNIT_TESTS, objects, self.unit_tests, more=[recorder, tests])
        for name in self.toolchain.programs:
            link(name, objects, self.directory / name, more=[recorder])

    @property
    def unit_tests(self) -> Path:
        return unit_tests_in(self.directory)

    @property
    def program(self) -> Path:
        return self.directory / PROGRAM

    def copy(self, directory: Path) -> Path:
        """Give a worker programs of its own."""
        return Path(shutil.copytree(self.directory, directory))

    def _compile(self) -> dict[str, Path]:
        """The objects that see a faulty file. What is wrong with a fault mostly shows in those that
        the program is made of."""
        names = sorted({name for path in self.togethers
                        for name in self.toolchain.objects_that_see(path)})
        of_archives = [name for name in names if self.toolchain.is_of_an_archive(name)]
        objects: dict[str, Path] = {}
        self._compile_all(of_archives, objects)
        self._compile_all([name for name in names if name not in of_archives], objects)
        return objects

    def _compile_all(self, wanted: list[str], objects: dict[str, Path]) -> None:
        """Compile until there is nothing wrong with them."""
        while wanted:
            overlay = write_overlay(self.out, {
                self.toolchain.root / path: together.code()
                for path, together in self.togethers.items()
            })
            with ThreadPoolExecutor(self.jobs) as pool:
                errors = list(pool.map(lambda name: self._try(name, overlay, objects), wanted))
            for name, message in zip(wanted, errors):
                if message:
                    self._leave_out(name, message)
            wanted = [name for name in wanted if name not in objects]

    def _try(self, name: str, overlay: Path, objects: dict[str, Path]) -> str:
        """What the compiler says."""
        try:
            objects[name] = self.toolchain.compile(name, overlay, self.out)
            return ""
        except BuildError as error:
            return str(error)

    def _leave_out(self, name: str, message: str) -> None:
        wrong = blamed(message)
        for together in self.togethers.values():
            together.leave_out(wrong & set(together.faults()))
        if not wrong:
            self._leave_out_source(name, message)

    def _leave_out_source(self, name: str, message: str) -> None:
        for path, together in self.togethers.items():
            if together.faults() and name.endswith(f"/{Path(path).name}.o"):
                print(f"mutate: {path}: its faults are tried alone:\n{message}", file=sys.stderr)
                together.leave_out(set(together.faults()))
                return
        raise Trouble(f"{name} does not compile with faults: {message}")
