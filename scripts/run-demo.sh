#!/usr/bin/env bash
# Sets up, builds and runs the main job against a fresh data root: attach,
# record a short flow, generate it for several languages (scripts/demo.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
exec bash scripts/demo.sh
