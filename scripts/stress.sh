#!/usr/bin/env bash
# Runs the hard cases many times against the device stand-in and prints
# what held: several processes changing one workspace, kills in the middle of
# renumbering checkpoints, Ctrl-C at random moments of a generation, and
# Ctrl-C while a simulator tool hangs. Exit status 0 when everything held.
#
#   scripts/stress.sh [ROUNDS]     (default 16)
#
# Needs a build (VANTREL_BUILD_DIR, default ./build). Every case runs in a
# private data root and stand-in state under a temporary folder, with HOME
# pointing there too.
set -uo pipefail
# Job control: a background command keeps SIGINT as a terminal would give it
# (a script without it starts background commands with SIGINT ignored).
set -m
cd "$(dirname "$0")/.."
rounds="${1:-16}"
build="${VANTREL_BUILD_DIR:-$PWD/build}"
vantrel_bin="$build/src/cli/vantrel"
devicesim_bin="$build/tools/devicesim/devicesim"
[ -x "$vantrel_bin" ] && [ -x "$devicesim_bin" ] || { echo "stress.sh: build vantrel and devicesim first" >&2; exit 2; }

scratch="$(mktemp -d "${TMPDIR:-/tmp}/vantrel-stress.XXXXXX")"
trap 'rm -rf "$scratch"' EXIT
failures=0

# A fresh world: data root, stand-in state, shims first on PATH.
world() {
    local dir="$scratch/$1"
    rm -rf "$dir"
    mkdir -p "$dir/home/.local/share"
    export VANTREL_HOME="$dir/root" DEVICESIM_HOME="$dir/devicesim" HOME="$dir/home"
    export XDG_DATA_HOME="$dir/home/.local/share" DEVICESIM_TIME_SCALE="${2:-0}"
    "$devicesim_bin" init >/dev/null
    export PATH="$("$devicesim_bin" shims "$dir/bin"):$(printf %s "$PATH" | sed "s|$scratch/[^:]*/bin:||g")"
}

# Processes of the current world that still run: vantrel, the stand-in
# (xcrun, xcodebuild, open) or what it started, whose environment names the
# world's stand-in state.
leftovers() {
    local count=0 pid program
    for pid in $(ls /proc | grep -E '^[0-9]+$'); do
        program="$(basename "$(readlink "/proc/$pid/exe" 2>/dev/null)")"
        case "$program" in vantrel|devicesim|sleep) ;; *) continue ;; esac
        if { tr '\0' '\n' < "/proc/$pid/environ"; } 2>/dev/null | grep -qx "DEVICESIM_HOME=$DEVICESIM_HOME"; then
            grep -q '^State:.*Z' "/proc/$pid/status" 2>/dev/null || count=$((count + 1))
        fi
    done
    echo "$count"
}

report() { # NAME HELD TOTAL DETAILS
    printf '%-46s %3d of %3d held  %s\n' "$1" "$2" "$3" "$4"
    [ "$2" -eq "$3" ] || failures=$((failures + 1))
}

random_ms() { echo $(( RANDOM % $1 )); }
sleep_ms() { sleep "$(printf '0.%03d' "$1")"; }

# --- four processes adding 20 languages each --------------------------------
held=0; lost_total=0
for round in $(seq 1 "$rounds"); do
    world languages
    "$vantrel_bin" status >/dev/null
    for p in 1 2 3 4; do
        ( for l in $(seq 1 20); do "$vantrel_bin" languages add "x$p-$l" >/dev/null || echo failed; done ) &
    done
    wait
    count=$("$vantrel_bin" languages --json | grep -c '"code": "x')
    lost=$((80 - count))
    lost_total=$((lost_total + lost))
    [ "$lost" -eq 0 ] && held=$((held + 1))
done
report "four processes, 80 languages: none lost" "$held" "$rounds" "($lost_total lost in all)"

