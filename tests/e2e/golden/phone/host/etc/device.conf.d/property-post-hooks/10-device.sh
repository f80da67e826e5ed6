#!/bin/sh
printf ro.hook.device=lynx
