# SPDX-License-Identifier: MIT
"""What cradle-inspect-config may cost, in the release build."""

import re

from host import Host
from inspect_cases import inspector

SECONDS = 1.0  # of processor time for 100 k lines


def processor_time(host: Host, command: str) -> float:
    """The seconds that a command of the shell uses."""
    run = host.run("-c", f"{inspector()} -u1000 -c/c {command} >/found; times", program="/bin/sh")
    times = re.findall(r"(\d+)m([\d.]+)s", run.stdout)[2:]
    return sum(60 * float(minutes) + float(seconds) for minutes, seconds in times)


def test_many_references_are_followed_at_once(host: Host) -> None:
    host.conf("[Keys]\n" + "".join(f"K{i}=${{config:Keys/K{i + 1}}}/x\n" for i in range(100_000)))
    times = [processor_time(host, "check") for _ in range(3)]
    print(f"{min(times)} s of processor time")
    found = host.read("/found")
    assert found.count(" [reference-depth]\n") == 100_000 - 33 and "[missing-reference]" in found
    assert min(times) < SECONDS


def test_many_lines_are_checked_at_once(host: Host) -> None:
    for number, group in enumerate(("Config", "Display", "Custom")):
        lines = (f"K{i:06}=value {i} of ${{USER}}\n" for i in range(34_000))
        host.conf(f"[{group}]\n" + "".join(lines), f"/c/{number}.conf")
    # Others use the processors as well: the best of a few runs counts.
    times = [processor_time(host, "check") for _ in range(3)]
    print(f"{min(times)} s of processor time")
    assert host.read("/found").endswith("1 error, 68001 warnings, 0 notes\n")
    assert min(times) < SECONDS
