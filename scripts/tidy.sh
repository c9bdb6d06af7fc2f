#!/usr/bin/env bash
# tidy.sh [FILE ...]: clang-tidy over all sources, or those named, with the checks of .clang-tidy.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${test_packages[@]}" "${tidy_packages[@]}"
build_preset debug
files=("$@")
((${#files[@]})) || mapfile -t files < <(find src tests -name '*.cpp' | sort)
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p build/debug
