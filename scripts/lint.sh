#!/bin/sh
# Holds the sources to .clang-format and .clang-tidy, with the commands of a build folder:
# scripts/lint.sh build/release. A file that has passed is not looked at again until something changes
# that it may depend on.
set -eu
cd "$(dirname "$0")/.."
build=$1
stamps=$build/lint
mkdir -p "$stamps"

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror

headers=$(git ls-files '*.h' .clang-tidy | xargs cat | cksum | tr ' ' -)
export build stamps headers
git ls-files 'plugin/*.cpp' \
    'platform/*.cpp' 'displays/*.cpp' 'calculation/*.cpp' 'workbench/*.cpp' |
  xargs -P "$(nproc)" -I{} sh -c '
    stamp=$stamps/$(cat "{}" | cksum | tr " " -)-$headers
    [ -e "$stamp" ] && exit 0
    clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "{}" 2>/dev/null ||
      exit 1
    : >"$stamp"'
