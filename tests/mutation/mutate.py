#!/usr/bin/env python3
"""Changes the sources of the plug-in and its layers in one place at a time and lists the changes that no quick test notices.

    tests/mutation/mutate.py [--count N] [--seed S] [--only TEXT] [--again FILE] [--list]

It works in a copy of the tree in a temporary folder. --count takes that many changes at random, --only
those whose place or text contains TEXT, --again those that an earlier run wrote to FILE, wherever their
lines are by now, and --list makes none.
"""

import argparse
import collections
import os
import pathlib
import random
import re
import resource
import shutil
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = (ROOT / "scripts/covered-folders").read_text().split()
# The first finds most, so the others are linked only if it finds nothing.
TESTS = ["plugin_test", "layers_test", "plugin_corpus_test", "strings_table_corpus_test",
         "answers_corpus_test", "failing_host_test", "code_set_test",
         "tarvo_test --gtest_filter=DialogTest.*:*HelpExplains*",
         "exhausted_memory_test"]
# Of the processor's time, so that a busy machine kills nothing, and of the clock's.
SECONDS = 20
PATIENCE = 300
# Fresh memory is not zero by chance.
ENVIRONMENT = os.environ | {"MALLOC_PERTURB_": "165"}
# Nor does anybody get past the end of a family unseen.
FLAGS = "-w -D_GLIBCXX_ASSERTIONS"

SWAPS = {" == ": " != ", " != ": " == ", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
         " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", " += ": " -= ",
         "true": "false", "false": "true", "break;": ";", "continue;": ";"}
SWAP = re.compile("|".join(rf"\b{old}" if old[0].isalpha() else re.escape(old) for old in SWAPS))
NUMBER = re.compile(r"(?<![\w.'])\d+(?![\w.'])")
# One that is neither a comparison nor negated: those are changed elsewhere.
CONDITION = re.compile(r"\b(?:if|while) \(([\w.*\[\]]+(?:\([^()]*\))?)\)")
NEGATION = re.compile(r"!(?=[\w(*])")
# A call or an assignment that is a statement of its own.
STATEMENT = re.compile(r"(?<=[;{}:)] )(?:[\w:]+(?:<\w+>)?\([^;{}]*\)|[*\w.\[\]]+ = [^;{}]+);|"
                       r"(?<=[;{}:)]\n)[ ]{2,}(?:[\w:]+(?:<\w+>)?\([^;{}]*\)|[*\w.\[\]]+ = [^;{}]+);")

Change = collections.namedtuple("Change", "file start end text")


def blanked(code):
    """The code with comments, literals and preprocessor lines as blanks of the same length."""
    nothing = re.compile(r"//[^\n]*|\"(?:\\.|[^\"\\])*\"|'(?:\\.|[^'\\])*'|^#[^\n]*", re.M)
    return nothing.sub(lambda found: "\0" * len(found.group()), code)


def changes_of(file):
    source = file.read_text()
    code = blanked(source)
    seen = re.sub("\0+\n", lambda found: ";" * (len(found.group()) - 1) + "\n", code)
    for found in SWAP.finditer(code):
        yield Change(file, *found.span(), SWAPS[found.group()])
    for found in NUMBER.finditer(code):
        yield Change(file, *found.span(), str(int(found.group(), 0) + 1))
    for found in CONDITION.finditer(code):
        yield Change(file, *found.span(1), f"!({source[found.start(1):found.end(1)]})")
    for found in NEGATION.finditer(code):
        yield Change(file, *found.span(), "")
    for found in STATEMENT.finditer(seen):
        if not found.group().lstrip().startswith(("return", "static_assert")):
            yield Change(file, *found.span(), ";")


def describe(change, root):
    code = change.file.read_text()
    line = code.count("\n", 0, change.start + len(code[change.start:]) -
                      len(code[change.start:].lstrip())) + 1
    first = code.rfind("\n", 0, change.start) + 1
    last = code.find("\n", change.end)
    before, after = code[first:last], code[first:change.start] + change.text + code[change.end:last]
    words = [" ".join(text.split()) for text in (before, after)]
    return f"{change.file.relative_to(root)}:{line}: {words[0]}  ->  {words[1]}"


def without_line(description):
    return re.sub(r":\d+: ", ": ", description, count=1)


def limit_time():
    resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))


def passes(build, test):
    """None if the program could not be built."""
    program, *options = test.split()
    if subprocess.run(["ninja", "-C", build, "-j2", program], capture_output=True).returncode != 0:
        return None
    try:
        run = subprocess.run([build / program, "--gtest_fail_fast", *options], capture_output=True,
                             timeout=PATIENCE, env=ENVIRONMENT, preexec_fn=limit_time)
        return run.returncode == 0
    except subprocess.TimeoutExpired:
        return False


def try_out(change, build):
    """What becomes of a change: killed, survived or not built."""
    original = change.file.read_text()
    change.file.write_text(original[:change.start] + change.text + original[change.end:])
    try:
        for test in TESTS:
            passed = passes(build, test)
            if passed is None:
                return "not built"
            if not passed:
                return "killed"
        return "survived"
    finally:
        change.file.write_text(original)


def chosen_changes(root, options):
    files = [file for folder in FOLDERS for file in sorted((root / folder).rglob("*.cpp"))]
    changes = [change for file in files for change in changes_of(file)]
    changes = [change for change in changes if options.only in describe(change, root)]
    if options.again:
        written = {without_line(line) for line in pathlib.Path(options.again).read_text().splitlines()}
        changes = [change for change in changes if without_line(describe(change, root)) in written]
    if options.count is not None and options.count < len(changes):
        changes = random.Random(options.seed).sample(changes, options.count)
    return sorted(changes, key=lambda change: (change.file, change.start))


def run(root, changes):
    build = root / "build"
    # Nothing is optimised, and a changed library is not linked into the tests anew: most of the time
    # goes into building.
    subprocess.run(["cmake", "-S", root, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                    "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", f"-DCMAKE_CXX_FLAGS={FLAGS}"],
                   check=True, capture_output=True)
    for test in TESTS:
        if not passes(build, test):
            raise SystemExit(f"{test} fails without any change")
    outcomes = collections.Counter()
    for change in changes:
        outcome = try_out(change, build)
        outcomes[outcome] += 1
        if outcome == "survived":
            print(describe(change, root), flush=True)
    print(", ".join(f"{outcomes[name]} {name}" for name in ("killed", "survived", "not built")),
          f"of {len(changes)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--count", type=int)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", default="")
    parser.add_argument("--again")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    if options.list:
        print(*(describe(change, ROOT) for change in chosen_changes(ROOT, options)), sep="\n")
        return
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "tree"
        shutil.copytree(ROOT, copy, ignore=shutil.ignore_patterns("build", ".git"))
        run(copy, chosen_changes(copy, options))


if __name__ == "__main__":
    main()
