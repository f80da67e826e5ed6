"""The pages of the documentation: what they show is what comes of it.

After a change that is meant, the output that the pages show is renewed with

    CRADLE_PAGES=refresh ctest --preset release -R test_pages
"""

import os
import re
from pathlib import Path

import pytest

from host import Host
from pages import ROOT, Page

PAGES = [*sorted(ROOT.glob("*.md")), *sorted(ROOT.glob("docs/*.md"))]
SESSIONS = [page for page in PAGES if "```console" in page.read_text(encoding="utf-8")]


def name_of(page: Path) -> str:
    return page.name


@pytest.mark.parametrize("page", SESSIONS, ids=name_of)
def test_commands_print_what_the_page_shows(host: Host, page: Path) -> None:
    text = page.read_text(encoding="utf-8")
    followed = Page(host, text).follow()
    if os.environ.get("CRADLE_PAGES") == "refresh":
        page.write_text(followed, encoding="utf-8")
    assert followed.splitlines() == text.splitlines()


# --- failures


def test_a_page_that_shows_something_else_is_found_out(host: Host) -> None:
    text = "The file `a/b`:\n\n```\nfirst\n```\n\n```console\n$ cat \\\n  a/b\nother\n$ cat c || true\n```\n"
    assert Page(host, text).follow() == text.replace(
        "other\n$ cat c || true\n", "first\n$ cat c || true\ncat: c: No such file or directory\n"
    )


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
