#!/usr/bin/env bash
# Installs what is missing (Debian with apt, macOS with Homebrew), then
# configures and builds Vantrel into ./build. Safe to run again: it only
# installs what is not there and rebuilds incrementally.
#
#   bash scripts/setup.sh                   everything (the tests need it all)
#   bash scripts/setup.sh vantrel devicesim only these targets (the demo)
#   bash scripts/setup.sh --install-only    the packages, nothing built
#
# The demo and the tests share one build folder and one configure.
set -euo pipefail
cd "$(dirname "$0")/.."

# Build: Qt (with its xcb platform for windows on X11), libplist, Tesseract,
# yaml-cpp, xcb with XInput for the click monitor. Tests: Xvfb, xdotool and
# ImageMagick drive and photograph real windows; headless Chromium draws the
# contact sheet. ccache speeds up rebuilds.
DEBIAN_PACKAGES=(qt6-base-dev qt6-qpa-plugins libplist-dev libtesseract-dev tesseract-ocr-eng
                 fonts-dejavu-core cmake ninja-build g++ pkg-config ccache
                 libyaml-cpp-dev libxcb1-dev libxcb-xinput-dev
                 xvfb xdotool imagemagick chromium)
BREW_PACKAGES=(qt libplist tesseract yaml-cpp cmake ninja pkg-config ccache)

install_debian() {
    local missing=()
    for pkg in "${DEBIAN_PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" \
            || missing+=("$pkg")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
}

install_macos() {
    command -v brew >/dev/null || { echo "Homebrew is required: https://brew.sh" >&2; exit 1; }
    local missing=()
    for pkg in "${BREW_PACKAGES[@]}"; do
        brew list --formula "$pkg" >/dev/null 2>&1 || missing+=("$pkg")
    done
    [ ${#missing[@]} -eq 0 ] || brew install "${missing[@]}"
}

# Chromium brings xdg-utils, which registers /usr/bin/open as xdg-open.
# Vantrel looks for `open` in /usr/bin before PATH (where a Mac has it), so
# the device stand-in's `open` would never answer: the alternative goes.
# Checked on every run, so that an upgrade that puts it back is undone too.
remove_xdg_open_alternative() {
    [ "$(readlink -f /usr/bin/open 2>/dev/null)" = /usr/bin/xdg-open ] || return 0
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo update-alternatives --remove open /usr/bin/xdg-open
}

case "$(uname -s)" in
    Linux)
        if command -v apt-get >/dev/null; then install_debian; remove_xdg_open_alternative
        else echo "No apt-get here: install ${DEBIAN_PACKAGES[*]} by hand." >&2; fi ;;
    Darwin) install_macos ;;
esac

[ "${1:-}" = --install-only ] && exit 0

# Extra configure arguments, such as -DVANTREL_WARNINGS_AS_ERRORS=ON in CI.
read -r -a VANTREL_CMAKE_ARGS <<< "${VANTREL_CMAKE_ARGS:-}"
# Unity builds compile each target's sources in batches, so Qt's headers are
# parsed once per batch instead of once per file: a fresh build takes about a
# quarter of the processor time. Editing one file then recompiles its batch;
# configure a build folder of your own without it for day-to-day work.
cmake_args=(-S . -B build -G Ninja -DCMAKE_UNITY_BUILD=ON)
if [ "$(uname -s)" = Darwin ]; then
    cmake_args+=(-DCMAKE_PREFIX_PATH="$(brew --prefix qt)")
fi
cmake_args+=(${VANTREL_CMAKE_ARGS[@]+"${VANTREL_CMAKE_ARGS[@]}"})
[ -f build/build.ninja ] || cmake "${cmake_args[@]}" >/dev/null
if [ $# -gt 0 ]; then
    cmake --build build --target "$@"
else
    cmake --build build
fi
