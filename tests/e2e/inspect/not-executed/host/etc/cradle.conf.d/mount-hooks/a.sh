#!/bin/sh
echo /srv srv none bind 0 0
