#!/usr/bin/env bash
# How long a newcomer waits: from a fresh clone of this checkout's HEAD (the
# system packages already installed), the time until the demo writes its
# first screenshot, until the demo ends, and for the whole test command.
#
#   bash scripts/bench-first-run.sh            ccache off: a machine's first build
#   VANTREL_BENCH_CCACHE=1 bash scripts/...    ccache on, as it is found
#
# Targets: first screenshot under 3 minutes, tests under 6, on 2 cores.
set -euo pipefail
source_tree="$(cd "$(dirname "$0")/.." && pwd)"
work="$(mktemp -d "${TMPDIR:-/tmp}/vantrel-first-run.XXXXXX")"
trap 'rm -rf "$work"' EXIT
[ "${VANTREL_BENCH_CCACHE:-0}" = 1 ] || export CCACHE_DISABLE=1

git clone -q "$source_tree" "$work/clone"
cd "$work/clone"
mkdir -p "$work/tmp"

start=$(date +%s.%N)
TMPDIR="$work/tmp" bash scripts/run-demo.sh >"$work/demo.log" 2>&1 &
demo=$!
first=""
while kill -0 "$demo" 2>/dev/null; do
    if [ -z "$first" ] && [ -n "$(find "$work/tmp" -path '*/output/*' -name '*.png' -print -quit 2>/dev/null)" ]; then
        first=$(date +%s.%N)
    fi
    sleep 0.5
done
wait "$demo" || { echo "The demo failed; its output:" >&2; cat "$work/demo.log" >&2; exit 1; }
demo_end=$(date +%s.%N)

bash scripts/run-tests.sh >"$work/tests.log" 2>&1 || { tail -40 "$work/tests.log" >&2; exit 1; }
tests_end=$(date +%s.%N)

seconds() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.0f s", b - a }'; }
ccache_state=on; [ -n "${CCACHE_DISABLE:-}" ] && ccache_state=off
echo "Fresh clone on $(nproc) cores, ccache $ccache_state:"
echo "  first screenshot written: $(seconds "$start" "${first:-$demo_end}")"
echo "  demo finished:            $(seconds "$start" "$demo_end")"
echo "  run-tests.sh after it:    $(seconds "$demo_end" "$tests_end")"
