#!/bin/sh
# Runs every fuzzer in turn, each with its share of the minutes: scripts/fuzz.sh [MINUTES]
# Stops at the first fault and names the input that shows it. What reaches code that the corpus does not
# is added to the corpus.
set -eu
cd "$(dirname "$0")/.."
minutes=${1:-10}
fuzzers="plugin strings_table answers calculation"
build=build/fuzz

# shellcheck disable=SC2046,SC2086 # lists of words
scripts/build.sh fuzz $(printf '%s_fuzzer ' $fuzzers)
seconds=$((minutes * 60 / 4))
for name in $fuzzers; do
  corpus=tests/fuzz/corpus/$name
  found=$build/found/$name
  log=$build/$name.log
  mkdir -p "$corpus" "$found"
  echo "$name: $seconds seconds" >&2
  if ! "$build/${name}_fuzzer" -max_total_time="$seconds" -max_len=600 -timeout=20 \
      -rss_limit_mb=4096 -artifact_prefix="$build/$name-" "$found" "$corpus" >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    exit 1
  fi
  tail -n 1 "$log"
  "$build/${name}_fuzzer" -merge=1 -set_cover_merge=1 -use_counters=0 -max_len=600 \
    "$corpus" "$found" >"$log" 2>&1
done
