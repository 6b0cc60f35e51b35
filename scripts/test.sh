#!/bin/sh
# Passes every test, under sanitizers unless it needs the optimised build, then the rules for sources:
# if CI is set, of every source, else of what was changed. The last line sums up what the test
# runner counted.
set -eu
cd "$(dirname "$0")/.."

passed=0
failed=0

run_tests() {
  log=build/$1/test.log
  cmake --preset "$1" >/dev/null  # what the tests need may have come since
  scripts/build.sh "$1"
  # One more than there are cores, since those that wait for windows compute little.
  { ctest --preset "$1" --no-tests=error -j "$(($(nproc) + 1))" 2>&1 || :; } | tee "$log"
  # "100% tests passed, 0 tests failed out of 120"
  counts=$(sed -n 's/.*tests passed, \([0-9]*\) tests\{0,1\} failed out of \([0-9]*\).*/\1 \2/p' "$log")
  if [ -z "$counts" ]; then
    echo "The tests of the $1 build did not run." >&2
    exit 1
  fi
  failed=$((failed + ${counts% *}))
  passed=$((passed + ${counts#* } - ${counts% *}))
}

run_tests release
run_tests sanitize
scripts/lint.sh "$(if [ -n "${CI:-}" ]; then echo all; else echo changed; fi)"
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
