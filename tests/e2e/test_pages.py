# SPDX-License-Identifier: MIT
"""The pages of the documentation: what they show is what comes of it, and what they name is there.

After a change that is meant, the output that the pages show is renewed with

    CRADLE_PAGES=refresh ctest --preset release -R test_pages
"""

import os
import re
import shutil
from pathlib import Path

import pytest

from host import Host
from pages import BLOCK, PLACE, ROOT, Page

PAGES = [*sorted(ROOT.glob("*.md")), *sorted(ROOT.glob("docs/*.md"))]
SESSIONS = [page for page in PAGES if "```console" in page.read_text(encoding="utf-8")]
# Without "system", a directory of the container too.
DIRECTORIES = ".ci bench cmake completions conf debian docs fuzz man src tests tools".split()


def name_of(page: Path) -> str:
    return page.name


def furnish_for_porting(host: Host) -> None:
    """The host that the page tells of."""
    shutil.copytree(ROOT / "conf", host.path(f"{PLACE}/conf"))
    host.file("/etc/os-release", 'PRETTY_NAME="Example OS 1"\n')
    host.file("/etc/locale.conf", "LANG=fi_FI.UTF-8\n")
    host.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Helsinki")
    host.file("/dev/kgsl-3d0")


@pytest.mark.parametrize("page", SESSIONS, ids=name_of)
def test_commands_print_what_the_page_shows(host: Host, page: Path) -> None:
    if page.name == "porting.md":
        furnish_for_porting(host)
    text = page.read_text(encoding="utf-8")
    followed = Page(host, text).follow()
    if os.environ.get("CRADLE_PAGES") == "refresh":
        page.write_text(followed, encoding="utf-8")
    assert followed.splitlines() == text.splitlines()


def paths_in(text: str) -> list[str]:
    """The paths that a text names, as patterns: capitals stand for any name."""
    spans = [span.split()[0] for span in re.findall(r"`([^`]+)`", text)]
    paths = [span for span in spans if "/" in span and span.partition("/")[0] in DIRECTORIES]
    paths += [f"tests/e2e/{span}" for span in spans if re.fullmatch(r"test_\w+\.py", span)]
    return [re.sub(r"\b[A-Z]{2,}\b", "*", path) for path in paths]


@pytest.mark.parametrize("page", PAGES, ids=name_of)
def test_the_files_that_a_page_names_are_there(page: Path) -> None:
    text = BLOCK.sub("", page.read_text(encoding="utf-8"))
    links = [link for link in re.findall(r"\]\(([^)#]*)", text) if "://" not in link]
    assert [link for link in links if not (page.parent / link).exists()] == []
    assert [path for path in paths_in(text) if not any(ROOT.glob(path))] == []


def test_the_index_has_a_line_for_each_page() -> None:
    index = (ROOT / "docs" / "README.md").read_text(encoding="utf-8")
    linked = re.findall(r"^- \[[^]]+\]\((\S+)\): .", index, re.M)
    pages = [page.name for page in (ROOT / "docs").glob("*.md") if page.name != "README.md"]
    assert sorted(linked) == sorted(pages)


# --- failures


def test_only_what_may_be_a_file_of_the_project_is_looked_for() -> None:
    text = "`src/a.h`, `tools/b --c D`, `fuzz/NAME.cpp`, `test_d.py`, `src`, `/etc/e`, `f.conf`"
    assert paths_in(text) == ["src/a.h", "tools/b", "fuzz/*.cpp", "tests/e2e/test_d.py"]


def test_a_page_that_shows_something_else_is_found_out(host: Host) -> None:
    file = "The file `a/b`:\n\n```\nfirst\n```\n"
    shown = file + "\n```console\n$ cat \\\n  a/b\nother\n$ cat c || true\n```\n"
    found = "first\n$ cat c || true\ncat: c: No such file or directory\n"
    page = Page(host, shown)
    assert page.follow() == shown.replace("other\n$ cat c || true\n", found)


@pytest.mark.parametrize(
    "page, complaint",
    [
        ("```console\n$ echo a; exit 3\na\n```\n", "status 3:\n\\$ echo a; exit 3\na\n"),
        ("```console\n$ diff a b; exit 2\n```\n", "status 2"),
        ("```console\nwords\n$ true\n```\n", "no commands, or something before them:\nwords"),
        ("```console\n```\n", "no commands"),
        ("A file `a`:\n\n```ini\n[A]\n```\n", "what is this block"),
    ],
)
def test_a_page_that_cannot_be_followed_is_found_out(
    host: Host, page: str, complaint: str
) -> None:
    with pytest.raises(ValueError, match=complaint):
        Page(host, page).follow()
