#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need (python3-jsonschema
# validates the check's SARIF output). Safe to run again.
#   scripts/install-deps.sh [fuzz] [bench] [screenshot] [docs]   also what fuzzing, benchmarks,
#                                      scripts/screenshot.sh --xvfb (and a Chinese font) or the
#                                      API reference (cmake --build build --target docs) need
set -euo pipefail

packages=(
    build-essential cmake
    qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools
    libpugixml-dev
    python3-jsonschema
)
for extra in "$@"; do
    case "$extra" in
    fuzz) packages+=(clang-14 libclang-rt-14-dev) ;;
    bench) packages+=(libbenchmark-dev) ;;
    screenshot) packages+=(xvfb xauth imagemagick fonts-wqy-microhei) ;;
    docs) packages+=(doxygen) ;;
    *) echo "install-deps: unknown extra '$extra' (fuzz, bench, screenshot, docs)" >&2; exit 2 ;;
    esac
done

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

if [ "$(id -u)" -eq 0 ]; then
    sudo=()
elif command -v sudo >/dev/null 2>&1; then
    sudo=(sudo)
else
    echo "install-deps: need root or sudo to install: ${missing[*]}" >&2
    exit 1
fi

export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update
"${sudo[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
