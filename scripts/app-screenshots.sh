#!/usr/bin/env bash
# Screenshots of the desktop application, one per panel and one of the
# recorder beside the Simulator window, taken from the real vantrel-app
# against the device stand-in on a private X display (Xvfb), so that the
# README's pictures always show the application as it is built.
#
#   bash scripts/app-screenshots.sh [OUTPUT_FOLDER]   (default docs/screenshots)
#
# The project shown is made with the command line first: the demo app
# attached, three languages, a recorded flow of four checkpoints, and a run in
# which a "Go Premium" sheet covers one screen in German, so that the Generate
# panel shows a drift stop and the Review panel a screenshot held back.
# Needs Xvfb, xdotool and ImageMagick (scripts/setup.sh installs them).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${VANTREL_BUILD_DIR:-$PWD/build}"
out="${1:-docs/screenshots}"
mkdir -p "$out"
out="$(cd "$out" && pwd)"
for tool in Xvfb xdotool import; do
    command -v "$tool" >/dev/null || { echo "$tool is missing: run scripts/setup.sh" >&2; exit 1; }
done

work="$(mktemp -d "${TMPDIR:-/tmp}/vantrel-screenshots.XXXXXX")"
root="$work/root"
xvfb_pid=""
app_pid=""
cleanup() {
    [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null || true
    standin_stop_window 2>/dev/null || true
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
vantrel() { "$build/src/cli/vantrel" --root "$root" "$@"; }

# A display of our own: Xvfb picks a free number and writes it to the pipe.
exec 3< <(Xvfb -displayfd 1 -screen 0 1600x1000x24 -nolisten tcp 2>"$work/xvfb.log" & echo "pid $!")
read -r _ xvfb_pid <&3
read -r display <&3 || true
if [ -z "${display:-}" ]; then
    echo "Xvfb did not start: $(cat "$work/xvfb.log")" >&2
    exit 1
fi
export DISPLAY=":$display"

. scripts/standin-world.sh
export DEVICESIM_TIME_SCALE=0
standin_world "$work/devicesim"

echo "Making the project with the command line"
vantrel attach >/dev/null
vantrel select-app com.vantrel.demo.Trips >/dev/null
vantrel languages toggle de-DE >/dev/null
vantrel languages toggle fr-FR >/dev/null
vantrel record >/dev/null <<'FLOW'
checkpoint trips
tap 147 790
checkpoint explore
tap 245 790
checkpoint saved
tap 343 790
checkpoint settings
stop
FLOW
"$devicesim_bin" fault set dialog de-DE settings >/dev/null
vantrel generate --plain >"$work/generate.log" 2>&1 || true
"$devicesim_bin" fault clear dialog >/dev/null

standin_window
"$build/src/gui/vantrel-app" --root "$root" >"$work/app.log" 2>&1 &
app_pid=$!

window=""
for _ in $(seq 100); do
    window="$(xdotool search --name '^Vantrel — ' 2>/dev/null | head -n 1 || true)"
    [ -n "$window" ] && break
    sleep 0.1
done
if [ -z "$window" ]; then
    echo "The Vantrel window did not appear: $(cat "$work/app.log")" >&2
    exit 1
fi
sleep 3 # start-up: devices, apps, preview

key() {
    xdotool windowfocus --sync "$window" 2>/dev/null || xdotool windowfocus "$window"
    xdotool key --clearmodifiers "$1"
}
shoot() {
    sleep "${2:-1.5}"
    import -window "$window" "$out/$1.png"
    echo "  $out/$1.png"
}

echo "Taking the screenshots"
key ctrl+1; shoot setup
key ctrl+2; shoot record
key ctrl+3; shoot generate
key ctrl+4; shoot review 2.5
key ctrl+2
key ctrl+r
recorder=""
for _ in $(seq 100); do
    recorder="$(xdotool search --name '^Recorder$' 2>/dev/null | head -n 1 || true)"
    [ -n "$recorder" ] && break
    sleep 0.1
done
sleep 2
import -window root "$out/recorder.png"
echo "  $out/recorder.png (the whole screen)"
key ctrl+r
key ctrl+q
wait "$app_pid" || true
app_pid=""
