#!/bin/sh
echo /vendor/firmware vendor/firmware none bind,ro 0 0
