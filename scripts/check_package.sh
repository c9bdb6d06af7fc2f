#!/usr/bin/env bash
# check_package.sh PACKAGE: whether Debian's own checks have nothing to say about the package and what is in it. Prints
# what they say; exit status 1 when it is something.
set -euo pipefail
package=$(readlink -f "$1")
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh
ensure_packages "${deb_packages[@]}"

said=$(mktemp)
root=$(mktemp -d)
trap 'rm -rf "$said" "$root"' EXIT
dpkg-deb -x "$package" "$root"

# Runs a check; it has something to say when it prints a line or ends with a failure.
failed=0
silent() {
    if ! "$@" >"$said" 2>&1 || [[ -s $said ]]; then
        echo "== $*"
        cat "$said"
        failed=1
    fi
}
appstream() {
    # Its last line is the verdict.
    appstreamcli validate --no-net --pedantic "$1" >"$said.all" 2>&1 || { cat "$said.all"; rm "$said.all"; return 1; }
    grep -v '^.*Validation was successful\.$' "$said.all" || true
    rm "$said.all"
}
page() { LC_ALL=C.UTF-8 MANROFFSEQ='' man --warnings -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null; }

silent desktop-file-validate "$root"/usr/share/applications/*.desktop
silent appstream "$root"/usr/share/metainfo/*.xml
for one in "$root"/usr/share/man/man1/*.gz; do
    silent page "$one"
done
as_user=()
((EUID == 0)) && as_user=(--allow-root)
silent lintian "${as_user[@]}" --fail-on error,warning "$package"
exit "$failed"
