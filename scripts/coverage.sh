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

find $build -name '*.gcda' -exec gcov --json-format --branch-probabilities --stdout {} + >$build/gcov.json
python3 - $build/gcov.json <<'END'
# Reads what gcov says of each object file, one JSON object a line.
import collections
import json
import os
import sys

FOLDERS = ["plugin/frame", "plugin/state", "plugin/presets", "plugin/results", "plugin/windows",
           "plugin/dialogs", "plugin/host", "platform/corefoundation",
           "platform/fmwrapper", "platform/carbon", "displays/scripted"]
# A process of its own shows these dialogs; the desktop's tests reach it.
ELSEWHERE = "displays/protocol/"


def conditions(branches, is_switch):
    """The branches of the conditions that were come to. Of a call one goes on and the other is thrown,
    so it is none; one that was never come to is told by its line or by the branch that leads there."""
    size = len(branches) if is_switch else 2
    for i in range(0, len(branches), size):
        group = branches[i:i + size]
        if any(branch["count"] for branch in group) and not any(branch["throw"] for branch in group):
            yield from ((i + j, branch["count"]) for j, branch in enumerate(group))


def read(stream):
    """How often each line and each branch of each file ran, over all objects and all instances of a
    template that contain it."""
    lines, branches = collections.Counter(), collections.Counter()
    for source in (source for document in stream for source in json.loads(document)["files"]):
        name = os.path.relpath(source["file"])
        if os.path.dirname(name) not in FOLDERS or name.startswith(ELSEWHERE):
            continue
        with open(name, encoding="utf-8") as file:
            code = [line.strip() for line in file]
        starts = {one["name"]: (one["start_line"], one["start_column"]) for one in source["functions"]}
        for line in source["lines"]:
            text = code[line["line_number"] - 1]
            if text == "}" or "catch (" in text:  # an exception's clean-up and choice
                continue
            place = (name, line["line_number"])
            lines[place] += line["count"]
            start = starts.get(line.get("function_name"))
            for number, count in conditions(line["branches"], text.startswith("switch")):
                branches[(*place, start, number)] += count
    return lines, branches


def share(counts, folder):
    counts = [count for place, count in counts.items() if os.path.dirname(place[0]) == folder]
    taken = sum(count > 0 for count in counts)
    return f"{taken:5} of {len(counts):5} {100 * taken / max(len(counts), 1):6.1f} %"


def main():
    lines, branches = read(open(sys.argv[1], encoding="utf-8"))
    print(f"{'':26}{'lines':>23}{'branches':>25}")
    for folder in FOLDERS:
        print(f"{folder:26}{share(lines, folder)}  {share(branches, folder)}")
    for what, counts in ("line", lines), ("branch", branches):
        missed = collections.Counter(place[:2] for place, count in counts.items() if count == 0)
        for (name, line), count in sorted(missed.items()):
            print(f"{name}:{line}: {what} not reached" + (f" ({count})" if count > 1 else ""))


main()
END
