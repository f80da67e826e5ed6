"""Builds the test programs and the program with a fault in them, from what the clang preset built.

Only the objects that see the faulty file are compiled, without optimisation; the compiler sees the
fault through a file system overlay, so that every path stays as it is. The rest comes from the
preset's archive.
"""

import json
import re
import shlex
import subprocess
from functools import cached_property
from pathlib import Path

from reach import reached_objects

# The archives of the preset, in the order in which they are linked.
ARCHIVES = ("src/libcradle-generators.a", "src/libcradle-config.a")
UNIT_TESTS = "tests/unit/cradle-unit-tests"
PROGRAM = "cradle-generate-config"
DROPPED = re.compile(r"-O\d|-W.*|-static-lib.*")
QUICKLY = ["-O0", "-w", "-U_FORTIFY_SOURCE"]
COMPILE_LIMIT = 600  # seconds


class BuildError(Exception):
    """What the compiler or the linker said."""


def run(command: list[str], directory: Path) -> str:
    """The output of a command that is expected to succeed."""
    result = subprocess.run(
        command, cwd=directory, stdin=subprocess.DEVNULL, capture_output=True, text=True,
        timeout=COMPILE_LIMIT, check=False,
    )
    if result.returncode != 0:
        raise BuildError(result.stderr or result.stdout)
    return result.stdout


def test_of(name: str) -> str:
    """The file of unit tests that an object is made of; nothing for other objects."""
    match = re.search(r"/cradle-unit-tests\.dir/(.*_test\.cpp)\.o$", name)
    return match[1] if match else ""


def is_of_an_archive(name: str) -> bool:
    """Whether an object is part of what the programs are linked with."""
    return re.search(r"/cradle-(generators|config)\.dir/", name) is not None


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
        commands = [_light(entry["command"]) for entry in entries]
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

    @cached_property
    def _standard_headers(self) -> Path:
        """The standard library's headers that the sources use, compiled once."""
        text = "".join(path.read_text(encoding="utf-8") for path in (self.root / "src").rglob("*.*"))
        names = sorted(set(re.findall(r"^#include <([a-z_]+)>", text, re.MULTILINE)))
        header = self.work / "standard.h"
        header.write_text("".join(f"#include <{name}>\n" for name in names), encoding="utf-8")
        command = [*self._compile_commands[self.object_of("src/config_value.cpp")]]
        command[command.index("-c") + 1] = str(header)
        command[command.index("-o") + 1] = f"{header}.pch"
        command[command.index("-c")] = "-xc++-header"
        run([*command, *QUICKLY, "-Xclang", "-fpch-instantiate-templates"], self.build)
        return Path(f"{header}.pch")

    def prepare(self) -> None:
        """Make what all builds share."""
        self._standard_headers  # pylint: disable=pointless-statement
        self._dependencies  # pylint: disable=pointless-statement
        self._reached  # pylint: disable=pointless-statement

    def object_of(self, path: str) -> str:
        """The object that is made of a .cpp file."""
        for name, command in self._compile_commands.items():
            if command[-1] == str(self.root / path):
                return name
        raise BuildError(f"{path}: no object is made of it")

    def objects_that_see(self, path: str) -> list[str]:
        """Those made of it come first: what is wrong with it shows there soonest."""
        seeing = [name for name, paths in self._dependencies.items() if path in paths]
        known = (name for name in seeing if name in self._compile_commands)
        stem = Path(path).stem
        return sorted(known, key=lambda name: (not name.endswith(f"/{stem}.cpp.o"), name))

    @cached_property
    def _reached(self) -> dict[str, set[str]]:
        libraries = [name for name in self._compile_commands if is_of_an_archive(name)]
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
        if is_of_an_archive(name):
            command += ["-include-pch", str(self._standard_headers)]
        run([*command, "-ivfsoverlay", str(overlay)], self.build)
        return target

    @cached_property
    def _link_commands(self) -> dict[str, list[str]]:
        commands = {}
        for target in (UNIT_TESTS, PROGRAM):
            last = run(["ninja", "-t", "commands", target], self.build).splitlines()[-1]
            commands[target] = _light(last.removeprefix(": && ").removesuffix(" && :"))
        return commands

    def link(self, target: str, faulty: dict[str, Path], program: Path, tests: set[str]) -> Path:
        """The program or the unit tests, with the faulty objects first. Of the unit tests' objects
        only those of the files `tests` are linked."""
        words = []
        before = [str(path) for name, path in faulty.items() if is_of_an_archive(name)]
        for word in self._link_commands[target]:
            if test_of(word) and test_of(word) not in tests:
                continue
            if word in ARCHIVES:
                words += before
                before = []
            words.append(str(faulty.get(word, word)))
        words[words.index("-o") + 1] = str(program)
        run([*words, "-fuse-ld=gold"], self.build)
        return program
