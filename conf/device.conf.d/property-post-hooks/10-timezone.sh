#!/bin/sh
# Prints the host's time zone as a property; UTC when the host names none.

zone=$(readlink /etc/localtime | sed -n 's|.*/zoneinfo/||p')
echo "persist.sys.timezone=${zone:-UTC}"
