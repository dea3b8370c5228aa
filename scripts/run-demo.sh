#!/usr/bin/env bash
# Sets up, builds and runs the main job against a fresh data root.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
root="$(mktemp -d "${TMPDIR:-/tmp}/vantrel-demo.XXXXXX")"
echo "Data root: $root"
./build/src/cli/vantrel --root "$root" status
