#!/usr/bin/env bash
# fuzz.sh [SECONDS [NAME ...]]: builds the fuzz targets and runs each of them, or those named, for so many seconds (60).
# What they find on the way is kept in build/fuzz/found, an input that breaks something in build/fuzz/broken.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

seconds=${1:-60}
names=("${@:2}")
if ((${#names[@]} == 0)); then
    for source in fuzz/*_fuzz.cpp; do
        names+=("$(basename "$source" _fuzz.cpp)")
    done
fi

ensure_packages "${build_packages[@]}" "${fuzz_packages[@]}"
build_preset fuzz
for name in "${names[@]}"; do
    mkdir -p "build/fuzz/found/$name" build/fuzz/broken
    echo "== $name"
    "build/fuzz/fuzz/${name}_fuzz" -max_total_time="$seconds" -print_final_stats=1 -verbosity=0 \
        -artifact_prefix="build/fuzz/broken/$name-" "build/fuzz/found/$name" "fuzz/corpus/$name"
done
