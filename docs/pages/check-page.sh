#!/bin/sh
# Fails if docs/calculations.md is not what the program prints: check-page.sh PROGRAM PAGE
"$1" | diff "$2" -
