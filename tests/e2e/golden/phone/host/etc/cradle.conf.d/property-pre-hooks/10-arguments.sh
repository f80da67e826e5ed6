#!/bin/sh
echo "ro.hook.arguments=$1 $2 $3 $4 $5"
