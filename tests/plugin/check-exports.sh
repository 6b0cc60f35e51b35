#!/bin/sh
# Holds a module to the names that FileMaker looks for: check-exports.sh MODULE
set -eu
exported=$(nm -D --defined-only "$1" | awk '{print $3}' | sort | tr '\n' ' ')
echo "exports: $exported"
[ "$exported" = "FMExternCallProc gFMX_ExternCallPtr " ]
