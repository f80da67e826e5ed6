# SPDX-License-Identifier: MIT
"""What "cmake --install" puts where, below the directory that DESTDIR names."""

import os
import subprocess
from pathlib import Path
from typing import Iterator

import pytest

from host import setting
from unit_file import UNIT

SOURCE = Path(__file__).parents[2]


@pytest.fixture(scope="module")
def stage(tmp_path_factory: pytest.TempPathFactory) -> Iterator[Path]:
    """A directory into which everything was installed."""
    stage = tmp_path_factory.mktemp("stage")
    command = ["cmake", "--install", setting("CRADLE_BUILD_DIR")]
    environment = os.environ | {"DESTDIR": str(stage)}
    subprocess.run(command, env=environment, umask=0o022, check=True, stdout=subprocess.PIPE)
    yield stage


def only(stage: Path, pattern: str) -> Path:
    """The one installed file of that name."""
    [path] = stage.rglob(pattern)
    return path


def files_below(directory: Path) -> dict[str, bytes]:
    files = [path for path in directory.rglob("*") if path.is_file()]
    return {str(path.relative_to(directory)): path.read_bytes() for path in files}


def test_the_unit_names_what_is_installed(stage: Path) -> None:
    unit = only(stage, UNIT.name)
    assert unit.parts[-4:-1] == ("lib", "systemd", "system")
    commands = [
        line.removeprefix("ExecStart=").split()
        for line in unit.read_text(encoding="utf-8").splitlines()
        if line.startswith("ExecStart=")
    ]
    assert len(commands) == 3
    for command in commands:
        assert os.access(stage / command[0].lstrip("/"), os.X_OK)
    configuration = commands[0][commands[0].index("--config") + 1]
    installed = files_below(stage / configuration.lstrip("/"))
    assert installed == files_below(SOURCE / "conf/cradle.conf.d")


@pytest.mark.parametrize("program", ["cradle-generate-config", "cradle-inspect-config"])
def test_a_program_comes_with_its_page_and_completions(stage: Path, program: str) -> None:
    programs = [path for path in stage.rglob(program) if path.parent.name == "bin"]
    assert [os.access(path, os.X_OK) for path in programs] == [True]
    completions = {path.name for path in stage.rglob(f"*{program}*") if "complet" in str(path)}
    assert {program, f"{program}.fish"} <= completions and only(stage, f"_{program}")
    assert only(stage, f"{program}.1").parent.name == "man1"


def test_programs_find_the_schema_of_what_they_read(stage: Path) -> None:
    schema = only(stage, "inspect-schema.json")
    assert schema.read_bytes() == (SOURCE / "docs/inspect-schema.json").read_bytes()


def test_the_entry_for_tmpfiles_is_where_systemd_looks(stage: Path) -> None:
    assert only(stage, "cradle-generate-config.conf").parts[-3:-1] == ("lib", "tmpfiles.d")


def test_the_example_for_a_device_keeps_its_hooks_executable(stage: Path) -> None:
    example = only(stage, "device.conf.d")
    assert example.parent.name == "examples"
    assert files_below(example) == files_below(SOURCE / "conf/device.conf.d")
    hooks = list(example.rglob("*.sh"))
    assert hooks
    assert all(os.access(hook, os.X_OK) for hook in hooks)


def test_nobody_but_the_owner_may_write_to_what_is_installed(stage: Path) -> None:
    paths = list(stage.rglob("*"))
    assert paths
    assert [path for path in paths if path.stat().st_mode & 0o022] == []
