#!/usr/bin/env bash
# tour.sh PROGRAM CARS PICTURES: shows the program round on a virtual display, by real mouse and key events: loads the
# first car, visits the four screens, leaves by Escape. A picture of every screen is left in the folder PICTURES.
set -euo pipefail
program=$1
cars=$2
pictures=$3

display_number=$(mktemp)
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$display_number" 2>"$display_number.log" &
server=$!
editor=
trap 'kill $editor "$server" 2>/dev/null || true; rm -f "$display_number" "$display_number.log"' EXIT
for _ in {1..100}; do
    [[ -s $display_number ]] && break
    sleep 0.1
done
if [[ ! -s $display_number ]]; then
    echo "The virtual display did not start:" >&2
    cat "$display_number.log" >&2
    exit 1
fi
export DISPLAY=":$(<"$display_number")"

mkdir -p "$pictures"
(cd "$cars" && exec "$program") &
editor=$!

window=$(timeout 20 xdotool search --sync --onlyvisible --class '^karosmit$' | head -n 1)
# The window's place on the display, for a pointer in the picture's own pixels.
eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y)=')"

point() { xdotool mousemove $((X + $1)) $((Y + $2)); sleep 0.2; }
click() { point "$1" "$2"; xdotool click 1; sleep 0.4; }
press() { xdotool key --clearmodifiers "$1"; sleep 0.4; }
picture() { import -window "$window" "$pictures/$1.png"; echo "$pictures/$1.png"; }

xdotool windowfocus "$window" 2>/dev/null || true
sleep 0.5
# The first row is "..", the second the first car.
click 120 154
press ctrl+l
picture files
click 72 624
picture editor3d
click 120 624
picture dash
click 168 624
picture parameters
press Escape

for _ in {1..100}; do
    kill -0 "$editor" 2>/dev/null || { wait "$editor"; exit; }
    sleep 0.1
done
echo "The editor did not end by Escape" >&2
exit 1
