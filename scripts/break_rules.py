#!/usr/bin/env python3
"""break_rules.py [--count N] [--seed S] [--jobs J] [FOLDER ...]: changes one thing in src/ at a time (an operator, a
constant, a condition, a call left out), builds that folder's tests and runs them. A change that they do not notice is a
rule without a test: it is printed as FILE:LINE with the line as it was and as it became.

The changes are a seeded sample, evenly spread over the lines of the folders. They are made in copies of the project under
build/broken, never in the project itself. What does not compile is not counted. Changes that nobody can see are listed
in scripts/equal_rules.txt, with the reason; they are passed over."""

import argparse
import concurrent.futures
import os
import pathlib
import queue
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPIES = ROOT / "build" / "broken"
EQUAL = ROOT / "scripts" / "equal_rules.txt"
COPIED = ("CMakeLists.txt", "CMakePresets.json", "README.md", "CONTRIBUTING.md", "src", "tests", "tools", "data", "docs",
          "fuzz", "packaging", "scripts")
LONGEST_TEST = 120  # seconds: a change that never ends is noticed too

OPERATORS = [
    (r"(?<![<\-=>])<=(?!>)", "<"), (r"(?<![<\-=>])>=", ">"), (r" < ", " <= "), (r" > ", " >= "), (r"==", "!="),
    (r"!=", "=="), (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " + "), (r" / ", " * "), (r"&&", "||"), (r"\|\|", "&&"),
    (r"\+\+", "--"), (r"\+=", "-="), (r"-=", "+="), (r" & ", " | "), (r" \| ", " & "), (r"<<", ">>"),
]
CONSTANT = re.compile(r"(?<![\w.#\"'])(\d+)(?![\w.\"'])")
CONDITION = re.compile(r"\bif \((?!!?constexpr)(.*)\)( return\b| continue\b| break\b| \{$)")
CALL = re.compile(r"^\s+(?!return\b|if\b|for\b|while\b|else\b|case\b|const\b|auto\b)[\w:.\->\[\]]+\([^{}]*\);$")


def without_texts(line):
    """The line with texts and comments blanked, in the same columns."""
    line = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + " " * (len(m[0]) - 2) + '"', line)
    line = re.sub(r"'(\\.|[^'\\])*'", lambda m: "'" + " " * (len(m[0]) - 2) + "'", line)
    return re.sub(r"//.*", lambda m: " " * len(m[0]), line)


def changes_of(line):
    bare = without_texts(line)
    if bare.lstrip().startswith(("#", "template", "using", "static_assert", "case ")):
        return
    for pattern, other in OPERATORS:
        for found in re.finditer(pattern, bare):
            yield line[:found.start()] + other + line[found.end():]
    for found in CONSTANT.finditer(bare):
        yield line[:found.start()] + str(int(found[1]) + 1) + line[found.end():]
    if found := CONDITION.search(bare):
        yield line[:found.start(1)] + "!(" + line[found.start(1):found.end(1)] + ")" + line[found.end(1):]
    if CALL.match(bare):
        yield "// left out"


def all_changes(folders, known):
    for folder in folders:
        for path in sorted((ROOT / "src" / folder).glob("*.cpp")):
            if path.name == "main.cpp":
                continue
            name = str(path.relative_to(ROOT))
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines()):
                for changed in changes_of(line):
                    if (name, line.strip(), changed.strip()) not in known:
                        yield folder, name, number, changed


def known_equals():
    """Rows of three lines: FILE: reason, the line as it is, the line as it became."""
    known = set()
    if EQUAL.exists():
        rows = [row for row in EQUAL.read_text(encoding="utf-8").splitlines() if row and not row.startswith("#")]
        for place, old, new in zip(rows[::3], rows[1::3], rows[2::3]):
            known.add((place.split(":")[0], old.strip(), new.strip()))
    return known


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False, **more)


def make_copy(number, folders):
    copy = COPIES / str(number)
    copy.mkdir(parents=True, exist_ok=True)
    for name in COPIED:
        shutil.rmtree(copy / name, ignore_errors=True)
        copying = shutil.copytree if (ROOT / name).is_dir() else shutil.copy2
        copying(ROOT / name, copy / name)
    run(["cmake", "-S", copy, "-B", copy / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
         "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DKAROSMIT_TESTS=ON"])
    targets = [f"{folder}_tests" for folder in folders]
    if run(["cmake", "--build", copy / "build", "--target", *targets]).returncode != 0:
        sys.exit(f"{copy} does not build")
    for folder in folders:
        if not passes(copy, folder):
            sys.exit(f"the tests of {folder} fail before anything is changed")
    return copy


def passes(copy, folder):
    home = copy / "home"
    home.mkdir(exist_ok=True)
    environment = dict(os.environ, HOME=str(home), XDG_STATE_HOME=str(home / "state"))
    try:
        return run([copy / "build" / "tests" / f"{folder}_tests", "--gtest_brief=1", "--gtest_fail_fast"], cwd=home,
                   env=environment, timeout=LONGEST_TEST).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def outcome(copy, change):
    """'survived', 'noticed' or 'no program'."""
    folder, name, number, changed = change
    file = copy / name
    whole = file.read_text(encoding="utf-8")
    lines = whole.splitlines()
    lines[number] = changed
    file.write_text("\n".join(lines) + "\n", encoding="utf-8")
    try:
        if run(["cmake", "--build", copy / "build", "--target", f"{folder}_tests"]).returncode != 0:
            return "no program"
        return "survived" if passes(copy, folder) else "noticed"
    finally:
        file.write_text(whole, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--count", type=int, default=400)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("folders", nargs="*")
    options = parser.parse_args()
    folders = options.folders or sorted(p.name for p in (ROOT / "src").iterdir() if p.is_dir())

    changes = list(all_changes(folders, known_equals()))
    random.Random(options.seed).shuffle(changes)
    print(f"{len(changes)} changes are possible", flush=True)

    copies = queue.Queue()
    for number in range(options.jobs):
        copies.put(make_copy(number, folders))

    counts = {"survived": 0, "noticed": 0, "no program": 0}

    def attempt(change):
        if counts["survived"] + counts["noticed"] >= options.count:
            return
        copy = copies.get()
        try:
            result = outcome(copy, change)
        finally:
            copies.put(copy)
        counts[result] += 1
        if result == "survived":
            _, name, number, changed = change
            was = (ROOT / name).read_text(encoding="utf-8").splitlines()[number]
            print(f"{name}:{number + 1}\n    {was.strip()}\n    {changed.strip()}", flush=True)

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        list(pool.map(attempt, changes))
    shutil.rmtree(COPIES, ignore_errors=True)
    looked_at = counts["survived"] + counts["noticed"]
    print(f"{looked_at} changes, {counts['noticed']} noticed, {counts['survived']} survived; "
          f"{counts['no program']} did not compile")
    return 0 if counts["noticed"] >= 0.92 * looked_at else 1


if __name__ == "__main__":
    sys.exit(main())
