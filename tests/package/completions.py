"""The installed completions: what bash, zsh and fish offer for the beginning of an option."""

import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "e2e"))

from shells import Bash, Fish, Place, Zsh

PROGRAM = "cradle-generate-config"

for kind in (Bash, Zsh, Fish):
    with tempfile.TemporaryDirectory(prefix="cgc-shell-") as directory:
        shell = kind(Place(Path(directory), Path("/usr"), [PROGRAM]))
        arguments = shell.complete(f"{PROGRAM} --ty")
        shell.close()
    if arguments != ["--type"]:
        sys.exit(f"{kind.__name__} completes --ty to {arguments}")
    print(f"NOTE: {kind.__name__.lower()} completes")
