#!/usr/bin/env bash
# Starts the desktop application, vantrel-app.
#
# On a Mac: the built Vantrel.app, against the real Simulator and Xcode.
# On Linux: against the device stand-in (tools/devicesim), with its
# Simulator window when there is a display, in a data root of its own:
#   VANTREL_HOME   data root to use (default: a new temporary folder); the
#                  stand-in's state lives inside it, so a second start with
#                  the same folder finds everything as it was left.
# Build first (scripts/setup.sh, or cmake --build build).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${VANTREL_BUILD_DIR:-$PWD/build}"

if [ "$(uname -s)" = Darwin ]; then
    exec "$build/src/gui/Vantrel.app/Contents/MacOS/Vantrel" ${VANTREL_HOME:+--root "$VANTREL_HOME"} "$@"
fi

root="${VANTREL_HOME:-$(mktemp -d "${TMPDIR:-/tmp}/vantrel-app.XXXXXX")}"
echo "Data root: $root"
. scripts/standin-world.sh
standin_world "$root/devicesim"
trap standin_stop_window EXIT
standin_window
"$build/src/gui/vantrel-app" --root "$root" "$@" &
app_pid=$!
# Ctrl+C or a TERM here ends the application too, and then the window.
trap 'kill "$app_pid" 2>/dev/null || true' INT TERM
status=0
wait "$app_pid" || status=$?
# A signal interrupts the first wait; the second one collects the exit.
wait "$app_pid" 2>/dev/null || true
exit "$status"
