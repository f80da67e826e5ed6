# SPDX-License-Identifier: MIT
"""User-space instructions, counted by callgrind: the same number on every machine and run, as long
as the compiler and the libraries are the same."""

import re
import shutil
from typing import Mapping, NamedTuple, Sequence

from measure.site import ENVIRONMENT, SCRATCH, Failure, run

TITLE = re.compile(r"^desc: Trigger: (?:Client Request: )?(.*)$", re.MULTILINE)
TOTAL = re.compile(r"^totals: (\d+)$", re.MULTILINE)


class Dump(NamedTuple):
    title: str
    instructions: int


def dumps(
    command: Sequence[str], *options: str, env: Mapping[str, str] = ENVIRONMENT
) -> list[Dump]:
    """Run a command and its children under callgrind; all dumps of all these processes."""
    directory = SCRATCH / "callgrind"
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir()
    target = f"--callgrind-out-file={directory}/out.%p"
    run(["valgrind", "--tool=callgrind", "--trace-children=yes", target, *options, *command], env)
    found = []
    for path in directory.iterdir():
        text = path.read_text(encoding="utf-8")
        title, total = TITLE.search(text), TOTAL.search(text)
        if not title or not total:
            raise Failure(f"callgrind left no total of {' '.join(command)}")
        found.append(Dump(title[1], int(total[1])))
    return found


def instructions(command: Sequence[str]) -> int:
    """The instructions of a whole run, from the dynamic linker to the end."""
    count = sum(dump.instructions for dump in dumps(command))
    if count == 0:
        raise Failure(f"callgrind counted nothing of {' '.join(command)}")
    return count
