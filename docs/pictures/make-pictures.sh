#!/bin/bash
# Renews the pictures of ../functions.md: each shows the last dialog of the example above it.
# Takes the build directory; build/release if it is left out. Needs no screen.
set -euo pipefail

pictures=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$pictures/../../build/release}" && pwd)
shots=$(mktemp -d)
trap 'rm -rf "$shots"' EXIT

# The dialogs of the last example, as numbered pictures in $shots.
take_shots() {
  rm -f "$shots"/*.png
  "$build/tarvo" --screenshot "$shots" --answer "$answers" eval "${calculations[@]}" >"$shots/results"
}

inside=false
while IFS= read -r line; do
  if [[ $line == '```tarvo' ]]; then
    inside=true answers='' calculations=()
  elif [[ $line == '```' ]]; then
    inside=false
  elif $inside && [[ $line == '# answer: '* ]]; then
    answers+="${line#'# answer: '};"
  elif $inside; then
    calculations+=("$line")
  elif [[ $line =~ ^'!'\[.*\]\(pictures/(.*\.png)\)$ ]]; then
    take_shots
    last=$(find "$shots" -name '*.png' | sort -V | tail -n 1)
    mv "$last" "$pictures/${BASH_REMATCH[1]}"
    echo "${BASH_REMATCH[1]}"
  fi
done <"$pictures/../functions.md"
