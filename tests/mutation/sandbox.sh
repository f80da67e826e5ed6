#!/bin/bash
# SPDX-License-Identifier: MIT
# Usage: sandbox.sh SECONDS WRITABLE COMMAND...
# Runs the tests of a faulty program where they can do no harm: in a mount and process namespace of
# their own (made by the caller), in which nothing but an empty /tmp in memory and the directory
# WRITABLE, if it is not empty, can be written, and with limits on memory, file sizes and processor
# time. Says "sandbox ready" before the tests begin: what ends earlier is no test that fails.
set -euo pipefail

seconds=$1
writable=$2
shift 2
if [[ -n $writable ]]; then
    mount --bind "$writable" "$writable"
fi
mount -t tmpfs -o size=1g,mode=1777 tmpfs /tmp
cd /tmp
while read -r _ _ _ _ place _; do
    case $place in
        /proc | /proc/* | /sys | /sys/* | /dev | /dev/* | /tmp | /tmp/* | "$writable") ;;
        *) mount -o remount,bind,ro "$place" ;;
    esac
done </proc/self/mountinfo

ulimit -c 0
ulimit -t "$seconds"
ulimit -f 1000000 # in pieces of 512 bytes
ulimit -v 3000000 # in KiB
echo "sandbox ready"
"$@" # as its child: signals do nothing to the first process of a namespace
