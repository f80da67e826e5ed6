# SPDX-License-Identifier: MIT
"""The system calls of a run, and the faults that each of them can meet."""

import os
import re
from typing import NamedTuple

# A call that is not listed meets those of OTHERS.
OTHERS = ("EIO", "ENOMEM")
ERRORS: dict[str, tuple[str, ...]] = {
    "access": ("EACCES", "EIO"),
    "clone3": ("EAGAIN", "ENOMEM"),
    "close": ("EINTR", "EIO"),
    "connect": ("EACCES", "EINTR"),
    "fcntl": ("EBADF",),
    "getdents64": ("EIO", "ENOMEM", "EINTR"),
    "lchown": ("EIO", "EPERM", "ENOSPC"),
    "lseek": ("EINVAL",),
    "mkdir": ("EACCES", "EIO", "ENOMEM", "ENOSPC"),
    "mmap": ("ENOMEM",),
    "mprotect": ("ENOMEM",),
    "munmap": ("ENOMEM",),
    "newfstatat": ("EACCES", "EIO", "ENOMEM"),
    "openat": ("EACCES", "EINTR", "EIO", "EMFILE", "ENOMEM", "ENOSPC"),
    "pipe2": ("EMFILE", "ENOMEM"),
    "prlimit64": ("EPERM",),
    "read": ("EINTR", "EIO", "ENOMEM"),
    "readlink": ("EACCES", "EIO", "ENOMEM"),
    "rt_sigaction": ("EINVAL",),
    "rt_sigprocmask": ("EINVAL",),
    "socket": ("EACCES", "EMFILE", "ENOMEM"),
    "umask": (),  # cannot fail
    "wait4": ("ECHILD", "EINTR"),
    "write": ("EINTR", "EIO", "ENOSPC"),
    "execve": (),  # of the program itself: there would be no run
}
EVERY_ERROR = ("EACCES", "EINTR", "EIO", "EMFILE", "ENOMEM", "ENOSPC")

# Running out of memory may abort a run, as an exception that nobody catches.
MEMORY = {"brk", "mmap", "mprotect", "mremap", "munmap"}

# The first call of main.
MAIN = re.compile(r"fcntl\(0(<[^>]*>)?, F_GETFD\)")
LINE = re.compile(r"(\w+)\((.*)\) += (-?\w+)")


class Call(NamedTuple):
    """A system call of a clean run."""

    name: str
    number: int  # among those of its name, from 1
    arguments: str
    result: str
    after: str = ""  # the name of the call before it
    early: bool = False  # made before main

    def path_like(self, pattern: str) -> str:
        """The path that is opened, or stands behind a number, if it matches; else empty."""
        match = re.search(rf'"({pattern})"|\d<({pattern})>', self.arguments)
        return next(filter(None, match.groups()), "") if match else ""

    def is_on(self, pattern: str) -> bool:
        return self.path_like(pattern) != ""


class Fault(NamedTuple):
    """A call that is to fail, and how."""

    call: Call
    error: str

    def injection(self) -> tuple[str, int, str]:
        # A brk that fails tells the old end, as no other call does; 0 is taken for that.
        result = "retval=0" if self.call.name == "brk" else f"error={self.error}"
        return self.call.name, self.call.number, result

    def __str__(self) -> str:
        return f"{self.call.name}#{self.call.number}({self.call.arguments}) {self.error}"


def calls_of(trace: list[str]) -> list[Call]:
    """The calls of a trace with the paths of descriptors."""
    calls: list[Call] = []
    counts: dict[str, int] = {}
    early = True
    for match in filter(None, map(LINE.match, trace)):
        name, arguments, result = match.groups()
        counts[name] = counts.get(name, 0) + 1
        early = early and not MAIN.match(match[0])
        after = calls[-1].name if calls else ""
        calls.append(Call(name, counts[name], arguments, result, after, early))
    return calls


def closes_pipe(call: Call) -> bool:
    return call.name == "close" and call.is_on("pipe:.*")


def closes_end_of_hook(call: Call) -> bool:
    """Whether the call closes this process's copy of the end to which a hook writes.

    An injected failure leaves a descriptor open, which no close of Linux does, whatever it
    returns. Whoever holds that end of a pipe waits in vain for the other end to run dry.
    """
    return closes_pipe(call) and call.after == "rt_sigprocmask"


def faults_of(calls: list[Call], everything: bool) -> list[Fault]:
    """The faults of a run; with everything also those before main, and unlikely ones."""
    faults = []
    for call in calls:
        errors = ERRORS.get(call.name, OTHERS)
        if everything and errors:
            errors = tuple(sorted({*errors, *EVERY_ERROR}))
        if call.name in MEMORY:
            errors = ("ENOMEM",)
        if closes_end_of_hook(call):
            continue
        if call.early and not everything:
            continue
        faults += [Fault(call, error) for error in errors]
    return faults


def wants_everything() -> bool:
    return os.environ.get("CRADLE_FAULTS") == "all"


def sampled(faults: list[Fault]) -> list[Fault]:
    """Every fault, or every so manieth where the environment has a number."""
    every = os.environ.get("CRADLE_FAULTS", "")
    return faults[:: int(every)] if every.isdecimal() else faults
