# SPDX-License-Identifier: MIT
"""What earlier runs found out, kept in build/mutate, so that a run goes on where another ended.

That a test has found a fault, or that it does not compile, holds for as long as the faulty file stays
as it is; that none has, for as long as all sources and all tests do, with what supports them. A fault
that the unit tests do not find is remembered as such until it is known whether the others do.
"""

import hashlib
import json
import re
import threading
from dataclasses import asdict
from pathlib import Path

from fault import Fault
from trial import Verdict

DEPENDS_ON = ("src", "tests/unit", "tests/e2e", "conf")


def _digest(*parts: str) -> str:
    return hashlib.sha256("\0".join(parts).encode("utf-8", "surrogateescape")).hexdigest()[:20]


def files_of_suites(root: Path) -> dict[str, Path]:
    """The file of each suite of unit tests."""
    suites: dict[str, Path] = {}
    for path in sorted(root.glob("tests/unit/**/*_test.cpp")):
        code = path.read_text(encoding="utf-8", errors="surrogateescape")
        for name in re.findall(r"^TEST(?:_F|_P)?\((\w+),", code, re.MULTILINE):
            suites.setdefault(name, path)
    return suites


def digest_of_everything(root: Path) -> str:
    """Of what a fault that no test finds depends on."""
    files = sorted(path for top in DEPENDS_ON for path in (root / top).rglob("*")
                   if path.is_file() and "__pycache__" not in path.parts)
    texts = (path.read_text(encoding="utf-8", errors="surrogateescape") for path in files)
    return _digest(*(f"{path.relative_to(root)}\0{text}" for path, text in zip(files, texts)))


class Results:
    def __init__(self, root: Path, file: Path, scope: str) -> None:
        self.root, self.file = root, file
        everything = digest_of_everything(root)
        self.basis, self.unit_basis = _digest(everything, scope), _digest(everything, "unit")
        self.lock = threading.Lock()
        self.texts: dict[str, str] = {}
        self.known: dict[str, dict[str, str]] = {}
        if file.exists():
            for line in file.read_text(encoding="utf-8").splitlines():
                entry = json.loads(line)
                self.known[entry.pop("id")] = entry

    def forget(self) -> None:
        """Let every fault be tried again."""
        self.known.clear()

    def _id(self, fault: Fault) -> str:
        if fault.path not in self.texts:
            self.texts[fault.path] = (self.root / fault.path).read_text(encoding="utf-8")
        place = (str(fault.start), str(fault.end), fault.replacement)
        return _digest(fault.path, self.texts[fault.path], *place)

    def find(self, fault: Fault) -> Verdict | None:
        entry = self.known.get(self._id(fault))
        if entry is None or (entry["kind"] == "survived" and entry["basis"] != self.basis):
            return None
        return Verdict(entry["kind"], entry["killer"])

    def survives_unit_tests(self, fault: Fault) -> bool:
        """Whether that is known."""
        entry = self.known.get(self._id(fault))
        return entry is not None and entry["basis"] == self.unit_basis

    def store(self, fault: Fault, verdict: Verdict) -> None:
        self._store(fault, verdict, self.basis if verdict.kind == "survived" else "")

    def store_unit_survivor(self, fault: Fault) -> None:
        self._store(fault, Verdict("survived"), self.unit_basis)

    def _store(self, fault: Fault, verdict: Verdict, basis: str) -> None:
        entry = {"id": self._id(fault), "basis": basis, **asdict(verdict)}
        with self.lock:
            with self.file.open("a", encoding="utf-8") as out:
                out.write(json.dumps(entry) + "\n")
            self.known[entry.pop("id")] = entry
