# SPDX-License-Identifier: MIT
"""Fixtures of the end-to-end tests."""

from typing import Iterator

import pytest

from host import Host


@pytest.fixture
def host() -> Iterator[Host]:
    """A host with the users root and alice (uid 1000) and no configuration."""
    host = Host()
    host.user("root", 0, home="/root")
    host.user("alice", 1000, home="/home/alice")
    yield host
    host.close()
