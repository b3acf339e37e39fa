# shellcheck shell=bash
# A display of our own for whoever has none: a virtual screen with a window manager on it. To be sourced.

has_display() { [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; }

# start_virtual_display WIDTHxHEIGHT: sets DISPLAY; the caller kills VIRTUAL_DISPLAY_PIDS when done.
start_virtual_display() {
    local number_file
    number_file=$(mktemp)
    Xvfb -displayfd 5 -screen 0 "$1x24" -nolisten tcp -noreset 5>"$number_file" 2>/dev/null &
    VIRTUAL_DISPLAY_PIDS=($!)
    wait_until 10 "the virtual display" test -s "$number_file"
    DISPLAY=:$(cat "$number_file")
    rm -f "$number_file"
    export DISPLAY QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
    openbox >/dev/null 2>&1 &
    VIRTUAL_DISPLAY_PIDS+=($!)
    wait_until 10 "the window manager" window_manager_runs
}

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

# wait_until SECONDS WHAT COMMAND...: tries the command until it succeeds; says what did not come.
wait_until() {
    local seconds=$1 what=$2 deadline
    shift 2
    deadline=$((SECONDS + seconds))
    until "$@"; do
        if [ "$SECONDS" -ge "$deadline" ]; then
            echo "waited $seconds s in vain for $what" >&2
            return 1
        fi
        sleep 0.05
    done
}
