# SPDX-License-Identifier: MIT
"""What bash, zsh and fish offer on the command line of the program, in the shells themselves."""

import pwd
import re
from pathlib import Path
from typing import Iterator

import pytest

from host import Host, setting
from installed_tree import InstalledTree
from manual import command, tables
from pages import ROOT
from shells import Bash, Fish, Place, Shell, Zsh

PROGRAM = "cradle-generate-config"
SHELLS = {"bash": Bash, "zsh": Zsh, "fish": Fish}
FILES = ["base", "device", "file.conf", "two words"]
DIRECTORIES = ["base", "device", "two words"]


@pytest.fixture(scope="module")
def installed(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """What "cmake --install" puts below its prefix."""
    return InstalledTree(tmp_path_factory.mktemp("installed"), "runtime").root


def furnished(directory: Path, installed: Path) -> Place:
    place = Place(directory, installed, [PROGRAM])
    for name in DIRECTORIES:
        (place.directory / name).mkdir()
    (place.directory / "file.conf").touch()
    return place


@pytest.fixture(scope="module", params=SHELLS)
def shell(
    request: pytest.FixtureRequest, installed: Path, tmp_path_factory: pytest.TempPathFactory
) -> Iterator[Shell]:
    place = furnished(tmp_path_factory.mktemp(request.param), installed)
    shell = SHELLS[request.param](place)
    yield shell
    shell.close()


def offered(shell: Shell, line: str) -> list[str]:
    """What the last word of the line can become, directories without their last slash."""
    words = shell.complete(f"{PROGRAM} {line}")
    before = line.split(" ")[:-1]
    assert words[: len(before)] == before
    return sorted(word.removesuffix("/") for word in words[len(before) :])


def unchanged(line: str) -> list[list[str]]:
    """What is offered when nothing is: nothing, or the word itself when there is one."""
    word = line.rpartition(" ")[2]
    return [[], [word]] if word else [[]]


def test_the_options_are_those_of_the_program(shell: Shell) -> None:
    assert offered(shell, "--") == sorted(tables()["option"])
    assert offered(shell, "--i") == ["--instance"]


def test_the_types_are_those_of_the_program(shell: Shell, host: Host) -> None:
    [types] = re.findall(r"--type (\S+)", host.run().stdout)
    assert offered(shell, "--type ") == sorted(types.split("|"))
    assert offered(shell, "--type p") == ["property"]


def test_the_levels_are_those_of_the_log(shell: Shell) -> None:
    assert offered(shell, "--log-level ") == sorted(tables()["level"])


def test_a_directory_is_asked_for_by_its_name(shell: Shell) -> None:
    assert offered(shell, "--config ") == DIRECTORIES
    assert offered(shell, "--config d") == ["device"]


def test_every_directory_of_a_list_can_be_completed(shell: Shell) -> None:
    assert offered(shell, "--configs ") == DIRECTORIES
    assert offered(shell, "--configs b") == ["base"]
    assert offered(shell, "--configs base:d") == ["base:device"]
    assert offered(shell, "--configs base:other:t") == ["base:other:two words"]


@pytest.mark.parametrize("option", ["--user-id", "--base-uid"])
def test_the_users_are_those_of_the_machine(shell: Shell, option: str) -> None:
    ids = {str(user.pw_uid) for user in pwd.getpwall()}
    assert set(offered(shell, f"{option} ")) == ids
    assert "0" in offered(shell, f"{option} 0")


def test_a_name_is_left_to_the_user(shell: Shell) -> None:
    assert offered(shell, "--instance ") == []


def test_the_output_is_any_file(shell: Shell) -> None:
    assert offered(shell, "") == FILES
    assert offered(shell, "f") == ["file.conf"]
    assert offered(shell, "--type lxc --user-id 0 ") == FILES
    assert offered(shell, "-- f") == ["file.conf"]


def test_options_follow_options(shell: Shell) -> None:
    assert offered(shell, "--type lxc --l") == ["--log-level"]
    assert offered(shell, "--config base --configs device --config t") == ["two words"]
    assert {"--config", "--configs"} <= set(offered(shell, "--config base --configs device --"))


@pytest.mark.parametrize("line", ["file.conf ", "file.conf --", "-- file.conf ", "a --type "])
def test_nothing_follows_the_output_file(shell: Shell, line: str) -> None:
    assert offered(shell, line) in unchanged(line)


def test_what_looks_like_an_option_behind_an_option_is_its_value(
    installed: Path, tmp_path: Path
) -> None:
    shell = Bash(furnished(tmp_path, installed))
    assert offered(shell, "--instance --type ") == FILES
    shell.close()


# --- descriptions


def helps(host: Host) -> dict[str, str]:
    """The help text of every option."""
    return dict(re.findall(r"^    (--\S+) \S+ +(.*)$", host.run().stdout, re.M))


def test_fish_describes_options_as_the_usage_text_does(
    host: Host, installed: Path, tmp_path: Path
) -> None:
    rows = Fish(furnished(tmp_path, installed)).rows(f"{PROGRAM} --")
    assert dict(row.split("\t") for row in rows) == helps(host)


def test_zsh_describes_options_as_the_usage_text_does(host: Host) -> None:
    text = (ROOT / f"completions/{PROGRAM}.zsh").read_text(encoding="utf-8")
    assert dict(re.findall(r"(--\S+?)\[(.*?)\]", text)) == helps(host)


def test_fish_tells_whose_the_ids_are(installed: Path, tmp_path: Path) -> None:
    rows = Fish(furnished(tmp_path, installed)).rows(f"{PROGRAM} --user-id ")
    assert "0\troot" in rows


# --- places


def test_everything_lies_where_its_readers_look(installed: Path) -> None:
    share = installed / "share"
    places = [
        f"bash-completion/completions/{PROGRAM}",
        f"fish/vendor_completions.d/{PROGRAM}.fish",
        f"man/man1/{PROGRAM}.1",
        "man/man5/cradle.conf.5",
        "man/man7/cradle-hooks.7",
        f"zsh/site-functions/_{PROGRAM}",
    ]
    if not (share / "zsh/site-functions").exists():
        places[-1] = f"zsh/vendor-completions/_{PROGRAM}"  # a build for Debian's packages
    assert [place for place in places if not (share / place).is_file()] == []
