#!/bin/sh
# Measures what a user waits for and prints one table: scripts/bench.sh [--json]
set -eu
cd "$(dirname "$0")/.."
build=build/release

cmake --preset release -DQUENLIX_BENCH=ON >/dev/null
scripts/build.sh release bench tarvo tarvo-desktop tarvo-terminal Quenlix bundle_resources
bench=$build/bench
rows=$(mktemp)
trap 'rm -f "$rows"' EXIT
{
  $bench/bench_watch_window $build/tarvo $bench/bench_bare_qt $bench/bench_bare_xcb
  $bench/bench_watch_terminal $build/tarvo
  $bench/bench_start_up $build/tarvo $bench/bench_bare_program $build/libCoreFoundation.so
  $bench/bench_loops $build/tarvo
  $bench/bench_list_memory
  $bench/bench_in_process
} >"$rows"
$bench/bench_table "$@" <"$rows"
