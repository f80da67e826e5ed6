"""The worked example of the README."""

import re
from pathlib import Path

from host import Host, Result, setting

README = Path(__file__).parents[2] / "README.md"


def test_the_readme_example_prints_what_the_readme_shows(host: Host) -> None:
    readme = README.read_text(encoding="utf-8")
    files = re.findall(r"^The file `(\S+)` [^\n]*\n\n```ini\n(.*?)^```$", readme, re.M | re.S)
    [session] = re.findall(r"^```console\n(.*?)^```$", readme, re.M | re.S)
    assert len(files) == readme.count("```ini")
    for path, content in files:
        host.file(f"/example/{path}", content)

    commands = re.findall(r"^\$ (.*)$", session, re.M)
    shown = re.sub(r"^\$ .*\n", "", session, flags=re.M)
    result = host.run(
        "-ec",
        "\n".join(["cd /example", *commands]),
        program="/bin/sh",
        env={"PATH": f"{Path(setting('CRADLE_BINARY')).parent}:/usr/bin:/bin"},
    )
    assert result == Result(0, shown)
