# SPDX-License-Identifier: MIT
"""The manual pages as they were built, and what they show when they are rendered.

CMake builds them, and the program cradle-manual that fills them, in the directory man of the build
directory.
"""

import functools
import re
import subprocess
from pathlib import Path
from typing import Sequence

from host import setting

NAMES = ("cradle-generate-config.1", "cradle-inspect-config.1", "cradle.conf.5", "cradle-hooks.7")
WIDE = 1000  # no line is broken


def built(name: str) -> Path:
    """A file of the build directory of the pages."""
    return Path(setting("CRADLE_BUILD_DIR"), "man", name)


def command(*words: str | Path, env: dict[str, str] | None = None) -> tuple[int, str, str]:
    """The status and the outputs of a program of the machine."""
    environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", **(env or {})}
    result = subprocess.run(
        words, env=environment, stdin=subprocess.DEVNULL, capture_output=True, check=False
    )
    return result.returncode, result.stdout.decode(), result.stderr.decode()


@functools.cache
def rendered(name: str) -> str:
    """The page as a reader sees it, each paragraph on one line."""
    status, text, errors = command("mandoc", "-T", "ascii", "-O", f"width={WIDE}", built(name))
    assert (status, errors) == (0, "")
    return re.sub(".\x08", "", text)


def section(name: str, title: str) -> str:
    """One section of a page, without its title."""
    [text] = re.findall(rf"^{title}\n(.*?)(?=^\S|\Z)", rendered(name), re.M | re.S)
    return text


@functools.cache
def tables() -> dict[str, list[str]]:
    """The rows of the program's own tables by their kinds."""
    status, text, errors = command(built("cradle-manual"), "tables")
    assert (status, errors) == (0, "")
    rows: dict[str, list[str]] = {}
    for line in text.splitlines():
        kind, _, row = line.partition(" ")
        rows.setdefault(kind, []).append(row)
    return rows


def literal(source: str) -> str:
    """A literal block of a page's source as it is rendered."""
    return source.replace("\\e", "\\").replace("\\-", "-").replace("\\&", "")


def as_markdown(source: str) -> str:
    """The examples of a page's source as pages.py follows them."""
    parts: Sequence[str] = re.split(r"^\.Bd -literal[^\n]*\n(.*?)^\.Ed\n", source, flags=re.M | re.S)
    text = ""
    for i, part in enumerate(parts):
        if i % 2 == 0:
            prose = re.sub(r"^\.Pp$", "\n", part, flags=re.M)
            text += re.sub(r"^\.Pa (\S+)( .*)?$", r"`\1`", prose, flags=re.M) + "\n\n"
        else:
            kind = "console" if part.startswith("$ ") else "ini"
            # The next block belongs to another paragraph.
            text += f"```{kind}\n{literal(part)}```\n\n"
    return text
