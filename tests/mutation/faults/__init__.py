# SPDX-License-Identifier: MIT
"""The kinds of faults, each a function that yields the faults of its kind in a source."""
