# Sourced by scripts that drive the program on a virtual display by real mouse and key events: start_display once, then
# start_program PROGRAM FOLDER, then point, click, press, type_text, picture; wait_for_end when it was told to end;
# end_display from a trap. Places are in the picture's own pixels.

display_server='' program_process='' display_window=''

start_display() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$number" 2>"$number.log" &
    display_server=$!
    for _ in {1..100}; do
        [[ -s $number ]] && break
        sleep 0.1
    done
    if [[ ! -s $number ]]; then
        echo "The virtual display did not start:" >&2
        cat "$number.log" >&2
        rm -f "$number" "$number.log"
        return 1
    fi
    export DISPLAY=":$(<"$number")"
    rm -f "$number" "$number.log"
}

end_display() { kill $program_process $display_server 2>/dev/null || true; }

start_program() {
    (cd "$2" && exec "$1") &
    program_process=$!
    display_window=$(timeout 20 xdotool search --sync --onlyvisible --class '^karosmit$' | head -n 1)
    # The window's place on the display.
    eval "$(xdotool getwindowgeometry --shell "$display_window" | grep -E '^(X|Y)=')"
    xdotool windowfocus "$display_window" 2>/dev/null || true
    sleep 0.5
}

point() { xdotool mousemove $((X + $1)) $((Y + $2)); sleep 0.2; }
click() { point "$1" "$2"; xdotool click 1; sleep 0.4; }
drag() { # from x, y to x, y
    point "$1" "$2"
    xdotool mousedown 1
    point "$3" "$4"
    xdotool mouseup 1
    sleep 0.3
}
press() {
    local key
    for key in "$@"; do
        xdotool key --clearmodifiers "$key"
        sleep 0.3
    done
}
type_text() { xdotool type --clearmodifiers --delay 60 "$1"; sleep 0.3; }
picture() { timeout 20 import -window "$display_window" "$1"; echo "$1"; }

wait_for_end() {
    for _ in {1..100}; do
        kill -0 "$program_process" 2>/dev/null || { wait "$program_process"; return; }
        sleep 0.1
    done
    echo "The program did not end" >&2
    return 1
}
