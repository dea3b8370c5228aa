#!/usr/bin/env bash
# The unit and end-to-end tests under AddressSanitizer and
# UndefinedBehaviorSanitizer, in their own build folder (build-sanitize).
# The first error ends the test that made it. Too slow for every CI run on
# two cores, so it runs by hand before a release and after risky changes.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --install-only
cmake -S . -B build-sanitize -G Ninja -DVANTREL_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build-sanitize
export ASAN_OPTIONS="halt_on_error=1:detect_leaks=0"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
cd build-sanitize
ctest --output-on-failure --timeout 1800 -j2 -L 'unit|e2e' "$@"
