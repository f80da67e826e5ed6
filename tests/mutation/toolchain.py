# SPDX-License-Identifier: MIT
"""Builds the test programs and the program with a fault in them, from what the debug preset built.

Only the objects that see the faulty file are compiled, without optimisation; the compiler sees the
fault through a file system overlay, so that every path stays as it is. The rest, precompiled headers
among it, is the preset's.
"""

import json
import re
import shlex
import subprocess
from functools import cache, cached_property
from pathlib import Path
from typing import Sequence

from reach import reached_objects

UNIT_TESTS = "tests/unit/cradle-unit-tests"
PROGRAM = "cradle-generate-config"  # which the end-to-end tests are told of; others stand beside it
DROPPED = re.compile(r"-O\d|-g|-W.*|-static-lib.*")
QUICKLY = ["-O0", "-w"]
ALL_ERRORS = "-ferror-limit=0"
COMPILE_LIMIT = 1200  # seconds


class Trouble(Exception):
    """What keeps a run from going on."""


class BuildError(Exception):
    """What the compiler does not like about the code."""


def run(command: list[str], directory: Path) -> str:
    """The output of a command that is expected to succeed."""
    result = subprocess.run(
        command, cwd=directory, stdin=subprocess.DEVNULL, capture_output=True, text=True,
        timeout=COMPILE_LIMIT, check=False,
    )
    if result.returncode != 0:
        message = result.stderr or result.stdout
        if ": error: " in message:
            raise BuildError(message)
        raise Trouble(f"{command[0]} ended with status {result.returncode}: {message}")
    return result.stdout


def test_of(name: str) -> str:
    """The file of unit tests that an object is made of; nothing for other objects."""
    match = re.search(r"/cradle-unit-tests\.dir/(.*_test\.cpp)\.o$", name)
    return match[1] if match else ""


def target_of(name: str) -> str:
    """The program or the library that an object is part of."""
    match = re.search(r"/([^/]+)\.dir/", name)
    return match[1] if match else ""


def is_archive(word: str) -> bool:
    """Whether a word of a link command is one of the project's archives."""
    return word.startswith("src/") and word.endswith(".a")


def _light(command: str) -> list[str]:
    """A command of the build, with what costs time taken out."""
    return [word for word in shlex.split(command) if not DROPPED.fullmatch(word)]


class Toolchain:
    """What the preset's build directory knows. Objects are named as there."""

    def __init__(self, root: Path, build: Path, work: Path) -> None:
        self.root, self.build, self.work = root, build, work

    @cached_property
    def _compile_commands(self) -> dict[str, list[str]]:
        entries = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))
        commands = [_light(entry["command"]) for entry in entries if "-emit-pch" not in entry["command"]]
        return {command[command.index("-o") + 1]: command for command in commands}

    @cached_property
    def _dependencies(self) -> dict[str, list[str]]:
        """The project's files that each object is made of."""
        found: dict[str, list[str]] = {}
        for paragraph in run(["ninja", "-t", "deps"], self.build).split("\n\n"):
            head, *lines = paragraph.splitlines() or [""]
            paths = [line.strip() for line in lines]
            prefix = f"{self.root}/"
            found[head.split(":")[0]] = [
                path.removeprefix(prefix) for path in paths if path.startswith(prefix)
            ]
        return found

    def prepare(self) -> None:
        """Make what all builds share."""
        self._dependencies  # pylint: disable=pointless-statement
        self._reached  # pylint: disable=pointless-statement

    def object_of(self, path: str) -> str:
        """The object that is made of a .cpp file."""
        for name, command in self._compile_commands.items():
            if command[-1] == str(self.root / path):
                return name
        raise Trouble(f"{path}: no object is made of it")

    def objects_that_see(self, path: str) -> list[str]:
        """Those made of it come first: what is wrong with it shows there soonest."""
        seeing = [name for name, paths in self._dependencies.items() if path in paths]
        known = (name for name in seeing if name.startswith(("src/", "tests/unit/")))
        stem = Path(path).stem
        return sorted(known, key=lambda name: (not name.endswith(f"/{stem}.cpp.o"), name))

    def is_of_an_archive(self, name: str) -> bool:
        """Whether an object is part of what the programs are linked with."""
        return f"lib{target_of(name)}.a" in self._archives

    @cached_property
    def _archives(self) -> set[str]:
        return {Path(word).name for word in self._link_command(UNIT_TESTS) if is_archive(word)}

    @cached_property
    def programs(self) -> list[str]:
        """The programs that the sources make, each named as its target."""
        names = {target_of(name) for name in self._compile_commands if name.startswith("src/")}
        return sorted(name for name in names if (self.build / name).is_file())

    @cached_property
    def _reached(self) -> dict[str, set[str]]:
        libraries = [name for name in self._compile_commands if self.is_of_an_archive(name)]
        tests = [name for name in self._compile_commands if test_of(name)]
        return reached_objects([Path(name) for name in libraries + tests], self.build)

    def tests_that_reach(self, names: list[str]) -> set[str]:
        """The files of unit tests that are made of one of these objects or need one."""
        return {test_of(name) for name, reached in self._reached.items()
                if test_of(name) and not reached.isdisjoint(names)}

    def compile(self, name: str, overlay: Path, out: Path) -> Path:
        """One object, with the files of the overlay in the place of those of the tree."""
        target = out / name.replace("/", "_")
        command = [*self._compile_commands[name]]
        command[command.index("-o") + 1] = str(target)
        if name.startswith("src/"):
            command += QUICKLY
        run([*command, ALL_ERRORS, "-ivfsoverlay", str(overlay)], self.build)
        return target

    def compile_recorder(self, source: Path, like: str, places: dict[str, Path], out: Path) -> Path:
        """A file of this directory, with the options of an object of the preset."""
        target = out / f"{source.stem}.o"
        command = [*self._compile_commands[self.object_of(like)]]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(source)
        defined = [f'-D{name}="{place}"' for name, place in places.items()]
        run([*command, *(QUICKLY if like.startswith("src/") else []), *defined], self.build)
        return target

    @cache
    def _link_command(self, target: str) -> list[str]:
        last = run(["ninja", "-t", "commands", target], self.build).splitlines()[-1]
        return _light(last.removeprefix(": && ").removesuffix(" && :"))

    @cache
    def _runs_when_started(self, name: str) -> bool:
        """Whether an object of the preset has anything to do before main()."""
        return "_GLOBAL__sub_I_" in run(["nm", name], self.build)

    def link(self, target: str, faulty: dict[str, Path], program: Path, tests: set[str] | None = None,
             more: Sequence[Path] = ()) -> Path:
        """A program or the unit tests, with the faulty objects and `more` objects. Of the unit tests'
        objects only those of the files `tests` are linked, if they are given.

        The faulty ones come first, because constants that hold a choice are filled in the order of the
        objects, and what had to run at the start anyway may need them."""
        words = self._link_command(target)
        archives = {Path(word).name for word in words if is_archive(word)}
        first = [name for name in faulty if f"lib{target_of(name)}.a" in archives]
        first.sort(key=self._runs_when_started)
        rest = [str(faulty.get(word, word)) for word in words
                if not test_of(word) or tests is None or test_of(word) in tests]
        rest[rest.index("-o") + 1] = str(program)
        run([rest[0], *(str(faulty[name]) for name in first), *rest[1:], *map(str, more),
             "-fuse-ld=gold"], self.build)
        return program
