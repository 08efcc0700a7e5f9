# SPDX-License-Identifier: MIT
# Sourced by tools/windows/check: an operator's session on a simulated box over the network, on Linux and on Wine.

no_window() {
    ! xdotool search --onlyvisible --name '^Vextral - ' >/dev/null 2>&1
}

# start_program COMMAND...: sets program and window.
start_program() {
    "$@" >"$work/program.log" 2>&1 &
    program=$!
    window=$(window_of) && [ -n "$window" ] || {
        cat "$work/program.log" >&2
        fail "No window: $*"
    }
}

# Closes the window as its user does.
close_program() {
    xdotool windowactivate --sync "$window" key --clearmodifiers alt+F4
    within 20 no_window || fail "The window did not close."
    within 20 [ ! -e "/proc/$program" ] || fail "The program did not end."
}

# What the box heard, a command a line.
heard() {
    sed -n 's/\r$//; s/.*box hears *//p' "$box_log" | sed 's/<LF>/&\n/g' | sed '/^$/d'
}

# heard_all COMMAND...: without their line ends
heard_all() {
    local command
    for command in "$@"; do
        heard | grep -xE "$command(<CR>)+<LF>" >/dev/null || return 1
    done
}

heard_more_than() {
    [ "$(heard | wc -l)" -gt "$1" ]
}

# The orders in their order, and the questions: these come by the clock, so each counts once. What follows R depends on
# the moment too.
summary() {
    heard | grep -vxE '(C|K0)(<CR>)+<LF>' | sed '/^R/q'
    heard | grep -xE '(C|K0)(<CR>)+<LF>' | sort -u
}

# press KEY COMMAND: and waits until the box has heard the command and was asked again.
press() {
    xdotool windowactivate --sync "$window" key --clearmodifiers "$1"
    within 20 heard_all "$2" || fail "After $1 the box did not hear $2."
    within 20 heard_more_than "$(heard | wc -l)" || fail "After $1 the box was not asked any more."
}

# turn KEY COMMAND AZIMUTH: and waits until the rotator rests there.
turn() {
    press "$1" "$2"
    within 60 rests_at "$3" || fail "The rotator did not come to $3."
}

rests_at() {
    [ "$(grep 'box says' "$box_log" | tail -n 4 | grep -c "AZ=$1")" = 4 ]
}

operate_stack() {
    within 20 heard_all K9 || fail "The box was not asked for its other rotor." # the end of the start
    press F2 K2
    press F5 K5
    press F3 K3
    press F8 K8
}

operate_rotator() {
    turn shift+F1 M090 090
    turn shift+F2 M045 045
    turn F12 M225 225
}

# play NAME KIND PROGRAM [RUNNER]: leaves the bytes that the box heard in $work/NAME and a picture of the window.
play() {
    local name=$1 kind=$2 program_file=$3 folder=$work/session-$1 port
    shift 3
    mkdir "$folder"
    cp "$program_file" resources/maps/AzimuthalMap.png "$folder"
    box_log=$folder/box.log
    build/release/bin/vextral-simbox --listen 127.0.0.1:0 --model "$kind" --relay-box 1 --speed 45 \
        </dev/null >"$box_log" 2>&1 &
    box=$!
    within 20 grep -qs 'answers on tcp://' "$box_log" || fail "The simulated box did not start."
    port=$(sed -n 's|.*answers on tcp://[^ ]*:\([0-9]*\) .*|\1|p' "$box_log")
    cat >"$folder/VextralRemoteControl.ini" <<END
[General]
comPortName=tcp://127.0.0.1:$port
Enabled1=true
Names1=Beverage
Names2=Yagi
Names3=Vertical
Names4=Dipole
Memories1=90
Memories2=45
END

    start_program "$@" "$folder/$(basename "$program_file")"
    within 20 heard_more_than 0 || fail "The box was not asked."
    "operate_$kind"
    within 20 heard_more_than $(($(heard | wc -l) + 2)) || fail "The box was not asked any more."
    picture "$window" "$pictures/$name.png" || fail "The window does not come to rest."
    [ "$kind" = stack ] || press F11 R
    close_program
    end_jobs "$box"
    summary >"$work/$name"
}
