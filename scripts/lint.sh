#!/bin/sh
# Holds the sources to .clang-format and .clang-tidy, with the commands of a build folder:
#
#   scripts/lint.sh BUILD            every source of the product
#   scripts/lint.sh BUILD changed    those that differ from the main branch, or include what does
#
# A file that has passed is not looked at again until it, a header that it includes, or .clang-tidy
# changes.
set -eu
cd "$(dirname "$0")/.."
build=$1
stamps=$build/lint
mkdir -p "$stamps"

# One version decides, Debian 12's: others find other faults and lay out details differently.
decides() {
  case $("$1" --version) in
    *" 14."*) ;;
    *) echo "$1 is not run: its version 14 decides." >&2; return 1 ;;
  esac
}

if decides clang-format; then git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror; fi
decides clang-tidy || exit 0

# Each source with the project's headers that it includes, a line each, as its compilation found them.
dependencies() {
  ninja -C "$build" -t deps | awk -v root="$PWD/" -v build="$PWD/$build/" '
    /^[^ ]/ { if (line != "") print line; line = "" }
    /^ / {
      sub(/^ +/, "")
      if (index($0, "../") == 1) sub(/^(\.\.\/)+/, root)
      if (index($0, build) != 1 && index($0, root) == 1) line = line " " substr($0, length(root) + 1)
    }
    END { if (line != "") print line }' |
    sed 's/^ //' | grep -vE '^(tests|bench)/' | sort -u -k 1,1
}

# What was changed here since the main branch, and .clang-tidy counts for all; all where there is no
# such branch.
changed_only() {
  base=$(git merge-base HEAD "$(git rev-parse --verify --quiet origin/HEAD || echo HEAD)")
  changed=$(git diff --name-only "$base"; git ls-files --others --exclude-standard)
  if printf '%s\n' "$changed" | grep -qx .clang-tidy; then cat; return; fi
  while read -r line; do
    for file in $line; do
      if printf '%s\n' "$changed" | grep -qxF "$file"; then echo "$line"; break; fi
    done
  done
}

if [ "${2:-all}" = changed ]; then choose=changed_only; else choose=cat; fi
tidy=$(clang-tidy --version | cksum | tr ' ' -)
export build stamps tidy
dependencies | $choose | tr '\n' '\0' |
  xargs -0 -r -P "$(nproc)" -I{} sh -c '
    set -- {}
    [ -e "$1" ] || exit 0  # compiled once and gone since
    stamp=$stamps/$(cat "$@" .clang-tidy | cksum | tr " " -)-$tidy
    [ -e "$stamp" ] && exit 0
    clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "$1" 2>/dev/null ||
      exit 1
    : >"$stamp"'
