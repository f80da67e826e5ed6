# SPDX-License-Identifier: MIT
"""The whole runs that are measured, and what they are compared with."""

from pathlib import Path

from measure.figures import Figures
from measure.processes import Process, add_costs, add_times, verify
from measure.site import PROGRAM, PROGRAMS, ROOT, SCRATCH, Effort, Failure, run

STARTUP = PROGRAMS / "startup"
OUTPUT = SCRATCH / "output"
DEFAULTS = ROOT / "conf/cradle.conf.d"
USER = ("--user-id", "0")
LONG_RUNS = 2
HOOKS = 20
HOOK = """#!/bin/sh
printf 'tmpfs mnt/%s tmpfs nosuid,create=dir 0 0\\n' "${0##*/}"
"""

EMPTY = {
    "empty/iostream": "iostream",
    "empty/static, no iostream": "empty-static",
    "empty/iostream, static libstdc++": "iostream-static-libstdc++",
    "empty/iostream, libsystemd": "iostream-systemd",
    "empty/iostream, libsystemd, GLib, GObject, dconf": "iostream-systemd-dconf",
}


def _generation(name: str, kind: str, directory: Path, *options: str) -> Process:
    """A run of the program."""
    command = [str(PROGRAM), "--type", kind, "--config", str(directory), *options, str(OUTPUT)]
    return Process(name, command, OUTPUT)


def _lay_out_host() -> None:
    """Root is active on seat0, and the host has a locale; the directories are the run's own."""
    seats = Path("/run/systemd/seats")
    seats.mkdir(parents=True)
    seat = "ACTIVE=c1\nACTIVE_UID=0\nSESSIONS=c1\nUIDS=0\n"
    (seats / "seat0").write_text(seat, encoding="utf-8")
    Path("/etc/default/locale").write_text("LANG=en_US.UTF-8\n", encoding="utf-8")


def _generated_directory() -> Path:
    directory = SCRATCH / "generated.conf.d"
    directory.mkdir()
    verify(_generation("the generated configuration", "config", DEFAULTS, *USER))
    OUTPUT.rename(directory / "generated.conf")
    return directory


def measure_startup(figures: Figures, effort: Effort) -> None:
    _lay_out_host()
    generated = _generated_directory()
    script = ROOT / "bench/startup"
    substitute = [str(script / "substitute.sh"), str(script / "container.template"), str(OUTPUT)]
    processes = [Process(name, [str(STARTUP / file)]) for name, file in EMPTY.items()]
    processes += [Process("shell/sh and envsubst", substitute, OUTPUT)]
    for kind in ("config", "lxc", "property"):
        processes.append(_generation(f"run/{kind}, default configuration", kind, DEFAULTS, *USER))
    for kind in ("lxc", "property"):
        processes.append(_generation(f"run/{kind}, generated configuration", kind, generated))
    plain = "run/property, default configuration"
    processes.append(_generation(f"{plain}, user of seat0", "property", DEFAULTS))
    add_times(figures, processes, effort.rounds, effort.runs)
    add_costs(figures, processes)
    figures.subtract("added/user of seat0", f"{plain}, user of seat0", plain)
    figures.subtract("added/libsystemd", "empty/iostream, libsystemd", "empty/iostream")


def measure_hooks(figures: Figures, effort: Effort) -> None:
    directory = SCRATCH / "hooked.conf.d"
    hooks = [directory / f"mount-hooks/{i:02}.sh" for i in range(HOOKS)]
    hooks[0].parent.mkdir(parents=True)
    for hook in hooks:
        hook.write_text(HOOK, encoding="utf-8")
        hook.chmod(0o755)
    (directory / "10-base.conf").write_text("[Config]\nDataRoot=/srv\n", encoding="utf-8")
    hooked = _generation(f"hooks/run with {HOOKS} hooks", "config", directory, *USER)
    verify(hooked)
    if OUTPUT.read_text(encoding="utf-8").count("Mounts=tmpfs mnt/") != HOOKS:
        raise Failure("not all hooks were run")
    alone = [str(PROGRAMS / "run-scripts"), *map(str, hooks)]
    processes = [hooked, Process(f"hooks/the {HOOKS} shells alone", alone)]
    add_times(figures, processes, effort.long_rounds, LONG_RUNS)


def measure_whole_path(figures: Figures, effort: Effort) -> None:
    """A large configuration from file to file, and a program that copies the result's lines."""
    directory = SCRATCH / "large.conf.d"
    directory.mkdir()
    run([str(PROGRAMS / "generate-entries"), str(effort.write_size), str(directory / "10.conf")])
    size = f"whole/{effort.write_size}"
    whole = _generation(f"{size}/config", "config", directory, *USER)
    verify(whole)
    written = SCRATCH / "written"
    OUTPUT.rename(written)
    copy = [str(PROGRAMS / "copy-lines"), str(written), str(OUTPUT)]
    copying = Process(f"{size}/copying its output line by line", copy, OUTPUT)
    verify(copying)
    if OUTPUT.read_bytes() != written.read_bytes():
        raise Failure("copy-lines did not copy")
    add_times(figures, [whole, copying], effort.long_rounds, LONG_RUNS)
