"""What earlier runs found out, kept in build/mutate, so that a run goes on where another ended.

A verdict holds for as long as what it depends on stays as it is: for a fault that a test found the
faulty file and the file of that test; for one that none found all sources and all tests.
"""

import hashlib
import json
import re
import threading
from dataclasses import asdict
from pathlib import Path

from fault import Fault
from trial import Verdict


def _digest(*parts: str) -> str:
    return hashlib.sha256("\0".join(parts).encode("utf-8", "surrogateescape")).hexdigest()[:20]


class Results:
    def __init__(self, root: Path, file: Path, scope: str) -> None:
        self.root, self.file, self.scope = root, file, scope
        self.lock = threading.Lock()
        self.texts: dict[Path, str] = {}
        self.suites = self._files_of_suites()
        self.everything = self._digest_of_everything()
        self.known: dict[str, dict[str, str]] = {}
        if file.exists():
            for line in file.read_text(encoding="utf-8").splitlines():
                entry = json.loads(line)
                self.known[entry.pop("id")] = entry

    def forget(self) -> None:
        """Let every fault be tried again."""
        self.known.clear()

    def _text(self, path: Path) -> str:
        if path not in self.texts:
            self.texts[path] = path.read_text(encoding="utf-8", errors="surrogateescape")
        return self.texts[path]

    def _files_of_suites(self) -> dict[str, Path]:
        suites = {}
        for path in sorted(self.root.glob("tests/unit/**/*_test.cpp")):
            for name in re.findall(r"^TEST(?:_F|_P)?\((\w+),", self._text(path), re.MULTILINE):
                suites.setdefault(name, path)
        return suites

    def _digest_of_everything(self) -> str:
        paths = [path for top in ("src", "tests/unit", "tests/e2e", "conf")
                 for path in (self.root / top).rglob("*") if path.is_file()
                 and "__pycache__" not in path.parts]
        return _digest(*(f"{path}\0{self._text(path)}" for path in sorted(paths)))

    def _id(self, fault: Fault) -> str:
        code = self._text(self.root / fault.path)
        return _digest(fault.path, code, str(fault.start), str(fault.end), fault.replacement)

    def _basis(self, verdict: Verdict) -> str:
        """A digest of what the verdict depends on besides the faulty file."""
        if verdict.kind == "invalid":
            return ""
        file = self.suites.get(verdict.killer.partition(".")[0])
        if verdict.kind == "e2e":
            file = self.root / "tests/e2e" / verdict.killer.partition("::")[0]
        if verdict.kind == "survived" or file is None or not file.exists():
            return _digest(self.everything, self.scope)
        return _digest(self._text(file))

    def find(self, fault: Fault) -> Verdict | None:
        entry = self.known.get(self._id(fault))
        if entry is None:
            return None
        verdict = Verdict(entry["kind"], entry["killer"])
        return verdict if self._basis(verdict) == entry["basis"] else None

    def store(self, fault: Fault, verdict: Verdict) -> None:
        entry = {"id": self._id(fault), "basis": self._basis(verdict), **asdict(verdict)}
        with self.lock, self.file.open("a", encoding="utf-8") as out:
            out.write(json.dumps(entry) + "\n")
        self.known[entry.pop("id")] = entry
