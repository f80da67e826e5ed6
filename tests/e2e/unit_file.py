# SPDX-License-Identifier: MIT
"""The systemd unit of an instance, as its file says what to run.

Only what the unit uses is known: words without quotes, the specifiers %i and %t, and variables
that stand for any number of words.
"""

import re
from pathlib import Path

from host import setting

UNIT = Path(setting("CRADLE_BUILD_DIR"), "system/cradle-generate-config@.service")
PROGRAM = "cradle-generate-config"

# Where it is installed is for the build to say; tests put it here.
CONFIGURATION = "/etc/cradle.conf.d"


class Unit:
    """The unit of one instance. What a drop-in sets in addition is given by name."""

    def __init__(self, instance: str, **environment: str) -> None:
        self.specifiers = {"%i": instance, "%t": "/run"}
        text = UNIT.read_text(encoding="utf-8")
        lines = [line for line in text.splitlines() if line and line[0] not in "#["]
        self.settings = [tuple(line.split("=", 1)) for line in lines]
        assignments = [word.split("=", 1) for word in self.words("Environment")]
        self.environment = {name: value for name, value in assignments} | environment

    def values(self, name: str) -> list[str]:
        """The values of a setting, one per line that has it, specifiers filled in."""
        found = [value for setting, value in self.settings if setting == name]
        assert found, f"the unit has no {name}="
        return [re.sub("%.", lambda match: self.specifiers[match[0]], value) for value in found]

    def words(self, name: str) -> list[str]:
        return [word for value in self.values(name) for word in value.split()]

    def runtime_directories(self) -> list[str]:
        return [f"/run/{name}" for name in self.words("RuntimeDirectory")]

    def commands(self) -> list[list[str]]:
        """The arguments of each run of the program, in order."""
        return [self._arguments(command) for command in self.values("ExecStart")]

    def _arguments(self, command: str) -> list[str]:
        program, *words = command.split()
        assert Path(program).name == PROGRAM
        arguments: list[str] = []
        for word in words:
            if word.startswith("$"):
                arguments += self.environment[word[1:]].split()
            elif Path(word).name == Path(CONFIGURATION).name:
                arguments.append(CONFIGURATION)
            else:
                arguments.append(word)
        return arguments
