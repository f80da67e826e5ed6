# SPDX-License-Identifier: MIT
"""The golden cases: whole hosts, each a directory below golden/.

A case is what a host holds and what the program makes of it. Adding a case is adding a directory:

    golden/NAME/host/        copied into the private host as it is; the lines of etc/passwd and
                             etc/group are added to those that are there (root and alice). Git
                             keeps no empty directory: put a file named "placeholder" into it.
    golden/NAME/arguments    the options of the runs, as words of a shell; without this file
                             "--user-id 1000". "arguments.TYPE" is for the runs of that type alone.
    golden/NAME/config       the file that "--type config" writes; likewise "lxc" and "property".
    golden/NAME/TYPE.stderr  what the run says on standard error; without this file nothing.
    golden/NAME/TYPE.status  its exit status; without this file 0.
    golden/NAME/config.path  where the host keeps the generated configuration, "/config" without
                             this file. One that stands in a configuration directory is read by the
                             two runs that follow.

A type is run when the case has any of its three files; where it has no TYPE the run must leave no
file behind. The runs are made in the order config, lxc, property on the same host. A case whose
name begins with "unhappy-" has a run that complains.
"""

import shlex
import shutil
from pathlib import Path

from host import Host, Result, decode

TYPES = ("config", "lxc", "property")
SUFFIXES = ("", ".stderr", ".status")
FILES = {"host", "arguments", "config.path", *(f"arguments.{kind}" for kind in TYPES)}
FILES |= {kind + suffix for kind in TYPES for suffix in SUFFIXES}
MERGED = ("etc/passwd", "etc/group")


class GoldenCase:
    """One directory below golden/."""

    def __init__(self, name: str) -> None:
        self.name = name
        self.root = Path(__file__).parent / "golden" / name

    def text(self, name: str, otherwise: str = "") -> str:
        """The text of one of the case's files."""
        file = self.root / name
        return decode(file.read_bytes()) if file.exists() else otherwise

    def has(self, name: str) -> bool:
        return (self.root / name).exists()

    def types(self) -> list[str]:
        """The types that the case has expectations for."""
        return [kind for kind in TYPES if any(self.has(kind + suffix) for suffix in SUFFIXES)]

    def output(self, kind: str) -> str:
        """Where the host keeps what a run writes."""
        return self.text("config.path", "/config").strip() if kind == "config" else f"/{kind}"

    def expected(self, kind: str) -> Result:
        status = int(self.text(f"{kind}.status", "0"))
        return Result(status, "", self.text(f"{kind}.stderr"))

    def furnish(self, host: Host) -> None:
        """Copy the case's tree into the host."""
        merged = {path: host.read(path) + self.text(f"host/{path}") for path in MERGED}
        shutil.copytree(self.root / "host", host.root, symlinks=True, dirs_exist_ok=True)
        for path, text in merged.items():
            host.file(path, text)

    def run(self, host: Host, kind: str) -> Result:
        words = self.text(f"arguments.{kind}", self.text("arguments", "--user-id 1000"))
        return host.run("--type", kind, *shlex.split(words), self.output(kind))


def all_cases() -> list[GoldenCase]:
    directories = (Path(__file__).parent / "golden").iterdir()
    return [GoldenCase(name) for name in sorted(path.name for path in directories)]


def cases_with(kind: str) -> list[GoldenCase]:
    """The cases whose run of a type succeeds."""
    return [case for case in all_cases() if case.has(kind) and case.expected(kind).status == 0]


def name_of(case: GoldenCase) -> str:
    return case.name
