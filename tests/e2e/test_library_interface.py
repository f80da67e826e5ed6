# SPDX-License-Identifier: MIT
"""What the configuration library shows to other programs: its headers, and the symbols it exports.

An exported symbol that goes away, or whose types change, breaks programs that are built already. A
new one is promised from then on, and is written down with
    CRADLE_LIBRARY_SYMBOLS=refresh ctest --preset release -R test_library_interface
"""

import os
import re
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Iterator

import pytest

from installed_tree import InstalledTree, output_of

MANUAL = Path(__file__).parents[2] / "docs" / "library.md"
SYMBOLS = Path(__file__).with_name("library_symbols.txt")
LAYOUT = Path(__file__).with_name("library_layout.cpp")
REFRESH = "CRADLE_LIBRARY_SYMBOLS"

STRICT = ("-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Werror")


@pytest.fixture(scope="module", name="tree")
def installed_tree(tmp_path_factory: pytest.TempPathFactory) -> Iterator[InstalledTree]:
    yield InstalledTree(tmp_path_factory.mktemp("tree"))


@pytest.fixture(scope="module", name="exported")
def exported_symbols(tree: InstalledTree) -> set[str]:
    """The functions and the data that the shared library exports, as C++ writes them."""
    library = tree.find(r"lib/.*/?libcradle-config\.so\.\d+")
    lines = output_of("nm", "--dynamic", "--defined-only", "--demangle", library).splitlines()
    symbols = [re.fullmatch(r"\w+ (\w) (.*?)(@@\w+)?", line).groups() for line in lines]
    return {name for kind, name, _ in symbols if kind != "A"}  # but for the version's own


def declared_public(tree: InstalledTree) -> set[str]:
    """The classes and functions that the headers mark as public, with their namespaces."""
    names = set()
    for header in tree.headers():
        text = (tree.root / "include" / header).read_text(encoding="utf-8")
        *_, namespace = re.findall(r"^namespace (.*) \{$", text, re.MULTILINE) or [""]
        marked = r"^(?:class )?CRADLE_CONFIG_API [^;{(]*?(\w+)(?: \{|\()"
        names |= {f"{namespace}::{name}" for name in re.findall(marked, text, re.MULTILINE)}
    return names


def declared_private(tree: InstalledTree) -> set[str]:
    """The members that the headers mark as private, with their classes."""
    names = set()
    for header in tree.headers():
        text = (tree.root / "include" / header).read_text(encoding="utf-8")
        owners = re.findall(r"^class CRADLE_CONFIG_API (\w+)", text, re.MULTILINE)
        marked = re.findall(r"^  CRADLE_CONFIG_LOCAL [^;(]*?(\w+)\(", text, re.MULTILINE)
        names |= {f"{owners[0]}::{member}" for member in marked}
    return names


def unqualified(symbol: str) -> str:
    """The name of a symbol without its arguments."""
    return re.split(r"[(\[]", symbol)[0]


@pytest.mark.parametrize("compiler", ["g++", "clang++"])
def test_each_header_stands_alone(tree: InstalledTree, tmp_path: Path, compiler: str) -> None:
    def compile_alone(header: str) -> None:
        source = tmp_path / f"{Path(header).stem}.cpp"
        source.write_text(f"#include <{header}>\n#include <{header}>\n", encoding="utf-8")
        output_of(compiler, *STRICT, f"-I{tree.root / 'include'}", source)

    headers = tree.headers()
    assert headers
    with ThreadPoolExecutor(os.cpu_count()) as threads:
        list(threads.map(compile_alone, headers))


def test_the_manual_lists_each_header(tree: InstalledTree) -> None:
    rows = re.findall(r"^\| (`.*?`) \|", MANUAL.read_text(encoding="utf-8"), re.MULTILINE)
    listed = [name for row in rows for name in re.findall(r"`(.*?)`", row)]
    assert sorted(f"cradle-config/{name}" for name in listed) == tree.headers()


def test_exactly_what_is_marked_as_public_is_exported(
    tree: InstalledTree, exported: set[str]
) -> None:
    public = declared_public(tree)
    assert {"Cradle::Parser::ConfigParser", "Cradle::Parser::libraryLogger"} < public
    names = {unqualified(symbol) for symbol in exported}
    owners = {name if name in public else name.rsplit("::", maxsplit=1)[0] for name in names}
    assert owners == public


def test_every_function_of_the_public_headers_is_marked(tree: InstalledTree) -> None:
    declaration = re.compile(r"^(?!CRADLE_CONFIG_API|inline|#)\w[\w:<>*& ]* \w+\(", re.MULTILINE)
    for header in tree.headers():
        text = (tree.root / "include" / header).read_text(encoding="utf-8")
        assert declaration.findall(text) == [], header


def test_the_exported_symbols_are_those_that_were_promised(exported: set[str]) -> None:
    if os.environ.get(REFRESH) == "refresh":
        SYMBOLS.write_text("".join(f"{name}\n" for name in sorted(exported)), encoding="utf-8")
    promised = SYMBOLS.read_text(encoding="utf-8").splitlines()
    assert sorted(exported) == promised


def test_private_members_are_hidden(tree: InstalledTree, exported: set[str]) -> None:
    private = declared_private(tree)
    assert {"ConfigParser::values", "LoggerConfig::LoggerConfig"} < private
    members = {"::".join(unqualified(symbol).split("::")[-2:]) for symbol in exported}
    assert "ConfigParser::hasKey" in members
    assert members.isdisjoint(private)


@pytest.mark.parametrize("compiler", ["g++", "clang++"])
def test_what_programs_have_compiled_in_stays(tree: InstalledTree, compiler: str) -> None:
    output_of(compiler, *STRICT, f"-I{tree.root / 'include'}", LAYOUT)


def test_the_library_is_hardened_and_needs_the_system_alone(tree: InstalledTree) -> None:
    library = tree.find(r"lib/.*/?libcradle-config\.so\.\d+")
    dynamic = output_of("readelf", "--wide", "--dynamic", library)
    needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic))
    assert needed <= {"libc.so.6", "libgcc_s.so.1", "libm.so.6", "libstdc++.so.6"}
    assert re.search(r"\(FLAGS_1\) .*\bNOW\b", dynamic)
    assert not re.search("RPATH|RUNPATH|TEXTREL", dynamic)
    segments = output_of("readelf", "--wide", "--segments", library)
    assert re.search(r"GNU_STACK .* RW +0x", segments) and "GNU_RELRO" in segments
