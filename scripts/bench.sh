#!/usr/bin/env bash
# bench.sh [NAME ...]: builds the benchmarks and runs all of them, or those named. Each prints ratios of one run and fails
# when a limit is missed; the machine should be quiet.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

names=("$@")
if ((${#names[@]} == 0)); then
    for source in bench/*_bench.cpp; do
        names+=("$(basename "$source" _bench.cpp)")
    done
fi

ensure_packages "${build_packages[@]}" "${bench_packages[@]}"
build_preset bench
failed=0
for name in "${names[@]}"; do
    echo "== $name"
    "build/bench/bench/${name}_bench" || failed=1
done
exit "$failed"
