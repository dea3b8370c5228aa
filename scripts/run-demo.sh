#!/usr/bin/env bash
# Sets up, builds and runs the main job against a fresh data root: attach,
# record a short flow, generate it for several languages (scripts/demo.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
# Only what the demo runs: the command line and the device stand-in.
bash scripts/setup.sh vantrel devicesim
exec bash scripts/demo.sh
