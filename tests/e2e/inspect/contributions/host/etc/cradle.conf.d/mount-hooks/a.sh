#!/bin/sh
printf '/a\tb none bind 0 0\n'
