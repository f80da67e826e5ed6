#!/bin/sh
echo "ro.hook.arguments=$#: $*"
