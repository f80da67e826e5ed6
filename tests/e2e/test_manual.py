# SPDX-License-Identifier: MIT
"""The manual pages: they are well formed, their examples run, and what they list is what there is.

Everything is looked for in both directions, in the pages as they are rendered: a page lists nothing
that the program does not have, and leaves nothing out.
"""

import re
from pathlib import Path

import pytest

from host import Host
from manual import NAMES, as_markdown, built, command, section, tables
from pages import ROOT, Page

COMMAND = "cradle-generate-config.1"
KEYS = "cradle.conf.5"
SOURCES = [path for path in sorted(ROOT.glob("src/**/*.cpp")) if path.parent.name != "inspect"]


def sources() -> str:
    return "\n".join(path.read_text(encoding="utf-8") for path in SOURCES)


def squeezed(text: str) -> str:
    return re.sub(r"\s+", " ", text)


# --- form


@pytest.mark.parametrize("name", NAMES)
def test_a_page_has_no_fault_of_form(name: str) -> None:
    _, text, errors = command("mandoc", "-T", "lint", built(name))
    # The pages refer to each other, whether they are installed or not.
    faults = [line for line in text.splitlines() if "referenced manual not found" not in line]
    assert (faults, errors) == ([], "")


@pytest.mark.parametrize("name", NAMES)
def test_the_other_formatter_has_no_warning(name: str) -> None:
    options = ("--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z")
    status, _, errors = command("man", *options, built(name), env={"MANWIDTH": "80"})
    assert (status, errors) == (0, "")


@pytest.mark.parametrize("name", NAMES)
def test_a_page_refers_to_pages_that_are_there(name: str) -> None:
    references = set(re.findall(r"^\.Xr (\S+) (\d)", built(name).read_text(encoding="utf-8"), re.M))
    assert {f"{page}.{number}" for page, number in references} == set(NAMES) - {name}


@pytest.mark.parametrize("name", NAMES)
def test_the_examples_print_what_the_page_shows(host: Host, name: str) -> None:
    text = as_markdown(built(name).read_text(encoding="utf-8"))
    assert "```console" in text
    assert Page(host, text).follow().splitlines() == text.splitlines()


# --- what the pages list


def test_the_options_are_those_of_the_usage_text(host: Host) -> None:
    usage = host.run().stdout
    known = {
        (name, placeholder.strip("<>"), help_text.rstrip("."))
        for name, placeholder, help_text in re.findall(r"^    (--\S+) (\S+) +(.*)$", usage, re.M)
    }
    shown = re.findall(r"^ {5}(--\S+) (\S+)\n +(.*)$", section(COMMAND, "DESCRIPTION"), re.M)
    assert len(known) == len(shown) > 0
    for name, placeholder, text in shown:
        [help_text] = [row[2] for row in known if row[:2] == (name, placeholder)]
        assert re.sub(" +", " ", text).startswith(help_text + ".")


def test_the_levels_are_those_of_the_log() -> None:
    shown = re.findall(r"^ {13}([a-z]+) +(\d)$", section(COMMAND, "DESCRIPTION"), re.M)
    assert shown == [(level, str(i)) for i, level in enumerate(tables()["level"])]


def test_the_variables_are_those_that_the_program_reads() -> None:
    text = sources()
    read = set(re.findall(r'getEnvironment\("(\w+)"', text))
    constants = set(re.findall(r"getEnvironment\((k\w+)", text))
    for constant in constants:
        read |= set(re.findall(rf'{constant} = "(\w+)"', text))
    shown = re.findall(r"^ {5}([A-Z_]+)(?: |$)", section(COMMAND, "ENVIRONMENT"), re.M)
    assert len(constants) > 0
    assert sorted(shown) == sorted(read | {"PATH"})  # the shell's own


def test_the_template_formats_are_those_of_the_evaluator() -> None:
    shown = re.findall(r"^ {5}\$\{(\w+):", section(KEYS, "SYNTAX"), re.M)
    assert shown == tables()["format"]


def test_the_named_templates_are_those_of_a_run() -> None:
    shown = re.findall(r"^ {5}\$\{(\w+)\}", section(KEYS, "SYNTAX"), re.M)
    assert sorted(shown) == sorted(set(re.findall(r'addTemplate\("(\w+)"', sources())))


def test_the_types_are_those_of_the_keys() -> None:
    entries = section(KEYS, "TYPES").partition("\n\n")[2]
    tags = re.findall(r"^ {5}(\S.*?)(?:  .*)?$", entries, re.M)
    shown = [name for tag in tags for name in tag.split(", ")]
    assert sorted(shown) == sorted({row.partition(" ")[2] for row in tables()["key"]})


def shown_keys() -> dict[str, str]:
    """The entry of every key on the page, by group and key; the first line is the type."""
    entries = {}
    for group, text in re.findall(
        r"^   Group (\w+)\n(.*?)(?=^   \S|\Z)", section(KEYS, "KEYS"), re.M | re.S
    ):
        for entry in re.split(r"^ {5}(?=\w+ \()", text, flags=re.M)[1:]:
            head = re.match(r"(\w+) \((.*?)\)\n", entry)
            assert head, entry
            entries[f"{group}/{head[1]}"] = f"{head[2]}\n{entry[head.end():]}"
    return entries


