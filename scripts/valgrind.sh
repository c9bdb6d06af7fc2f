#!/usr/bin/env bash
# valgrind.sh [ARGUMENT ...]: the tests of the program in a real window, every start of it under valgrind's memory checker;
# some four minutes. Fails on any use of memory that is not the program's own or was never set, and on memory that nobody
# can free any more; what only libraries do is in tests/program/errors_of_libraries.supp. Arguments go to the tests:
# --gtest_filter='*WholeVisit*'.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${test_packages[@]}" "${valgrind_packages[@]}"
build_preset valgrind --target program_tests
KAROSMIT_RUN_BY=$(command -v valgrind)
export KAROSMIT_RUN_BY
export VALGRIND_OPTS="--quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=definite \
--errors-for-leak-kinds=definite --num-callers=30 --child-silent-after-fork=yes --suppressions=$PWD/tests/program/errors_of_libraries.supp"
cd build/valgrind/tests # pictures of what failed are left there
# A kill counts seconds, which are longer here.
exec ./program_tests --gtest_filter='-*AKilledProgram*' "$@"
