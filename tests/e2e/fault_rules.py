# SPDX-License-Identifier: MIT
"""What must hold of a run in which a system call failed."""

import re
from collections import Counter
from typing import Any, Iterable, NamedTuple

from faults import MEMORY, Call, Fault, closes_pipe

SIGABRT = 6
SANITIZER = 99  # the status of the sanitize preset for an error, as of too little memory
OUT_OF_MEMORY = re.compile(r"out of memory|failed to (?:allocate|mmap)|allocation-size-too-big")
CONF = r"/[cd]/[^/]*\.conf"
OUTPUT = "/o/out"

# Made again when a signal interrupts them, so that nobody can tell.
RETRIED = {"connect", "getdents64", "openat", "read", "wait4", "write"}

# What the loader and the login library open, who do as they please.
FOREIGN = r"/etc/ld\.so\.cache|/run/systemd/.*|/usr/lib/.*|/lib.*"


class Promise(NamedTuple):
    """What a run says, and its status, when one of the calls fails on a path or on none."""

    calls: set[str]
    path: str
    message: str
    status: set[int]


CRASH_LOGS = "WARNING: Could not create /tmp/cradle/crashlogs: "
NO_USER = "ERROR: Failed to get user information for uid 1000: "
NO_HOOK = "ERROR: Failed to execute '"

PROMISES = (
    Promise({"openat", "read"}, CONF, "ERROR: Failed to load config from '{path}'\n", {1}),
    Promise({"openat", "read"}, "/etc/passwd", f"{NO_USER}|{CRASH_LOGS}", {0, 1}),
    Promise({"openat", "read"}, "/etc/locale.conf", "WARNING: Could not parse locale file", {0}),
    Promise({"mkdir", "lchown"}, "/tmp/cradle/crashlogs", CRASH_LOGS, {0}),
    Promise({"pipe2", "clone3"}, "", NO_HOOK, {0}),
    Promise({"wait4"}, "", r"ERROR: .* pclose\(\) exited with failure: ", {0}),
)

# Whose failures change the output and are not worth a message, as their headers say.
SILENT = (
    Promise({"openat", "read"}, "/[cd]/static/a.*", "static fragments are passed over", {0}),
    Promise({"openat", "read"}, "/model", "a template without text is left out", {0}),
    Promise({"readlink"}, "/(link|model)", "so is a path that is none", {0}),
    Promise({"getcwd"}, "", "and one that starts nowhere", {0}),
    Promise({"openat", "write"}, OUTPUT, "an output that cannot be written is none", {0}),
    Promise({"read"}, "pipe:.*", "what a hook could print is what counts", {0}),
    Promise({"openat", "newfstatat", "getdents64"}, "/[cd](/[^.]*)?|/dev", "no match", {0, 1}),
)


def row_of(rows: Iterable[Promise], call: Call) -> Promise | None:
    """The row that is about a call."""
    for row in rows:
        if call.name in row.calls and (not row.path or call.is_on(row.path)):
            return row
    return None


def ended_by_itself(fault: Fault, outcome: Any) -> bool:
    status = outcome["status"]
    if fault.call.early:  # the loader has ways of its own to fail a start
        return status is not None
    if status == SANITIZER:
        return fault.call.name in MEMORY and OUT_OF_MEMORY.search(outcome["stderr"]) is not None
    return status in (0, 1) or (status == -SIGABRT and fault.call.name in MEMORY)


def traces(outcome: Any) -> Iterable[str]:
    """What the run left on the host, or did to it."""
    if outcome["left"]:
        yield f"{outcome['left']} processes were left"
    if outcome["changed"]:
        yield f"changed: {outcome['changed']}"


def failures_of_output(fault: Fault, outcome: Any, clean: Any) -> Iterable[str]:
    """What was written before must be there, and nothing else."""
    call = fault.call
    if call.name == "write" and call.is_on(OUTPUT):
        writes = [c for c in clean.calls if c.name == "write" and c.is_on(OUTPUT)]
        size = sum(int(c.result) for c in writes if c.number < call.number)
        text = clean.output.encode("utf-8", "surrogateescape")[:size]
        if outcome["output"] != text.decode("utf-8", "surrogateescape"):
            yield f"after {size} bytes the output is {outcome['output']!r}"
    elif call.name == "openat" and call.is_on(OUTPUT) and outcome["output"] is not None:
        yield "there is an output that was not opened"


def same(outcome: Any, clean: Any) -> bool:
    seen = (outcome["status"], outcome["output"], outcome["stderr"])
    return seen == (0, clean.output, clean.stderr)


def broken_promises(fault: Fault, outcome: Any, clean: Any) -> Iterable[str]:
    """Words that were not said, and losses without a word."""
    call = fault.call
    promise = row_of(PROMISES, call)
    if call.name == "close" and closes_pipe(call):
        promise = PROMISES[-1]
    said = outcome["stderr"] != clean.stderr
    if promise:
        path = call.path_like(promise.path) if promise.path else ""
        message = promise.message.replace("{path}", path)
        if not re.search(message, outcome["stderr"]) or outcome["status"] not in promise.status:
            yield f"promised is {message!r} with a status of {promise.status}"
    elif outcome["status"] == 0 and not said and not row_of(SILENT, call):
        yield "the output differs without a word"
    elif outcome["status"] == 1 and not said:
        yield "the run failed without a word"


def is_retried(call: Call) -> bool:
    return call.name in RETRIED and not call.is_on(FOREIGN)


def silent_losses(outcome: Any, clean: Any) -> Iterable[str]:
    """Of a run that had too little memory and calls itself a success."""
    if outcome["status"] == 0 and outcome["stderr"] == clean.stderr:
        yield "the output differs without a word"


def complaints(fault: Fault, outcome: Any, clean: Any) -> list[str]:
    """What is wrong with the outcome of a fault, compared with a clean run."""
    found: list[str] = []
    if not outcome["injected"]:
        found.append("the fault was not injected")
    if not ended_by_itself(fault, outcome):
        found.append("the run did not end as it should")
    found += traces(outcome)
    if not same(outcome, clean) and not fault.call.early:
        if fault.call.name in MEMORY:
            found += silent_losses(outcome, clean)
        elif fault.error == "EINTR" and is_retried(fault.call):
            found.append("the interrupted call was not made again")
        else:
            found += failures_of_output(fault, outcome, clean)
            found += broken_promises(fault, outcome, clean)
    return [f"{fault}: {text}: status {outcome['status']}, {outcome['stderr']!r}" for text in found]


def kind_of(outcome: Any, clean: Any) -> str:
    """How a run ended, in a word or two."""
    if same(outcome, clean):
        return "as without fault"
    if outcome["status"] is None:
        return "did not end"
    if outcome["status"] < 0:
        return f"signal {-outcome['status']}"
    said = "said so" if outcome["stderr"] != clean.stderr else "silent"
    return f"status {outcome['status']}, {said}"


def figures(outcomes: list[Any], clean: Any) -> str:
    """A line per call and error: how many faults there were, and what came of them."""
    counts: dict[tuple[str, str], Counter[str]] = {}
    for fault, outcome in outcomes:
        row = counts.setdefault((fault.call.name, fault.error), Counter())
        row[kind_of(outcome, clean)] += 1
    lines = [
        f"{call} {error}: {sum(row.values())} ({', '.join(f'{n} {k}' for k, n in row.items())})"
        for (call, error), row in sorted(counts.items())
    ]
    return "\n".join([f"{len(outcomes)} faults", *lines])
