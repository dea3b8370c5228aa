#!/usr/bin/env bash
# Screenshots of the desktop application, one per panel and one of the
# recorder beside the Simulator window, taken from the real vantrel-app
# against the device stand-in on a private X display (Xvfb), so that the
# README's pictures always show the application as it is built.
#
#   bash scripts/app-screenshots.sh [OUTPUT_FOLDER]   (default docs/images)
#
# The project shown is made with the command line first: two older projects
# with their snapshots in the library, the demo app attached, three languages, a
# recorded flow of four checkpoints, and a run in which a "Go Premium" sheet
# covers one screen in German. The run itself is started in the app (Ctrl+G),
# so that the Generate panel shows its drift stop and the Review panel the
# screenshot held back.
# Needs Xvfb, xdotool and ImageMagick (scripts/setup.sh installs them).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${VANTREL_BUILD_DIR:-$PWD/build}"
out="${1:-docs/images}"
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
vantrel projects rename "Recipes Box" >/dev/null
vantrel projects new "Weather Lens" >/dev/null
vantrel projects new "Trips Café" >/dev/null
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

standin_window
simulator="$(xdotool search --onlyvisible --class '^Simulator$' | head -n 1)"
# Right of the Vantrel window, where the recorder panel fits beside it.
xdotool windowmove --sync "$simulator" 1180 60
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
# The size the README shows; without a window manager the window keeps it.
xdotool windowsize --sync "$window" 1100 800 2>/dev/null || xdotool windowsize "$window" 1100 800
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
# The library is the sidebar beside every panel.
import -window "$window" -crop 270x800+0+0 +repage "$out/library.png"
echo "  $out/library.png"
key ctrl+2; shoot record
key ctrl+3
key ctrl+g
# The run stops for review when the German settings screen drifts.
for _ in $(seq 600); do
    [ -d "$root/output" ] && [ -n "$(find "$root/output" -path '*_needs-review*' -name '*.png' 2>/dev/null)" ] && break
    sleep 0.1
done
shoot generate 2.5
key ctrl+4; shoot review 2.5

# The recorder beside the Simulator, one tap (on the Explore tab) recorded,
# the app back in English. Recording starts a new flow: this comes last.
"$devicesim_bin" fault clear dialog >/dev/null
udid=6E1A9C2B-4D3F-4B7A-9E51-7C2D8A4F1B36 # the stand-in's iPhone 15 Pro
xcrun simctl terminate "$udid" com.vantrel.demo.Trips >/dev/null 2>&1 || true
xcrun simctl launch "$udid" com.vantrel.demo.Trips -AppleLanguages "(en)" -AppleLocale en_US >/dev/null
key ctrl+2
key ctrl+r
recorder=""
for _ in $(seq 100); do
    recorder="$(xdotool search --name '^Recorder$' 2>/dev/null | head -n 1 || true)"
    [ -n "$recorder" ] && break
    sleep 0.1
done
sleep 2
eval "$(xdotool getwindowgeometry --shell "$simulator")"
# The Explore tab (147, 790 in points): the device screen fills the window's
# width below its title strip of 34 pixels, the aspect ratio kept.
screen_height=$((WIDTH * 852 / 393))
xdotool mousemove $((X + WIDTH * 147 / 393)) $((Y + 34 + (HEIGHT - 34 - screen_height) / 2 + screen_height * 790 / 852)) click 1
sleep 2
# The part of the screen that holds the panel and the Simulator window.
right=$((X + WIDTH)) bottom=$((Y + HEIGHT))
eval "$(xdotool getwindowgeometry --shell "$recorder")"
left=$X top=$Y
[ "$((top + HEIGHT))" -gt "$bottom" ] && bottom=$((top + HEIGHT))
import -window root -crop "$((right - left + 20))x$((bottom - top + 20))+$((left - 10))+$((top - 10))" +repage "$out/recorder.png"
echo "  $out/recorder.png"
key ctrl+r
key ctrl+q
wait "$app_pid" || true
app_pid=""
