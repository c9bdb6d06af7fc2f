#!/usr/bin/env bash
# manual_pictures.sh [FOLDER]: takes the manual's pictures, of the real program by real events, on a virtual display and in
# an empty home; into docs/manual/pictures without an argument. What a step says aloud is what the manual says at that place.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/packages.sh
pictures=$(realpath -m "${1:-docs/manual/pictures}")

ensure_packages "${build_packages[@]}" "${display_packages[@]}"
build_preset release
program=$PWD/build/release/karosmit
home=$(mktemp -d)
cp -r build/release/garage "$home/garage"
mkdir -p "$pictures"

source scripts/display.sh # display, editor, click, press and the like
trap 'end_display; rm -rf "$home"' EXIT
start_display
export HOME=$home XDG_STATE_HOME=$home/state TZ=UTC

start_editor() { start_program "$program" "$home/garage"; }
file_field() { click 430 90; press ctrl+u; }
work_on() { click $((24 + 48 * $1)) 624; } # 0 Files, 1 3D editor, 2 Dash manager, 3 Physical parameters

# --- a first car
start_editor
picture "$pictures/start.png"
click 120 154
press ctrl+l
picture "$pictures/files.png"
work_on 1
point 700 200
press Right Right Up
picture "$pictures/models.png"
press Return
picture "$pictures/paint.png"
press Escape
work_on 2
picture "$pictures/driving.png"
press Tab
picture "$pictures/images.png"
press Tab Tab
picture "$pictures/gauges.png"
work_on 3
picture "$pictures/parameters.png"
work_on 0
press Escape
wait_for_end
