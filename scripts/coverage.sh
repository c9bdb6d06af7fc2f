#!/usr/bin/env bash
# coverage.sh: how much of src/ the tests run through, folder by folder: lines, and branches but for those that only an
# exception takes. Fails when a folder is below its limit: formats, model and what saves 95 % of lines and 85 % of
# branches, all others 90 % of lines. A report line by line is left in build/coverage/report.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${test_packages[@]}" gcovr
build_preset coverage
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --output-on-failure -j "$(nproc)" -E '^check\.' >build/coverage/tests.log ||
    { tail -n 40 build/coverage/tests.log >&2; exit 1; }

mkdir -p build/coverage/report
gcovr --root . --filter src/ --exclude src/link_alone.cpp --exclude-throw-branches --exclude-unreachable-branches --gcov-ignore-parse-errors \
    -j "$(nproc)" --json-summary build/coverage/summary.json --html-details build/coverage/report/index.html build/coverage
python3 - build/coverage/summary.json <<'PYTHON'
import collections, json, sys

exacting = {"src/formats", "src/model", "src/base/file_saving.cpp"}
counts = collections.defaultdict(lambda: [0, 0, 0, 0])
for file in json.load(open(sys.argv[1]))["files"]:
    name = file["filename"]
    for place in {name.rsplit("/", 1)[0]} | ({name} & exacting):
        for i, key in enumerate(("line_covered", "line_total", "branch_covered", "branch_total")):
            counts[place][i] += file[key]
failed = False
print(f"{'':30}  lines  branches")
for place, (lines, all_lines, branches, all_branches) in sorted(counts.items()):
    of_lines, of_branches = 100 * lines / max(all_lines, 1), 100 * branches / max(all_branches, 1)
    low = of_lines < 95 or of_branches < 85 if place in exacting else of_lines < 90
    failed |= low
    print(f"{place:30}  {of_lines:5.1f}     {of_branches:5.1f}{'   below its limit' if low else ''}")
sys.exit(failed)
PYTHON
