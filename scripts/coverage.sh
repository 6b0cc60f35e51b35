#!/bin/sh
# Prints how much of each file of the plug-in and the layers the quick tests reach, and which lines and
# branches they do not. Ways out by exception are no branches.
set -eu
cd "$(dirname "$0")/.."
build=build/coverage
tests="plugin_test layers_test failing_host_test code_set_test exhausted_memory_test"

# shellcheck disable=SC2086 # a list of words
scripts/build.sh coverage $tests
find $build -name '*.gcda' -delete
for test in $tests; do
  $build/"$test" --gtest_brief=1 >&2
done

report() {
  # shellcheck disable=SC2046 # a list of words
  gcovr --root . $(sed 's|.*|--filter &/|' scripts/covered-folders) \
    --exclude-throw-branches --exclude-unreachable-branches "$@"
}
report --json $build/coverage.json $build
report --add-tracefile $build/coverage.json --txt
report --add-tracefile $build/coverage.json --txt --branches
