#!/bin/sh
# Fails if a page is not what its program prints: check-page.sh PROGRAM PAGE
"$1" | diff "$2" -
