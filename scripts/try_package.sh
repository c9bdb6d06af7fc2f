#!/usr/bin/env bash
# try_package.sh PACKAGE [PICTURES]: installs the package into a fresh Debian 12 in a folder of its own, starts the editor
# there as a person without any files would, through the search path and as the desktop's menu does, converts a car,
# removes the package and looks for what it leaves. Needs root and the network. Pictures of the editor are left in the
# folder PICTURES (build/try).
set -euo pipefail
package=$(readlink -f "$1")
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh
pictures=${2:-build/try}
mkdir -p "$pictures"
((EUID == 0)) || { echo "A fresh root file system takes root" >&2; exit 1; }
ensure_packages mmdebstrap "${display_packages[@]}"

source scripts/display.sh

work=$(mktemp -d)
root=$work/root
cleanup() {
    end_display
    mountpoint -q "$root/proc" && umount "$root/proc"
    rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

echo "A fresh Debian 12"
mmdebstrap --quiet --variant=minbase bookworm "$root" 2>"$work/log" || { cat "$work/log" >&2; exit 1; }
mount -t proc proc "$root/proc"
cp /etc/resolv.conf "$root/etc/resolv.conf"
[[ -f /etc/apt/apt.conf ]] && cp /etc/apt/apt.conf "$root/etc/apt/apt.conf"
inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }
# What the package manager keeps for itself does not count.
files() { (cd "$root" && find . -path ./proc -prune -o -path ./tmp -prune -o -path ./var/lib/apt -prune -o \
    -path ./var/cache -prune -o -path ./var/log -prune -o -path ./var/lib/dpkg -prune -o -path ./home -prune -o -print | sort); }
inside apt-get update -qq
inside useradd --create-home somebody
files >"$work/before"

echo "Installing"
cp "$package" "$root/tmp/karosmit.deb"
inside apt-get install -y -qq --no-install-recommends /tmp/karosmit.deb >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }

start_display

# Runs a command in the fresh system as the person, in a directory.
as_somebody() {
    local directory=$1
    shift
    chroot --userspec=somebody "$root" /usr/bin/env -i -C "$directory" HOME=/home/somebody PATH=/usr/bin:/bin \
        DISPLAY="$DISPLAY" "$@"
}
# Starts the editor so, clicks on the first car of its list and loads it, takes a picture, and ends it by Escape.
use_editor() {
    local name=$1 directory=$2
    shift 2
    { echo '#!/usr/bin/env bash'; declare -f as_somebody; printf 'root=%q\n' "$root"; printf 'as_somebody'; printf ' %q' "$directory" "$@"; echo; } \
        >"$work/start"
    chmod +x "$work/start"
    start_program "$work/start" "$work"
    click 120 154
    press ctrl+l
    picture "$pictures/$name.png"
    press Escape
    wait_for_end || fail "the editor did not end well"
}

echo "Used from the menu"
entry=$root/usr/share/applications/org.karosmit.karosmit.desktop
command=$(sed -n 's/^Exec=//p' "$entry" | sed 's/ *%[a-zA-Z]//g')
read -ra words <<<"$command"
use_editor menu /home/somebody "${words[@]}"
garage=$root/home/somebody/.local/share/karosmit/garage
[[ -s $garage/carbrux.res && -s $garage/pjobs.cfg ]] || fail "no garage was made"

echo "Used through the search path"
as_somebody /home/somebody mkdir cars
use_editor path /home/somebody/cars karosmit
[[ -z $(ls -A "$root/home/somebody/cars") ]] || fail "a start without the menu's option made files"

echo "Converting"
as_somebody /home/somebody karosmit-convert .local/share/karosmit/garage/brux brux.car
as_somebody /home/somebody karosmit-convert brux.car cars/abcd
as_somebody /home/somebody karosmit-convert cars/stdaabcd.vsh pictures/
as_somebody /home/somebody karosmit-convert pictures/ again.vsh
for part in car:.res st:.3sh stda:.vsh stdb:.vsh; do
    cmp "$garage/${part%:*}brux${part#*:}" "$root/home/somebody/cars/${part%:*}abcd${part#*:}"
done
cmp "$garage/stdabrux.vsh" "$root/home/somebody/again.vsh"

echo "Removing"
inside apt-get purge -y -qq --auto-remove karosmit >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
files >"$work/after"
# A cache that the system's own tools make anew is theirs.
left=$(comm -13 "$work/before" "$work/after" | grep -v -e '^\./etc/ld\.so\.cache$' || true)
[[ -z $left ]] || fail "left behind: $left"
echo "Nothing is left"
