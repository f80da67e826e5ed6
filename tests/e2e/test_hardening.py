# SPDX-License-Identifier: MIT
"""How the released program is hardened, as its file shows."""

import json
import re
import subprocess
from pathlib import Path

from host import setting


def headers(option: str) -> str:
    command = ["readelf", "--wide", option, setting("CRADLE_BINARY")]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def segments(kind: str) -> list[str]:
    """The flags of the segments of that kind, such as "RW"."""
    pattern = rf"^ +{kind} +(?:0x\w+ +){{5}}([RWE ]+?) +0x"
    return [flags.replace(" ", "") for flags in re.findall(pattern, headers("--segments"), re.M)]


def test_the_program_is_position_independent() -> None:
    assert re.search(r"Type: +DYN", headers("--file-header"))


def test_no_memory_is_both_writable_and_executable() -> None:
    assert segments("GNU_STACK") == ["RW"]
    assert segments("LOAD")
    assert not [flags for flags in segments("LOAD") if "W" in flags and "E" in flags]


def test_relocated_data_is_read_only_from_the_start() -> None:
    assert segments("GNU_RELRO") == ["R"]
    dynamic = headers("--dynamic")
    assert re.search(r"\(FLAGS_1\) .*\bNOW\b", dynamic)
    assert "TEXTREL" not in dynamic


def test_libraries_are_looked_for_in_the_places_of_the_system_alone() -> None:
    assert not re.search("RPATH|RUNPATH", headers("--dynamic"))


def test_overwritten_return_addresses_are_noticed() -> None:
    assert "__stack_chk_fail" in headers("--dyn-syms")


def test_calls_of_the_c_library_that_would_write_too_much_are_noticed() -> None:
    assert re.search(r" __(?:memcpy|memmove|read|snprintf)_chk@", headers("--dyn-syms"))


def test_broken_assertions_are_noticed() -> None:
    assert re.search(" __assert_fail@", headers("--dyn-syms"))


def test_every_source_file_is_compiled_with_checked_library_calls() -> None:
    database = Path(setting("CRADLE_BUILD_DIR"), "compile_commands.json")
    commands = json.loads(database.read_text(encoding="utf-8"))
    sources = [entry["command"] for entry in commands if "/src/" in entry["file"]]
    assert sources
    for command in sources:
        for flag in ("-D_FORTIFY_SOURCE=2", "-fstack-protector-strong", "-O2"):
            assert flag in command.split()


def test_where_the_program_was_built_is_not_part_of_it() -> None:
    program = Path(setting("CRADLE_BINARY")).read_bytes()
    assert str(Path(__file__).parents[2]).encode() not in program
