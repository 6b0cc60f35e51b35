#!/bin/sh
# Builds a preset, all of it or the targets named: scripts/build.sh PRESET [TARGET...]
# Silent if there is nothing to do.
set -eu
cd "$(dirname "$0")/.."
preset=$1
shift

if [ ! -e "build/$preset/build.ninja" ]; then
  cmake --preset "$preset" >&2
fi
if ! ninja -C "build/$preset" -n "$@" | grep -q 'no work to do'; then
  ninja -C "build/$preset" "$@" >&2
fi
