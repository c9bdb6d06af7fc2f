#!/usr/bin/env bash
# tidy.sh [--program | FILE ...]: clang-tidy with the checks of .clang-tidy over all sources, over what the program is
# made of (src, tools: what continuous integration looks at, a third of the time), or over those named. Nothing is
# compiled but what makes the one generated source.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

packages=("${build_packages[@]}" "${tidy_packages[@]}")
folders=(src tools)
parts=OFF
if [[ ${1:-} == --program ]]; then
    shift
else
    packages+=("${test_packages[@]}" "${bench_packages[@]}")
    folders+=(tests bench fuzz)
    parts=ON
fi

ensure_packages "${packages[@]}"
cmake --preset tidy -DKAROSMIT_TESTS=$parts -DKAROSMIT_BENCH=$parts >/dev/null
build_preset tidy --target generated/font_table.inc
files=("$@")
((${#files[@]})) || mapfile -t files < <(find "${folders[@]}" -name '*.cpp' | sort)
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p build/tidy
