#!/bin/sh
# Prints the property that tells Android whether the host has less than 2 GiB of memory.

[ -r /proc/meminfo ] || exit 0
while read -r name kibibytes _; do
    if [ "$name" = MemTotal: ]; then
        if [ "$kibibytes" -lt 2097152 ]; then
            echo ro.config.low_ram=true
        else
            echo ro.config.low_ram=false
        fi
    fi
done </proc/meminfo
