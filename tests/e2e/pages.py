# SPDX-License-Identifier: MIT
"""The pages of the documentation, followed as a reader would.

A page is followed from its top to its end in one directory. Its fenced blocks are
- "console": commands behind "$ ", each up to the first line that does not end in a backslash, and
  what they print to either stream, without the blanks at the ends of lines. Each is run by a shell
  of its own, with the program in PATH, and succeeds; only "diff" may end with the status 1 that
  tells of differences.
- a file, where the paragraph before says "the file `PATH`", or "the script `PATH`" of one that can
  be executed;
- "sh": commands for the project itself, which .ci/run runs.
Any other block is a mistake of the page.
"""

import re
from pathlib import Path
from typing import NamedTuple

from host import Host, setting

ROOT = Path(__file__).parents[2]
PLACE = "/page"
BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.M | re.S)
FILE = re.compile(r"\b[Tt]he\s+(file|script)\s+`([^`]+)`")
COMMAND = re.compile(r"^\$ (.+(?:(?<=\\)\n.+)*)\n((?:(?!\$ ).*\n)*)", re.M)


class Block(NamedTuple):
    """A fenced block with the paragraph before it."""

    kind: str
    text: str
    paragraph: str


class Page(NamedTuple):
    """A page and the host on which it is followed."""

    host: Host
    text: str

    def follow(self) -> str:
        """The text of the page with what its commands print here."""
        self.host.directory(PLACE)
        return BLOCK.sub(self._follow_block, self.text)

    def _follow_block(self, match: re.Match[str]) -> str:
        before = self.text[: match.start()].rstrip()
        block = Block(match[1], match[2], before.rpartition("\n\n")[2])
        files = list(FILE.finditer(block.paragraph))
        if block.kind == "console":
            return f"```console\n{self._follow_commands(block.text)}```"
        if files:
            kind, path = files[-1].groups()
            self.host.file(f"{PLACE}/{path}", block.text, 0o755 if kind == "script" else 0o644)
        elif block.kind != "sh":
            raise ValueError(f"what is this block?\n{match[0]}")
        return match[0]

    def _follow_commands(self, session: str) -> str:
        commands = list(COMMAND.finditer(session))
        if "".join(command[0] for command in commands) != session or not commands:
            raise ValueError(f"no commands, or something before them:\n{session}")
        return "".join(f"$ {command[1]}\n{self._print(command[1])}" for command in commands)

    def _print(self, command: str) -> str:
        """What a command prints."""
        path = f"{Path(setting('CRADLE_BINARY')).parent}:/usr/bin:/bin"
        script = f"cd {PLACE} && exec 2>&1\n{command}\n"
        result = self.host.run("-c", script, program="/bin/sh", env={"PATH": path})
        if result.status > command.startswith("diff "):
            raise ValueError(f"status {result.status}:\n$ {command}\n{result.stdout}")
        return re.sub(" +$", "", result.stdout, flags=re.M)
