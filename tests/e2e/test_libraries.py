# SPDX-License-Identifier: MIT
"""The libraries that the program opens at run time, and the note in its file that names them."""

import json
import re
import struct
import subprocess
import tempfile
from pathlib import Path
from typing import Any

from host import Host, generated, setting

DLOPEN_NOTE = 0x407C0C0A  # the type that packaging tools look for


def noted_libraries() -> list[dict[str, Any]]:
    """What the program file says of the libraries that it may open."""
    with tempfile.TemporaryDirectory(prefix="cgc-note-") as directory:
        file = Path(directory, "note")
        command = ["objcopy", "--output-target=binary", "--only-section=.note.dlopen"]
        subprocess.run([*command, setting("CRADLE_BINARY"), file], check=True)
        note = file.read_bytes()
    owner_size, size, kind = struct.unpack_from("=III", note)
    assert (kind, note[12 : 12 + owner_size]) == (DLOPEN_NOTE, b"FDO\0")
    assert len(note) == 12 + owner_size + -(-size // 4) * 4
    text = note[12 + owner_size : 12 + owner_size + size]
    assert text.endswith(b"]\0")
    return json.loads(text[:-1])


def test_the_program_file_names_each_library_with_its_use() -> None:
    assert noted_libraries() == [
        {
            "feature": "login",
            "description": "Detects the active user of seat0 and logs to the journal",
            "priority": "recommended",
            "soname": ["libsystemd.so.0"],
        },
        {
            "feature": "dconf",
            "description": "Reads the settings that dconf templates name",
            "priority": "suggested",
            "soname": ["libdconf.so.1"],
        },
        {
            "feature": "prop",
            "description": "Reads the Android properties of the host that prop templates name",
            "priority": "suggested",
            "soname": ["libandroid-properties.so.1"],
        },
    ]


def test_a_run_that_needs_every_library_opens_what_the_note_names(host: Host) -> None:
    host.dconf("/home/alice/.config", "[d]\nkey='one'\n")
    host.conf("[A]\nKey=${dconf:/d/key} ${prop:ro.product.model}\nBad=${nope}\n")
    journal = {"CRADLE_LOGGING_TARGET": "systemd"}
    options = ["-e", "trace=openat,open"]
    result = host.generate(env=host.android_properties() | journal, strace=options)
    assert result.status == 0
    assert host.read() == generated("\n[A]\nKey=one Cradle One\n")
    opened = set(re.findall(r'/([^/"]+)"[^"]* = \d+$', "\n".join(host.trace()), re.MULTILINE))
    for library in noted_libraries():
        assert opened.issuperset(library["soname"])


def test_the_program_depends_on_no_library_that_it_opens(host: Host) -> None:
    command = ["objdump", "-p", setting("CRADLE_BINARY")]
    headers = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    needed = set(re.findall(r"NEEDED +(\S+)", headers))
    assert "libc.so.6" in needed
    for library in noted_libraries():
        assert needed.isdisjoint(library["soname"])
