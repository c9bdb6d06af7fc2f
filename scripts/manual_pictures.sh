#!/usr/bin/env bash
# manual_pictures.sh [FOLDER]: takes the manual's pictures, of the real program by real events, on a virtual display and in
# an empty home; into docs/manual/pictures without an argument. The steps are those that the manual tells.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh
source scripts/display.sh
pictures=$(realpath -m "${1:-docs/manual/pictures}")

ensure_packages "${build_packages[@]}" "${display_packages[@]}"
build_preset release
program=$PWD/build/release/karosmit
home=$(mktemp -d)
trap 'end_display; rm -rf "$home"' EXIT
garage=$home/garage
cp -r build/release/garage "$garage"
mkdir -p "$pictures"
export HOME=$home TZ=UTC
unset XDG_STATE_HOME
start_display

screen() { click $((24 + 48 * $1)) 624; } # 0 Files, 1 3D editor, 2 Dash manager, 3 Physical parameters
in_file_field() { click 300 84; press ctrl+u; type_text "$1"; }
row() { click 120 $((138 + 16 * $1)); } # of the list, from 0

# --- each screen
start_program "$program" "$garage"
picture "$pictures/start.png"
row 1
press ctrl+l
screen 1
point 550 440
press Right Right Right Down
picture "$pictures/models.png"
press Return
picture "$pictures/paint.png"
press Escape
screen 2
picture "$pictures/driving.png"
press Tab Next
picture "$pictures/images.png"
press Tab Tab
picture "$pictures/gauges.png"
screen 3
picture "$pictures/parameters.png"
press F1
picture "$pictures/keys.png"
press Escape
screen 0
press ctrl+c
picture "$pictures/files.png"
press ctrl+c

# --- a car of one's own
in_file_field vela
press ctrl+l
in_file_field mine
press ctrl+s
screen 1
screen 0
in_file_field hull.obj
press ctrl+l
screen 1
point 550 440
press Right Right Right Down
picture "$pictures/own-body.png"
press ctrl+c 2 ctrl+v ctrl+b ctrl+d ctrl+a
point 550 440
press Return
picture "$pictures/own-paint.png"
click 300 300
screen 2
press Tab
for _ in {1..7}; do press Next; done
press Return
picture "$pictures/own-picker.png"
in_file_field badge.png
press ctrl+l
picture "$pictures/own-cockpit.png"
press F2
picture "$pictures/checks.png"
press Escape
press Escape
wait_for_end

# --- work that was kept
start_program "$program" "$garage"
picture "$pictures/kept.png"
press Escape
wait_for_end
