#!/bin/sh
# Runs the workbench with the arguments given, or else the main job: a calculation that shows a dialog.
set -eu
cd "$(dirname "$0")/.."
tarvo=build/release/tarvo

if [ $# -gt 0 ]; then exec "$tarvo" "$@"; fi

calculation='TarvoDialog ( "2|Enter the name|OK|Cancel|||First|Last|||" )'
echo "$calculation" >&2
status=0
"$tarvo" eval "$calculation" || status=$?
if [ "$status" -ne 5 ]; then exit "$status"; fi

answers='enter 1 Ann; enter 2 Lee; press 2'
pictures=build/release/pictures
echo "There is neither a screen nor a terminal here. The same dialog, answered by the script \"$answers\":" >&2
"$tarvo" --answer "$answers" --screenshot "$pictures" eval "$calculation"
echo "What it looks like: $pictures/1.png" >&2
