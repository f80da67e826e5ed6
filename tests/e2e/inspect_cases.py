# SPDX-License-Identifier: MIT
"""The golden cases of cradle-inspect-config: whole hosts, each a directory below inspect/.

A case is what a host holds and what the program says about it. Adding a case is adding a directory:

    inspect/NAME/host/     copied into the private host as it is, writable by its owner alone
    inspect/NAME/modes     lines "MODE PATH": further modes, because Git keeps none; a path that is
                           not there becomes a directory
    inspect/NAME/times     lines "SECONDS PATH": when a file was changed; the others are alike
    inspect/NAME/session   lines "$ WORDS", each a run of the program with these words of a shell
                           behind "--user-id 1000", followed by what it prints on standard output,
                           what it prints on standard error, and "status N" unless it is 0

With CRADLE_SESSIONS=refresh the sessions are written anew, which is to be reviewed like any change.
"""

import os
import re
import shlex
import shutil
import stat
from pathlib import Path

from host import Host, setting

ROOT = Path(__file__).parent / "inspect"
PROGRAM = "cradle-inspect-config"
MTIME = 1_600_000_000  # of everything that a case holds, so that nothing is older by chance


def inspector() -> str:
    """The program under test."""
    return str(Path(setting("CRADLE_BINARY")).with_name(PROGRAM))


class InspectCase:
    """One directory below inspect/."""

    def __init__(self, name: str) -> None:
        self.name = name
        self.root = ROOT / name

    def furnish(self, host: Host) -> None:
        """Copy the case's tree into the host."""
        shutil.copytree(self.root / "host", host.root, symlinks=True, dirs_exist_ok=True)
        for source in (self.root / "host").rglob("*"):
            place = host.path(str(source.relative_to(self.root / "host")))
            if not place.is_symlink():
                place.chmod(stat.S_IMODE(place.stat().st_mode) & 0o755)
                os.utime(place, (MTIME, MTIME))
        for mode, path in self.pairs("modes"):
            if not host.exists(path):
                host.directory(path)
            host.path(path).chmod(int(mode, 8))
        for seconds, path in self.pairs("times"):
            os.utime(host.path(path), (int(seconds), int(seconds)))

    def pairs(self, name: str) -> list[list[str]]:
        """The lines of one of the case's files, each cut at its first blank."""
        file = self.root / name
        lines = file.read_text(encoding="utf-8").splitlines() if file.exists() else []
        return [line.split(maxsplit=1) for line in lines]

    def commands(self) -> list[str]:
        return re.findall(r"^\$ (.*)$", self.session(), re.M)

    def session(self) -> str:
        return (self.root / "session").read_text(encoding="utf-8")

    def run(self, host: Host) -> str:
        """The session as it is now."""
        text = ""
        for command in self.commands():
            words = shlex.split(command)
            result = host.run("--user-id", "1000", *words, program=inspector())
            text += f"$ {command}\n{result.stdout}{result.stderr}"
            text += f"status {result.status}\n" if result.status else ""
        if os.environ.get("CRADLE_SESSIONS") == "refresh":
            (self.root / "session").write_text(text, encoding="utf-8")
        return text


def all_cases() -> list[InspectCase]:
    return [InspectCase(path.name) for path in sorted(ROOT.iterdir())]


def name_of(case: InspectCase) -> str:
    return case.name
