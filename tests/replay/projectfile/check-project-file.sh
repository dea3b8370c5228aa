#!/bin/sh
# check-project-file.sh WRITER WORKDIR: writes a runner project with WRITER and
# checks its project file with the npm package "xcode", installed once into
# WORKDIR. Exits 77 (skipped) when node, npm or the package is unavailable.
set -u
writer=$1
workdir=$2

if ! command -v node >/dev/null 2>&1 || ! command -v npm >/dev/null 2>&1; then
    echo "SKIP: node and npm are needed to check the project file"
    exit 77
fi
if [ ! -f "$workdir/node_modules/xcode/package.json" ]; then
    mkdir -p "$workdir"
    # npm's cache stays in the build folder, away from the user's home.
    if ! npm_config_cache="$workdir/npm-cache" npm install --prefix "$workdir" --no-save --no-audit --no-fund --fetch-retries=1 \
            --fetch-timeout=30000 xcode@3.0.1 >"$workdir/npm-install.log" 2>&1; then
        echo "SKIP: could not install the npm package xcode (see $workdir/npm-install.log)"
        exit 77
    fi
fi

here=$(cd "$(dirname "$0")" && pwd)
root="$workdir/XCUITestReplayRunner"
rm -rf "$root"
"$writer" "$root" || exit 1
NODE_PATH="$workdir/node_modules" node "$here/check-project-file.js" \
    "$root/AutomationRunner.xcodeproj/project.pbxproj"
