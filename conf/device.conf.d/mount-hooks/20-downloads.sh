#!/bin/sh
# Gives the guest the user's downloads. Arguments: user id, user name, home directory,
# instance, base uid; there are none when the configuration was generated before.

if [ -n "${3-}" ]; then
    printf '%s/Downloads data/media/0/Download none rbind,optional,create=dir 0 0\n' "$3"
fi