# --- kill -9 during checkpoints move, then the same command again -----------
world reorder
"$vantrel_bin" attach >/dev/null
printf 'checkpoint trips\ntap 147 790\ncheckpoint explore\ntap 245 790\ncheckpoint saved\ntap 343 790\ncheckpoint settings\nstop\n' \
    | "$vantrel_bin" record >/dev/null
manual="$("$vantrel_bin" checkpoints --json | sed -n 's/.*"folder": "\(.*\)".*/\1/p')"
images() { for f in "$manual"/*.png "$manual"/.reorder-*.png; do [ -f "$f" ] && md5sum < "$f"; done | sort | tr -d ' \n-'; }
before="$(images)"
held=0
for round in $(seq 1 "$rounds"); do
    "$vantrel_bin" checkpoints move 1 2 >/dev/null 2>&1 &
    pid=$!
    sleep_ms "$(random_ms 120)"
    kill -9 "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    "$vantrel_bin" checkpoints move 1 2 >/dev/null 2>&1
    visible=$(ls "$manual" | grep -c '\.png$')
    hidden=$(ls -A "$manual" | grep -c '^\.')
    [ "$(images)" = "$before" ] && [ "$visible" -eq 4 ] && [ "$hidden" -eq 0 ] && held=$((held + 1))
done
report "kill during move, then move again: no image lost" "$held" "$rounds" ""

# --- Ctrl-C at a random moment of generate -----------------------------------
world generate 0.3
"$vantrel_bin" attach >/dev/null
"$vantrel_bin" languages add de-DE >/dev/null
printf 'checkpoint trips\ntap 147 790\ncheckpoint explore\nstop\n' | "$vantrel_bin" record >/dev/null
held=0; statuses=""
for round in $(seq 1 "$rounds"); do
    "$vantrel_bin" generate --plain >"$scratch/generate.out" 2>&1 &
    pid=$!
    sleep_ms "$(random_ms 999)"; sleep "$(( RANDOM % 3 ))"
    kill -INT "$pid" 2>/dev/null
    wait "$pid"; status=$?
    statuses="$statuses $status"
    sleep 0.2
    [ "$status" -eq 130 ] || [ "$status" -eq 0 ] || continue
    [ "$(leftovers)" -eq 0 ] && held=$((held + 1))
done
report "Ctrl-C during generate: 130 or done, no child" "$held" "$rounds" "(exit:$statuses)"

# --- Ctrl-C while simctl hangs during attach ---------------------------------
world attach
"$devicesim_bin" fault set simctl-hangs list >/dev/null
held=0; slowest=0
for round in $(seq 1 "$rounds"); do
    "$vantrel_bin" attach >/dev/null 2>&1 &
    pid=$!
    sleep_ms "$(random_ms 999)"
    start=$(date +%s%N)
    kill -INT "$pid" 2>/dev/null
    wait "$pid"; status=$?
    took=$(( ($(date +%s%N) - start) / 1000000 ))
    [ "$took" -gt "$slowest" ] && slowest=$took
    sleep 0.2
    [ "$status" -eq 130 ] && [ "$took" -lt 5000 ] && [ "$(leftovers)" -eq 0 ] && held=$((held + 1))
done
report "Ctrl-C during a hanging attach: <5 s, no child" "$held" "$rounds" "(slowest ${slowest} ms)"

# --- a simctl that never answers ---------------------------------------------
start=$(date +%s)
"$vantrel_bin" devices >/dev/null 2>"$scratch/devices.err"; status=$?
took=$(( $(date +%s) - start ))
ok=0
[ "$status" -eq 1 ] && [ "$took" -lt 60 ] && grep -q 'did not finish within 30 seconds' "$scratch/devices.err" \
    && [ "$(leftovers)" -eq 0 ] && ok=1
report "devices with a hanging simctl: message <60 s" "$ok" 1 "(${took} s)"

if [ "$failures" -eq 0 ]; then echo "Everything held."; else echo "$failures case(s) did not hold."; fi
[ "$failures" -eq 0 ]
