# SPDX-License-Identifier: MIT
"""The configuration library as other programs find it: installed, moved, and built against."""

import os
import re
from pathlib import Path
from typing import Iterator

import pytest

from installed_tree import InstalledTree, output_of

DOCS = Path(__file__).parents[2] / "docs"
EXAMPLE = DOCS / "example"
MANUAL = (DOCS / "library.md").read_text(encoding="utf-8")

LAYERS = {
    "base/10.conf": "[Config]\nRoot=/data/${INSTANCE}\nMounts=a;b\n",
    "device/10.conf": "[Config]\nMounts=${config:Config/Root}/c\n",
}
MOUNTS = "a\nb\n/data/default/c\n"

CHECKED = "-Wall -Wextra -Wpedantic -Werror"
SOURCE = "print_key.cpp"


@pytest.fixture(scope="module", name="tree")
def installed_tree(tmp_path_factory: pytest.TempPathFactory) -> Iterator[InstalledTree]:
    yield InstalledTree(tmp_path_factory.mktemp("tree"))


@pytest.fixture(name="project")
def example_project(tmp_path: Path) -> Path:
    """A copy of the example, with the layers that it is to read."""
    for file in EXAMPLE.iterdir():
        tmp_path.joinpath(file.name).write_bytes(file.read_bytes())
    for path, text in LAYERS.items():
        tmp_path.joinpath(path).parent.mkdir()
        tmp_path.joinpath(path).write_text(text, encoding="utf-8")
    return tmp_path


def needs_library(program: Path) -> bool:
    """Whether a program asks the loader for the shared library."""
    return "NEEDED               libcradle-config.so.1\n" in output_of("objdump", "-p", program)


def check_example(program: Path, tree: InstalledTree, shared: bool) -> None:
    """It finds the key, and the library in the form that was asked for."""
    env = tree.environment() if shared else None
    arguments = ("Config", "Mounts", "base", "device")
    assert output_of(program, *arguments, env=env, cwd=program.parents[1]) == MOUNTS
    assert needs_library(program) == shared


def build_with_cmake(project: Path, tree: InstalledTree) -> Path:
    env = tree.environment() | {"CXXFLAGS": CHECKED}
    output_of("cmake", "-S", ".", "-B", "build", env=env, cwd=project)
    output_of("cmake", "--build", "build", env=env, cwd=project)
    return project / "build" / "print-key"


def shown_commands() -> list[str]:
    return re.findall(r"^```sh\n(.*?)^```$", MANUAL, re.MULTILINE | re.DOTALL)


@pytest.mark.parametrize("target, shared", [("Config", True), ("ConfigStatic", False)])
def test_the_example_is_built_with_the_cmake_package(
    project: Path, tree: InstalledTree, target: str, shared: bool
) -> None:
    rules = project / "CMakeLists.txt"
    text = rules.read_text(encoding="utf-8")
    rules.write_text(text.replace("Cradle::Config)", f"Cradle::{target})"), encoding="utf-8")
    check_example(build_with_cmake(project, tree), tree, shared)


@pytest.mark.parametrize("command, shared", zip(shown_commands(), [True, False], strict=True))
def test_the_example_is_built_with_pkg_config(
    project: Path, tree: InstalledTree, command: str, shared: bool
) -> None:
    (project / "bin").mkdir()
    command = command.replace("-o print-key", f"{CHECKED} -o bin/print-key")
    output_of("sh", "-ec", command, env=tree.environment(), cwd=project)
    check_example(project / "bin" / "print-key", tree, shared)


def test_the_manual_shows_the_example() -> None:
    [shown] = re.findall(r"^```cpp\n(.*?)^```$", MANUAL, re.MULTILINE | re.DOTALL)
    assert shown == (EXAMPLE / SOURCE).read_text(encoding="utf-8")


def test_every_file_says_the_same_version(tree: InstalledTree) -> None:
    version = output_of("pkg-config", "--modversion", "cradle-config", env=tree.environment()).strip()
    library = tree.find(r"lib/.*/?libcradle-config\.so\.\d+\.\d+\.\d+")
    assert library.name == f"libcradle-config.so.{version}"
    package = tree.find(r"lib/.*-config-version\.cmake").read_text(encoding="utf-8")
    assert f'set(PACKAGE_VERSION "{version}")' in package
    major = version.split(".", maxsplit=1)[0]
    headers = output_of("objdump", "-p", library)
    assert f"SONAME               libcradle-config.so.{major}\n" in headers
    assert f"CRADLE_CONFIG_{major}\n" in headers


def test_no_installed_text_names_a_directory_of_the_build(tree: InstalledTree) -> None:
    texts = [path for path in tree.files() if path.endswith((".h", ".pc", ".cmake"))]
    assert texts
    for path in texts:
        text = (tree.root / path).read_text(encoding="utf-8")
        assert os.environ["CRADLE_BUILD_DIR"] not in text and str(DOCS.parent) not in text, path


def test_each_installed_file_belongs_to_one_component(tree: InstalledTree, tmp_path: Path) -> None:
    names = ("runtime", "library", "development")
    runtime, library, development = (InstalledTree(tmp_path / n, n).files() for n in names)
    assert "bin/cradle-generate-config" in runtime
    assert {Path(path).name.rstrip("0123456789.") for path in library} == {"libcradle-config.so"}
    assert len(library) == 2  # the file and its SONAME
    assert {Path(path).suffix for path in development} == {".a", ".cmake", ".h", ".pc", ".so"}
    assert sorted([*runtime, *library, *development]) == sorted(tree.files())
