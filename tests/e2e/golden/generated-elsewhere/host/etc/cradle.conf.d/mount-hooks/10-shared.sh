#!/bin/sh
echo "/srv/$4 mnt/$2 none rbind,create=dir 0 0"
