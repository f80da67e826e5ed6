#!/bin/sh
# SPDX-License-Identifier: MIT
# Usage: substitute.sh TEMPLATE OUTPUT
# What a few lines of shell would do in the place of the program: one template, filled from the
# environment.
set -eu
envsubst <"$1" >"$2"
