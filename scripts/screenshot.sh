#!/usr/bin/env bash
# Makes docs/mapping-screen.png and docs/mapping-screen-zh.png, the pictures of
# fbcfg-screen on the sample controller in English and in Chinese that the README
# shows. Run it again when the screen changes.
#   scripts/screenshot.sh [BUILD_DIR]          Qt's offscreen platform (no display needed)
#   scripts/screenshot.sh --xvfb [BUILD_DIR]   a virtual X display, when the look differs
# BUILD_DIR (default build/) must hold a built fbcfg-screen; the Chinese picture
# needs a Chinese font and --xvfb a virtual display: `scripts/install-deps.sh screenshot`.
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
# Without a Chinese font the Chinese picture would show boxes.
if ! fc-list :lang=zh family | grep -q .; then
    echo "screenshot: no Chinese font; bash scripts/install-deps.sh screenshot" >&2
    exit 1
fi
mkdir -p docs
tmp=$(mktemp --suffix=.png)
trap 'rm -f "$tmp"' EXIT

shoot() { # OUT [SCREEN OPTION...]
    local out=$1
    shift
    # The window draws itself into the file once every file has been read.
    local args=(--screenshot "$tmp" --transfer-delay 0 "$@")
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
}

shoot docs/mapping-screen.png --lang en
shoot docs/mapping-screen-zh.png --lang zh
