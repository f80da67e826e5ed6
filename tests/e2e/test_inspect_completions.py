# SPDX-License-Identifier: MIT
"""What bash, zsh and fish offer on the command line of cradle-inspect-config."""

from pathlib import Path
from typing import Iterator

import pytest

from host import Host, setting
from inspect_cases import PROGRAM, inspector
from manual import command, tables
from pages import ROOT
from shells import Bash, Fish, Place, Shell, Zsh

SHELLS = {"bash": Bash, "zsh": Zsh, "fish": Fish}
WORDS = {
    "--type": ["config", "lxc", "property"],
    "--format": ["json", "svg", "text"],
    "--color": ["always", "auto", "never"],
}


@pytest.fixture(scope="module", params=SHELLS)
def shell(
    request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory
) -> Iterator[Shell]:
    prefix = tmp_path_factory.mktemp("installed")
    build = setting("CRADLE_BUILD_DIR")
    status, _, errors = command("cmake", "--install", build, "--prefix", prefix)
    assert (status, errors) == (0, "")
    place = Place(tmp_path_factory.mktemp(request.param), prefix, [PROGRAM])
    (place.directory / "base").mkdir()
    (place.directory / "file.conf").touch()
    shell = SHELLS[request.param](place)
    yield shell
    shell.close()


def offered(shell: Shell, line: str) -> list[str]:
    """What the last word of the line can become, directories without their last slash."""
    words = shell.complete(f"{PROGRAM} {line}")
    before = line.split(" ")[:-1]
    assert words[: len(before)] == before
    return sorted(word.removesuffix("/").removesuffix("=") for word in words[len(before) :])


def test_the_options_are_those_of_the_program(shell: Shell) -> None:
    assert offered(shell, "--") == sorted(f"--{name}" for name in tables()["inspect-option"])


def test_the_commands_are_those_of_the_program(shell: Shell) -> None:
    assert offered(shell, "") == sorted(tables()["command"])
    assert offered(shell, "--all ex") == ["explain"]


@pytest.mark.parametrize("option", WORDS)
def test_the_words_are_those_of_the_option(shell: Shell, option: str) -> None:
    assert offered(shell, f"{option} ") == WORDS[option]


def test_directories_are_asked_for_by_name(shell: Shell) -> None:
    assert offered(shell, "-c ") == ["base"]
    assert offered(shell, "--configs x:b") == ["x:base"]


def test_an_output_is_any_file(shell: Shell) -> None:
    assert offered(shell, "diff f") == ["file.conf"]


@pytest.mark.parametrize("suffix", ["zsh", "fish"])
def test_descriptions_are_those_of_the_help(host: Host, suffix: str) -> None:
    text = (ROOT / f"completions/{PROGRAM}.{suffix}").read_text(encoding="utf-8")
    lines = host.run("--help", program=inspector()).stdout.splitlines()
    helps = [line.rpartition("  ")[2] for line in lines if line.startswith("  ")]
    assert len(helps) > 20
    assert [help_text for help_text in helps if help_text not in text] == []
