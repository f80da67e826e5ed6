#!/bin/sh
# Prints one mount entry for each of these host directories that exists.
# Arguments, when given: user id, user name, home directory, instance, base uid.

for directory in /media /usr/share/fonts; do
    if [ -d "$directory" ]; then
        printf '%s mnt/host%s none rbind,ro,nodev,nosuid,create=dir 0 0\n' "$directory" "$directory"
    fi
done
