#!/usr/bin/env bash
# Lets two monkeys loose on the whole program under the sanitizers: scripts/monkey.sh [EVENTS [SEED]], a million events
# each without arguments. A seed that failed is played alone by: scripts/monkey.sh 10000 SEED.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${test_packages[@]}"
build_preset sanitize --target monkey_tests
export KAROSMIT_MONKEY_EVENTS=${1:-1000000} KAROSMIT_MONKEY_SEED=${2:-$RANDOM}
monkeys=(0 1)
[[ $# -ge 2 ]] && monkeys=(0)
for monkey in "${monkeys[@]}"; do
    build/sanitize/tests/monkey_tests --gtest_filter="*/$monkey" &
done
failed=0
for job in $(jobs -p); do
    wait "$job" || failed=1
done
exit "$failed"
