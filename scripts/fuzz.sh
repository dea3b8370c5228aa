#!/bin/sh
# Runs the libFuzzer target over the readers of outside data (project
# documents, snapshots, the reorder journal, simctl's device list and
# installed apps) for a bounded time. Needs clang with libFuzzer; the usual
# build runs a fixed-seed randomized stand-in instead (ctest -R fuzz).
#
#   scripts/fuzz.sh [SECONDS]     (default 60)
set -eu
cd "$(dirname "$0")/.."
seconds="${1:-60}"
command -v clang++ >/dev/null || { echo "fuzz.sh: clang++ is needed for libFuzzer" >&2; exit 2; }
cmake -S . -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DVANTREL_FUZZING=ON >/dev/null
cmake --build build-fuzz --target vantrel-fuzz
mkdir -p build-fuzz/tools/fuzz/corpus
QT_QPA_PLATFORM=offscreen build-fuzz/tools/fuzz/vantrel-fuzz -max_total_time="$seconds" -timeout=10 \
    -rss_limit_mb=4096 build-fuzz/tools/fuzz/corpus
