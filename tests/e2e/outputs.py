# SPDX-License-Identifier: MIT
"""What tests of the LXC configuration and of the property file have in common."""

from host import Host, Result

# The start of a configuration from which a property file can be made without a complaint.
CONFIG = "[Config]\nAppIdManglingType=None\n"
OVERRIDE = "LanguageOverride=en_US\n"

INVALID = "ERROR: Invalid value for Config/"


def lxc(host: Host, *arguments: str) -> Result:
    return host.generate("--type", "lxc", *arguments)


def entries(host: Host) -> list[str]:
    """The mount entries of the file, in order."""
    head = "lxc.mount.entry = "
    return [line[len(head) :] for line in host.read().splitlines() if line.startswith(head)]


def generate(host: Host, *arguments: str) -> Result:
    return host.generate("--type", "property", *arguments)


def properties(host: Host, configuration: str) -> dict[str, str]:
    """The properties that a run with more keys of group Config, or of others, writes."""
    host.conf(CONFIG + OVERRIDE + configuration)
    assert generate(host) == (0, "", "")
    return read(host)


def read(host: Host) -> dict[str, str]:
    lines = [line for line in host.read().splitlines() if not line.startswith("#")]
    return dict(line.split("=", 1) for line in lines if line)


def comments(host: Host) -> list[str]:
    return [line for line in host.read().splitlines() if line.startswith("#")]
