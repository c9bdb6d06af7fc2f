#!/usr/bin/env bash
# package.sh: makes the Debian package, and prints its name. Installing it needs nothing but Debian 12.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh

ensure_packages "${build_packages[@]}" "${deb_packages[@]}"
build_preset release
log=build/release/cpack.log
(cd build/release && cpack -G DEB) >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
ls "$PWD"/build/release/karosmit_*.deb
