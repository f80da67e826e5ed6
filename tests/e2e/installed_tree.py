# SPDX-License-Identifier: MIT
"""What the build installs, in a directory of the test's own."""

import os
import re
import shutil
import subprocess
from pathlib import Path
from typing import Mapping

from host import setting

PREFIX = "/usr"


def output_of(*command: str | Path, env: Mapping[str, str] | None = None, cwd: Path | None = None) -> str:
    """What a command that must succeed prints; it sees the environment and these variables."""
    result = subprocess.run(
        command,
        cwd=cwd,
        env=dict(os.environ, **(env or {})),
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        check=False,
    )
    assert result.returncode == 0, result.stdout
    return result.stdout


class InstalledTree:
    """The files of one component, or of all, installed below a directory and moved from there."""

    def __init__(self, directory: Path, component: str = "") -> None:
        staged = directory / "staged"
        options = ["--component", component] if component else []
        command = ["cmake", "--install", setting("CRADLE_BUILD_DIR"), "--prefix", PREFIX, *options]
        output_of(*command, env={"DESTDIR": str(staged)})
        self.root = directory / "moved"
        shutil.move(staged / PREFIX.lstrip("/"), self.root)
        assert not [path for path in staged.rglob("*") if not path.is_dir()]

    def files(self) -> set[str]:
        """Every file, by its path below the prefix."""
        paths = [path for path in self.root.rglob("*") if not path.is_dir()]
        return {str(path.relative_to(self.root)) for path in paths}

    def find(self, pattern: str) -> Path:
        """The one file whose path matches."""
        [path] = [path for path in self.files() if re.fullmatch(pattern, path)]
        return self.root / path

    def headers(self) -> list[str]:
        """The public headers, as a program includes them."""
        return sorted(path.removeprefix("include/") for path in self.files() if path.endswith(".h"))

    def environment(self) -> dict[str, str]:
        """The variables by which compilers and programs find what is in the tree."""
        return {
            "CMAKE_PREFIX_PATH": str(self.root),
            "LD_LIBRARY_PATH": str(self.find(r"lib/.*\.so\.\d+").parent),
            "PKG_CONFIG_PATH": str(self.find(r"lib/.*\.pc").parent),
        }