def documented_keys() -> set[str]:
    """The keys of the default configuration, which other tests hold against the outputs."""
    keys = set()
    for file in ROOT.glob("conf/cradle.conf.d/*.conf"):
        group = ""
        for line in file.read_text(encoding="utf-8").splitlines():
            line = line.removeprefix("#")
            if line.startswith("["):
                group = line.strip("[]")
            elif "=" in line and not line.startswith(" "):
                keys.add(f"{group}/{line.partition('=')[0]}")
    return keys


def test_the_keys_are_those_of_the_default_configuration_and_of_a_generated_one(host: Host) -> None:
    host.conf("[Config]\nKey=1\n")
    for kind in ("pre", "post"):
        host.script(f"/c/property-{kind}-hooks/a.sh", "echo a=1\n")
    for suffix in ("lxc", "ro"):
        host.file(f"/c/static/a.{suffix}", "a\n")
    assert host.generate() == (0, "", "")
    facts = host.read().partition("[GeneratedConfig]\n")[2]
    generated = {f"GeneratedConfig/{line.partition('=')[0]}" for line in facts.splitlines()}
    assert set(shown_keys()) == documented_keys() | generated


def test_the_keys_have_their_types_and_lines() -> None:
    shown = shown_keys()
    for row in tables()["key"]:
        name, _, kind = row.partition(" ")
        assert shown[name].partition("\n")[0] == kind
    lines = [
        f"{output}: {line}".strip()
        for output, _, line in (row.partition(" ") for row in tables()["line"])
    ]
    items = [
        re.sub(" +", " ", item)
        for entry in shown.values()
        for item in re.findall(r"^ +- +(\S.*)$", entry, re.M)
    ]
    assert len(items) == len(lines)
    for item, line in zip(items, lines):
        assert item == line or item.startswith(f"{line} ")


# --- messages

# Said only to other users of the library.
UNSEEN = (
    " mismatch with resolve list size ",
    "Reading environment file '",
    "' variable specified in environment file '",
    " has not been added to the parser",
    "Reusing logger for identity: ",
    "Cannot set file logging target with LoggerConfig::setTarget(Target)",
)


def composed(text: str) -> list[str]:
    """The messages about fields of mount entries, which are put together."""
    calls = re.findall(r'unexpected\("([^"]+)", "([^"]+)"', text)
    return [f"{what} must be {allowed} instead of " for what, allowed in calls]


def messages() -> list[str]:
    """The longest fixed part of every warning and error."""
    text = sources()
    parts = [
        max(re.findall(r'"((?:[^"\\]|\\.)*)"', statement), key=len)
        for statement in re.findall(r"\b(?:error|warning)\(\)((?:[^;\"]|\"[^\"]*\")*);", text)
        if '"' in statement
    ]
    parts += re.findall(r'"([^"]* in )"', "".join(re.findall(r"reject\([^;{]*;", text)))
    parts += re.findall(r'return "([^"]+: )"', text) + composed(text)
    return [part.replace("\\'", "'") for part in parts if part not in UNSEEN]


def test_every_message_is_listed() -> None:
    text = squeezed(section(COMMAND, "DIAGNOSTICS"))
    found = messages()
    assert len(found) > 30
    assert [part for part in found if part.strip() not in text] == []


def test_every_message_that_is_listed_is_there() -> None:
    text = squeezed(sources().replace("\\'", "'"))
    text += "|".join(composed(text))
    source = built(COMMAND).read_text(encoding="utf-8")
    listed = re.findall(r"^\.It (.*)$", source.partition(".Sh DIAGNOSTICS")[2], re.M)
    assert len(listed) > 30
    for message in listed:
        message = message.strip('"').replace("\\&", "")
        # What stands in capitals is filled in.
        for part in re.split(r"[(']?\b[A-Z]+(?:/[A-Z]+)?\b'?|/tmp\S+:", message):
            part = part.strip(" :()'")
            assert part in text, message


# --- the program that fills the pages



@pytest.mark.parametrize(
    "source, fault",
    [
        ("@nothing@", "nothing is called 'nothing'"),
        ("@option --bogus@", "there is no option '--bogus' in this place"),
        ("@option --config@", "there is no option '--config' in this place"),
        ("@option --type@", "the option '--config' is missing"),
        ("@format@", "there is no format '' in this place"),
    ],
)
def test_a_page_that_does_not_fit_the_tables_is_not_made(
    tmp_path: Path, source: str, fault: str
) -> None:
    page = tmp_path / "page.in"
    page.write_text(f'.\\" {source}\n', encoding="utf-8")
    result = command(built("cradle-manual"), "fill", page, tmp_path / "page")
    assert result == (1, "", f"{page}: {fault}\n")


def test_a_page_that_cannot_be_written_is_a_failure(tmp_path: Path) -> None:
    page = tmp_path / "page.in"
    page.write_text(".Sh NAME\n", encoding="utf-8")
    target = tmp_path / "missing" / "page"
    result = command(built("cradle-manual"), "fill", page, target)
    assert result == (1, "", f"{page}: cannot be read, or {target} not be written\n")


def test_the_rest_of_a_page_stays_as_it_is(tmp_path: Path) -> None:
    page = tmp_path / "page.in"
    text = '.Sh NAME\n.\\" a comment\n\ntext\n'
    page.write_text(text, encoding="utf-8")
    assert command(built("cradle-manual"), "fill", page, tmp_path / "page") == (0, "", "")
    assert (tmp_path / "page").read_text(encoding="utf-8") == text
