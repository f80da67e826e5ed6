#!/bin/sh
echo ro.hook.first=1
echo
echo "# a comment of the hook"
