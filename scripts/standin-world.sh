# Sourced by the desktop application's scripts on Linux: a private world of
# the device stand-in (tools/devicesim) with its xcrun, xcodebuild and open
# first on PATH, and, on a display, the stand-in's Simulator window.
#   standin_world DIR      sets DEVICESIM_HOME=DIR and puts the shims on PATH
#   standin_window         starts the Simulator window when the stand-in has one
#   standin_stop_window    ends it again
# Needs $build (the build folder).

devicesim_bin="$build/tools/devicesim/devicesim"
standin_window_pid=""

standin_world() {
    export DEVICESIM_HOME="$1"
    # The stand-in's simulated pauses, shortened; a caller may choose others.
    export DEVICESIM_TIME_SCALE="${DEVICESIM_TIME_SCALE:-0.1}"
    "$devicesim_bin" init >/dev/null
    export PATH="$("$devicesim_bin" shims "$DEVICESIM_HOME/bin"):$PATH"
    for tool in xcrun xcodebuild open; do
        for folder in /usr/local/bin /usr/bin /bin; do
            if [ -e "$folder/$tool" ]; then
                echo "note: $folder/$tool is found before the stand-in's $tool; what needs it will fail" >&2
            fi
        done
    done
}

standin_window() {
    if [ -z "${DISPLAY:-}" ]; then
        echo "note: no display (DISPLAY is not set), so no Simulator window; recording by clicks needs it" >&2
        return 0
    fi
    "$devicesim_bin" window >"$DEVICESIM_HOME/window.log" 2>&1 &
    standin_window_pid=$!
    # Until it is on screen, the recorder has nothing to sit beside.
    for _ in $(seq 50); do
        if ! kill -0 "$standin_window_pid" 2>/dev/null; then
            echo "note: the Simulator window did not open: $(cat "$DEVICESIM_HOME/window.log")" >&2
            standin_window_pid=""
            return 0
        fi
        if ! command -v xdotool >/dev/null; then
            sleep 1 # cannot look; a second is plenty
            return 0
        fi
        if xdotool search --onlyvisible --pid "$standin_window_pid" --class '^Simulator$' >/dev/null 2>&1; then
            return 0
        fi
        sleep 0.1
    done
    echo "note: the Simulator window did not appear in time" >&2
}

standin_stop_window() {
    if [ -n "$standin_window_pid" ]; then
        kill "$standin_window_pid" 2>/dev/null || true
        wait "$standin_window_pid" 2>/dev/null || true
        standin_window_pid=""
    fi
}
