#!/usr/bin/env bash
# Makes docs/mapping-screen.png, the picture of fbcfg-screen on the sample
# controller that the README shows. Run it again when the screen changes.
#   scripts/screenshot.sh [BUILD_DIR]          Qt's offscreen platform (no display needed)
#   scripts/screenshot.sh --xvfb [BUILD_DIR]   a virtual X display, when the look differs
# BUILD_DIR (default build/) must hold a built fbcfg-screen; --xvfb needs
# `scripts/install-deps.sh screenshot`.
set -euo pipefail
cd "$(dirname "$0")/.."

xvfb=
if [ "${1:-}" = --xvfb ]; then
    xvfb=1
    shift
fi
build=${1:-build}
screen="$build/examples/mapping-screen/fbcfg-screen"
if [ ! -x "$screen" ]; then
    echo "screenshot: $screen is not built; cmake --build $build --target fbcfg-screen" >&2
    exit 1
fi
out=docs/mapping-screen.png
mkdir -p docs
tmp=$(mktemp --suffix=.png)
trap 'rm -f "$tmp"' EXIT

# The window draws itself into the file once every file has been read.
args=(--screenshot "$tmp" --transfer-delay 0)
if [ -n "$xvfb" ]; then
    xvfb-run --auto-servernum --server-args="-screen 0 1024x768x24" "$screen" "${args[@]}"
else
    QT_QPA_PLATFORM=offscreen "$screen" "${args[@]}"
fi

# Without the time stamps a new picture of an unchanged screen is the same file.
if ! { command -v convert >/dev/null 2>&1 && convert "$tmp" -strip "$out" 2>/dev/null; }; then
    install -m 644 "$tmp" "$out"
fi
echo "screenshot: $out"
