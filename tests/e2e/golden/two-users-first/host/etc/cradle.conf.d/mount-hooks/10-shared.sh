#!/bin/sh
echo "$3 mnt/$1-$2-$4-$5 none rbind 0 0"
