# SPDX-License-Identifier: MIT
"""The JSON of cradle-inspect-config against the schema of the documentation."""

import json
import shlex
from typing import Any

import jsonschema
import pytest

from host import Host
from inspect_cases import InspectCase, all_cases, inspector, name_of
from pages import ROOT

SCHEMA = json.loads((ROOT / "docs/inspect-schema.json").read_text(encoding="utf-8"))
COMMANDS = ["check", "diff", "explain", "files", "findings", "graph", "keys", "show"]


def closed(schema: Any) -> Any:
    """The schema without room for members that it does not tell of."""
    if isinstance(schema, list):
        return [closed(item) for item in schema]
    if not isinstance(schema, dict):
        return schema
    parts = {name: closed(part) for name, part in schema.items()}
    return parts | {"additionalProperties": False} if "required" in parts and "type" in parts else parts


def validate(command: str, text: str) -> Any:
    document = json.loads(text)
    schema = {"$ref": f"#/$defs/{command}", "$defs": closed(SCHEMA["$defs"])}
    jsonschema.validate(document, schema, jsonschema.Draft202012Validator)
    return document


def command_in(words: list[str]) -> str:
    return next(word for word in words if word in COMMANDS)


def documents(case: InspectCase, host: Host) -> dict[str, str]:
    """What each command of the case's session prints as JSON, and all there is to show."""
    printed = {}
    for line in {*case.commands(), "check", "show --all", "graph --all"} - {"--help"}:
        words = shlex.split(line)
        if command_in(words) != "explain" or "/" in words[-1]:
            fixed = ("--user-id", "1000", *words, "--format", "json")
            printed[line] = host.run(*fixed, program=inspector()).stdout
    return printed


def test_the_schema_is_one_and_knows_every_command(host: Host) -> None:
    jsonschema.Draft202012Validator.check_schema(SCHEMA)
    helped = host.run("--help", program=inspector()).stdout
    listed = helped[helped.index("Commands:") : helped.index("Options:")]
    names = [line.split()[0] for line in listed.splitlines()[1:] if line]
    assert sorted(names) == COMMANDS
    assert set(COMMANDS) <= set(SCHEMA["$defs"])


@pytest.mark.parametrize("case", all_cases(), ids=name_of)
def test_every_document_is_as_the_schema_says(host: Host, case: InspectCase) -> None:
    case.furnish(host)
    printed = documents(case, host)
    assert len(printed) >= 3
    for line, text in printed.items():
        if text or "diff" not in line:  # a diff that cannot be made has no document
            validate(command_in(shlex.split(line)), text)


@pytest.mark.parametrize("command", ["keys", "findings"])
def test_what_the_program_knows_is_as_the_schema_says(host: Host, command: str) -> None:
    document = validate(command, host.run(command, "-fjson", program=inspector()).stdout)
    assert len(next(iter(document.values()))) > 30


def test_text_that_is_no_unicode_is_replaced(host: Host) -> None:
    host.conf(b"[A]\nK=a\xff\xfeb\x01\n")
    result = host.run("-u1000", "-c/c", "show", "-fjson", program=inspector())
    [value] = validate("show", result.stdout)["groups"]["A"]["K"]
    assert value["text"] == "a\ufffd\ufffdb\x01"


# --- failures


@pytest.mark.parametrize(
    "document",
    [
        {"findings": [], "errors": 0, "warnings": 0},
        {"findings": [], "errors": -1, "warnings": 0, "notes": 0},
        {"findings": [], "errors": 0, "warnings": 0, "notes": 0, "more": 1},
        {"findings": [{}], "errors": 0, "warnings": 0, "notes": 0},
    ],
)
def test_a_document_that_is_not_as_the_schema_says_is_found_out(document: Any) -> None:
    with pytest.raises(jsonschema.ValidationError):
        validate("check", json.dumps(document))
