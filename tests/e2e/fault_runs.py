# SPDX-License-Identifier: MIT
"""Whole runs of a program with one system call failing in each: the host, and how they are made."""

import json
import os
import shutil
from pathlib import Path
from typing import Any, Iterator

from faults import Fault
from host import Host, Run

DRIVER = Path(__file__).with_name("fault_driver.py")
ENVIRONMENT = {"BINDER": "binder"}


def rich(host: Host) -> Host:
    """A small configuration with a bit of everything."""
    host.conf(
        "[Config]\nAppIdManglingType=None\nDataRoot=${HOME}/data\nHostname=of-${USER}\n"
        "StoragePath=${config:Config/DataRoot}/media\nMounts=/srv srv none bind 0 0\n"
        "MountHome=true\nPropertyFilePath=${realpath:/link}\n"
        "[Devices]\nBinderDev=${env:BINDER}\nRequiredDevNodes=nu*\nDevNodes=missing*;/dev/f*\n"
        "[Features]\nCrashLoggerEnabled=true\n"
    )
    host.conf(
        "[Device]\nProductName=${system:echo lynx}\nProductModel=${envfile:/model:MODEL}\n",
        "/d/20-device.conf",
    )
    host.conf("[Device]\nProductBrand=corvid\n[Launchers]\nIconSize=96\n", "/d/30-more.conf")
    host.conf("[A]\nHere=${realpath:model}\n", "/d/40-here.conf")
    host.script("/d/mount-hooks/a.sh", 'echo "/home $2 none bind 0 0"\n')
    host.script("/c/property-pre-hooks/a.sh", 'echo "pre.user=$2"\n')
    host.script("/d/property-post-hooks/a.sh", 'printf "post.one=$4\\npost.two=2"\n')
    host.file("/c/static/a.lxc", "lxc.one = 1\n\nlxc.two = 2")
    host.file("/d/static/a.ro", "ro.three=3\n")
    host.file("/model", "MODEL=five\n")
    host.file("/etc/locale.conf", "LANG=fi_FI.UTF-8\n")
    host.link("/link", "/model")
    host.directory("/tmp/cradle")
    host.conf("[A]\nKey=${USER}\n", "/s/10-base.conf")
    host.seat(ACTIVE="c1", ACTIVE_UID="1000")
    host.path("run/systemd/users").rmdir()  # so that nobody is waited for
    host.directory("/o")
    shutil.copy(DRIVER, host.path("/driver.py"))
    return host


def rich_hosts() -> Iterator[list[Host]]:
    """A host with the same content for each processor."""
    hosts = [Host() for _ in range(os.cpu_count() or 1)]
    for host in hosts:
        host.user("root", 0, home="/root")
        host.user("alice", 1000, home="/home/alice")
    yield [rich(host) for host in hosts]
    for host in hosts:
        host.close()


def start(host: Host, command: tuple[str, ...], faults: list[Fault]) -> Run:
    task = {
        "command": command,
        "made": "/tmp/cradle/crashlogs",
        "build": str(Path("/") / host.binary.split("/")[1]),
        "faults": [fault.injection() for fault in faults],
    }
    host.file("/faults.json", json.dumps(task))
    return host.start("/driver.py", program="/usr/bin/python3", env=ENVIRONMENT)


def inject(hosts: list[Host], command: tuple[str, ...], faults: list[Fault]) -> list[Any]:
    """Makes a run per fault and returns what came of each, in no particular order."""
    shares = [faults[i :: len(hosts)] for i in range(len(hosts))]
    runs = [start(host, command, share) for host, share in zip(hosts, shares)]
    outcomes = []
    for host, run, share in zip(hosts, runs, shares):
        assert run.finish(timeout=3600) == (0, "", "")
        outcomes += zip(share, json.loads(host.read("/outcomes.json")))
    return outcomes
