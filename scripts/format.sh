#!/usr/bin/env bash
# Formats all sources after .clang-format; with --check only names what is not formatted, and fails then.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

how=(-i)
[[ ${1:-} == --check ]] && how=(--dry-run -Werror)
find src tests tools bench fuzz -name '*.cpp' -o -name '*.h' -o -name '*.c' | sort | xargs clang-format "${how[@]}"
