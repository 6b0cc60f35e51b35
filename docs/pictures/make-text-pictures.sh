#!/bin/bash
# Renews the text pictures of ../terminal.md: each block of text shows the last dialog of the example
# above it. Takes the build directory; build/release if it is left out. Needs no terminal.
set -euo pipefail

pictures=$(cd "$(dirname "$0")" && pwd)
document=$pictures/../terminal.md
build=$(cd "${1:-$pictures/../../build/release}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The last dialog of the last example as a terminal shows it, without the empty rows around it.
draw() {
  "$build/tarvo" --describe "$work/dialogs" --answer "$answers" eval "${calculations[@]}" >"$work/results"
  tail -n 1 "$work/dialogs" | "$build/tarvo-terminal" --render "$work/picture"
  sed -e '/^$/d' -e 's/^       //' "$work/picture"
}

block=none
while IFS= read -r line; do
  case $block,$line in
    none,'```tarvo') block=example answers='' calculations=() ;;
    none,'```text')
      block=picture
      echo "$line"
      draw
      continue
      ;;
    picture,'```') block=none ;;
    picture,*) continue ;;
    *,'```') block=none ;;
    example,'# answer: '*) answers+="${line#'# answer: '};" ;;
    example,*) calculations+=("$line") ;;
  esac
  printf '%s\n' "$line"
done <"$document" >"$work/document"
cp "$work/document" "$document"
