# SPDX-License-Identifier: MIT
"""The installed completions: what bash, zsh and fish offer for the beginning of an option."""

import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))

from shells import Bash, Fish, Place, Zsh

PROGRAMS = ("cradle-generate-config", "cradle-inspect-config")

for kind in (Bash, Zsh, Fish):
    with tempfile.TemporaryDirectory(prefix="cgc-shell-") as directory:
        shell = kind(Place(Path(directory), Path("/usr"), PROGRAMS))
        completed = [shell.complete(f"{program} --ty") for program in PROGRAMS]
        shell.close()
    for words in completed:
        if [word.removesuffix("=") for word in words] != ["--type"]:
            sys.exit(f"{kind.__name__} completes --ty to {words}")
    print(f"NOTE: {kind.__name__.lower()} completes")
