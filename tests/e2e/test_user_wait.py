# SPDX-License-Identifier: MIT
"""The end of a wait for somebody to log in."""

import time

from host import SLOWDOWN, Host

NO_SEAT = "WARNING: Could not get sessions for seat0\n"
TIMEOUT = "WARNING: Could not get sessions for seat0, timeout reached\n"


def test_the_last_second_of_the_wait_does_not_block(host: Host) -> None:
    host.conf("[A]\nKey=1\n")
    begin = time.monotonic()
    status, stdout, stderr = host.run("--config", "/c", "/out.conf")
    assert 31 <= time.monotonic() - begin < 31 + 5 * SLOWDOWN
    looks, separator, end = stderr.partition(TIMEOUT)
    assert (status, stdout, end) == (1, "", "ERROR: User id must be defined!\n")
    assert separator
    assert looks == NO_SEAT * looks.count("\n")
    # Without the busy second there would be one look at the start and one after the wait.
    assert looks.count("\n") > 100
    assert not host.exists()
