#!/bin/nosuch
