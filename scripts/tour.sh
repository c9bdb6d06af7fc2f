#!/usr/bin/env bash
# tour.sh PROGRAM CARS PICTURES: shows the program round on a virtual display, by real mouse and key events: loads the
# first car, visits the four screens, leaves by Escape. A picture of every screen is left in the folder PICTURES.
set -euo pipefail
program=$1
cars=$2
pictures=$3
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/display.sh"

mkdir -p "$pictures"
# Nothing of a person's own work is listed.
XDG_STATE_HOME=$(mktemp -d)
export XDG_STATE_HOME
trap 'end_display; rm -rf "$XDG_STATE_HOME"' EXIT
start_display
start_program "$program" "$cars"
# The first row is "..", the second the first car.
click 120 154
press ctrl+l
picture "$pictures/files.png"
click 72 624
picture "$pictures/editor3d.png"
click 120 624
picture "$pictures/dash.png"
click 168 624
picture "$pictures/parameters.png"
press Escape
wait_for_end
