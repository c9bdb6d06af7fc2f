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
home=/tmp/karosmit-manual # the same each time: the Files screen shows it
mkdir "$home"
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
press F2 # of the new car, which has everything to find
picture "$pictures/checks.png"
press Escape
row 1
press ctrl+l
screen 1
point 550 440
press Right Right Right Up Up
picture "$pictures/models.png"
press Return
point 790 169
picture "$pictures/paint.png"
press Escape
screen 2
picture "$pictures/driving.png"
press Tab Next
picture "$pictures/images.png"
press Tab Tab
picture "$pictures/gauges.png"
press space
picture "$pictures/arc.png"
screen 3
picture "$pictures/parameters.png"
press F1
picture "$pictures/keys.png"
press Escape
screen 0
press ctrl+c
picture "$pictures/files.png"
press Escape
wait_for_end

# --- a car of one's own
start_program "$program" "$garage"
in_file_field vela
press ctrl+l
in_file_field mine
press ctrl+s
screen 1
screen 0
press ctrl+c
in_file_field hull.obj
press ctrl+l
screen 1
point 550 440
press Right Right Right Up Up
picture "$pictures/own-body.png"
press Return
click 790 169
point 550 440
press p comma Return
picture "$pictures/own-paint.png"
press Escape
press ctrl+c 2 ctrl+v 3 ctrl+v 1 ctrl+b ctrl+d
screen 2
press Tab Next Next Next Next Next Next
press Return
picture "$pictures/own-picker.png"
click 120 154
press ctrl+l
drag 170 200 332 436 # below the roof, which a press further up would take
picture "$pictures/own-cockpit.png"
press Escape
wait_for_end

# --- work that was kept
start_program "$program" "$garage"
picture "$pictures/kept.png"
press Escape
wait_for_end
