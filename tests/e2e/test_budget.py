# SPDX-License-Identifier: MIT
"""What a run costs: its instructions and its system calls, against the figures of budgets.txt.

Instructions are those of user space, the loader's included, as callgrind counts them. 5 % more
fail, and so do 5 % less: a budget that is too loose holds nothing. The system calls, as strace
sees them, are exactly those of the file; only writes follow the lines of the output.

The figures are those of GCC's release build on Debian 12; CMake registers the test for that build
alone. Beyond that they depend little on the machine: the program and what it reads have the same
paths in every private host, which has a loader cache of its own, and the environment is fixed.
Callgrind shows the program one model of processor wherever the machine has AVX2, and the C library
is told to use nothing that an x86-64 may lack (it changes the counts by less than 1 %). A processor
without AVX2, the order in which the file system lists a directory, and how many libraries are
installed remain, all far below 5 %.
"""

import os
import re
import shutil
from collections import Counter
from pathlib import Path

import pytest

from budgets import Budgets, deviations
from host import Host

REFRESH = "CRADLE_BUDGETS=refresh ctest --preset release -R test_budget"

CONF = Path(__file__).parents[2] / "conf"
DEFAULTS = ("--config", "/conf/cradle.conf.d", "--user-id", "1000")
RUNS = {
    "config": DEFAULTS,
    "lxc": (*DEFAULTS, "--type", "lxc"),
    "property": (*DEFAULTS, "--type", "property"),
    "lxc-back": ("--config", "/generated", "--type", "lxc"),
    "property-back": ("--config", "/generated", "--type", "property"),
    "10k-lines": ("--config", "/lines", "--user-id", "1000"),
    "seat": ("--config", "/conf/cradle.conf.d"),
    "hook": ("--config", "/hook", "--user-id", "1000"),
}

# The fragments that a run copies into its output, each with one write.
COPIED = {
    "lxc": "cradle.conf.d/static/10-limits.lxc",
    "property": "cradle.conf.d/static/10-guest.ro",
}

# What the C library of Debian 12 chooses its functions by, beyond what every x86-64 has.
FEATURES = "AVX AVX2 AVX512BW AVX512F AVX512VL BMI1 BMI2 ERMS FMA FMA4 LZCNT MOVBE POPCNT SSE4_1"
FEATURES += " SSE4_2 SSSE3 XSAVEC AVX_Fast_Unaligned_Load Fast_Copy_Backward Fast_Rep_String"
FEATURES += " Fast_Unaligned_Copy Fast_Unaligned_Load Prefer_PMINUB_for_stringop Slow_BSF"
MASK = ",".join(f"-{feature}" for feature in FEATURES.split())
AVX2, ERMS = 1 << 5, 1 << 9  # where the processor reports its extended features
OLDEST_PROCESSOR = {"GLIBC_TUNABLES": f"glibc.cpu.hwcaps={MASK}"}


@pytest.fixture
def prepared(host: Host) -> Host:
    """A host with everything that the runs read, and the program as /program."""
    shutil.copy(host.binary, host.path("/program"))
    shutil.copytree(CONF, host.path("/conf"))
    host.file("/etc/locale.conf", "LANG=en_US.UTF-8\n")
    host.conf("[A]\n" + "".join(f"K{i:05}=value {i:05}\n" for i in range(9_999)), "/lines/a.conf")
    host.conf("[Config]\nHostname=cradle\n", "/hook/a.conf")
    host.script("/hook/mount-hooks/a.sh", "echo 'tmpfs dev/shm tmpfs nosuid 0 0'\n")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000")
    host.directory("/generated")
    assert host.run(program="/usr/sbin/ldconfig") == (0, "", "")
    assert host.run(*DEFAULTS, "/generated/a.conf", program="/program") == (0, "", "")
    return host


def count_instructions(host: Host, run: str) -> int:
    options = ("--tool=callgrind", "--quiet", "--vgdb=no", "--callgrind-out-file=/instructions")
    command = ("/program", *RUNS[run], "/out.conf")
    result = host.run(*options, *command, program="/usr/bin/valgrind", env=OLDEST_PROCESSOR)
    assert result == (0, "", "")
    return int(re.findall(r"^totals: (\d+)$", host.read("/instructions"), re.MULTILINE)[0])


def count_calls(host: Host, run: str) -> Counter[str]:
    """The calls of the program itself; one that a signal interrupts is counted when it goes on."""
    command = (*RUNS[run], "/out.conf")
    assert host.run(*command, program="/program", strace=["-e", "signal=none"]) == (0, "", "")
    lines = [line for line in host.trace() if "= ? ERESTART" not in line]
    return Counter(match[0] for line in lines if (match := re.match(r"\w+(?=\()", line)))


def lines_of(path: Path) -> int:
    return len(path.read_text(encoding="utf-8").splitlines())


def expected_writes(host: Host, run: str) -> int:
    """One per line of the output; the lines of a copied fragment share one."""
    copied = lines_of(CONF / COPIED[run]) - 1 if run in COPIED else 0
    return lines_of(host.path("/out.conf")) - copied


@pytest.mark.parametrize("run", RUNS)
def test_a_run_costs_what_its_budget_says(prepared: Host, run: str) -> None:
    calls = count_calls(prepared, run)
    assert calls.pop("write") == expected_writes(prepared, run)
    cost = {"instructions": count_instructions(prepared, run), **calls}
    if os.environ.get("CRADLE_BUDGETS") == "refresh":
        Budgets().refresh(run, cost)
    changed = deviations(run, cost)
    assert not changed, "\n".join([*changed, f"if it shall be so: {REFRESH}"])


def test_the_budgets_are_those_of_the_runs_and_have_reasons() -> None:
    budgets = Budgets()
    assert budgets.runs == list(RUNS)
    assert [name for name, reason in budgets.reasons.items() if reason == "?"] == []


def test_the_counted_program_sees_the_oldest_processor(prepared: Host) -> None:
    loader = ("/lib64/ld-linux-x86-64.so.2", "--list-diagnostics")
    options = ("--tool=none", "--quiet", "--vgdb=no", *loader)
    result = prepared.run(*options, program="/usr/bin/valgrind", env=OLDEST_PROCESSOR)
    facts = dict(line.split("=", 1) for line in result.stdout.splitlines())
    assert facts["dl_hwcaps_subdirs_active"] == "0x0"  # no level above the first
    extended = int(facts["x86.cpu_features.features[0x1].active[0x1]"], 16)
    assert extended & (AVX2 | ERMS) == 0
