#!/usr/bin/env bash
# The main job, end to end, in a fresh data root: attach the booted
# Simulator, select the app, record a short flow with a few checkpoints,
# generate it for several languages, and say where the screenshots are.
#
# On Linux everything runs against the device stand-in in tools/devicesim
# and its demo app. On a Mac with Xcode the real Simulator is used; see "The
# demo, and running it with your own app" in README.md:
#   VANTREL_DEMO_APP        bundle ID of the app to use (else the only user app)
#   VANTREL_DEMO_FLOW       file with a `vantrel record` script (else one checkpoint)
#   VANTREL_DEMO_LANGUAGES  languages besides en-US (default: de-DE fr-FR es-ES)
set -euo pipefail
cd "$(dirname "$0")/.."
build="${VANTREL_BUILD_DIR:-$PWD/build}"
vantrel_bin="$build/src/cli/vantrel"
devicesim_bin="$build/tools/devicesim/devicesim"

root="$(mktemp -d "${TMPDIR:-/tmp}/vantrel-demo.XXXXXX")"
echo "Data root: $root"
vantrel() { "$vantrel_bin" --root "$root" "$@"; }
step() { printf '\n== %s\n' "$*"; }

have_xcode() {
    [ "$(uname -s)" = Darwin ] && xcrun --find xcodebuild >/dev/null 2>&1
}

if have_xcode; then
    mode=simulator
    step "Using the real Simulator and Xcode"
elif [ "$(uname -s)" = Darwin ]; then
    # Vantrel looks for the developer tools in /usr/bin before anything on
    # PATH, and every Mac has Apple's xcrun there, so the stand-in would
    # never be asked.
    echo "The device stand-in serves machines without Apple's tools (Linux)." >&2
    echo "On a Mac, install Xcode and boot a Simulator, then run the demo again." >&2
    exit 1
else
    mode=standin
    step "No Xcode here: using the device stand-in (tools/devicesim), not Apple's tools"
    export DEVICESIM_HOME="$root/devicesim"
    # The stand-in's simulated pauses, shortened so that the demo is quick.
    export DEVICESIM_TIME_SCALE="${DEVICESIM_TIME_SCALE:-0.1}"
    "$devicesim_bin" init >/dev/null
    export PATH="$("$devicesim_bin" shims "$DEVICESIM_HOME/bin"):$PATH"
fi

step "Attach the booted Simulator"
vantrel attach

step "Select the app"
if [ "$mode" = standin ]; then
    vantrel select-app com.vantrel.demo.Trips
elif [ -n "${VANTREL_DEMO_APP:-}" ]; then
    vantrel select-app "$VANTREL_DEMO_APP"
fi

step "Choose languages"
for language in ${VANTREL_DEMO_LANGUAGES:-de-DE fr-FR es-ES}; do
    vantrel languages toggle "$language" >/dev/null
done
vantrel languages

step "Record a flow"
if [ -n "${VANTREL_DEMO_FLOW:-}" ]; then
    vantrel record < "$VANTREL_DEMO_FLOW"
elif [ "$mode" = standin ]; then
    # The demo app's tab bar on an iPhone 15 Pro (393 x 852 points).
    vantrel record <<'FLOW'
checkpoint trips
tap 147 790
checkpoint explore
tap 245 790
checkpoint saved
tap 344 790
checkpoint settings
stop
FLOW
else
    printf 'checkpoint home\nstop\n' | vantrel record
fi

step "Generate"
status=0
vantrel generate || status=$?

output="$(vantrel status --json | sed -n 's/^ *"outputDirectory": "\(.*\)",\{0,1\}$/\1/p')"
count="$(find "$output" -name '*.png' -not -path '*/manual/*' -not -path '*/_needs-review/*' | wc -l | tr -d ' ')"
step "Result"
echo "Screenshots: $output"
echo "Made $count screenshots (one per checkpoint, language and device)."
exit "$status"
