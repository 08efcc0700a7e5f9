# SPDX-License-Identifier: MIT
# Sourced by ./run: the simulated box and the program together, with an operator or with a played session. Who sources
# it calls end_all on leaving.
. tools/display.sh

# start_box KIND LINK: takes its orders from descriptor 5, because the shell gives a background job no input of its own.
start_box() {
    build/release/bin/vextral-simbox --link "$2" --model "$1" --relay-box 1 <&5 &
    box=$!
    within 20 [ -e "$2" ] && return 0
    echo "The simulated box did not start." >&2
    return 1
}

end_all() {
    end_jobs ${program_job:-} ${box:-}
    close_display
}

# operate KIND FOLDER PROGRAM LINK: until the window closes.
operate() {
    exec 5<&0
    start_box "$1" "$4"
    "$3" >"$2/program.log"
}

press() {
    xdotool key --clearmodifiers "$1"
    sleep "${2:-1.5}"
}

play_stack() {
    press F2
    press F5
    press F3
    press F2
    press F8
}

# Clockwise by key, STOP by mouse, and a target by the wheel on the digits. Positions are those of the window's first
# size, in pixels from its top left corner.
play_rotator() {
    press F11 3
    xdotool mousemove --window "$1" 127 430 click 1
    sleep 3
    xdotool mousemove --window "$1" 340 420 click --repeat 25 --delay 40 4
    sleep 4
}

# play KIND FOLDER PROGRAM LINK: a short session on a virtual display.
play() {
    local kind=$1 folder=$2 program=$3 link=$4 window
    rm -f "$folder/screenshot.png"
    open_display "$folder"
    exec 5</dev/null
    start_box "$kind" "$link" >"$folder/traffic.txt"
    "$program" >"$folder/program.log" 2>&1 &
    program_job=$!

    window=$(window_of)
    xdotool windowactivate --sync "$window"
    sleep 2
    "play_$kind" "$window"
    sleep 2
    import -window "$window" "$folder/screenshot.png"

    echo "Traffic on the line:"
    cat "$folder/traffic.txt"
    echo "Screenshot: $folder/screenshot.png"
}
