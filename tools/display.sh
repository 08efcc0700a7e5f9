# SPDX-License-Identifier: MIT
# Sourced by what needs a virtual display of its own. Who opens one calls close_display on leaving.

# within SECONDS COMMAND...: waits until the command succeeds.
within() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.1
    done
}

# open_display FOLDER: sets DISPLAY. The folder receives a file.
open_display() {
    rm -f "$1/screen"
    # At 96 dpi this width is a whole number of millimetres. Otherwise windows are scaled by a pixel.
    Xvfb -displayfd 3 -screen 0 1920x1080x24 -dpi 96 3>"$1/screen" >/dev/null 2>&1 &
    display=$!
    within 20 [ -s "$1/screen" ] || {
        echo "The virtual display did not start." >&2
        return 1
    }
    unset WAYLAND_DISPLAY
    DISPLAY=:$(cat "$1/screen")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    manager=$!
}

close_display() {
    end_jobs ${manager:-} ${display:-}
}

# end_jobs PID...
end_jobs() {
    local job
    for job in "$@"; do
        kill "$job" 2>/dev/null || true
        wait "$job" 2>/dev/null || true
    done
}

# window_of [NAME] [XDOTOOL OPTION...]: waits for a window whose title begins with the name, and prints its number.
window_of() {
    timeout 60 xdotool search --sync --onlyvisible --all "${@:2}" --name "^${1:-Vextral - }" | tail -n 1
}

# picture WINDOW FILE: once the window has stopped changing.
picture() {
    rm -f "$2"
    within 20 same_twice "$1" "$2"
}

same_twice() {
    local before=
    [ ! -e "$2" ] || before=$(identify -format '%#' "$2")
    import -window "$1" -depth 8 "$2"
    [ "$(identify -format '%#' "$2")" = "$before" ]
}
