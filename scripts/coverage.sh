#!/bin/sh
# Prints how much of each folder of the plug-in and the layers the quick tests reach, then every line and
# branch that they do not. Ways out by exception are no branches.
set -eu
cd "$(dirname "$0")/.."
build=build/coverage
tests="plugin_test layers_test failing_host_test code_set_test exhausted_memory_test"

if [ ! -e $build/build.ninja ]; then
  cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="--coverage -fno-threadsafe-statics" >&2
fi
# shellcheck disable=SC2086 # a list of words
ninja -C $build $tests >&2
find $build -name '*.gcda' -delete
for test in $tests; do
  $build/"$test" --gtest_brief=1 >&2
done

find $build -name '*.gcda' -exec gcov --json-format --branch-probabilities --stdout {} + |
  python3 scripts/coverage_table.py
