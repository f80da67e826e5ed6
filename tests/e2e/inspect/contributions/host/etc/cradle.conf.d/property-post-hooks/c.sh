#!/bin/sh
echo "a=1;2"
