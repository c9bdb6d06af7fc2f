#!/usr/bin/env bash
# kills.sh: the tests of undo and recovery at their full size: 2,000 random visits taken back and brought again, 800 kills
# during saves of a car, 250 during scripted visits, eight at once, 50 in real windows. About half an hour.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${test_packages[@]}"
build_preset sanitize --target app_tests program_tests
export KAROSMIT_RANDOM_VISITS=2000 KAROSMIT_KILLS=800 KAROSMIT_VISITS=250 KAROSMIT_WINDOW_KILLS=50
build/sanitize/tests/app_tests --gtest_filter='*RandomVisits*:KilledCarSave.*:KilledVisit.*'
build/sanitize/tests/program_tests --gtest_filter='*AKilledProgramLoses*'
