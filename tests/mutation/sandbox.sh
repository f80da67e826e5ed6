#!/bin/bash
# Usage: sandbox.sh SECONDS COMMAND...
# Runs the tests of a faulty program where they can do no harm: in a mount and process namespace of
# their own (made by the caller), in which nothing but an empty /tmp in memory can be written, and
# with limits on memory, file sizes and processor time.
set -euo pipefail

seconds=$1
shift
mount -t tmpfs -o size=1g,mode=1777 tmpfs /tmp
cd /tmp
while read -r _ _ _ _ place _; do
    case $place in
        /proc | /proc/* | /sys | /sys/* | /dev | /dev/* | /tmp | /tmp/*) ;;
        *) mount -o remount,bind,ro "$place" ;;
    esac
done </proc/self/mountinfo

ulimit -c 0
ulimit -t "$seconds"
ulimit -f 1000000 # in pieces of 512 bytes
ulimit -v 3000000 # in KiB
exec "$@"
