# SPDX-License-Identifier: MIT
"""Real shells that complete command lines.

Bash and zsh run in a terminal of their own. They are told to insert all completions of what is
typed, and then to run the line; the command in it is a stand-in that notes its arguments. Fish is
asked without a terminal. Each shell finds the completions where they were installed.
"""

import errno
import os
import pty
import select
import subprocess
import time
from pathlib import Path
from typing import Sequence

READY = "ready>"
PATIENCE = 60.0  # seconds
ALL_COMPLETIONS = "\x18a"  # what the shells have bound to it: Ctrl-X a

BASH = f"""
PS1='{READY}'
. /usr/share/bash-completion/bash_completion
bind 'set show-all-if-ambiguous off'
bind '"\\C-xa": insert-completions'
"""

ZSH = f"""
PS1='{READY}'
fpath=(%s $fpath)
autoload -Uz compinit && compinit -u -D
zle -C all-matches complete-word _generic
bindkey -e '^Xa' all-matches
zstyle ':completion:all-matches:*' insert yes
zstyle ':completion:all-matches::::' completer _all_matches _complete
"""


class Place:
    """A directory in which programs are stand-ins, with an installed tree of completions."""

    def __init__(self, directory: Path, installed: Path, programs: Sequence[str]) -> None:
        self.directory = directory / "work"
        self.directory.mkdir()
        self.installed = installed
        self.notes = directory / "arguments"
        for program in programs:
            stand_in = directory / "bin" / program
            stand_in.parent.mkdir(exist_ok=True)
            stand_in.write_text(f'#!/bin/sh\nprintf "%s\\0" "$@" >{self.notes}\n')
            stand_in.chmod(0o755)
        self.environment = {
            "HOME": str(directory),
            "LC_ALL": "C.UTF-8",
            "PATH": f"{directory}/bin:/usr/bin:/bin",
            "TERM": "dumb",
            "XDG_DATA_DIRS": f"{installed}/share:/usr/share",
        }


class Terminal:
    """A shell in a terminal, which is read until its prompt."""

    def __init__(self, place: Place, command: Sequence[str]) -> None:
        self.pid, self.descriptor = pty.fork()
        if self.pid == 0:
            os.chdir(place.directory)
            os.execve(command[0], command, place.environment)
        self.seen = ""

    def send(self, text: str) -> None:
        os.write(self.descriptor, text.encode())

    def wait_for(self, text: str) -> None:
        deadline = time.monotonic() + PATIENCE
        while text not in self.seen:
            rest = deadline - time.monotonic()
            if rest <= 0 or not select.select([self.descriptor], [], [], rest)[0]:
                raise TimeoutError(f"no {text!r} in {self.seen!r}")
            self.seen += self._read()
        self.seen = self.seen.partition(text)[2]

    def _read(self) -> str:
        try:
            return os.read(self.descriptor, 4096).decode(errors="replace")
        except OSError as fault:  # the shell has ended
            if fault.errno != errno.EIO:
                raise
            raise EOFError(f"the shell has ended: {self.seen!r}") from fault

    def close(self) -> None:
        os.close(self.descriptor)
        os.waitpid(self.pid, 0)


class Shell:
    """A shell that completes lines in a place."""

    def __init__(self, place: Place) -> None:
        self.place = place

    def complete(self, line: str) -> list[str]:
        """The arguments of the line with all completions of its last word."""
        raise NotImplementedError

    def close(self) -> None:
        """End the shell, if it still runs."""


class TerminalShell(Shell):
    """A shell that runs in a terminal."""

    def __init__(self, place: Place, command: Sequence[str], setup: str) -> None:
        super().__init__(place)
        script = place.directory.parent / "setup"
        script.write_text(setup)
        self.terminal = Terminal(place, command)
        # The prompt is not what the terminal echoes.
        self.terminal.send(f". {script}\n")
        self.terminal.wait_for(READY)

    def complete(self, line: str) -> list[str]:
        self.place.notes.unlink(missing_ok=True)
        self.terminal.send(f"{line}{ALL_COMPLETIONS}\n")
        self.terminal.wait_for(READY)
        return self.place.notes.read_text().split("\0")[:-1]

    def close(self) -> None:
        self.terminal.close()


class Bash(TerminalShell):
    def __init__(self, place: Place) -> None:
        super().__init__(place, ["/bin/bash", "--noprofile", "--norc", "-i"], BASH)


class Zsh(TerminalShell):
    def __init__(self, place: Place) -> None:
        [functions] = {file.parent for file in place.installed.glob("share/zsh/*/_cradle-*")}
        super().__init__(place, ["/usr/bin/zsh", "-f", "-i"], ZSH % functions)


class Fish(Shell):
    def complete(self, line: str) -> list[str]:
        return [*line.split(" ")[1:-1], *(row.partition("\t")[0] for row in self.rows(line))]

    def rows(self, line: str) -> list[str]:
        """The completions of the last word, each with a tab and its description."""
        result = subprocess.run(
            ["/usr/bin/fish", "-c", f"complete -C '{line}'"],
            cwd=self.place.directory,
            env=self.place.environment,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            check=True,
            text=True,
        )
        assert result.stderr == ""
        return result.stdout.splitlines()
