#!/bin/sh
# Holds the sources to .clang-format and .clang-tidy:
#
#   scripts/lint.sh            every source of the product
#   scripts/lint.sh changed    those that differ from the main branch, or include what does
#
# A file that has passed is not looked at again until it, a header that it includes, or .clang-tidy
# changes.
set -eu
cd "$(dirname "$0")/.."
build=build/lint
stamps=$build/passed

# One version decides, Debian 12's: others find other faults and lay out details differently.
for tool in clang-format-14 clang-tidy-14 clang-scan-deps-14; do
  if ! command -v $tool >/dev/null; then
    echo "The sources are not linted: there is no $tool, and version 14 decides." >&2
    exit 0
  fi
done

# What was changed since the main branch, or since the last commit if that branch is not known.
if [ "${1:-all}" = changed ]; then
  main=$(git rev-parse --verify --quiet origin/HEAD || echo HEAD)
  base=$(git merge-base HEAD "$main" || echo HEAD)
  changed=$(git diff --name-only "$base"; git ls-files --others --exclude-standard)
  printf '%s\n' "$changed" | grep -qE '\.(h|cpp)$|^\.clang-' || exit 0
fi

git ls-files '*.h' '*.cpp' | xargs clang-format-14 --dry-run -Werror
cmake --preset lint >/dev/null
mkdir -p "$stamps"

# Each source with the project's headers that it includes, a line each.
dependencies() {
  clang-scan-deps-14 -compilation-database $build/compile_commands.json -j "$(nproc)" |
    awk -v root="$PWD/" '
      {
        for (i = 1; i <= NF; i++) {
          if ($i ~ /:$/) { if (line != "") print line; line = "" }
          else if (index($i, root) == 1) line = line " " substr($i, length(root) + 1)
        }
      }
      END { print line }' |
    sed 's/^ //' | sort -u -k 1,1
}

# Those that were changed, or include what was; a change of .clang-tidy counts for all.
changed_only() {
  if printf '%s\n' "$changed" | grep -qx .clang-tidy; then cat; return; fi
  while read -r line; do
    for file in $line; do
      if printf '%s\n' "$changed" | grep -qxF "$file"; then echo "$line"; break; fi
    done
  done
}

if [ "${1:-all}" = changed ]; then choose=changed_only; else choose=cat; fi
export build stamps
dependencies >$build/sources
[ -s $build/sources ]
$choose <$build/sources | tr '\n' '\0' |
  xargs -0 -r -P "$(nproc)" -I{} sh -c '
    set -- {}
    stamp=$stamps/$(cat "$@" .clang-tidy | cksum | tr " " -)
    [ -e "$stamp" ] && exit 0
    clang-tidy-14 -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "$1" 2>/dev/null ||
      exit 1
    : >"$stamp"'
